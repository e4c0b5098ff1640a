#include "room_tests.h"

#include "host/driver/dialog_fields.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QtTest>
#include <QVBoxLayout>

using namespace quillon;

// One of everything.
class Sample : public QDialog {
public:
    QCheckBox* check;
    QLineEdit *inGroup, *inForm;
    QRadioButton *first, *second;
    QComboBox* combo;
    QSpinBox* spin;

    Sample()
    {
        QVBoxLayout* all = new QVBoxLayout(this);
        check = new QCheckBox(" &Keep it && more ");
        all->addWidget(check);
        QGroupBox* group = new QGroupBox("Nudge");
        inGroup = new QLineEdit("0.5");
        (new QVBoxLayout(group))->addWidget(inGroup);
        all->addWidget(group);
        QGroupBox* order = new QGroupBox("&Order");
        QVBoxLayout* radios = new QVBoxLayout(order);
        first = new QRadioButton("XYZ");
        second = new QRadioButton("ZYX");
        radios->addWidget(first);
        radios->addWidget(second);
        first->setChecked(true);
        all->addWidget(order);
        QFormLayout* form = new QFormLayout;
        inForm = new QLineEdit("x");
        combo = new QComboBox;
        combo->addItems({"red", "green"});
        spin = new QSpinBox;
        spin->setMaximum(99);
        form->addRow("&Name", inForm);
        form->addRow("Colour", combo);
        form->addRow("Count", spin);
        all->addLayout(form);
        all->addWidget(new QPushButton("&Accept"));
        QPushButton* hidden = new QPushButton("Help");
        all->addWidget(hidden);
        hidden->hide();
    }
};

static QVariant valueOf(const QList<DialogField>& fields, const QString& name)
{
    for (const DialogField& field : fields)
        if (field.first == name)
            return field.second;
    return QVariant();
}

class TestDialogFields : public QObject {
    Q_OBJECT
private slots:
    void labelsLoseTheirMnemonics_data();
    void labelsLoseTheirMnemonics();
    void tellsWhatTheUserSees();
    void setsEachKindByItsName();
    void tellsEqualLabelsApartByTheirGroups();
    void switchesGroupsByTheirTitle();
    void refusesWhatIsNotThere();
    void findsButtonsInAnyCase();
};

void TestDialogFields::labelsLoseTheirMnemonics_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("plain");
    QTest::newRow("none") << "Yes"
                          << "Yes";
    QTest::newRow("first letter") << "&Yes"
                                  << "Yes";
    QTest::newRow("inside") << "E&xit now"
                            << "Exit now";
    QTest::newRow("doubled") << "A && B"
                             << "A & B";
    QTest::newRow("at the end") << "A&"
                                << "A&";
    QTest::newRow("empty") << ""
                           << "";
}

void TestDialogFields::labelsLoseTheirMnemonics()
{
    QFETCH(QString, label);
    QFETCH(QString, plain);
    QCOMPARE(plainLabel(label), plain);
}

void TestDialogFields::tellsWhatTheUserSees()
{
    Sample sample;
    sample.show(); // a spin box has no text before
    const QList<DialogField> fields = dialogFields(&sample);
    QCOMPARE(valueOf(fields, " Keep it & more "), QVariant(false));
    QCOMPARE(valueOf(fields, "Nudge"), QVariant("0.5"));
    QCOMPARE(valueOf(fields, "XYZ"), QVariant(true));
    QCOMPARE(valueOf(fields, "ZYX"), QVariant(false));
    QCOMPARE(valueOf(fields, "Order"), QVariant("XYZ"));
    QCOMPARE(valueOf(fields, "Name"), QVariant("x"));
    QCOMPARE(valueOf(fields, "Colour"), QVariant("red"));
    QCOMPARE(valueOf(fields, "Count"), QVariant("0"));
    QCOMPARE(valueOf(fields, "Order/XYZ"), QVariant(true));
    QCOMPARE(valueOf(fields, "Order/ZYX"), QVariant(false));
    QCOMPARE(fields.size(), 10);
    QCOMPARE(buttonLabels(&sample), QStringList {"Accept"});
}

