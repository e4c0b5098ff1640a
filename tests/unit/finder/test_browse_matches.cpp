// The list of matches, as it is found out and remembered, against its literal form.
#include "browse_fixture.h"
#include "room_tests.h"

#include "reference/finder_reference.h"
#include "reference/image_differential.h"
#include "reference/index_tables.h"
#include "reference/match_differential.h"

#include <QtTest>

using namespace quillon;
using namespace quillon::reference;

class TestBrowseMatches : public QObject {
    Q_OBJECT

private slots:
    void hipsAreNearSomeYawAsTheLoopSays();
    void listsAreThoseOfTheLiteralForm();
    void ranksAreThoseOfTheFirstRecord();
};

void TestBrowseMatches::hipsAreNearSomeYawAsTheLoopSays()
{
    for (quint64 seed = 1; seed <= 100; ++seed) {
        std::string why;
        QVERIFY2(imagesAgree(seed, 500, &why), why.c_str());
    }
}

// compare_forms does the same with a thousand larger ones.
void TestBrowseMatches::listsAreThoseOfTheLiteralForm()
{
    static const int kTables = 100, kMostEntries = 500;
    FinderFixture f;
    const MatchScene scene = matchScene(f.figure, f.time());
    long found = 0;
    for (quint64 seed = 1; seed <= kTables; ++seed) {
        std::string why;
        QVERIFY2(
            matchesAgree(scene, seed, kMostEntries, IndexSize::Any, &found, &why), why.c_str());
    }
    QVERIFY(found > 1000);
}

void TestBrowseMatches::ranksAreThoseOfTheFirstRecord()
{
    FinderFixture f;
    const IndexModels models = modelsFor(f.figure, f.time());
    for (quint64 seed = 1; seed <= 20; ++seed) {
        Dice dice(seed);
        makeIndex(IndexKind::Adversarial, 300, models, AllPoses, &dice); // many share a hash
        const std::vector<RankRecord> records = madeRanks(1 + int(seed % 3), &dice);
        putRanks(records);
        for (int entry = 0; entry < poseCount(); ++entry)
            QCOMPARE(quillon::rankOf(entry), reference::rankOf(entry, records));
    }
}

QUILLON_TEST(TestBrowseMatches)
#include "test_browse_matches.moc"
