// Ranks of poses and their file.
#include "finder_fixture.h"
#include "room_tests.h"

#include "ground/backup_folder.h"
#include "ground/dat_file.h"
#include "ground/file_lock.h"
#include "ground/status_message.h"
#include "reference/finder_reference.h"

#include <QDateTime>

using namespace quillon;

class TestPoseRanks : public QObject {
    Q_OBJECT
private slots:
    // looking up
    void anUnrankedPoseHasNoRecord();
    void twinsShareOneRank();
    void aCustomPoseHasItsOwnRankWhateverTheTable();
    void onlyTheFirstRecordOfAKeyIsKept();
    void ranksEqualTheLiteralForm();

    // giving
    void aRankIsWrittenAtOnce();
    void unrankingRemovesTheRecord();
    void removingKeepsTheOrderOfTheOthers();
    void aLockedPartRefuses();
    void customPosesCannotBeRanked();
    void withoutACurrentPoseNothingHappens();
    void ranksThatAreNoneAreRefused();
    void aFullTableTakesNoNewRank();

    // pruning
    void pruningDropsPosesThatAreGone();
    void pruningNothingIsFalse();

    // the file
    void theLayoutIsFixed();
    void writtenReadAndWrittenAgainIsIdentical();
    void recordsOfOtherRanksAreNotKept();
    void anotherVersionChangesNothing();
    void aMissingFileChangesNothing();
    void aFileCutShortGivesItsWholeRecords();
    void damagedCountsAreSurvived_data();
    void damagedCountsAreSurvived();
    void repeatedKeysFillNoTable();
    void readingEndsWhenTheTableIsFull();
    void aFileOfNothingButOtherRanksIsReadToALimit();
    void withoutADataFolderNothingIsWritten();

    // two hosts
    void mergingEqualsTheLiteralForm();
    void aMergedTableHasNoMoreThanItsCapacity();
    void ranksOfTheOtherHostStayAndShow();
    void theOthersUnrankingHolds();
    void ofOnePoseTheLaterRankHolds();
    void aFileThatIsGoneIsWrittenWhole();
    void aFileThatCannotBeReadIsNotReplaced();
    void aFileOfAnotherVersionIsCopiedFirst();
    void aHostThatSavesMakesTheOtherWait();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

struct RankFixture : StoreFixture {
    TempFolder home;
    DzApp app;
    RankFixture()
        : app(poseTestSetup(home.path()))
    {
        locateDataFiles();
        clearStatusMessage();
    }
    QByteArray bytes() const
    {
        return fileBytes(dataFiles().ranks);
    }
    bool readBytes(const QByteArray& bytes) const
    {
        writeFile(dataFiles().ranks, bytes);
        return readRanks();
    }
    void rank(int entry, int rank)
    {
        pluginSettings().currentPose = entry;
        setCurrentRank(rank);
    }
};

static QByteArray numbers(const QList<quint32>& values)
{
    QByteArray bytes;
    for (const quint32 each : values)
        bytes.append(reinterpret_cast<const char*>(&each), 4);
    return bytes;
}

// ---- looking up

void TestPoseRanks::anUnrankedPoseHasNoRecord()
{
    RankFixture f;
    const int entry = addEntry(s("/a.duf"), 1);
    QCOMPARE(rankOf(entry), int(Unranked));
    QCOMPARE(rankRecordCount(), 0);
    QCOMPARE(rankOf(-1), int(Unranked));
    QCOMPARE(rankOf(1), int(Unranked));
}

void TestPoseRanks::twinsShareOneRank()
{
    RankFixture f;
    const int a = addEntry(s("/a.duf"), 7), b = addEntry(s("/b.duf"), 7);
    const int other = addEntry(s("/c.duf"), 8);
    f.rank(a, Favorite);
    QCOMPARE(rankOf(b), int(Favorite));
    QCOMPARE(rankOf(other), int(Unranked));
    QCOMPARE(rankRecordCount(), 1);
}

void TestPoseRanks::aCustomPoseHasItsOwnRankWhateverTheTable()
{
    RankFixture f;
    const int plain = addEntry(s("/a.duf"), 7);
    const int custom = addEntry(s("/c/data/Brannoc/Quillon/custom/a.duf"), 7);
    const int otherCase = addEntry(s("/c/data/brannoc/Quillon/custom/a.duf"), 7);
    f.rank(plain, Hidden);
    QCOMPARE(rankOf(custom), int(CustomLibraryPose));
    QCOMPARE(rankOf(otherCase), int(Hidden));
}

void TestPoseRanks::onlyTheFirstRecordOfAKeyIsKept()
{
    RankFixture f;
    const int entry = addEntry(s("/a.duf"), 7);
    f.readBytes(numbers(QList<quint32>() << 1 << 3 << 2 << 7 << 1 << 7 << 1 << 9));
    QCOMPARE(rankRecordCount(), 2);
    QCOMPARE(rankOf(entry), int(Hidden));
    f.rank(entry, Unranked); // no second one shows
    QCOMPARE(rankOf(entry), int(Unranked));
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 1 << 9));
}