void TestDialogFields::setsEachKindByItsName()
{
    Sample sample;
    QSignalSpy clicked(sample.check, SIGNAL(clicked()));
    QSignalSpy edited(sample.inGroup, SIGNAL(textEdited(QString)));
    QVERIFY(setDialogField(&sample, "Keep it & more", true));
    QVERIFY(setDialogField(&sample, " &Keep it && more ", true)); // set already
    QVERIFY(setDialogField(&sample, "Nudge", 1.25));
    QVERIFY(setDialogField(&sample, "Order", "ZYX"));
    QVERIFY(setDialogField(&sample, "Name", QString("a b")));
    QVERIFY(setDialogField(&sample, "Colour", "green"));
    QVERIFY(setDialogField(&sample, "Count", 42));
    QVERIFY(sample.check->isChecked());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(sample.inGroup->text(), QString("1.25"));
    QVERIFY(edited.count() > 0);
    QVERIFY(sample.second->isChecked());
    QCOMPARE(sample.inForm->text(), QString("a b"));
    QCOMPARE(sample.combo->currentText(), QString("green"));
    QCOMPARE(sample.spin->value(), 42);
    QVERIFY(setDialogField(&sample, "XYZ", true));
    QVERIFY(sample.first->isChecked());
}

// Two groups of the same two radio buttons, the second of which can be switched off.
class Twins : public QDialog {
public:
    QRadioButton* radios[2][2];
    QGroupBox* groups[2];

    Twins()
    {
        QVBoxLayout* all = new QVBoxLayout(this);
        for (int i = 0; i < 2; ++i) {
            groups[i] = new QGroupBox(i == 0 ? "&Left" : " Right ");
            all->addWidget(groups[i]);
            QVBoxLayout* layout = new QVBoxLayout(groups[i]);
            for (int k = 0; k < 2; ++k) {
                radios[i][k] = new QRadioButton(k == 0 ? "&A" : "B/C");
                layout->addWidget(radios[i][k]);
            }
        }
        groups[1]->setCheckable(true);
        groups[1]->setChecked(false);
    }
};

void TestDialogFields::tellsEqualLabelsApartByTheirGroups()
{
    Twins twins;
    QCOMPARE(valueOf(dialogFields(&twins), "Left"), QVariant(QString())); // none is chosen
    QVERIFY(setDialogField(&twins, "Left/B/C", true));
    QCOMPARE(valueOf(dialogFields(&twins), "Left"), QVariant("B/C"));
    QCOMPARE(valueOf(dialogFields(&twins), "Left/B/C"), QVariant(true));
    QCOMPARE(valueOf(dialogFields(&twins), "Right/B/C"), QVariant(false));
    QVERIFY(setDialogField(&twins, "&Left/&A", true));
    QVERIFY(twins.radios[0][0]->isChecked());
    QVERIFY(!setDialogField(&twins, "Middle/A", true));
}

void TestDialogFields::switchesGroupsByTheirTitle()
{
    Twins twins;
    QSignalSpy clicked(twins.groups[1], SIGNAL(clicked(bool)));
    QCOMPARE(valueOf(dialogFields(&twins), " Right "), QVariant(false));
    QVERIFY(setDialogField(&twins, "Right", true));
    QVERIFY(setDialogField(&twins, "Right", true)); // as it is
    QVERIFY(twins.groups[1]->isChecked());
    QCOMPARE(clicked.count(), 1);
    QVERIFY(setDialogField(&twins, "Right", "B/C"));
    QVERIFY(twins.radios[1][1]->isChecked());
    QCOMPARE(valueOf(dialogFields(&twins), " Right "), QVariant(true));
    QVERIFY(setDialogField(&twins, "Right", false));
    QVERIFY(!twins.groups[1]->isChecked());
    QVERIFY(!setDialogField(&twins, "Right/A", true)); // cannot be pressed now
    QVERIFY(!setDialogField(&twins, "Left", true)); // cannot be switched
    twins.groups[1]->setEnabled(false);
    QVERIFY(!setDialogField(&twins, "Right", true));
}

void TestDialogFields::refusesWhatIsNotThere()
{
    Sample sample;
    QVERIFY(!setDialogField(&sample, "Nothing", true));
    QVERIFY(!setDialogField(&sample, "Nothing", "text"));
    QVERIFY(!setDialogField(&sample, "Colour", "blue"));
    QVERIFY(!setDialogField(&sample, "Order", "XXX"));
    QVERIFY(!setDialogField(&sample, "XYZ", false)); // one of a group is always on
    QCOMPARE(sample.combo->currentText(), QString("red"));
}

void TestDialogFields::findsButtonsInAnyCase()
{
    QMessageBox box(QMessageBox::Question, "t", "x", QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(buttonLabels(&box).size(), 2);
    QCOMPARE(findButton(&box, "yes"), box.button(QMessageBox::Yes));
    QCOMPARE(findButton(&box, "&No"), box.button(QMessageBox::No));
    QVERIFY(!findButton(&box, "Maybe"));
}

QUILLON_TEST(TestDialogFields)
#include "test_dialog_fields.moc"
