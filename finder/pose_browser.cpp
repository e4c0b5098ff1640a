#include "finder/pose_browser.h"

#include "figure/selected_figure.h"
#include "finder/browse_session.h"
#include "finder/browse_setup.h"
#include "finder/pose_index.h"
#include "finder/pose_pair_products.h"
#include "finder/pose_ranks.h"
#include "finder/pose_scanner.h"
#include "ground/message_boxes.h"
#include "ground/plugin_settings.h"

#include "dzbone.h"
#include "dzskeleton.h"

#include <algorithm>
#include <cstdlib>

namespace quillon {

static const int kNoMatch = -1;

void createFilteredList()
{
    freeFilteredList();
    browseSession().matches.reserve(kPoseIndexCapacity);
    browseSession().ordinals.reserve(kPoseIndexCapacity);
}

void freeFilteredList()
{
    browseSession() = BrowseSession();
}

void dropPosition()
{
    pluginSettings().currentPose = kNoMatch;
    refreshCurrentRank();
}

void dropStalePosition()
{
    const qint32 position = pluginSettings().currentPose;
    if (position == kNoMatch)
        return; // settings that tell of no pose survive as they were read
    if (poseEntry(position))
        refreshCurrentRank();
    else
        dropPosition();
}

// ---- the category

static bool offerFirstScan(DzSkeleton* figure, DzTime time)
{
    const HeldNode held(figure);
    if (!showBox(Box::FirstScan))
        return false;
    if (held.isGone()) {
        browseSession().type = kNotBrowsing;
        return false;
    }
    return scanPosesOn(figure, time);
}

bool chooseCategory(int type, DzSkeleton* figure, DzTime time, bool fromPicker)
{
    BrowseSession& session = browseSession();
    session.type = type;
    session.tablesState = NotMade;
    forgetMatches(&session);
    if (poseCount() == 0)
        return offerFirstScan(figure, time);
    return fromPicker && hipOf(figure) && ensureSetUp(&session, figure, time);
}

void refreshFilters()
{
    setSimilarityFilters(&browseSession().tables, browseSession().type);
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
        && !(settings.ignorePosePairs && e->isOfPair) && isMatch(&browseSession().tables, entry);
}

// Everything that follows from the list of matches and the position.
static void numberMatches()
{
    BrowseSession& session = browseSession();
    session.matchCount = int(session.matches.size());
    session.ordinals.clear();
    int ordinal = 1;
    for (int entry = 0; entry < poseCount(); ++entry) {
        session.ordinals.push_back(ordinal);
        if (ordinal <= session.matchCount && session.matches[ordinal - 1] == entry)
            ++ordinal;
    }
    const int position = qMax(0, pluginSettings().currentPose);
    const bool isKnown = position < poseCount() && session.ordinals[position] <= session.matchCount;
    session.matchOrdinal = isKnown ? session.ordinals[position] : kOrdinalUnknown;
}

static void listMatches()
{
    BrowseSession& session = browseSession();
    session.matches.clear();
    for (int entry = 0; entry < poseCount(); ++entry) {
        if (passes(entry))
            session.matches.push_back(entry);
    }
    numberMatches();
    session.isCountDue = false;
}

void forgetMatch(int removed)
{
    forgetFacts(&browseSession().tables, removed);
    std::vector<int>& matches = browseSession().matches;
    auto match = std::lower_bound(matches.begin(), matches.end(), removed);
    if (match != matches.end() && *match == removed)
        match = matches.erase(match);
    for (; match != matches.end(); ++match)
        --*match;
    numberMatches();
}

void countIfDue(const DzSkeleton* figure)
{
    const BrowseSession& session = browseSession();
    if (session.isCountDue && isCategory(session.type) && session.tablesState != NotMade
        && hipOf(figure))
        listMatches();
}

// Shows the box when not.
static bool canSearch(const DzSkeleton* figure)
{
    if (!hipOf(figure))
        showBox(Box::NoFigure);
    return hipOf(figure);
}

bool countMatches(DzSkeleton* figure, DzTime time)
{
    BrowseSession& session = browseSession();
    if (!isCategory(session.type))
        return false;
    if (poseCount() == 0) {
        forgetMatches(&session);
        dropPosition();
        return false;
    }
    if (!canSearch(figure)) {
        session.isCountDue = true;
        return false;
    }
    const bool changed = ensureSetUp(&session, figure, time);
    listMatches();
    return changed;
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

// True when a pose was applied.
static bool applyMatch(DzSkeleton* figure, DzTime time, int match, int direction)
{
    if (match == kNoMatch) {
        forgetMatches(&browseSession());
        dropPosition();
        return false;
    }
    pluginSettings().currentPose = match;
    const int countBefore = poseCount();
    applyCurrentPose(&browseSession(), figure, time, SearchDirection(direction));
    if (poseCount() < countBefore) // its file could not be read
        forgetMatch(match);
    return true;
}

static bool searchAndApply(DzSkeleton* figure, DzTime time, int step, bool productSkip)
{
    const int position = pluginSettings().currentPose;
    if (productSkip && std::abs(step) == 1 && poseEntry(position)) {
        const int match = firstMatchOfOtherProduct(position, step);
        return match != position && applyMatch(figure, time, match, step);
    }
    const Walk walk = walkOf(step, position);
    return applyMatch(figure, time, firstMatch(walk), step == 0 ? SearchHere : walk.direction);
}

SceneOutcome searchPose(DzSkeleton* figure, DzTime time, int step, bool productSkip)
{
    if (!isCategory(browseSession().type))
        return SceneOutcome();
    if (poseCount() == 0) {
        dropPosition();
        return SceneOutcome();
    }
    if (!canSearch(figure))
        return SceneOutcome();
    SceneOutcome outcome = prepareFigure(&browseSession(), figure, time);
    if (searchAndApply(figure, time, step, productSkip))
        outcome.changed = true;
    return outcome;
}

} // namespace quillon
