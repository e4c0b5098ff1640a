#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/message_boxes.h"

#include <QtTest>

using namespace quillon;

// Every box in full, written down apart from the table of the plug-in.
struct ExpectedBox {
    Box box;
    QMessageBox::Icon icon;
    bool yesNo;
    bool hostParent;
    const char* title;
    const char* text;
};
static const ExpectedBox kExpected[] = {
    {Box::CrashWarning, QMessageBox::Warning, false, false, "Quillon plugin - Warning",
        "Something went wrong the last time the Quillon plugin was loaded\nand Daz Studio crashed. "
        "If the problem persists,\nremove the Quillon.dll file from the 'plugins' folder\nin the "
        "main Daz Studio folder installation directory"},
    {Box::NoFigure, QMessageBox::Warning, false, true, "Error",
        "Please select a Genesis 8 figure first."},
    {Box::InvalidSelection, QMessageBox::Critical, false, false, "Error", "Invalid selection"},
    {Box::ReplaceReference, QMessageBox::Question, true, false, "Quillon",
        "There is already a memorized reference pose. Do you want to replace it with the currently "
        "selected figure pose?"},
    {Box::PatchProducts, QMessageBox::Question, true, false, "Quillon",
        "Products by Brannoc Ltd will now be patched to the latest version.\nThis will overwrite "
        "the original files with new files.\nIf you need to revert back to the original version of "
        "a product after\nit is patched, you will need to install it again. Proceed?"},
    {Box::NothingToPatch, QMessageBox::Information, false, true, "Complete",
        "No products requiring a patch were found"},
    {Box::ProductsPatched, QMessageBox::Information, false, true, "Success",
        "Products patching succeessful!"},
    {Box::ScannerNeedsFigure, QMessageBox::Warning, false, true, "Error",
        "The scanner needs a Genesis 8 figure as a reference.\nPlease load and select a Genesis 8 "
        "figure and retry."},
    {Box::ScanPoses, QMessageBox::Question, true, false, "Quillon",
        "This procedure is only necessary once, before using the\n'Pose Finder' tool for the first "
        "time, or after you have installed\nnew pose products and you want them to be included "
        "when\nyou use the 'Pose Finder' tool. Proceed?"},
    {Box::FirstScan, QMessageBox::Question, true, false, "Quillon - Pose Finder Tool",
        "Because this is the first time you are using this tool,\ninizialization is needed. It may "
        "take some time, but\nit can be stopped and done later. Proceed?"},
    {Box::ScanDone, QMessageBox::Warning, false, true, "Info", "Success! Indexed pose files: 150"},
    {Box::ScanAborted, QMessageBox::Warning, false, true, "Info", "Scanning aborted"},
    {Box::NoContent, QMessageBox::Warning, false, true, "Error",
        "None of the content folders can be opened.\nIs a drive missing? Nothing was changed."},
    {Box::NoCustomFolder, QMessageBox::Warning, false, true, "Error",
        "Could not find Custom Pose Library folder."},
    {Box::DeletePose, QMessageBox::Question, true, false, "Quillon - Delete Custom Pose",
        "Pose named '150' will be permanently deleted. Are you sure?"},
};

class TestMessageBoxes : public QObject {
    Q_OBJECT

private slots:
    void everyBoxShowsItsTitleTextIconButtonsAndParent_data()
    {
        QTest::addColumn<int>("row");
        for (int i = 0; i < int(sizeof(kExpected) / sizeof(kExpected[0])); ++i)
            QTest::newRow(qPrintable(QString::fromLatin1("%1: %2").arg(i).arg(kExpected[i].title)))
                << i;
    }
    void everyBoxShowsItsTitleTextIconButtonsAndParent()
    {
        QFETCH(int, row);
        const ExpectedBox& expected = kExpected[row];
        HostFixture host;
        BoxAnswers answers(expected.yesNo ? QMessageBox::Yes : QMessageBox::Ok);
        QVERIFY(showBox(expected.box, "150"));
        QCOMPARE(answers.boxes.size(), 1);
        const SeenBox& seen = answers.boxes.first();
        QCOMPARE(seen.title, QString(expected.title));
        QCOMPARE(seen.text, QString(expected.text));
        QCOMPARE(seen.icon, expected.icon);
        QCOMPARE(int(seen.buttons),
            int(expected.yesNo ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok));
        QWidget* parent = expected.hostParent ? &host.window : nullptr;
        QVERIFY(seen.parent == parent);
        QVERIFY(seen.isModal);
    }

    void everyRowIsExpectedOnce()
    {
        for (int i = 0; i < int(sizeof(kExpected) / sizeof(kExpected[0])); ++i)
            QCOMPARE(int(kExpected[i].box), i);
        QCOMPARE(int(Box::DeletePose), int(sizeof(kExpected) / sizeof(kExpected[0])) - 1);
    }

    void onlyYesAndOkGoOn()
    {
        BoxAnswers answers(QMessageBox::No);
        QVERIFY(!showBox(Box::ScanPoses));
    }

    void namesAreShownAsTheyAre_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("markup") << "<b>bold</b>";
        QTest::newRow("a placeholder") << "%1 %2";
        QTest::newRow("quotes") << "it's \"mine\"";
    }
    void namesAreShownAsTheyAre()
    {
        QFETCH(QString, name);
        BoxAnswers answers(QMessageBox::No);
        showBox(Box::DeletePose, name);
        QCOMPARE(answers.boxes.first().text,
            QString("Pose named '") + name + "' will be permanently deleted. Are you sure?");
    }

    void withoutAHostThereIsNoParent()
    {
        BoxAnswers answers;
        showBox(Box::NoFigure);
        QVERIFY(!answers.boxes.first().parent);
    }

    void aboutNamesTheVersionAndTheMaker()
    {
        QVERIFY(aboutText("0.93").startsWith("Quillon v0.93\n\n"));
        QVERIFY(aboutText(QString()).startsWith("Quillon v\n\n"));
        QVERIFY(aboutText("0.93").contains("Brannoc Ltd"));
    }
};

QUILLON_TEST(TestMessageBoxes)
#include "test_message_boxes.moc"
