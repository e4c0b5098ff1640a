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
#include "pane/message_boxes.h"
#include "pane/page_state.h"
#include "pane/plugin_settings.h"

#include "dzbone.h"
#include "dzscene.h"
#include "dzskeleton.h"

#include <cstdlib>
#include <vector>

namespace quillon {

static const int kNoMatch = -1;

static BrowseState g_state;
static std::vector<int> g_matches; // entries
static std::vector<int> g_ordinals; // by entry

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
    forgetSetUp();
    forgetPlace();
}

void dropStalePosition()
{
    qint32& position = pluginSettings().currentPose;
    if (position < 0 || position >= poseCount())
        position = -1;
}

// ---- the type

void selectPoseType(int type)
{
    pageState().browsingCategory = type;
    pageState().tablesValid = false;
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

static void listMatches()
{
    g_matches.clear();
    g_ordinals.clear();
    for (int entry = 0; entry < poseCount(); ++entry) {
        g_ordinals.push_back(int(g_matches.size()) + 1);
        if (passes(entry))
            g_matches.push_back(entry);
    }
}

static void countMatches()
{
    listMatches();
    g_state.matchCount = int(g_matches.size());
    const int position = qMax(0, pluginSettings().currentPose);
    const bool isKnown = position < poseCount() && g_ordinals[position] <= g_state.matchCount;
    g_state.matchOrdinal = isKnown ? g_ordinals[position] : kOrdinalUnknown;
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
        g_state.matchCount = 0;
        pluginSettings().currentPose = kNoMatch;
        refreshCurrentRank();
        return;
    }
    pluginSettings().currentPose = match;
    applyCurrentPose(figure, dzScene->getTime(), SearchDirection(direction));
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
    if (countOnly)
        g_state = BrowseState();
    if (poseCount() == 0) {
        pluginSettings().currentPose = kNoMatch;
        refreshCurrentRank();
        return false;
    }
    DzSkeleton* figure = selectedFigure();
    if (!hipOf(figure)) {
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
