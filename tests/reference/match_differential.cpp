#include "reference/match_differential.h"

#include "finder/browse_session.h"
#include "finder/browse_setup.h"
#include "finder/custom_pose_commands.h"
#include "finder/pose_browser.h"
#include "finder/pose_pair_products.h"
#include "ground/plugin_settings.h"
#include "reference/finder_reference.h"

#include <algorithm>

namespace quillon {
namespace reference {

MatchScene matchScene(const DzSkeleton* figure, DzTime time)
{
    return MatchScene {figure, time, modelsFor(figure, time)};
}

// ---- one index that is browsed, changed and browsed again

namespace {
struct Browsing {
    const MatchScene& scene;
    Dice dice;
    IndexKind kind;
    std::vector<RankRecord> records;
};
} // namespace

static void openType(Browsing* b, int type)
{
    BrowseSession& session = browseSession();
    session.type = type;
    makeYawTable(&session.tables, type, b->scene.figure, b->scene.time);
    setPartReferences(&session.tables, type, b->scene.figure, b->scene.time);
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

static void changeSomething(Browsing* b)
{
    Dice* const dice = &b->dice;
    const int type = int(dice->below(kCategoryCount));
    switch (dice->below(6)) {
    case 0:
        return openType(b, type);
    case 1:
        return makeYawTable(&browseSession().tables, type, b->scene.figure, b->scene.time);
    case 2:
        return removeSome(dice);
    case 3:
        return changeSome(dice);
    case 4:
        b->records = madeRanks(1 + int(dice->below(4)), dice);
        return putRanks(b->records);
    default:
        addMadeEntry(b->kind, b->scene.models, type, dice);
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

// ---- comparing

static bool listsAgree(const Browsing& b, long* found, std::string* why)
{
    countMatches(const_cast<DzSkeleton*>(b.scene.figure), b.scene.time);
    const std::vector<int> expected = reference::matches(b.records);
    *found += long(expected.size());
    const BrowseSession& session = browseSession();
    if (session.matches == expected && session.ordinals == ordinalsOf(expected))
        return true;
    *why = std::to_string(poseCount()) + " entries, type " + std::to_string(session.type) + ": "
        + std::to_string(session.matches.size()) + " match, and literally "
        + std::to_string(expected.size());
    return false;
}

bool matchesAgree(const MatchScene& scene, std::uint64_t seed, int mostEntries, IndexSize size,
    long* found, std::string* why)
{
    static const int kFewest = 8, kChanges = 6;
    Browsing b {scene, Dice(seed), IndexKind(seed % 4), {}};
    const int type = int(b.dice.below(kCategoryCount));
    const int chosen = kFewest + int(b.dice.below(quint32(mostEntries - kFewest + 1)));
    makeIndex(b.kind, size == IndexSize::Full ? mostEntries : chosen, scene.models, type, &b.dice);
    b.records = madeRanks(1 + int(b.dice.below(4)), &b.dice);
    putRanks(b.records);
    openType(&b, type);
    for (int n = 0; n < kChanges; ++n) {
        chooseFilters(&b.dice);
        if (!listsAgree(b, found, why)) {
            *why = "seed " + std::to_string(seed) + ", state " + std::to_string(n) + ", " + *why;
            return false;
        }
        changeSomething(&b);
    }
    return true;
}

} // namespace reference
} // namespace quillon
