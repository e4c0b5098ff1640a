// The dialog of a prop's origin, rotation order and nudge step, by clicks and keys.
#include "prop_fixture.h"
#include "room_tests.h"

#include "figure/quillonrotorderdlg.h"
#include "ground/live_panes.h"
#include "ground/plugin_settings.h"

#include <QGroupBox>
#include <QtTest>

#include <limits>

using namespace quillon;

class TestQuillonRotOrderDlg : public QObject {
    Q_OBJECT
private slots:
    void init();
    void sizeAndTitlesAreThose();
    void everythingFitsWithoutOverlap();
    void theStoredChoiceIsChecked_data();
    void theStoredChoiceIsChecked();
    void theOrderGivenIsChecked_data();
    void theOrderGivenIsChecked();
    void theNudgeIsShownAsItIsStored_data();
    void theNudgeIsShownAsItIsStored();
    void aNudgeThatIsNoNumberIsAHalf_data();
    void aNudgeThatIsNoNumberIsAHalf();
    void clicksAndKeysAreStored();
    void withoutAnOrderCheckedTheOrderStays();
    void anAcceptedDialogRepaintsThePane();
    void aCancelChangesNothing_data();
    void aCancelChangesNothing();
    void theSettingsFileIsNotWritten();
    void withoutAWindowNothingIsShown();
};

static QLineEdit* nudgeEdit(const QDialog* dialog)
{
    return dialog->findChild<QLineEdit*>();
}

void TestQuillonRotOrderDlg::init()
{
    pluginSettings() = PluginSettings();
}

void TestQuillonRotOrderDlg::sizeAndTitlesAreThose()
{
    QuillonRotOrderDlg dialog(nullptr, DzRotationOrder::XYZ);
    QCOMPARE(dialog.windowTitle(), QString("Optimize Prop Origin"));
    QCOMPARE(dialog.minimumSize(), QSize(220, 360));
    QCOMPARE(dialog.maximumSize(), QSize(220, 360));
    const QList<QGroupBox*> groups = dialog.findChildren<QGroupBox*>();
    QStringList titles;
    for (const QGroupBox* group : groups) {
        titles += group->title();
        QCOMPARE(int(group->alignment() & Qt::AlignHorizontal_Mask), int(Qt::AlignHCenter));
    }
    QCOMPARE(titles,
        QStringList() << " Origin "
                      << " Rotation order "
                      << " Translation nudge ");
    QStringList labels;
    for (const QRadioButton* button : dialog.findChildren<QRadioButton*>())
        labels += button->text();
    QCOMPARE(labels,
        QString("No change,Imported model origin,Object center,Current world center,"
                "XYZ,XZY,YXZ,YZX,ZXY,ZYX")
            .split(','));
    QVERIFY(pushButton(&dialog, "Accept") && pushButton(&dialog, "Cancel"));
    QVERIFY(pushButton(&dialog, "What's This")->isHidden());
}

void TestQuillonRotOrderDlg::everythingFitsWithoutOverlap()
{
    QuillonRotOrderDlg dialog(nullptr, DzRotationOrder::XYZ);
    dialog.show();
    QVERIFY(waitForWindowShown(&dialog));
    int bottom = 0;
    for (const QGroupBox* group : dialog.findChildren<QGroupBox*>()) {
        QVERIFY(group->y() >= bottom);
        bottom = group->geometry().bottom();
        int row = 0;
        for (const QObject* child : group->children()) {
            const QWidget* widget = qobject_cast<const QWidget*>(child);
            if (!widget)
                continue;
            QVERIFY2(widget->y() > row, qPrintable(group->title()));
            row = widget->geometry().bottom();
            QVERIFY2(widget->height() >= widget->minimumSizeHint().height()
                    && widget->width() >= widget->minimumSizeHint().width(),
                qPrintable(group->title()));
        }
        QVERIFY2(row < group->height(), qPrintable(group->title()));
    }
    const QPushButton* accept = pushButton(&dialog, "Accept");
    QVERIFY(accept->y() > bottom);
    QVERIFY(dialog.rect().contains(accept->geometry()));
    QVERIFY(dialog.rect().contains(pushButton(&dialog, "Cancel")->geometry()));
}

void TestQuillonRotOrderDlg::theStoredChoiceIsChecked_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("label");
    QTest::newRow("0") << 0 << "No change";
    QTest::newRow("1") << 1 << "Imported model origin";
    QTest::newRow("2") << 2 << "Object center";
    QTest::newRow("3") << 3 << "Current world center";
    QTest::newRow("of no button") << 4 << "";
    QTest::newRow("negative") << -1 << "";
}

