// The settings dialog where a script of the host cannot reach: without a window, and the flags that
// it sets beside the settings. Its look and what its boxes store: tests/e2e/settings_dialog.js.
#include "frame_fixture.h"
#include "room_tests.h"

#include "finder/browse_session.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "pane/command_dispatch.h"
#include "pane/hover.h"
#include "pane/quillonsettingsdlg.h"

#include <QCheckBox>
#include <QDialog>
#include <QtTest>

using namespace quillon;

static const QSize kPane(512, 1024);
static const QPoint kSettingsButton(437, 623); // the last of the grid

// While it lives, counts the dialogs that show and closes them.
class DialogAnswers : public QObject {
public:
    explicit DialogAnswers(bool accept)
        : m_accept(accept)
    {
        qApp->installEventFilter(this);
    }
    int dialogs = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QDialog*>(watched)) {
            ++dialogs;
            QMetaObject::invokeMethod(
                watched, m_accept ? "accept" : "reject", Qt::QueuedConnection);
        }
        return false;
    }

private:
    bool m_accept;
};

class TestQuillonSettingsDlg : public QObject {
    Q_OBJECT

private:
    static QCheckBox* boxOf(const QuillonSettingsDlg& dialog, const char* words)
    {
        for (QCheckBox* box : dialog.findChildren<QCheckBox*>()) {
            if (box->text().contains(QLatin1String(words)))
                return box;
        }
        return nullptr;
    }

private slots:
    void init()
    {
        pluginSettings() = PluginSettings();
        browseSession() = BrowseSession();
        clearStatusMessage();
    }
    void cleanup()
    {
        locateDataFiles();
    }

    void withoutAMainWindowNothingIsShownOrSaved()
    {
        TempFolder home;
        DzAppSetup setup;
        setup.dataFolderPath = home.path("data");
        setup.tempPath = home.path("temp");
        const DzApp app(setup);
        QVERIFY(!app.getInterface());
        locateDataFiles();
        pluginSettings().allowFaceViolation = true; // an accepted dialog would drop it
        browseSession().tablesState = Applied;
        showStatusMessage("of an earlier command");
        const DialogAnswers answers(true);
        dispatchPress(kPane, kSettingsButton, LeftClick);
        QCOMPARE(answers.dialogs, 0);
        QVERIFY(pluginSettings().allowFaceViolation);
        QVERIFY(browseSession().tablesState == Applied);
        QVERIFY(!QFile::exists(dataFiles().settings));
        QVERIFY(statusMessage().isEmpty()); // the button clears it all the same
    }

    void withoutAnApplicationNothingIsShown()
    {
        QVERIFY(!dzApp);
        const DialogAnswers answers(true);
        QVERIFY(showSettings());
        QCOMPARE(answers.dialogs, 0);
    }

    void theFaceFieldShowsInTheSecondBoxAndOkTurnsItIntoPoseLimits()
    {
        const HostFixture host;
        pluginSettings().allowPoseViolation = false;
        pluginSettings().allowFaceViolation = true;
        const QuillonSettingsDlg dialog(nullptr);
        QVERIFY(!boxOf(dialog, "pose limits")->isChecked());
        QVERIFY(boxOf(dialog, "face expression")->isChecked());
        dialog.store();
        QVERIFY(!pluginSettings().allowFaceViolation);
        QVERIFY(pluginSettings().allowPoseViolation);
    }

    void theSecondBoxAloneLeavesPoseLimitsOn()
    {
        const HostFixture host;
        QVERIFY(pluginSettings().allowPoseViolation);
        const QuillonSettingsDlg dialog(nullptr);
        boxOf(dialog, "pose limits")->setChecked(false);
        boxOf(dialog, "face expression")->setChecked(true);
        dialog.store();
        QVERIFY(pluginSettings().allowPoseViolation);
        QVERIFY(!pluginSettings().allowFaceViolation);
        boxOf(dialog, "face expression")->setChecked(false); // what the first one alone does
        dialog.store();
        QVERIFY(!pluginSettings().allowPoseViolation);
    }

    // The Pose Finder sets itself up anew after the dialog, whatever was answered.
    void openingItInvalidatesTheTablesOfThePoseFinder_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::newRow("accepted") << true;
        QTest::newRow("cancelled") << false;
    }
    void openingItInvalidatesTheTablesOfThePoseFinder()
    {
        QFETCH(bool, accept);
        const HostFixture host;
        locateDataFiles();
        browseSession().tablesState = Applied;
        const DialogAnswers answers(accept);
        dispatchPress(kPane, kSettingsButton, LeftClick);
        QCOMPARE(answers.dialogs, 1);
        QVERIFY((browseSession().tablesState != Applied));
        QCOMPARE(QFile::exists(dataFiles().settings), accept);
    }
};

QUILLON_TEST(TestQuillonSettingsDlg)
#include "test_quillonsettingsdlg.moc"
