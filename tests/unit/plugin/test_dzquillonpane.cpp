#include "frame_fixture.h"
#include "full_pipe.h"
#include "room_tests.h"

#include "finder/browse_session.h"
#include "finder/pose_browser.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "ground/backup_folder.h"
#include "ground/data_folder.h"
#include "ground/file_lock.h"
#include "ground/live_panes.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "ground/version_text.h"
#include "pane/artwork.h"
#include "pane/dzquillonpane.h"
#include "pane/info_banner.h"
#include "pane/page_state.h"
#include "plugin/dzquillonpaneaction.h"
#include "plugin/quillonaboutaction.h"
#include "posefile/pose_text.h"
#include "services/update_notice.h"

#include "dzactionmgr.h"

#include <QTimer>
#include <QtTest>

#include <sys/inotify.h>
#include <unistd.h>

#include <cmath>

using namespace quillon;

// What happens to the files of a folder while it lives, in order.
class FolderWatch {
public:
    explicit FolderWatch(const QString& folder)
        : m_watch(inotify_init1(IN_NONBLOCK))
    {
        inotify_add_watch(m_watch, QFile::encodeName(folder).constData(), IN_OPEN | IN_DELETE);
    }
    ~FolderWatch()
    {
        close(m_watch);
    }
    // "opens ranks", "deletes crashed": without what follows the stem, but for the lock's ending.
    QStringList events() const
    {
        QStringList seen;
        alignas(inotify_event) char buffer[4096];
        for (ssize_t size; (size = read(m_watch, buffer, sizeof buffer)) > 0;)
            for (const char* at = buffer; at < buffer + size;) {
                const inotify_event* event = reinterpret_cast<const inotify_event*>(at);
                if (event->len > 0)
                    seen << QLatin1String(event->mask & IN_OPEN ? "opens " : "deletes ")
                            + stemOf(QFile::decodeName(event->name));
                at += sizeof(inotify_event) + event->len;
            }
        return seen;
    }

private:
    Q_DISABLE_COPY(FolderWatch)
    static QString stemOf(const QString& name)
    {
        const QString stem = name.section('_', 0, 0);
        return name.endsWith(".lock") ? stem + ".lock" : stem;
    }
    int m_watch;
};

// One favourite pose.
static const QByteArray kRanks("\1\0\0\0\1\0\0\0\1\0\0\0\x44\x33\x22\x11", 16);

class TestDzQuillonPane : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> m_host;
    DzAction* m_about = nullptr;
    DzAction* m_paneAction = nullptr;

    QByteArray settingsWithPose(qint32 pose)
    {
        pluginSettings() = PluginSettings();
        pluginSettings().currentPose = pose;
        locateDataFiles();
        return saveSettings() ? fileBytes(dataFiles().settings) : QByteArray();
    }