void TestPoseRanks::ranksEqualTheLiteralForm()
{
    RankFixture f;
    Random random(3);
    for (int n = 0; n < 300; ++n)
        addEntry(n % 10 ? s("/a.duf") : s("/data/Brannoc/Quillon/custom/a.duf"),
            quint32(random.below(200)));
    std::vector<RankRecord> records;
    QList<quint32> file = QList<quint32>() << 1 << 400;
    for (int n = 0; n < 400; ++n) {
        const RankRecord record = {quint32(random.below(250)), 1 + random.below(2)};
        records.push_back(record);
        file << quint32(record.rank) << record.key;
    }
    QVERIFY(f.readBytes(numbers(file)));
    for (int entry = 0; entry < poseCount(); ++entry)
        QCOMPARE(rankOf(entry), reference::rankOf(entry, records));
}

// ---- giving

void TestPoseRanks::aRankIsWrittenAtOnce()
{
    RankFixture f;
    const int entry = addEntry(s("/a.duf"), 7);
    f.rank(entry, Favorite);
    QCOMPARE(pluginSettings().currentRank, qint32(Favorite));
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 1 << 7));
    f.rank(entry, Hidden);
    QCOMPARE(pluginSettings().currentRank, qint32(Hidden));
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 2 << 7));
}

void TestPoseRanks::unrankingRemovesTheRecord()
{
    RankFixture f;
    const int entry = addEntry(s("/a.duf"), 7);
    f.rank(entry, Favorite);
    f.rank(entry, Unranked);
    QCOMPARE(rankRecordCount(), 0);
    QCOMPARE(rankOf(entry), int(Unranked));
    QCOMPARE(pluginSettings().currentRank, qint32(Unranked));
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 0));
}

void TestPoseRanks::removingKeepsTheOrderOfTheOthers()
{
    RankFixture f;
    for (quint32 hash = 10; hash < 14; ++hash)
        f.rank(addEntry(s("/a.duf"), hash), Favorite);
    f.rank(1, Unranked);
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 3 << 1 << 10 << 1 << 12 << 1 << 13));
}

void TestPoseRanks::aLockedPartRefuses()
{
    RankFixture f;
    const int entry = addEntry(s("/a.duf"), 7);
    f.rank(entry, Favorite);
    const QByteArray before = f.bytes();
    for (bool& lock : pluginSettings().partLocks) {
        lock = true;
        clearStatusMessage();
        f.rank(entry, Hidden);
        QCOMPARE(
            statusMessage(), s("ERROR\r\nRank cannot be changed if\r\npart of the pose is locked"));
        QCOMPARE(rankOf(entry), int(Favorite));
        QCOMPARE(pluginSettings().currentRank, qint32(Favorite));
        lock = false;
    }
    QCOMPARE(f.bytes(), before);
    f.rank(entry, Hidden);
    QCOMPARE(rankOf(entry), int(Hidden));
}

void TestPoseRanks::customPosesCannotBeRanked()
{
    RankFixture f;
    const int custom = addEntry(s("/data/Brannoc/Quillon/custom/a.duf"), 7);
    pluginSettings().currentRank = CustomLibraryPose;
    f.rank(custom, Hidden);
    QCOMPARE(rankOf(custom), int(CustomLibraryPose));
    QCOMPARE(pluginSettings().currentRank, qint32(CustomLibraryPose));
    QCOMPARE(rankRecordCount(), 0);
    QCOMPARE(f.bytes(), QByteArray());
}

void TestPoseRanks::withoutACurrentPoseNothingHappens()
{
    RankFixture f;
    addEntry(s("/a.duf"), 7);
    f.rank(-1, Favorite);
    f.rank(1, Favorite);
    QCOMPARE(rankRecordCount(), 0);
    QCOMPARE(f.bytes(), QByteArray());
}