void TestQuillonRotOrderDlg::theStoredChoiceIsChecked()
{
    QFETCH(int, stored);
    QFETCH(QString, label);
    pluginSettings().propOrigin = stored;
    QuillonRotOrderDlg dialog(nullptr, DzRotationOrder::YXZ);
    QStringList checked;
    for (const QRadioButton* button : dialog.findChildren<QRadioButton*>())
        if (button->isChecked())
            checked += button->text();
    QCOMPARE(
        checked, label.isEmpty() ? QStringList("YXZ") : QStringList(label) + QStringList("YXZ"));
    QCOMPARE(dialog.originChoice(), label.isEmpty() ? 0 : stored);
}

void TestQuillonRotOrderDlg::theOrderGivenIsChecked_data()
{
    QTest::addColumn<int>("order");
    for (int order = 0; order < 6; ++order)
        QTest::newRow(qPrintable(DzRotationOrder(DzRotationOrder::RotOrder(order)).toString()))
            << order;
}

void TestQuillonRotOrderDlg::theOrderGivenIsChecked()
{
    QFETCH(int, order);
    const DzRotationOrder given = DzRotationOrder::RotOrder(order);
    QuillonRotOrderDlg dialog(nullptr, given);
    QVERIFY(radioButton(&dialog, qPrintable(given.toString()))->isChecked());
    QCOMPARE(dialog.rotationOrder(), order);
}

void TestQuillonRotOrderDlg::theNudgeIsShownAsItIsStored_data()
{
    QTest::addColumn<float>("stored");
    QTest::addColumn<QString>("text");
    QTest::newRow("half") << 0.5f << "0.5";
    QTest::newRow("tenth") << 0.1f << "0.1";
    QTest::newRow("whole") << 12.f << "12";
    QTest::newRow("tiny") << 0.00001f << "1e-05";
}

void TestQuillonRotOrderDlg::theNudgeIsShownAsItIsStored()
{
    QFETCH(float, stored);
    QFETCH(QString, text);
    pluginSettings().translationNudge = stored;
    QuillonRotOrderDlg dialog(nullptr, DzRotationOrder::XYZ);
    QCOMPARE(nudgeEdit(&dialog)->text(), text);
    QCOMPARE(dialog.nudgeCm(), stored);
}

void TestQuillonRotOrderDlg::aNudgeThatIsNoNumberIsAHalf_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("stepCm");
    QTest::newRow("empty") << "" << 0.5f;
    QTest::newRow("comma decimal") << "0,7" << 0.5f;
    QTest::newRow("thousands") << "1,000" << 0.5f;
    QTest::newRow("word") << "wide" << 0.5f;
    QTest::newRow("nan") << "nan" << 0.5f;
    QTest::newRow("inf") << "inf" << 0.5f;
    QTest::newRow("-inf") << "-inf" << 0.5f;
    QTest::newRow("beyond a float") << "1e39" << 0.5f;
    QTest::newRow("unit") << "2 cm" << 0.5f;
    QTest::newRow("wide digits") << QString(QChar(0xff12)) << 0.5f;
    QTest::newRow("point decimal") << "0.7" << 0.7f;
    QTest::newRow("exponent") << "1.5e-1" << 0.15f;
    QTest::newRow("blanks round it") << " 3 " << 3.f;
    QTest::newRow("zero") << "0" << 0.f;
    QTest::newRow("negative") << "-2" << -2.f;
}

void TestQuillonRotOrderDlg::aNudgeThatIsNoNumberIsAHalf()
{
    QFETCH(QString, text);
    QFETCH(float, stepCm);
    pluginSettings().translationNudge = 9;
    QuillonRotOrderDlg dialog(nullptr, DzRotationOrder::XYZ);
    nudgeEdit(&dialog)->setText(text);
    QCOMPARE(dialog.nudgeCm(), stepCm);
    QLocale::setDefault(QLocale(QLocale::German)); // a comma there
    QCOMPARE(dialog.nudgeCm(), stepCm);
    QLocale::setDefault(QLocale::c());
}

