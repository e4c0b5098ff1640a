// Ranks of poses that are not indexed, and how they return.
#include "room_tests.h"
#include "scan_fixture.h"

#include "finder/kept_ranks.h"
#include "ground/backup_folder.h"
#include "ground/file_lock.h"
#include "ground/whole_file.h"

#include <map>

using namespace quillon;

// Rank and key in turns, as they lie in the file.
static QByteArray rankFile(const QList<quint32>& numbers)
{
    QList<quint32> all = QList<quint32>() << 1 << quint32(numbers.size() / 2);
    all += numbers;
    QByteArray bytes;
    for (const quint32 each : all)
        bytes.append(reinterpret_cast<const char*>(&each), 4);
    return bytes;
}

namespace {

struct KeptFixture : StoreFixture {
    TempFolder home;
    DzApp app;
    KeptFixture()
        : app(poseTestSetup(home.path()))
    {
        locateDataFiles();
    }
    QByteArray kept() const
    {
        return fileBytes(dataFiles().ranksKept);
    }
    QByteArray ranks() const
    {
        return fileBytes(dataFiles().ranks);
    }
    void putKept(const QList<quint32>& numbers) const
    {
        writeFile(dataFiles().ranksKept, rankFile(numbers));
    }
    void putRanks(const QList<quint32>& numbers) const
    {
        writeFile(dataFiles().ranks, rankFile(numbers));
        readRanks();
    }
    void rank(int entry, int rank)
    {
        pluginSettings().currentPose = entry;
        QVERIFY(setCurrentRank(rank));
    }
};

} // namespace

class TestKeptRanks : public QObject {
    Q_OBJECT

private slots:
    // ---- keeping