void TestPoseRanks::ranksThatAreNoneAreRefused()
{
    RankFixture f;
    const int entry = addEntry(s("/a.duf"), 7);
    for (const int rank : {-1, int(CustomLibraryPose), 4})
        f.rank(entry, rank);
    QCOMPARE(rankRecordCount(), 0);
}

void TestPoseRanks::aFullTableTakesNoNewRank()
{
    RankFixture f;
    QList<quint32> file = QList<quint32>() << 1 << quint32(kRankCapacity + 5);
    for (int n = 0; n < kRankCapacity + 5; ++n)
        file << 1u << quint32(1000 + n);
    f.readBytes(numbers(file));
    QCOMPARE(rankRecordCount(), kRankCapacity);
    const int fresh = addEntry(s("/a.duf"), 7), known = addEntry(s("/b.duf"), 1000);
    f.rank(fresh, Favorite);
    QCOMPARE(rankOf(fresh), int(Unranked));
    QCOMPARE(pluginSettings().currentRank, qint32(Unranked));
    QCOMPARE(rankRecordCount(), kRankCapacity);
    f.rank(known, Hidden); // a record that is there takes another rank
    QCOMPARE(rankOf(known), int(Hidden));
}

// ---- pruning

void TestPoseRanks::pruningDropsPosesThatAreGone()
{
    RankFixture f;
    for (quint32 hash = 10; hash < 15; ++hash)
        f.rank(addEntry(s("/a.duf"), hash), hash % 2 ? Favorite : Hidden);
    removeEntry(3);
    removeEntry(1);
    QVERIFY(pruneRanks());
    QVERIFY(writeRanks());
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 3 << 2 << 10 << 2 << 12 << 2 << 14));
    QVERIFY(!pruneRanks());
}

void TestPoseRanks::pruningNothingIsFalse()
{
    RankFixture f;
    QVERIFY(!pruneRanks()); // empty table
    f.rank(addEntry(s("/a.duf"), 7), Favorite);
    QVERIFY(!pruneRanks());
    QCOMPARE(rankRecordCount(), 1);
}

// ---- the file

void TestPoseRanks::theLayoutIsFixed()
{
    RankFixture f;
    f.rank(addEntry(s("/a.duf"), 0x04030201), Hidden);
    QCOMPARE(f.bytes(), QByteArray::fromHex("01000000010000000200000001020304"));
}

void TestPoseRanks::writtenReadAndWrittenAgainIsIdentical()
{
    RankFixture f;
    Random random(9);
    for (int n = 0; n < 200; ++n)
        f.rank(addEntry(s("/a.duf"), random.next()), 1 + random.below(2));
    const QByteArray first = f.bytes();
    createRankStore();
    QVERIFY(readRanks());
    QCOMPARE(rankRecordCount(), 200);
    QFile::remove(dataFiles().ranks);
    QVERIFY(writeRanks());
    QVERIFY(f.bytes() == first);
}

void TestPoseRanks::recordsOfOtherRanksAreNotKept()
{
    RankFixture f;
    const QList<quint32> file = QList<quint32>()
        << 1 << 5 << 0 << 10 << 1 << 11 << 3 << 12 << 0xffffffffu << 13 << 2 << 14;
    QVERIFY(f.readBytes(numbers(file)));
    QCOMPARE(rankRecordCount(), 2);
    QVERIFY(writeRanks());
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 2 << 1 << 11 << 2 << 14));
}

void TestPoseRanks::anotherVersionChangesNothing()
{
    RankFixture f;
    f.rank(addEntry(s("/a.duf"), 7), Favorite);
    for (const quint32 version : {0u, 2u, 0xffffffffu}) {
        QVERIFY(f.readBytes(numbers(QList<quint32>() << version << 1 << 2 << 9)));
        QCOMPARE(rankRecordCount(), 1);
        QCOMPARE(rankOf(0), int(Favorite));
    }
}

void TestPoseRanks::aMissingFileChangesNothing()
{
    RankFixture f;
    f.rank(addEntry(s("/a.duf"), 7), Favorite);
    QFile::remove(dataFiles().ranks);
    QVERIFY(!readRanks());
    QCOMPARE(rankOf(0), int(Favorite));
}

