#include "room_tests.h"

#include "host/driver/pose_account.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace quillon;

// Where the presets of a scan went.
class TestPoseAccount : public QObject {
    Q_OBJECT
private slots:
    void reasonsComeToAllFiles();
    void otherPhasesHaveNoAccount();
    void copiesAreCountedByTheirKeys();
};

static QList<PhaseCount> scan()
{
    return {{"Scanning pose files", 289, 289, 0}, {"Identifying pose files", 289, 289, 0},
        {"Optimizing pose index (1)", 289, 289, 0}, {"Optimizing pose index (2)", 289, 289, 0},
        {"Ignoring duplicate poses", 283, 283, 0}, {"Indexing poses", 283, 277, 0},
        {"Skipping mirrored poses", 283, 283, 0}, {"Skipping similar poses", 283, 283, 0},
        {"Cleaning up", 283, 283, 0}};
}

void TestPoseAccount::reasonsComeToAllFiles()
{
    const QStringList lines = accountLines(scan(), 197, {297, 12});
    QList<int> counts;
    for (const QString& line : lines)
        counts << line.trimmed().section(' ', 0, 0).toInt();
    QCOMPARE(counts, QList<int>({297, -8, 289, -6, -6, -12, -68, 197}));
    QCOMPARE(counts[0] + counts[1], counts[2]);
    QCOMPARE(counts[2] + counts[3] + counts[4] + counts[5] + counts[6], counts[7]);
    QVERIFY(lines[6].contains("mirrored or similar"));
    // More copies than were left out: some of them had gone for another reason.
    QVERIFY(accountLines(scan(), 270, {297, 12})[5].contains("-7 "));
}

void TestPoseAccount::otherPhasesHaveNoAccount()
{
    QVERIFY(accountLines({{"Something else", 3, 3, 0}}, 1, {3, 0}).isEmpty());
}

static void writePose(const QString& path, int bones, int degrees)
{
    QDir().mkpath(QFileInfo(path).path());
    QStringList entries;
    for (int i = 0; i < bones; ++i)
        entries << QString("{ \"url\" : \"name://@selection/bone%1:?rotation/x/value\", \"keys\" : "
                           "[ [ 0, %2 ] ] }")
                       .arg(i)
                       .arg(degrees);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QString("{ \"asset_info\" : { \"type\" : \"preset_pose\" }, \"scene\" : { "
                       "\"animations\" : [ %1 ] } }")
                   .arg(entries.join(", "))
                   .toUtf8());
}

void TestPoseAccount::copiesAreCountedByTheirKeys()
{
    QTemporaryDir dir;
    writePose(dir.path() + "/a/one.duf", 170, 20);
    writePose(dir.path() + "/b/same.duf", 170, 20);
    writePose(dir.path() + "/b/again.duf", 170, 20);
    writePose(dir.path() + "/b/other.duf", 170, 21);
    writePose(dir.path() + "/b/hand.duf", 20, 5);
    writePose(dir.path() + "/b/hand again.duf", 20, 5); // no whole body: left out for that
    QFile broken(dir.path() + "/b/broken.duf");
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.close();
    const PresetCounts counts = countPresets({dir.path()});
    QCOMPARE(counts.files, 7);
    QCOMPARE(counts.copies, 2);
}

QUILLON_TEST(TestPoseAccount)
#include "test_pose_account.moc"
