#include "posefile/pose_rewriter.h"

#include "figure/body_parts.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "ground/plain_file.h"
#include "ground/whole_file.h"
#include "posefile/mirror_tables.h"
#include "posefile/pose_text.h"

#include "dzbone.h"
#include "dzskeleton.h"

#include <QFile>

#include <algorithm>
#include <bitset>
#include <utility>
#include <vector>

namespace quillon {

static std::bitset<kBoneCount> g_touched; // by bone number

bool isBoneTouched(int boneNumber)
{
    return boneNumber >= 0 && boneNumber < kBoneCount && g_touched.test(size_t(boneNumber));
}

void clearTouchedBones()
{
    g_touched.reset();
}

// ---- the selection

namespace {

struct SelectedBone {
    int number;
    bool noTouch;
};

typedef std::vector<SelectedBone> Selection; // in the order of the search, each bone once

struct SelectionRules {
    const DzSkeleton* figure; // may be null
    const FigureModel& model;
    bool withChildren;
    bool symmetrize;
};

} // namespace

static bool isSided(const QString& boneName)
{
    return boneName.startsWith(QLatin1Char('l')) || boneName.startsWith(QLatin1Char('r'));
}

static bool isPartnerSelected(const QString& boneName, const DzSkeleton* figure)
{
    if (!isSided(boneName))
        return false;
    const QChar side = QLatin1Char(boneName.startsWith(QLatin1Char('l')) ? 'r' : 'l');
    const DzBone* partner = figure->findBone(side + boneName.mid(1));
    return partner && partner->isSelected();
}

static void addChildren(
    const DzBone* bone, bool noTouch, const SelectionRules& rules, Selection* out)
{
    DzNodeList below;
    bone->getNodeChildren(below, true);
    for (DzNode* node : std::as_const(below)) {
        const DzBone* child = qobject_cast<const DzBone*>(node);
        const int number = child && child->getSkeleton() == rules.figure
            ? boneIndex(child->getName(), rules.model)
            : -1;
        if (number > 0) // the hip never counts as a child
            out->push_back(SelectedBone {number, noTouch});
    }
}

// Of a bone that is met several times, the first meeting decides.
static void dropLaterMeetings(Selection* selection)
{
    std::bitset<kBoneCount> met;
    Selection first;
    for (const SelectedBone& each : *selection) {
        if (!met.test(size_t(each.number)))
            first.push_back(each);
        met.set(size_t(each.number));
    }
    selection->swap(first);
}

static Selection selectionOf(const SelectionRules& rules)
{
    Selection selection;
    for (const FigureBone& each : bonesOf(rules.figure)) {
        const QString& name = boneName(each.number, rules.model);
        const bool partnerSelected = isPartnerSelected(name, rules.figure);
        if (!each.bone->isSelected() && !partnerSelected)
            continue;
        if (rules.symmetrize && !isSided(name))
            continue;
        const bool noTouch = rules.symmetrize && partnerSelected;
        selection.push_back(SelectedBone {each.number, noTouch});
        if (rules.withChildren)
            addChildren(each.bone, noTouch, rules, &selection);
    }
    dropLaterMeetings(&selection);
    return selection;
}

namespace {

// The entry that the search met; number: of the bone, 0 for a control, -1: no part of it.
struct FoundEntry {
    int number;
    bool noTouch;
};

} // namespace

static FoundEntry findIn(
    const Selection& selection, const QString& name, EntryMode mode, const FigureModel& model)
{
    for (const SelectedBone& each : selection) {
        const bool hit = mode == BoneEntry ? boneName(each.number, model) == name
                                           : controlDrivesBone(name, each.number, model);
        if (hit)
            return FoundEntry {mode == BoneEntry ? each.number : 0, each.noTouch};
    }
    return FoundEntry {-1, false};
}

int selectionIndexFor(const QString& name, DzNode* figure, bool withChildren, bool symmetrize,
    int mode, int* kind, bool* noTouch)
{
    const DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    const SelectionRules rules = {skeleton, modelOf(skeleton), withChildren, symmetrize};
    const FoundEntry found = findIn(selectionOf(rules), name, EntryMode(mode), rules.model);
    if (found.number >= 0) {
        *kind = mode;
        *noTouch = found.noTouch;
    }
    return found.number;
}

QString knownNodeNameOf(const QString& urlLine, const FigureModel& model)
{
    if (channelOf(urlLine) == NoChannel)
        return QString();
    const QString name = nodeNameOf(urlLine);
    return boneIndex(name, model) >= 0 || isBodyControl(name, model) ? name : QString();
}

// ---- the mirror rules

// The one that occurs becomes the other, everywhere; the first is looked for first.
static void exchange(const char* first, const char* second, QByteArray* text)
{
    if (text->contains(first))
        text->replace(first, second);
    else
        text->replace(second, first);
}

static void exchangeSides(QByteArray* url)
{
    exchange("name://@selection/l", "name://@selection/r", url);
}

static void exchangeControl(QByteArray* url)
{
    if (url->contains("L:?value/value") || url->contains("R:?value/value"))
        exchange("L:?value/value", "R:?value/value", url);
    else
        exchange("Left", "Right", url);
}

// Textual: "-0.0" and "0.0" exchange, too.
static void negate(QByteArray* keys)
{
    static const char kPrefix[] = "\"keys\" : [ [ 0, ";
    const int at = keys->indexOf(kPrefix);
    if (at < 0 || keys->contains("[ [ 0, 0 ] ]"))
        return;
    const int number = at + int(sizeof kPrefix) - 1;
    if (number < keys->size() && keys->at(number) == '-')
        keys->remove(number, 1);
    else
        keys->insert(number, '-');
}

void mirrorEntry(QByteArray* url, QByteArray* keys, bool includeFace, const FigureModel& model)
{
    if (url->contains("translation/x/")) {
        exchangeSides(url);
        negate(keys);
    } else if (url->contains("translation/y/") || url->contains("translation/z/")) {
        exchangeSides(url);
    } else if (url->contains("rotation/x/")) {
        exchangeSides(url);
    } else if (url->contains("rotation/y/") || url->contains("rotation/z/")) {
        exchangeSides(url);
        negate(keys);
    } else if (url->contains("name://@selection#pCTRLl")
        || url->contains("name://@selection#pCTRLr")) {
        exchange("name://@selection#pCTRLl", "name://@selection#pCTRLr", url);
    } else if (containsAnyOf(*url, pairedControls(includeFace, model))) {
        exchangeControl(url);
    } else if (containsAnyOf(*url, negatedControls(includeFace, model))) {
        negate(keys);
    }
}

// ---- the file

namespace {

struct RewriteRules {
    const FigureModel& model;
    Selection selection;
    bool includeFace;
    bool mirrorAll;
};

const int kBlockLines = 4; // "{", url, keys, "},"
const int kUrlLine = 1;
const int kKeysLine = 2;

// Lines of a text, without their line ends.
class LineReader {
public:
    explicit LineReader(const QByteArray& text)
        : m_at(text.constData())
        , m_end(m_at + text.size())
    {
    }
    bool next(TextSpan* line)
    {
        if (m_at == m_end)
            return false;
        const char* end = std::find(m_at, m_end, '\n');
        const bool carriageReturn = end > m_at && end[-1] == '\r';
        *line = TextSpan {m_at, carriageReturn ? end - 1 : end};
        m_at = end == m_end ? end : end + 1;
        return true;
    }

private:
    const char* m_at;
    const char* m_end;
};

} // namespace

// Whether the entry is to be mirrored. The bone that it belongs to is touched then.
static bool takesPart(const TextSpan& url, const RewriteRules& rules)
{
    const QString urlLine = QString::fromLatin1(url.begin, int(url.end - url.begin));
    const QString name = knownNodeNameOf(urlLine, rules.model);
    if (name.isEmpty() || rules.mirrorAll)
        return !name.isEmpty();
    const EntryMode mode = channelOf(url) == ControlValue ? ControlEntry : BoneEntry;
    const bool ofFace = mode == ControlEntry ? isExpressionControl(name, rules.model)
                                             : isFaceBone(name, rules.model);
    if (ofFace && !rules.includeFace)
        return false;
    const FoundEntry found = findIn(rules.selection, name, mode, rules.model);
    if (found.number >= 0 && mode == BoneEntry && !found.noTouch)
        g_touched.set(size_t(found.number));
    return found.number >= 0;
}

static void appendLine(const TextSpan& line, QByteArray* out)
{
    out->append(line.begin, int(line.end - line.begin));
    out->append('\n');
}

static void appendMirrored(
    const TextSpan& url, const TextSpan& keys, const RewriteRules& rules, QByteArray* out)
{
    QByteArray mirroredUrl(url.begin, int(url.end - url.begin));
    QByteArray mirroredKeys(keys.begin, int(keys.end - keys.begin));
    mirrorEntry(&mirroredUrl, &mirroredKeys, rules.includeFace, rules.model);
    out->append(mirroredUrl);
    out->append('\n');
    out->append(mirroredKeys);
    out->append('\n');
}

static void copyHead(LineReader* lines, QByteArray* out)
{
    static const char kAnimations[] = "animations";
    TextSpan line;
    while (lines->next(&line)) {
        appendLine(line, out);
        const char* word = kAnimations;
        if (std::search(line.begin, line.end, word, word + sizeof kAnimations - 1) != line.end)
            return;
    }
}

static void rewriteBlocks(LineReader* lines, const RewriteRules& rules, QByteArray* out)
{
    TextSpan block[kBlockLines];
    for (;;) {
        int count = 0;
        while (count < kBlockLines && lines->next(&block[count]))
            ++count;
        const bool mirrored = count == kBlockLines && takesPart(block[kUrlLine], rules);
        for (int i = 0; i < count; ++i) {
            if (mirrored && i == kUrlLine)
                appendMirrored(block[kUrlLine], block[kKeysLine], rules, out);
            else if (!mirrored || i != kKeysLine)
                appendLine(block[i], out);
        }
        if (count < kBlockLines)
            return;
    }
}

static QByteArray rewritten(const QByteArray& text, const RewriteRules& rules)
{
    static const int kRoomForSigns = 4096;
    QByteArray out;
    out.reserve(text.size() + kRoomForSigns);
    LineReader lines(text);
    copyHead(&lines, &out);
    rewriteBlocks(&lines, rules, &out);
    return out;
}

bool rewritePoseFile(const QString& inPath, const QString& outPath, DzNode* figure,
    bool withChildren, bool symmetrize, bool includeFace, bool mirrorAll)
{
    QFile in(inPath);
    const bool readable = openPlainFile(&in, QIODevice::ReadOnly);
    QByteArray text;
    if (readable) {
        const DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
        const SelectionRules selected = {skeleton, modelOf(skeleton), withChildren, symmetrize};
        const RewriteRules rules = {selected.model, selectionOf(selected), includeFace, mirrorAll};
        text = rewritten(in.readAll(), rules);
    }
    return writePlainFile(outPath, text) && readable;
}

} // namespace quillon
