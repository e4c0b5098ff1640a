// The list of matches, as it is found out and remembered, against its literal form.
#include "browse_fixture.h"
#include "room_tests.h"

#include "finder/custom_pose_commands.h"
#include "finder/pose_pair_products.h"
#include "reference/finder_reference.h"
#include "reference/image_differential.h"
#include "reference/index_tables.h"

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

namespace {

// One index that is browsed, changed and browsed again.
struct Browsing {
    FinderFixture f;
    IndexModels models = modelsFor(f.figure, f.time());
    IndexKind kind = IndexKind::Random;
    std::vector<RankRecord> records;
};

} // namespace

static void openType(Browsing* b, int type)
{
    BrowseSession& session = browseSession();
    session.type = type;
    makeYawTable(&session.tables, type, b->f.figure, b->f.time());
    setPartReferences(&session.tables, type, b->f.figure, b->f.time());
    session.tablesState = Made;
}

static void chooseFilters(Dice* dice)
{
    PluginSettings& s = pluginSettings();
    s.includeFemale = dice->below(5) != 0;
    s.includeMale = dice->below(3) != 0;
    s.rankFilter = dice->below(4) ? 15 : qint32(dice->below(16));
    s.ignorePosePairs = dice->below(2);
    for (bool& area : s.similarity)
        area = dice->below(3) == 0;
    setSimilarityFilters(&browseSession().tables, browseSession().type);
}

static void removeSome(Dice* dice)
{
    const int entry = int(dice->below(quint32(poseCount())));
    removeEntry(entry);
    if (dice->below(2)) // else nobody has told the session
        forgetMatch(entry);
}

static void changeSome(Dice* dice)
{
    const int from = int(dice->below(quint32(poseCount())));
    const int to = int(dice->below(quint32(poseCount())));
    PoseIndexEntry* e = entryToChange(to);
    std::copy_n(poseEntry(from)->signature, kSignatureSlots, e->signature);
    e->hasSignature = dice->below(8) != 0;
    e->contentHash = poseEntry(from)->contentHash;
    if (dice->below(4) == 0)
        copyEntry(to, from);
}

static void changeSomething(Browsing* b, Dice* dice)
{
    const int type = int(dice->below(kCategoryCount));
    switch (dice->below(6)) {
    case 0:
        return openType(b, type);
    case 1:
        return makeYawTable(&browseSession().tables, type, b->f.figure, b->f.time());
    case 2:
        return removeSome(dice);
    case 3:
        return changeSome(dice);
    case 4:
        b->records = madeRanks(1 + int(dice->below(4)), dice);
        return putRanks(b->records);
    default:
        addMadeEntry(b->kind, b->models, type, dice);
    }
}

static std::vector<int> ordinalsOf(const std::vector<int>& matches)
{
    std::vector<int> ordinals;
    for (int entry = 0; entry < poseCount(); ++entry) {
        const auto before = std::lower_bound(matches.begin(), matches.end(), entry);
        ordinals.push_back(1 + int(before - matches.begin()));
    }
    return ordinals;
}

void TestBrowseMatches::listsAreThoseOfTheLiteralForm()
{
    static const int kTables = 100, kMostEntries = 500, kChanges = 6;
    Browsing b;
    int found = 0;
    for (quint64 seed = 1; seed <= kTables; ++seed) {
        Dice dice(seed);
        const int type = int(dice.below(kCategoryCount));
        b.kind = IndexKind(seed % 4);
        makeIndex(b.kind, 8 + int(dice.below(kMostEntries - 8)), b.models, type, &dice);
        openType(&b, type);
        for (int n = 0; n < kChanges; ++n) {
            chooseFilters(&dice);
            countMatches(b.f.figure, b.f.time());
            const std::vector<int> expected = reference::matches(b.records);
            QVERIFY2(browseSession().matches == expected, qPrintable(QString::number(seed)));
            QVERIFY(browseSession().ordinals == ordinalsOf(expected));
            found += int(expected.size());
            changeSomething(&b, &dice);
        }
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
