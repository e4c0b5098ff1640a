// The host's dialog: its buttons, its content, its results.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzbasicdialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>
#include <QWhatsThis>
#include <QtTest>

static QStringList shownButtons(const DzBasicDialog& dialog) // from left to right
{
    QMap<int, QString> byPlace;
    const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons) {
        if (button->isVisible())
            byPlace.insert(button->x(), button->text());
    }
    return byPlace.values();
}

static QPushButton* buttonNamed(const DzBasicDialog& dialog, const QString& text)
{
    const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

class TestBasicDialog : public QObject {
    Q_OBJECT
private slots:
    void hasThreeButtons();
    void buttonsCanBeHiddenAndRenamed();
    void acceptIsTheDefaultAndGivesOne();
    void cancelGivesZero();
    void escapeCancels();
    void whatsThisStartsTheHelpMode();
    void contentLiesInOrderAboveTheButtons();
    void takesAFixedSize();
    void theNameIsNotTheTitle();
};

void TestBasicDialog::hasThreeButtons()
{
    DzBasicDialog dialog;
    dialog.show();
    QCOMPARE(shownButtons(dialog),
        QStringList() << "What's This"
                      << "&Accept"
                      << "&Cancel");
}

void TestBasicDialog::buttonsCanBeHiddenAndRenamed()
{
    DzBasicDialog dialog;
    dialog.showHelpButton(false);
    dialog.setAcceptButtonText("Ok");
    dialog.show();
    QCOMPARE(shownButtons(dialog),
        QStringList() << "Ok"
                      << "&Cancel");
    dialog.showCancelButton(false);
    dialog.setCancelButtonText("No");
    QCOMPARE(shownButtons(dialog), QStringList() << "Ok");
    dialog.showHelpButton(true);
    dialog.showAcceptButton(false);
    dialog.showCancelButton(true);
    QCoreApplication::processEvents();
    QCOMPARE(shownButtons(dialog),
        QStringList() << "What's This"
                      << "No");
}

void TestBasicDialog::acceptIsTheDefaultAndGivesOne()
{
    DzBasicDialog dialog;
    QVERIFY(buttonNamed(dialog, "&Accept")->isDefault());
    QTimer::singleShot(0, buttonNamed(dialog, "&Accept"), SLOT(click()));
    QCOMPARE(dialog.exec(), 1);
}

void TestBasicDialog::cancelGivesZero()
{
    DzBasicDialog dialog;
    QTimer::singleShot(0, buttonNamed(dialog, "&Cancel"), SLOT(click()));
    QCOMPARE(dialog.exec(), 0);
}

void TestBasicDialog::escapeCancels()
{
    DzBasicDialog dialog;
    QSignalSpy rejected(&dialog, SIGNAL(rejected()));
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!dialog.isVisible());
}

void TestBasicDialog::whatsThisStartsTheHelpMode()
{
    DzBasicDialog dialog;
    dialog.show();
    QVERIFY(!QWhatsThis::inWhatsThisMode());
    buttonNamed(dialog, "What's This")->click();
    QVERIFY(QWhatsThis::inWhatsThisMode());
    QWhatsThis::leaveWhatsThisMode();
}

void TestBasicDialog::contentLiesInOrderAboveTheButtons()
{
    DzBasicDialog dialog;
    QLabel* first = new QLabel("first");
    QCheckBox* second = new QCheckBox("second");
    dialog.addWidget(first);
    dialog.addSpacing(30);
    QHBoxLayout* row = new QHBoxLayout;
    row->addWidget(second);
    dialog.addLayout(row, 1);
    dialog.show();
    QCOMPARE(first->parentWidget(), static_cast<QWidget*>(&dialog));
    QCOMPARE(second->parentWidget(), static_cast<QWidget*>(&dialog));
    QVERIFY(second->geometry().top() - first->geometry().bottom() >= 30);
    QVERIFY(buttonNamed(dialog, "&Accept")->geometry().top() > second->geometry().bottom());
}

void TestBasicDialog::takesAFixedSize()
{
    DzBasicDialog dialog;
    dialog.addWidget(new QCheckBox("one"));
    dialog.setFixedSize(300, 300);
    dialog.show();
    QCOMPARE(dialog.size(), QSize(300, 300));
    const QRect button = buttonNamed(dialog, "&Accept")->geometry();
    QVERIFY2(button.bottom() > 270, "the buttons do not lie at the bottom");
    const QCheckBox* box = dialog.findChild<QCheckBox*>();
    QVERIFY2(box->geometry().top() < 40, "the content does not start at the top");
}

void TestBasicDialog::theNameIsNotTheTitle()
{
    QWidget parent;
    DzBasicDialog dialog(&parent, "Quillon");
    QCOMPARE(dialog.objectName(), QString("Quillon"));
    QVERIFY(dialog.windowTitle().isEmpty());
    QCOMPARE(dialog.parentWidget(), &parent);
}

QUILLON_TEST(TestBasicDialog)
#include "test_basicdialog.moc"
