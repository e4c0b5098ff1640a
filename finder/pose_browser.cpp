#include "finder/pose_browser.h"

#include "finder/browse_setup.h"
#include "finder/figure_place.h"
#include "finder/pose_apply.h"
#include "finder/pose_index.h"
#include "finder/pose_pair_products.h"
#include "finder/pose_ranks.h"
#include "finder/pose_scanner.h"
#include "finder/pose_similarity.h"
#include "finder/selected_figure.h"
#include "ground/message_boxes.h"
#include "pane/page_state.h"
#include "ground/plugin_settings.h"

#include "dzbone.h"
#include "dzscene.h"
#include "dzskeleton.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace quillon {

static const int kNoMatch = -1;

static BrowseState g_state;
static std::vector<int> g_matches; // entries
static std::vector<int> g_ordinals; // by entry
static bool g_isCountDue = false; // a count found no figure

BrowseState& browseState()
{
    return g_state;
}

void createFilteredList()
{
    freeFilteredList();
    g_matches.reserve(kPoseIndexCapacity);
    g_ordinals.reserve(kPoseIndexCapacity);
}

void freeFilteredList()
{
    std::vector<int>().swap(g_matches);
    std::vector<int>().swap(g_ordinals);
    g_state = BrowseState();
    g_isCountDue = false;
    forgetSetUp();
    forgetPlace();
}

void dropStalePosition()
{
    qint32& position = pluginSettings().currentPose;
    if (position == kNoMatch)
        return; // settings that tell of no pose survive as they were read
    if (!poseEntry(position))
        position = kNoMatch;
    refreshCurrentRank();
}

// ---- the type

// Those of the type before say nothing about the new one.
static void forgetMatches()
{
    g_matches.clear();
    g_ordinals.clear();
    g_state = BrowseState();
}

void selectPoseType(int type)
{
    pageState().browsingCategory = type;
    pageState().tablesValid = false;
    forgetMatches();
    forgetSetUp();
    if (poseCount() == 0) {
        if (showBox(Box::FirstScan) && scanPoses())
            countSceneChange();
        return;
    }
    DzSkeleton* figure = selectedFigure();
    if (pageState().picker && hipOf(figure))
        ensureSetUp(figure, dzScene->getTime());
}

void refreshFilters()
{
    setSimilarityFilters(pageState().browsingCategory);
}

// ---- the filters

static bool isFigureIncluded(quint32 figureCode)
{
    const PluginSettings& settings = pluginSettings();
    return (figureCode == kFemaleCode && settings.includeFemale)
        || (figureCode == kMaleCode && settings.includeMale);
}

// The dear test stands last.
static bool passes(int entry)
{
    const PluginSettings& settings = pluginSettings();
    const PoseIndexEntry* e = poseEntry(entry);
    return isFigureIncluded(e->figureCode) && (settings.rankFilter & (1 << rankOf(entry)))
        && !(settings.ignorePosePairs && posePairKind(e->path).kind != 0) && e->hasSignature
        && browseScore(entry) > 0;
}

// Everything that follows from the list of matches and the position.
static void numberMatches()
{
    g_state.matchCount = int(g_matches.size());
    g_ordinals.clear();
    int ordinal = 1;
    for (int entry = 0; entry < poseCount(); ++entry) {
        g_ordinals.push_back(ordinal);
        if (ordinal <= g_state.matchCount && g_matches[ordinal - 1] == entry)
            ++ordinal;
    }
    const int position = qMax(0, pluginSettings().currentPose);
    const bool isKnown = position < poseCount() && g_ordinals[position] <= g_state.matchCount;
    g_state.matchOrdinal = isKnown ? g_ordinals[position] : kOrdinalUnknown;
}

static void countMatches()
{
    g_matches.clear();
    for (int entry = 0; entry < poseCount(); ++entry) {
        if (passes(entry))
            g_matches.push_back(entry);
    }
    numberMatches();
    g_isCountDue = false;
}

