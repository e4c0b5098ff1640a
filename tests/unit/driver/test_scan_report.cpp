#include "room_tests.h"

#include "host/driver/scan_report.h"

#include <QtTest>

using namespace quillon;

class TestScanReport : public QObject {
    Q_OBJECT
private slots:
    void phasesFollowTheTexts();
    void textsWithoutNumbersAreNoPhase();
    void tableTellsWhatIsLeftAfterEachPhase();
};

static ProgressEntry entry(const char* info, qint64 ms)
{
    ProgressEntry e = {DzProgressRecord(), ms};
    e.record.info = QString(info);
    return e;
}

static QList<ProgressEntry> someScan()
{
    return {entry("Scanning...", 100), entry("Finding... 1", 110), entry("Finding... 2", 120),
        entry("Finding... 2", 125), entry("Sorting (1)... 0 of 2", 130),
        entry("Sorting (1)... 0 of 2", 140), entry("Sorting (1)... 1 of 2", 150),
        entry("Cleaning up... 1 of 2", 1130)};
}

void TestScanReport::phasesFollowTheTexts()
{
    const QList<PhaseCount> phases = countPhases(someScan(), 2000);
    QCOMPARE(phases.size(), 3);
    QCOMPARE(phases.at(0).name, QString("Finding"));
    QCOMPARE(phases.at(1).name, QString("Sorting (1)"));
    QCOMPARE(phases.at(2).name, QString("Cleaning up"));
    for (const PhaseCount& phase : phases)
        QCOMPARE(phase.in, 2);
    QCOMPARE(phases.at(0).shown, 2); // each text once
    QCOMPARE(phases.at(1).shown, 2);
    QCOMPARE(phases.at(2).shown, 1);
    QCOMPARE(phases.at(0).seconds, 0.02);
    QCOMPARE(phases.at(1).seconds, 1.0);
    QCOMPARE(phases.at(2).seconds, 0.87);
}

void TestScanReport::textsWithoutNumbersAreNoPhase()
{
    QVERIFY(countPhases({}, 0).isEmpty());
    QVERIFY(countPhases({entry("Scanning...", 1), entry("", 2), entry("Wait 5", 3)}, 9).isEmpty());
}

void TestScanReport::tableTellsWhatIsLeftAfterEachPhase()
{
    QList<PhaseCount> phases
        = {{"Finding", 9, 9, 0.5}, {"Sorting", 9, 8, 1.25}, {"Ending", 7, 7, 0}};
    const QStringList lines = phaseTable(phases, 4);
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(0).simplified(), QString("phase in told out seconds"));
    QCOMPARE(lines.at(1).simplified(), QString("Finding 9 9 9 0.500"));
    QCOMPARE(lines.at(2).simplified(), QString("Sorting 9 8 7 1.250"));
    QCOMPARE(lines.at(3).simplified(), QString("Ending 7 7 4 0.000"));
    for (const QString& line : lines)
        QCOMPARE(line.size(), lines.at(0).size());
}

QUILLON_TEST_WITHOUT_APPLICATION(TestScanReport)
#include "test_scan_report.moc"
