// What becomes of a save that failed: a line of the host's log, and a message.
#include "frame_fixture.h"
#include "room_tests.h"

#include "ground/data_folder.h"
#include "ground/save_result.h"
#include "ground/status_message.h"

#include <QtTest>

using namespace quillon;

class TestSaveResult : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        clearStatusMessage();
    }

    void theLogTellsWhereNothingCouldBeWritten()
    {
        HostFixture host;
        locateDataFiles();
        const int before = dzApp->getLogLines().size();
        logSaveResult(true);
        QCOMPARE(dzApp->getLogLines().size(), before);
        logSaveResult(false);
        QCOMPARE(dzApp->getLogLines().mid(before),
            QStringList("Quillon: a file could not be written in " + dataFiles().folder));
        QCOMPARE(statusMessage(), QString());
    }

    void aCommandsFailureIsLoggedAndShown()
    {
        HostFixture host;
        locateDataFiles();
        const int before = dzApp->getLogLines().size();
        noteSaveResult(true);
        QCOMPARE(dzApp->getLogLines().size(), before);
        QCOMPARE(statusMessage(), QString());
        noteSaveResult(false);
        QCOMPARE(dzApp->getLogLines().size(), before + 1);
        QVERIFY2(statusMessage().startsWith("ERROR"), qPrintable(statusMessage()));
    }

    void withoutAnApplicationItIsShownOnly()
    {
        noteSaveResult(false);
        QVERIFY2(statusMessage().startsWith("ERROR"), qPrintable(statusMessage()));
    }
};

QUILLON_TEST(TestSaveResult)
#include "test_save_result.moc"