void TestPoseRanks::aFileCutShortGivesItsWholeRecords()
{
    RankFixture f;
    const QByteArray whole = numbers(QList<quint32>() << 1 << 3 << 1 << 10 << 2 << 11 << 1 << 12);
    for (int size = 4; size <= whole.size(); ++size) {
        createRankStore();
        QVERIFY(f.readBytes(whole.left(size)));
        QCOMPARE(rankRecordCount(), std::max(0, (size - 8) / 8));
    }
}

void TestPoseRanks::damagedCountsAreSurvived_data()
{
    QTest::addColumn<uint>("count");
    QTest::addColumn<int>("records");
    QTest::newRow("negative") << 0xffffffffu << 0;
    QTest::newRow("largest") << 0x7fffffffu << 1;
    QTest::newRow("none, though one follows") << 0u << 0;
}

void TestPoseRanks::damagedCountsAreSurvived()
{
    QFETCH(uint, count);
    QFETCH(int, records);
    RankFixture f;
    QVERIFY(f.readBytes(numbers(QList<quint32>() << 1 << count << 1 << 10)));
    QCOMPARE(rankRecordCount(), records);
}

void TestPoseRanks::repeatedKeysFillNoTable()
{
    RankFixture f;
    QList<quint32> file = QList<quint32>() << 1 << quint32(kRankCapacity + 6);
    for (int n = 0; n < kRankCapacity + 5; ++n)
        file << 1u << 1000u;
    file << 2u << 7u;
    QVERIFY(f.readBytes(numbers(file)));
    QCOMPARE(rankRecordCount(), 2);
    QCOMPARE(rankOf(addEntry(s("/a.duf"), 7)), int(Hidden));
}

// All that this process has asked files for. Elsewhere than on Linux: 0.
static qint64 bytesReadSoFar()
{
    const QList<QByteArray> lines = fileBytes(s("/proc/self/io")).split('\n');
    return lines.first().mid(int(qstrlen("rchar: "))).toLongLong();
}

static qint64 bytesReadOf(const RankFixture& f, const QList<quint32>& start, qint64 fileBytes)
{
    writeFile(dataFiles().ranks, numbers(start));
    QFile::resize(dataFiles().ranks, fileBytes); // the rest has no blocks and reads as zeros
    Q_UNUSED(f);
    const qint64 before = bytesReadSoFar();
    readRanks();
    return bytesReadSoFar() - before;
}

static const qint64 kOtherReads = 100000; // a buffer's worth, and what the counting itself reads

void TestPoseRanks::readingEndsWhenTheTableIsFull()
{
    RankFixture f;
    QList<quint32> file = QList<quint32>() << 1 << 0x7fffffff;
    for (int n = 0; n < kRankCapacity; ++n)
        file << 1u << quint32(1000 + n);
    const qint64 length = 32 << 20;
    const qint64 read = bytesReadOf(f, file, length);
    QCOMPARE(rankRecordCount(), kRankCapacity);
    QVERIFY2(read < length + kOtherReads, qPrintable(QString::number(read))); // and once only
}

void TestPoseRanks::aFileOfNothingButOtherRanksIsReadToALimit()
{
    RankFixture f;
    const qint64 read = bytesReadOf(f, QList<quint32>() << 1 << 0x7fffffff, 100 << 20);
    QCOMPARE(rankRecordCount(), 0);
    QVERIFY2(read < kLargestDatFile + kOtherReads, qPrintable(QString::number(read)));
}

void TestPoseRanks::withoutADataFolderNothingIsWritten()
{
    StoreFixture f;
    locateDataFiles();
    QVERIFY(!writeRanks());
    QVERIFY(!readRanks());
}

// ---- two hosts

void TestPoseRanks::mergingEqualsTheLiteralForm()
{
    Random random(2);
    for (int run = 0; run < 3000; ++run) {
        RankRecords lists[3];
        for (RankRecords& list : lists) {
            for (quint32 key = 0; key < 12; ++key) {
                if (random.below(2))
                    list.push_back(RankRecord {key, 1 + random.below(2)});
            }
        }
        const auto rankIn = [](const RankRecords& list, quint32 key) {
            for (const RankRecord& each : list) {
                if (each.key == key)
                    return each.rank;
            }
            return 0;
        };
        const RankRecords merged = mergedRanks(lists[0], lists[1], lists[2]);
        int ranked = 0;
        for (quint32 key = 0; key < 12; ++key) {
            const int base = rankIn(lists[0], key), ours = rankIn(lists[1], key);
            const int expected = ours != base ? ours : rankIn(lists[2], key);
            QCOMPARE(rankIn(merged, key), expected);
            ranked += expected ? 1 : 0;
        }
        QCOMPARE(int(merged.size()), ranked); // no key twice
    }
}