private slots:
    void init()
    {
        m_host.reset(new HostFixture);
        DzActionMgr* actions = m_host->window.getActionMgr();
        actions->registerAction(m_about = new QuillonAboutAction);
        actions->registerAction(m_paneAction = new DzQuillonPaneAction);
        m_host->window.show();
    }
    void cleanup()
    {
        m_host.reset();
        QVERIFY(!currentPane());
    }

    // ---- construction ------------------------------------------------------------------------

    void hasItsLabelAndTracksTheMouse()
    {
        const DzQuillonPane pane;
        QCOMPARE(pane.getLabel(), QString("Quillon"));
        QVERIFY(pane.hasMouseTracking());
        QVERIFY(currentPane() == &pane);
    }

    // Seen from the host calls that construction makes: what is there at each of them. M: the crash
    // marker is on disk; T: the timers; P: the pictures; S: the stores; L: the settings are loaded.
    void stepsComeInOrder()
    {
        static QStringList seen;
        struct Hook {
            static bool note(const char* name, const void*)
            {
                QString there = QLatin1String(name);
                there += QLatin1Char(' ');
                if (QFile::exists(dataFiles().crashMarker))
                    there += QLatin1Char('M');
                if (paneTimers().status)
                    there += QLatin1Char('T');
                if (!picture(Picture::MainPage).isNull())
                    there += QLatin1Char('P');
                if (readBuffer())
                    there += QLatin1Char('S');
                if (pluginSettings().currentRank == 2)
                    there += QLatin1Char('L');
                seen.append(there);
                return false;
            }
        };
        seen.clear();
        locateDataFiles();
        pluginSettings().currentRank = 2;
        QVERIFY(saveSettings());
        dzHostCallHook = Hook::note;
        const DzQuillonPane pane;
        dzHostCallHook = nullptr;
        const char* const expected
            = "getDataFolderPath |getTempPath |getTempPath |" // files, what a swap left
              "getBoolValue M|" // docked
              "getInterface MT|getContentMgr MT|getActionMgr MT|"
              "findAction MTP|getTempPath MTP|setIconFile MTP|" // pane action
              "findAction MTPS"; // About
        QCOMPARE(seen, QString(expected).split('|'));
        QCOMPARE(pluginSettings().currentRank, qint32(2));
        QVERIFY(!QFile::exists(dataFiles().crashMarker));
    }

    void posesOfAnotherHostsSwapStay()
    {
        const QString written = dzApp->getTempPath() + QLatin1String("/qlntemp_0DE54EF1.duf");
        writeFile(written, "swapped just now");
        const FileLock others(written + QLatin1String(".lock"), 0);
        const DzQuillonPane pane;
        QVERIFY(QFile::exists(written));
    }

    void posesThatASwapLeftAreTidied()
    {
        const char* const left[]
            = {"/qlntemp_0DE54EF1.duf", "/qlntemp_0DE54EF2.duf", "/qlntemp_0DE54EF1.duf.lock"};
        for (const char* name : left)
            writeFile(dzApp->getTempPath() + QLatin1String(name), "left");
        const DzQuillonPane pane;
        for (const char* name : left)
            QVERIFY(!QFile::exists(dzApp->getTempPath() + QLatin1String(name)));
    }

    // A crash of any reader is found out by the next start.
    void dataAreReadInOrderAndTheMarkerGoesLast()
    {
        locateDataFiles();
        writeFile(dataFiles().settings, "any");
        writeFile(dataFiles().ranks, "any");
        writeFile(dataFiles().poseIndex, "any");
        const FolderWatch watch(m_host->dataFolder());
        const DzQuillonPane pane;
        QCOMPARE(watch.events(),
            QStringList() << "opens crashed.lock"
                          << "opens crashed"
                          << "opens settings"
                          << "opens ranks"
                          << "opens poseIndex"
                          << "deletes crashed"
                          << "deletes crashed.lock");
    }

    void migratesBeforeItLooksForTheMarker()
    {
        writeFile(m_host->dataFolder() + "crashed.dat", QByteArray("\x4d\0\0\0", 4));
        writeFile(m_host->dataFolder() + "settings.dat", "any");
        BoxAnswers answers;
        DzQuillonPane pane;
        QCOMPARE(answers.boxes.size(), 1);
        QVERIFY(filesIn(m_host->dataFolder()).isEmpty());
    }

    void afterACrashItWarnsOnceAndTheNextStartIsClean()
    {
        settingsWithPose(5);
        writeFile(dataFiles().crashMarker, QByteArray("\x4d\0\0\0", 4));
        BoxAnswers answers;
        {
            const DzQuillonPane pane;
            QCOMPARE(answers.boxes.size(), 1);
            QVERIFY(!QFile::exists(dataFiles().crashMarker));
            QCOMPARE(pluginSettings().currentRank, qint32(0));
        }
        const DzQuillonPane pane;
        QCOMPARE(answers.boxes.size(), 1);
    }

    // What is there and cannot be read is something else than what is not there.
    void whatCannotBeReadIsToldInTheLog_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("settings") << "settings";
        QTest::newRow("ranks") << "ranks";
        QTest::newRow("pose index") << "poseIndex";
        QTest::newRow("none") << "other";
    }
    void whatCannotBeReadIsToldInTheLog()
    {
        QFETCH(QString, name);
        locateDataFiles();
        const QString path = dataFiles().settings.section('/', 0, -2) + '/' + name
            + dataFiles().settings.section('/', -1).mid(8);
        QVERIFY(QDir().mkpath(path + "/in the way"));
        {
            const DzQuillonPane pane;
            const QStringList told = dzApp->getLogLines().filter("cannot read");
            QCOMPARE(told.size(), name == "other" ? 0 : 1);
            QVERIFY(told.isEmpty() || told.first().endsWith(path));
        }
        QVERIFY(QFileInfo(path + "/in the way").isDir());
    }

    void aFileOfAnotherVersionIsCopiedAndTold_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("settings") << "settings";
        QTest::newRow("ranks") << "ranks";
    }
    void aFileOfAnotherVersionIsCopiedAndTold()
    {
        QFETCH(QString, name);
        locateDataFiles();
        const QString path = name == "ranks" ? dataFiles().ranks : dataFiles().settings;
        const QByteArray tomorrows("\x9\0\0\0\1\0\0\0whatever", 16);
        writeFile(path, tomorrows);
        for (int session = 0; session < 2; ++session) // of the second one there is nothing to tell
            const DzQuillonPane pane;
        const QStringList copies = filesIn(backupFolder());
        QCOMPARE(copies.size(), 1);
        QCOMPARE(fileBytes(backupFolder() + copies.first()), tomorrows);
        QVERIFY(fileBytes(path) != tomorrows);
        const QStringList told = dzApp->getLogLines().filter("another version");
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.first().contains(path), qPrintable(told.first()));
    }

    void aPipeInPlaceOfOneOfItsFilesIsLeftAlone_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray one("\1\0\0\0\1\0\0\0\1\0\0\0", 12);
        QTest::newRow("settings") << "settings" << QByteArray("\1\0\0\0", 4) + QByteArray(54, '\1');
        QTest::newRow("crash marker") << "crashed" << QByteArray("\x4d\0\0\0", 4);
        QTest::newRow("ranks") << "ranks" << one + "abcd";
        QTest::newRow("pose index") << "poseIndex" << one + QByteArray(170, 'a');
        QTest::newRow("picture of a new version") << "newversion" << QByteArray("\x89PNG");
        QTest::newRow("icon") << "icon" << QByteArray("\x89PNG");
    }
    void aPipeInPlaceOfOneOfItsFilesIsLeftAlone()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        locateDataFiles();
        QMap<QString, QString> paths;
        paths["settings"] = dataFiles().settings;
        paths["crashed"] = dataFiles().crashMarker;
        paths["ranks"] = dataFiles().ranks;
        paths["poseIndex"] = dataFiles().poseIndex;
        paths["newversion"] = updatePicturePath();
        paths["icon"] = m_host->home.path("temp/icon.png");
        const FullPipe pipe(paths.value(name), bytes);
        BoxAnswers answers;
        {
            const DzQuillonPane pane;
            QVERIFY(updatePicture().isNull());
            QCOMPARE(rankRecordCount(), 0);
            QCOMPARE(poseCount(), 0);
            QCOMPARE(pluginSettings().currentRank, PluginSettings().currentRank);
        }
        QVERIFY(answers.boxes.isEmpty());
        QVERIFY(pipe.isUntouched());
    }

    void writesTheIconForThePaneAction()
    {
        const DzQuillonPane pane;
        const QString path = m_host->home.path("temp/icon.png");
        QVERIFY(fileBytes(path).startsWith("\x89PNG"));
        QCOMPARE(m_paneAction->getIconFile(), path);
        QVERIFY(!m_paneAction->icon().isNull());
    }

    void enablesTheAboutAction()
    {
        m_about->setEnabled(false);
        const DzQuillonPane pane;
        QVERIFY(m_about->isEnabled());
    }

    void buildsWithoutActions()
    {
        delete m_about;
        delete m_paneAction;
        const DzQuillonPane pane;
        QVERIFY(!QFile::exists(m_host->home.path("temp/icon.png")));
    }

    void decodesPicturesAndBuildsTheVersionText()
    {
        const DzQuillonPane pane;
        QVERIFY(!picture(Picture::MainPage).isNull());
        QVERIFY(!picture(Picture::PickerPage).isNull());
        QVERIFY(!picture(Picture::BrowsingPage).isNull());
        QVERIFY(!picture(Picture::Icon).isNull());
        QCOMPARE(versionText(), QString("0.93"));
    }

    void makesTheStoresAndFreesThem()
    {
        {
            const DzQuillonPane pane;
            QCOMPARE(poseCount(), 0);
            QVERIFY(!poseEntry(0));
            QCOMPARE(rankRecordCount(), 0);
            QVERIFY(readBuffer());
            memset(readBuffer(), 1, kReadBufferBytes);
            QCOMPARE(hostManagers().content, dzApp->getContentMgr());
            QCOMPARE(hostManagers().actions, m_host->window.getActionMgr());
        }
        QVERIFY(!readBuffer());
        QVERIFY(!hostManagers().content && !hostManagers().actions);
        QVERIFY(picture(Picture::MainPage).isNull());
    }

    void setsUpTheConstantOrientations()
    {
        const DzQuillonPane pane;
        const double half = std::sqrt(0.5); // of any two equal parts made unit length
        const double expected[8][4]
            = {{0, 0, 0, 1}, {0, 0, 0, 1}, {0, 0, 0, 1}, {0, -half, -half, 0}, {-half, 0, 0, half},
                {-0.5, 0.5, 0.5, 0.5}, {-0.5, -0.5, -0.5, 0.5}, {0, 0, -1, 0}};
        for (int type = 0; type < 8; ++type) {
            const DzQuat q = poseTypeBase(type);
            QVERIFY(std::fabs(q.m_x - expected[type][0]) < 1e-12); // rounding of doubles
            QVERIFY(std::fabs(q.m_y - expected[type][1]) < 1e-12);
            QVERIFY(std::fabs(q.m_z - expected[type][2]) < 1e-12);
            QVERIFY(std::fabs(q.m_w - expected[type][3]) < 1e-12);
        }
    }

    void hasTwoSingleShotTimersAndStartsTheBanner()
    {
        const DzQuillonPane pane;
        const QList<QTimer*> timers = pane.findChildren<QTimer*>();
        QCOMPARE(timers.size(), 2);
        QVERIFY(timers.at(0) == paneTimers().status && timers.at(1) == paneTimers().banner);
        QVERIFY(timers.at(0)->isSingleShot() && timers.at(1)->isSingleShot());
        QVERIFY(!timers.at(0)->isActive());
        QVERIFY(timers.at(1)->isActive());
        QCOMPARE(timers.at(1)->interval(), 30000);
    }

    void mutedNoticesStartNoBanner()
    {
        pluginSettings() = PluginSettings();
        pluginSettings().muteUpdateNotice = true;
        locateDataFiles();
        QVERIFY(saveSettings());
        const DzQuillonPane pane;
        QVERIFY(pluginSettings().muteUpdateNotice);
        QVERIFY(!paneTimers().banner->isActive());
    }

    void positionOutsideTheIndexIsForgotten()
    {
        settingsWithPose(9999);
        const DzQuillonPane pane;
        QCOMPARE(pluginSettings().currentPose, qint32(-1));
    }

    void staticsStartAtTheirDefaultsInEveryRun()
    {
        {
            const DzQuillonPane pane;
            pluginSettings().currentRank = 2;
            pluginSettings().similarity[0] = false;
            pageState().picker = true;
            browseSession().type = 3;
            browseSession().tablesState = Applied;
            browseSession().matchCount = 7;
            showStatusMessage("left over");
            setBusy(true);
            bannerTimerFired();
        }
        writeFile(dataFiles().crashMarker, QByteArray("\x4d\0\0\0", 4)); // drops the settings saved
        BoxAnswers answers;
        const DzQuillonPane pane;
        QCOMPARE(pluginSettings().currentRank, qint32(0));
        QVERIFY(pluginSettings().similarity[0]);
        QVERIFY(!pageState().picker && (browseSession().tablesState != Applied));
        QCOMPARE(browseSession().type, -1);
        QCOMPARE(browseSession().matchCount, 0);
        QCOMPARE(browseSession().matchOrdinal, -1);
        QVERIFY(!isStatusMessageShown() && statusMessage().isEmpty());
        QVERIFY(!isBusy() && !isBannerVisible());
    }

    void settingsSurviveARestart()
    {
        {
            const DzQuillonPane pane;
            pluginSettings().currentRank = 2;
            pluginSettings().partLocks[3] = true;
        }
        pluginSettings() = PluginSettings();
        const DzQuillonPane pane;
        QCOMPARE(pluginSettings().currentRank, qint32(2));
        QVERIFY(pluginSettings().partLocks[3]);
    }

    void ranksSurviveARestart()
    {
        locateDataFiles();
        writeFile(dataFiles().ranks, kRanks);
        {
            const DzQuillonPane pane;
            QCOMPARE(rankRecordCount(), 1);
            QVERIFY(QFile::remove(dataFiles().ranks)); // so that it is the end that writes it
        }
        QCOMPARE(fileBytes(dataFiles().ranks), kRanks);
    }

    void worksWithoutAnyApplication()
    {
        m_host.reset();
        QVERIFY(!dzApp);
        {
            DzQuillonPane pane;
            pane.show();
            QVERIFY(dataFiles().folder.isEmpty());
        }
        init();
    }

    void aFileInPlaceOfTheDataFolderIsSilent()
    {
        writeFile(m_host->home.path("data"), "in the way");
        BoxAnswers answers;
        {
            const DzQuillonPane pane;
        }
        QCOMPARE(answers.boxes.size(), 0);
        QCOMPARE(fileBytes(m_host->home.path("data")), QByteArray("in the way"));
    }

    // ---- several panes -----------------------------------------------------------------------

    void aSecondPaneSharesTheState()
    {
        DzQuillonPane first;
        pluginSettings().currentRank = 2; // not saved yet
        pageState().picker = true;
        char* buffer = readBuffer();
        const QTimer* timer = paneTimers().status;
        {
            HostCallLog calls;
            const DzQuillonPane second;
            QVERIFY(HostCallLog::names().isEmpty()); // nothing is built twice
            QVERIFY(currentPane() == &second);
            QVERIFY(second.hasMouseTracking());
        }
        QVERIFY(currentPane() == &first);
        QCOMPARE(pluginSettings().currentRank, qint32(2));
        QVERIFY(pageState().picker);
        QVERIFY(readBuffer() == buffer);
        QVERIFY(paneTimers().status == timer);
        QVERIFY(!QFile::exists(dataFiles().settings));
    }

    void theTimersLiveOnWhenTheirPaneGoesFirst()
    {
        std::unique_ptr<DzQuillonPane> first(new DzQuillonPane);
        DzQuillonPane second;
        showStatusMessage("text");
        const int timerId = paneTimers().status->timerId();
        first.reset();
        QVERIFY(currentPane() == &second);
        QCOMPARE(paneTimers().status->timerId(), timerId); // still counting
        QVERIFY(paneTimers().status->parent() == &second);
        QVERIFY(readBuffer());
        paneTimers().status->start(0);
        QApplication::processEvents();
        QVERIFY(!isStatusMessageShown());
    }

    void theLastPaneSaves()
    {
        std::unique_ptr<DzQuillonPane> first(new DzQuillonPane);
        std::unique_ptr<DzQuillonPane> second(new DzQuillonPane);
        first.reset();
        QVERIFY(!QFile::exists(dataFiles().settings));
        QVERIFY(!QFile::exists(dataFiles().ranks));
        second.reset();
        QVERIFY(QFile::exists(dataFiles().settings));
        QVERIFY(QFile::exists(dataFiles().ranks));
        QVERIFY(!paneTimers().status && !paneTimers().banner);
    }

    // ---- timers ------------------------------------------------------------------------------

    void statusTimerHidesTheMessage()
    {
        const DzQuillonPane pane;
        showStatusMessage("text");
        paneTimers().status->start(0);
        QApplication::processEvents();
        QVERIFY(!isStatusMessageShown());
    }

    void bannerComesAndGoes()
    {
        const DzQuillonPane pane;
        paneTimers().banner->start(0);
        QApplication::processEvents();
        QVERIFY(isBannerVisible());
        QVERIFY(!paneTimers().banner->isActive()); // a pointer move starts it
        paneTimers().banner->start(0);
        QApplication::processEvents();
        QVERIFY(!isBannerVisible());
        QVERIFY(paneTimers().banner->isActive());
        QCOMPARE(paneTimers().banner->interval(), 1200000);
    }

    // ---- events ------------------------------------------------------------------------------

    void eventFilterPassesEverythingOn()
    {
        DzQuillonPane pane;
        QEvent event(QEvent::KeyPress);
        QVERIFY(!pane.eventFilter(&pane, &event));
    }

    void takesNoKeyFromTheHost()
    {
        const DzQuillonPane pane;
        QCOMPARE(pane.focusPolicy(), Qt::NoFocus);
    }
};

QUILLON_TEST(TestDzQuillonPane)
#include "test_dzquillonpane.moc"