void forgetMatch(int removed)
{
    auto match = std::lower_bound(g_matches.begin(), g_matches.end(), removed);
    if (match != g_matches.end() && *match == removed)
        match = g_matches.erase(match);
    for (; match != g_matches.end(); ++match)
        --*match;
    numberMatches();
}

void countIfDue()
{
    if (g_isCountDue && isSetUpFor(pageState().browsingCategory) && hipOf(selectedFigure()))
        countMatches();
}

// ---- the search

static int wrapped(int entry)
{
    const int rest = entry % poseCount();
    return rest < 0 ? rest + poseCount() : rest;
}

namespace {

struct Walk {
    int start; // any number: it is wrapped
    int direction; // +1 or -1
};

} // namespace

static Walk walkOf(int step, int position)
{
    switch (step) {
    case -2:
        return Walk {0, +1};
    case +2:
        return Walk {poseCount() - 1, -1};
    case 0:
        return Walk {qMax(0, position), +1};
    default:
        return Walk {position + step, step};
    }
}

static int firstMatch(const Walk& walk)
{
    for (int n = 0; n < poseCount(); ++n) {
        const int candidate = wrapped(walk.start + n * walk.direction);
        if (passes(candidate))
            return candidate;
    }
    return kNoMatch;
}

// The products met on a walk: the current pose's, then another one.
namespace {

struct ProductSearch {
    QString currentKey;
    QString otherKey;
    int found; // the latest match of the other product
    bool anyMatch;
};

} // namespace

// False when the search is over.
static bool meet(int candidate, int direction, ProductSearch* search)
{
    search->anyMatch = true;
    const QString key = productKey(poseEntry(candidate)->path);
    if (search->found == kNoMatch) {
        if (key == search->currentKey)
            return true;
        search->otherKey = key;
    } else if (key != search->otherKey) {
        return false;
    }
    search->found = candidate;
    return direction < 0; // backwards to the beginning of the product's run
}

// The position itself when all matches are of its product.
static int firstMatchOfOtherProduct(int position, int direction)
{
    ProductSearch search = {productKey(poseEntry(position)->path), QString(), kNoMatch, false};
    for (int n = 1; n <= poseCount(); ++n) {
        const int candidate = wrapped(position + n * direction);
        if (passes(candidate) && !meet(candidate, direction, &search))
            break;
    }
    if (search.found != kNoMatch)
        return search.found;
    return search.anyMatch ? position : kNoMatch;
}

static void applyMatch(DzSkeleton* figure, int match, int direction)
{
    if (match == kNoMatch) {
        forgetMatches();
        pluginSettings().currentPose = kNoMatch;
        refreshCurrentRank();
        return;
    }
    pluginSettings().currentPose = match;
    const int countBefore = poseCount();
    applyCurrentPose(figure, dzScene->getTime(), SearchDirection(direction));
    if (poseCount() < countBefore) // its file could not be read
        forgetMatch(match);
}

static void searchAndApply(DzSkeleton* figure, int step, bool productSkip)
{
    const int position = pluginSettings().currentPose;
    if (productSkip && std::abs(step) == 1 && poseEntry(position)) {
        const int match = firstMatchOfOtherProduct(position, step);
        if (match != position)
            applyMatch(figure, match, step);
        return;
    }
    const Walk walk = walkOf(step, position);
    applyMatch(figure, firstMatch(walk), step == 0 ? SearchHere : walk.direction);
}

bool findPose(int step, bool productSkip, bool countOnly)
{
    if (pageState().browsingCategory < 0)
        return false;
    if (poseCount() == 0) {
        if (countOnly)
            forgetMatches();
        pluginSettings().currentPose = kNoMatch;
        refreshCurrentRank();
        return false;
    }
    DzSkeleton* figure = selectedFigure();
    if (!hipOf(figure)) {
        g_isCountDue = g_isCountDue || countOnly;
        showBox(Box::NoFigure);
        return false;
    }
    if (countOnly) {
        ensureSetUp(figure, dzScene->getTime());
        countMatches();
        return false;
    }
    const bool moved = prepareFigure(figure, dzScene->getTime());
    searchAndApply(figure, step, productSkip);
    return moved;
}

} // namespace quillon