void TestPoseRanks::aMergedTableHasNoMoreThanItsCapacity()
{
    RankRecords ours, theirs;
    for (quint32 n = 0; n < quint32(kRankCapacity); ++n) {
        ours.push_back(RankRecord {n, Favorite});
        theirs.push_back(RankRecord {n + 10, Hidden});
    }
    QCOMPARE(int(mergedRanks(RankRecords(), ours, theirs).size()), kRankCapacity);
}

void TestPoseRanks::ranksOfTheOtherHostStayAndShow()
{
    RankFixture f;
    const int a = addEntry(s("/a.duf"), 10), b = addEntry(s("/b.duf"), 11);
    f.readBytes(numbers(QList<quint32>() << 1 << 1 << 1 << 9));
    writeFile(dataFiles().ranks, numbers(QList<quint32>() << 1 << 2 << 1 << 9 << 2 << 11));
    f.rank(a, Favorite);
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 3 << 1 << 9 << 2 << 11 << 1 << 10));
    QCOMPARE(rankOf(b), int(Hidden));
    QCOMPARE(rankRecordCount(), 3);
    // At the end of a host that gave none itself, too, and of its current pose.
    writeFile(dataFiles().ranks, numbers(QList<quint32>() << 1 << 1 << 2 << 10));
    QVERIFY(writeRanks());
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 2 << 10));
    QCOMPARE(pluginSettings().currentRank, qint32(Hidden));
}

void TestPoseRanks::theOthersUnrankingHolds()
{
    RankFixture f;
    const int a = addEntry(s("/a.duf"), 10), b = addEntry(s("/b.duf"), 11);
    f.rank(a, Favorite);
    f.rank(b, Hidden);
    writeFile(dataFiles().ranks, numbers(QList<quint32>() << 1 << 1 << 2 << 11));
    f.rank(b, Favorite);
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 1 << 11));
    QCOMPARE(rankOf(a), int(Unranked));
}

void TestPoseRanks::ofOnePoseTheLaterRankHolds()
{
    RankFixture f;
    const int a = addEntry(s("/a.duf"), 10);
    f.rank(a, Favorite);
    writeFile(dataFiles().ranks, numbers(QList<quint32>() << 1 << 0)); // the other unranks it
    f.rank(a, Hidden);
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 2 << 10));
    writeFile(dataFiles().ranks, numbers(QList<quint32>() << 1 << 1 << 1 << 10));
    f.rank(a, Unranked);
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 0));
}

void TestPoseRanks::aFileThatIsGoneIsWrittenWhole()
{
    RankFixture f;
    f.rank(addEntry(s("/a.duf"), 10), Favorite);
    const QByteArray before = f.bytes();
    QVERIFY(QFile::remove(dataFiles().ranks));
    QVERIFY(writeRanks());
    QCOMPARE(f.bytes(), before);
}

void TestPoseRanks::aFileThatCannotBeReadIsNotReplaced()
{
    RankFixture f;
    QVERIFY(QDir().mkpath(dataFiles().ranks + "/full"));
    QVERIFY(!readRanks());
    QVERIFY(!writeRanks());
    QVERIFY(QFileInfo(dataFiles().ranks + "/full").isDir());
}

void TestPoseRanks::aFileOfAnotherVersionIsCopiedFirst()
{
    RankFixture f;
    const QByteArray other = numbers(QList<quint32>() << 2 << 1 << 2 << 9);
    QVERIFY(f.readBytes(other));
    f.rank(addEntry(s("/a.duf"), 7), Favorite);
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 1 << 7));
    QCOMPARE(fileBytes(backupFolder() + filesIn(backupFolder()).value(0)), other);
}

void TestPoseRanks::aHostThatSavesMakesTheOtherWait()
{
    RankFixture f;
    const int a = addEntry(s("/a.duf"), 10);
    {
        QVERIFY(ensureDataFolder());
        const FileLock other(dataFiles().saveLock, 0);
        QVERIFY(other.isHeld());
        f.rank(a, Favorite);
        QVERIFY(!QFile::exists(dataFiles().ranks));
    }
    QVERIFY(writeRanks()); // what was not saved goes with the next save
    QCOMPARE(f.bytes(), numbers(QList<quint32>() << 1 << 1 << 1 << 10));
}

QUILLON_TEST(TestPoseRanks)
#include "test_pose_ranks.moc"