void TestQuillonRotOrderDlg::clicksAndKeysAreStored()
{
    HostFixture host;
    DialogAnswer answer([&host](QDialog* dialog) {
        QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(&host.window));
        QVERIFY(waitForWindowActive(dialog)); // or keys do not move the focus
        QVERIFY(radioButton(dialog, "No change")->hasFocus());
        QTest::mouseClick(
            radioButton(dialog, "Object center"), Qt::LeftButton, Qt::NoModifier, QPoint(6, 8));
        QTest::mouseClick(radioButton(dialog, "YZX"), Qt::LeftButton, Qt::NoModifier, QPoint(6, 8));
        QTest::keyClick(radioButton(dialog, "YZX"), Qt::Key_Down);
        QLineEdit* nudge = nudgeEdit(dialog);
        nudge->setFocus();
        nudge->selectAll();
        QTest::keyClicks(nudge, "1.25");
        QTest::keyClick(nudge, Qt::Key_Return);
    });
    DzRotationOrder order = DzRotationOrder::XYZ;
    QVERIFY(runRotationOrderDialog(&order));
    QCOMPARE(answer.shown, 1);
    QCOMPARE(order.toString(), QString("ZXY"));
    QCOMPARE(pluginSettings().propOrigin, 2);
    QCOMPARE(pluginSettings().translationNudge, 1.25f);
}

void TestQuillonRotOrderDlg::withoutAnOrderCheckedTheOrderStays()
{
    HostFixture host;
    DialogAnswer answer([](QDialog* dialog) {
        for (const char* label : {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"}) {
            radioButton(dialog, label)->setAutoExclusive(false);
            radioButton(dialog, label)->setChecked(false);
        }
        pushButton(dialog, "Accept")->click();
    });
    DzRotationOrder order = DzRotationOrder::ZXY;
    QVERIFY(runRotationOrderDialog(&order));
    QCOMPARE(order.order(), DzRotationOrder::ZXY);
}

// Counts repaints.
class Canvas : public QWidget {
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
    }
};

// Runs the dialog over a pane that is painted, and gives how often it was painted afterwards.
static int paintsAfter(const char* button)
{
    Canvas pane;
    enterPane(&pane);
    pane.show();
    if (!waitForWindowShown(&pane))
        return -1;
    DialogAnswer answer([&pane, button](QDialog* dialog) {
        QApplication::processEvents();
        pane.paints = 0;
        pushButton(dialog, button)->click();
    });
    DzRotationOrder order = DzRotationOrder::XYZ;
    runRotationOrderDialog(&order);
    QApplication::processEvents();
    leavePane(&pane);
    return pane.paints;
}

void TestQuillonRotOrderDlg::anAcceptedDialogRepaintsThePane()
{
    HostFixture host;
    QCOMPARE(paintsAfter("Accept"), 1);
    QCOMPARE(paintsAfter("Cancel"), 0);
}

void TestQuillonRotOrderDlg::aCancelChangesNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Cancel clicked") << false;
    QTest::newRow("Escape") << true;
}

void TestQuillonRotOrderDlg::aCancelChangesNothing()
{
    QFETCH(bool, byKey);
    HostFixture host;
    DialogAnswer answer([byKey](QDialog* dialog) {
        radioButton(dialog, "Object center")->click();
        radioButton(dialog, "ZYX")->click();
        nudgeEdit(dialog)->setText("7");
        if (byKey)
            QTest::keyClick(dialog, Qt::Key_Escape);
        else
            QTest::mouseClick(pushButton(dialog, "Cancel"), Qt::LeftButton);
    });
    pluginSettings().propOrigin = 1;
    DzRotationOrder order = DzRotationOrder::XZY;
    QVERIFY(!runRotationOrderDialog(&order));
    QCOMPARE(order.order(), DzRotationOrder::XZY);
    QCOMPARE(pluginSettings().propOrigin, 1);
    QCOMPARE(pluginSettings().translationNudge, 0.5f);
}

void TestQuillonRotOrderDlg::theSettingsFileIsNotWritten()
{
    HostFixture host;
    DialogAnswer answer([](QDialog* dialog) { pushButton(dialog, "Accept")->click(); });
    DzRotationOrder order = DzRotationOrder::XYZ;
    QVERIFY(runRotationOrderDialog(&order));
    QCOMPARE(filesIn(host.dataFolder()), QStringList());
}

void TestQuillonRotOrderDlg::withoutAWindowNothingIsShown()
{
    DialogAnswer answer([](QDialog* dialog) { dialog->accept(); });
    DzRotationOrder order = DzRotationOrder::XYZ;
    QVERIFY(!runRotationOrderDialog(&order));
    QCOMPARE(answer.shown, 0);
}

QUILLON_TEST(TestQuillonRotOrderDlg)
#include "test_quillonrotorderdlg.moc"
