#include "frame_fixture.h"
#include "room_tests.h"

#include "pane/dzquillonpane.h"
#include "plugin/quillonaboutaction.h"

#include <QtTest>

class TestQuillonAboutAction : public QObject {
    Q_OBJECT

private slots:
    void isNamedAboutAndStartsEnabled()
    {
        const QuillonAboutAction action;
        QCOMPARE(action.text(), QString("About"));
        QVERIFY(action.getDescription().isEmpty());
        QVERIFY(action.isEnabled());
        QVERIFY(action.getDefaultMenuPath().isEmpty());
    }

    // The slots run from top to bottom: this one must come before any pane.
    void beforeAnyPaneThereIsNeitherVersionNorIcon()
    {
        QuillonAboutAction action;
        BoxAnswers answers;
        action.trigger();
        QCOMPARE(answers.boxes.size(), 1);
        const SeenBox& box = answers.boxes.first();
        QCOMPARE(box.title, QString("About Quillon plugin"));
        QVERIFY2(box.text.startsWith("Quillon v\n\n"), qPrintable(box.text));
        QVERIFY(!box.hasPixmap);
        QVERIFY(!box.parent && box.isModal);
        QCOMPARE(box.icon, QMessageBox::NoIcon);
    }

    void withAPaneTheVersionAndTheIconShow()
    {
        HostFixture host;
        DzQuillonPane pane;
        QuillonAboutAction action;
        BoxAnswers answers;
        action.trigger();
        QVERIFY2(answers.boxes.first().text.startsWith("Quillon v0.93\n\n"),
            qPrintable(answers.boxes.first().text));
        QVERIFY(answers.boxes.first().hasPixmap);
    }

    void bothOutliveThePane()
    {
        QuillonAboutAction action;
        BoxAnswers answers;
        action.trigger();
        QVERIFY(answers.boxes.first().text.startsWith("Quillon v0.93\n\n"));
        QVERIFY(answers.boxes.first().hasPixmap);
    }
};

QUILLON_TEST(TestQuillonAboutAction)
#include "test_quillonaboutaction.moc"
