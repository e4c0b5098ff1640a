#include "posefile/mirror_tables.h"

#include <algorithm>

namespace quillon {

typedef std::vector<QByteArray> Names;

static void append(const NameList& names, Names* out)
{
    out->insert(out->end(), names.begin(), names.end());
}

// ---- partners within a control table

static QByteArray exchanged(const QByteArray& name, const char* word, const char* other, bool atEnd)
{
    QByteArray partner = name;
    if (!atEnd)
        return partner.replace(word, other);
    partner.chop(int(qstrlen(word)));
    return partner + other;
}

// Empty when the name tells no side.
static QByteArray partnerOf(const QByteArray& name, const SideWords& sides)
{
    const auto holds = [&](const char* word) {
        return sides.atEnd ? name.endsWith(word) : bool(name.contains(word));
    };
    if (!name.startsWith(sides.prefix))
        return QByteArray();
    if (holds(sides.left))
        return exchanged(name, sides.left, sides.right, sides.atEnd);
    if (holds(sides.right))
        return exchanged(name, sides.right, sides.left, sides.atEnd);
    return QByteArray();
}

static void appendFacePairs(const FigureModel& model, Names* out)
{
    const Names names(model.controls.begin(), model.controls.end());
    for (const QByteArray& name : names) {
        const QByteArray partner = partnerOf(name, model.faceSides);
        if (!partner.isEmpty() && std::find(names.begin(), names.end(), partner) != names.end())
            out->push_back(name);
    }
}

// ---- lists of one generation, with or without the face

static Names makePaired(const FigureModel& model, bool includeFace)
{
    Names names;
    append(model.pairedLimbs, &names);
    if (includeFace)
        appendFacePairs(model, &names);
    append(model.pairedBiceps, &names);
    return names;
}

static Names makeNegated(const FigureModel& model, bool includeFace)
{
    Names names;
    if (includeFace)
        append(model.negatedFace, &names);
    append(model.negatedBody, &names);
    return names;
}

typedef Names (*MakeList)(const FigureModel& model, bool includeFace);

// Two for each generation, without the face first.
static std::vector<Names> makeAll(MakeList make)
{
    std::vector<Names> lists;
    for (int kind = 0; kind < kFigureKindCount; ++kind) {
        for (bool includeFace : {false, true})
            lists.push_back(make(modelFor(FigureKind(kind)), includeFace));
    }
    return lists;
}

static size_t listOf(bool includeFace, const FigureModel& model)
{
    return size_t(model.kind) * 2 + includeFace;
}

const Names& pairedControls(bool includeFace, const FigureModel& model)
{
    static const std::vector<Names> lists = makeAll(makePaired);
    return lists[listOf(includeFace, model)];
}

const Names& negatedControls(bool includeFace, const FigureModel& model)
{
    static const std::vector<Names> lists = makeAll(makeNegated);
    return lists[listOf(includeFace, model)];
}

bool containsAnyOf(const QByteArray& text, const Names& names)
{
    for (const QByteArray& name : names) {
        if (text.contains(name))
            return true;
    }
    return false;
}

} // namespace quillon