    void whatIsKeptComesLastAndOnlyOnce()
    {
        KeptFixture f;
        f.putKept(QList<quint32>() << 1 << 10 << 2 << 11 << 1 << 12);
        QVERIFY(keepRanks({{11, Favorite}, {9, Hidden}}));
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 1 << 10 << 1 << 12 << 1 << 11 << 2 << 9));
        QVERIFY(keepRanks(RankRecords()));
        QCOMPARE(f.kept().size(), 8 + 4 * 8);
    }

    void ofTooManyTheOldestGo()
    {
        KeptFixture f;
        QList<quint32> many;
        for (quint32 n = 0; n < quint32(kRankCapacity); ++n)
            many << 1u << 1000 + n;
        f.putKept(many);
        QVERIFY(keepRanks({{7, Hidden}, {1003, Hidden}}));
        QCOMPARE(f.kept(),
            rankFile(many.mid(2, 4) + many.mid(8) + (QList<quint32>() << 2 << 7 << 2 << 1003)));
    }

    void whatCannotBeReadIsNotReplaced()
    {
        KeptFixture f;
        QVERIFY(QDir().mkpath(dataFiles().ranksKept));
        QVERIFY(!keepRanks({{7, Hidden}}));
        QVERIFY(!forgetKeptRank(7));
        QVERIFY(!moveRanksAfterScan(true));
        QVERIFY(!keepRanksOf(dataFiles().ranksKept));
    }

    void aFileOfRecordsHasTheirBytesAndNoMore()
    {
        KeptFixture f;
        const RankRecords records = {{5, Hidden}, {6, Favorite}};
        QVERIFY(!isRankFileOf(dataFiles().ranksKept, records));
        QVERIFY(writeRankFile(dataFiles().ranksKept, records));
        const QByteArray bytes = f.kept();
        QVERIFY(isRankFileOf(dataFiles().ranksKept, records));
        for (const QByteArray& other :
            {bytes + '\0', bytes + bytes, bytes.left(bytes.size() - 1)}) {
            writeFile(dataFiles().ranksKept, other);
            QVERIFY2(!isRankFileOf(dataFiles().ranksKept, records), other.toHex().constData());
        }
        QVERIFY(!isRankFileOf(dataFiles().ranksKept, RankRecords()));
    }

    void withoutADataFolderNothingIsKept()
    {
        KeptFixture f;
        writeFile(f.app.getDataFolderPath() + "/Brannoc", "in the way");
        QVERIFY(keepRanks(RankRecords())); // nothing to keep
        QVERIFY(!keepRanks({{7, Hidden}}));
    }

    void aFileOfAnotherVersionIsCopiedFirst()
    {
        KeptFixture f;
        const QByteArray other = QByteArray::fromHex("02000000") + "of tomorrow";
        writeFile(dataFiles().ranksKept, other);
        QVERIFY(keepRanks({{7, Hidden}}));
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 2 << 7));
        const QStringList copies = filesIn(backupFolder());
        QCOMPARE(copies.size(), 1);
        QCOMPARE(fileBytes(backupFolder() + copies.first()), other);
    }

    void aRankFileIsKeptWhole()
    {
        KeptFixture f;
        QVERIFY(keepRanksOf(dataFiles().ranks)); // there is none
        QVERIFY(!QFile::exists(dataFiles().ranksKept));
        f.putRanks(QList<quint32>() << 2 << 5 << 1 << 6);
        QVERIFY(keepRanksOf(dataFiles().ranks));
        QCOMPARE(f.kept(), f.ranks());
    }

    // ---- ranking anew

    void aPoseThatIsRankedAnewHasNoKeptRank_data()
    {
        QTest::addColumn<int>("rank");
        QTest::newRow("unranked") << int(Unranked);
        QTest::newRow("favourite") << int(Favorite);
        QTest::newRow("hidden") << int(Hidden);
    }
    void aPoseThatIsRankedAnewHasNoKeptRank()
    {
        QFETCH(int, rank);
        KeptFixture f;
        f.putKept(QList<quint32>() << 1 << 10 << 2 << 11);
        f.rank(addEntry("/a.duf", 11), rank);
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 1 << 10));
        f.rank(addEntry("/b.duf", 12), rank);
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 1 << 10));
    }

    // Nothing would forget it later, and the next scan would bring it back.
    void whoseKeptRankCannotBeForgottenKeepsItsRank()
    {
        KeptFixture f;
        addEntry("/a.duf", 11);
        f.putRanks(QList<quint32>() << 1 << 11);
        f.putKept(QList<quint32>() << 2 << 11);
        pluginSettings().currentPose = 0;
        const FileLock other(dataFiles().saveLock, 0);
        QVERIFY(!setCurrentRank(Unranked));
        QCOMPARE(rankOf(0), int(Favorite));
    }

    void aRankWithoutRoomIsNotForgotten()
    {
        KeptFixture f;
        QList<quint32> many;
        for (quint32 n = 0; n < quint32(kRankCapacity); ++n)
            many << 1u << 1000 + n;
        f.putRanks(many);
        f.putKept(QList<quint32>() << 2 << 10);
        f.rank(addEntry("/a.duf", 10), Favorite);
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 2 << 10));
    }

    // ---- after a scan

    void whatAnotherHostGaveIsKeptToo_data()
    {
        QTest::addColumn<int>("rank");
        QTest::newRow("another rank") << int(Hidden);
        QTest::newRow("none") << int(Unranked);
    }
    void whatAnotherHostGaveIsKeptToo()
    {
        QFETCH(int, rank);
        KeptFixture f;
        addEntry("/a.duf", 10);
        f.putRanks(QList<quint32>() << 1 << 9 << 1 << 10);
        QList<quint32> theirs = QList<quint32>() << 1 << 10 << 2 << 12;
        if (rank != Unranked)
            theirs << quint32(rank) << 9;
        writeFile(dataFiles().ranks, rankFile(theirs));
        QVERIFY(moveRanksAfterScan(true));
        QCOMPARE(f.ranks(), rankFile(QList<quint32>() << 1 << 10));
        QCOMPARE(f.kept(), rankFile(theirs.mid(2)));
    }

    void ranksWithoutPoseAreKept()
    {
        KeptFixture f;
        addEntry("/a.duf", 10);
        f.putRanks(QList<quint32>() << 1 << 9 << 2 << 10 << 2 << 11);
        QVERIFY(moveRanksAfterScan(true));
        QCOMPARE(f.ranks(), rankFile(QList<quint32>() << 2 << 10));
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 1 << 9 << 2 << 11));
    }

    void whereSomethingWasNotSeenTheyStayAndOthersReturn()
    {
        KeptFixture f;
        addEntry("/a.duf", 10);
        f.putRanks(QList<quint32>() << 1 << 9);
        f.putKept(QList<quint32>() << 2 << 10 << 1 << 11);
        QVERIFY(moveRanksAfterScan(false));
        QCOMPARE(f.ranks(), rankFile(QList<quint32>() << 1 << 9 << 2 << 10));
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 1 << 11));
        QCOMPARE(rankOf(0), int(Hidden));
    }

    void theRankOfTodayWinsOverTheKeptOne()
    {
        KeptFixture f;
        addEntry("/a.duf", 10);
        f.putRanks(QList<quint32>() << 1 << 10);
        f.putKept(QList<quint32>() << 2 << 10);
        QVERIFY(moveRanksAfterScan(true));
        QCOMPARE(f.ranks(), rankFile(QList<quint32>() << 1 << 10));
        QCOMPARE(f.kept(), rankFile(QList<quint32>()));
    }

    void whatFindsTheTableFullStaysKept()
    {
        KeptFixture f;
        QList<quint32> many;
        for (quint32 n = 0; n < quint32(kRankCapacity); ++n)
            many << 1u << 1000 + n;
        f.putRanks(many);
        addEntry("/a.duf", 10);
        f.putKept(QList<quint32>() << 2 << 10);
        QVERIFY(moveRanksAfterScan(false));
        QCOMPARE(f.kept(), rankFile(QList<quint32>() << 2 << 10));
    }

    // Nothing that could not be kept is dropped.
    void whereTheyCannotBeKeptNoneIsDropped()
    {
        KeptFixture f;
        f.putRanks(QList<quint32>() << 1 << 9);
        QVERIFY(QDir().mkpath(besideName(dataFiles().ranksKept))); // where the new file is made
        QVERIFY(!moveRanksAfterScan(true));
        QCOMPARE(rankRecordCount(), 1);
        QCOMPARE(f.ranks(), rankFile(QList<quint32>() << 1 << 9));
    }

    void movingEqualsTheLiteralForm()
    {
        Random random(5);
        for (int run = 0; run < 60; ++run) {
            KeptFixture f;
            std::map<quint32, int> ranks, kept;
            QList<quint32> rankNumbers, keptNumbers;
            for (quint32 key = 1; key < 40; ++key) {
                if (random.below(2))
                    addEntry("/a.duf", key);
                if (random.below(2))
                    rankNumbers << quint32(ranks[key] = 1 + random.below(2)) << key;
                if (random.below(2))
                    keptNumbers << quint32(kept[key] = 1 + random.below(2)) << key;
            }
            f.putRanks(rankNumbers);
            f.putKept(keptNumbers);
            const bool all = random.below(2) != 0;
            QVERIFY(moveRanksAfterScan(all));
            for (quint32 key = 1; key < 40; ++key) {
                bool indexed = false;
                for (int entry = 0; entry < poseCount(); ++entry)
                    indexed = indexed || poseEntry(entry)->contentHash == key;
                const bool drops = all && !indexed && ranks.count(key);
                if (drops) {
                    kept[key] = ranks[key];
                    ranks.erase(key);
                } else if (ranks.count(key)) {
                    kept.erase(key);
                } else if (indexed && kept.count(key)) {
                    ranks[key] = kept[key];
                    kept.erase(key);
                }
            }
            std::map<quint32, int> foundRanks, foundKept;
            RankRecords records;
            readRankFile(dataFiles().ranks, &records);
            for (const RankRecord& each : records)
                foundRanks[each.key] = each.rank;
            readRankFile(dataFiles().ranksKept, &records);
            for (const RankRecord& each : records)
                foundKept[each.key] = each.rank;
            QVERIFY2(foundRanks == ranks && foundKept == kept, qPrintable(QString::number(run)));
        }
    }

    // ---- by scans

    void ranksReturnWithTheirPoses()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        f.add("b.duf", poseNumber(11));
        scanPoses();
        pluginSettings().currentPose = 0;
        QVERIFY(setCurrentRank(Favorite));
        const QString ranked = poseEntry(0)->path;
        const QByteArray ranks = fileBytes(dataFiles().ranks);
        QVERIFY(QDir().mkpath(f.home.path("other/empty")));
        f.setContent(QStringList() << f.home.path("other"));
        scanPoses();
        QCOMPARE(fileBytes(dataFiles().ranks), rankFile(QList<quint32>()));
        QCOMPARE(fileBytes(dataFiles().ranksKept), ranks);
        scanPoses(); // once more: they are still there
        QCOMPARE(fileBytes(dataFiles().ranksKept), ranks);
        // The pose comes back somewhere else.
        QVERIFY(QFile::copy(ranked, f.home.path("other/renamed.duf")));
        scanPoses();
        QCOMPARE(rankOf(0), int(Favorite));
        QCOMPARE(pluginSettings().currentRank, qint32(Favorite));
        QCOMPARE(fileBytes(dataFiles().ranks), ranks);
        QCOMPARE(fileBytes(dataFiles().ranksKept), rankFile(QList<quint32>()));
    }

    void anIndexThatCannotBeWrittenMovesNoRank()
    {
        ScanFixture f;
        f.add("a.duf", poseNumber(1));
        scanPoses();
        pluginSettings().currentPose = 0;
        QVERIFY(setCurrentRank(Favorite));
        const QByteArray ranks = fileBytes(dataFiles().ranks);
        QVERIFY(QDir().mkpath(f.home.path("other")));
        f.setContent(QStringList() << f.home.path("other"));
        QVERIFY(QFile::remove(dataFiles().poseIndex));
        QVERIFY(QDir().mkpath(dataFiles().poseIndex + "/in the way"));
        scanPoses();
        QCOMPARE(fileBytes(dataFiles().ranks), ranks);
        QVERIFY(!QFile::exists(dataFiles().ranksKept));
    }
};

QUILLON_TEST(TestKeptRanks)
#include "test_kept_ranks.moc"
