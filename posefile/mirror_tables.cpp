#include "posefile/mirror_tables.h"

#include "figure/control_tables.h"
#include "figure/figure_kind.h"

#include <algorithm>
#include <iterator>

namespace quillon {

typedef std::vector<QByteArray> NameList;

static const char* const kPairedLimbs[] = {
    "pCTRLLegsSpreadRight",
    "pCTRLLegsSpreadLeft",
    "pCTRLKneesUpRight",
    "pCTRLKneesUpLeft",
    "pCTRLArmsUpRight",
    "pCTRLArmsUpLeft",
    "pCTRLArmsUpDwnRight",
    "pCTRLArmsUpDwnLeft",
    "pCTRLArmsFrntBckRight",
    "pCTRLArmsFrntBckLeft",
    "pCTRLArmsDownRight",
    "pCTRLArmsDownLeft",
};

static const char* const kPairedBiceps[] = {"pCTRLFlexBiceps_twist_R", "pCTRLFlexBiceps_twist_L"};

static const char* const kNegatedFaceG8[] = {
    "eCTRLTongueSide-Side",
    "eCTRLMouthSide-Side",
    "eCTRLJawSide-Side",
    "eCTRLEyesSideSide",
};

static const char* const kNegatedFaceG81[] = {"facs_ctrl_EyeLookSide-Side"};

static const char* const kNegatedBody[] = {
    "pCTRLWaistSide",
    "pCTRLNeckHeadTwist",
    "pCTRLNeckHeadSide-Side",
    "pCTRLBreastsSide-Side",
    "pCTRLWaistTwist",
};

static_assert(std::size(kPairedLimbs) == 12, "arm and leg controls");
static_assert(std::size(kPairedBiceps) == 2, "one for each arm");
static_assert(std::size(kNegatedFaceG8) == 4, "side-to-side controls of the face");
static_assert(std::size(kNegatedFaceG81) == 1, "side-to-side controls of the face");
static_assert(std::size(kNegatedBody) == 5, "side-to-side and twist controls of the body");

template <int count> static void append(const char* const (&names)[count], NameList* out)
{
    out->insert(out->end(), names, names + count);
}

// ---- partners within a control table; empty when the name has no side

static QByteArray partnerByLastLetter(const QByteArray& name)
{
    const char last = name.isEmpty() ? 0 : name.at(name.size() - 1);
    if (!name.startsWith("eCTRL") || (last != 'L' && last != 'R'))
        return QByteArray();
    return name.left(name.size() - 1) + (last == 'L' ? 'R' : 'L');
}

static QByteArray partnerByWord(const QByteArray& name)
{
    if (!name.startsWith("facs_"))
        return QByteArray();
    QByteArray partner = name;
    if (name.contains("Left"))
        return partner.replace("Left", "Right");
    if (name.contains("Right"))
        return partner.replace("Right", "Left");
    return QByteArray();
}

typedef QByteArray (*PartnerRule)(const QByteArray& name);

template <int count>
static void appendPairs(const char* const (&table)[count], PartnerRule partnerOf, NameList* out)
{
    const NameList names(table, table + count);
    for (const QByteArray& name : names) {
        const QByteArray partner = partnerOf(name);
        if (!partner.isEmpty() && std::find(names.begin(), names.end(), partner) != names.end())
            out->push_back(name);
    }
}

// ---- lists of one generation, with or without the face

enum ListKind { BodyOnly, WithFaceG8, WithFaceG81, ListKindCount };

static ListKind listKind(bool includeFace)
{
    return !includeFace ? BodyOnly : isGenesis81() ? WithFaceG81 : WithFaceG8;
}

static NameList makePaired(ListKind kind)
{
    NameList names;
    append(kPairedLimbs, &names);
    if (kind == WithFaceG81)
        appendPairs(kBodyControlTableG81, partnerByWord, &names);
    else if (kind == WithFaceG8)
        appendPairs(kBodyControlTableG8, partnerByLastLetter, &names);
    append(kPairedBiceps, &names);
    return names;
}

static NameList makeNegated(ListKind kind)
{
    NameList names;
    if (kind == WithFaceG81)
        append(kNegatedFaceG81, &names);
    else if (kind == WithFaceG8)
        append(kNegatedFaceG8, &names);
    append(kNegatedBody, &names);
    return names;
}

const NameList& pairedControls(bool includeFace)
{
    static const NameList lists[ListKindCount]
        = {makePaired(BodyOnly), makePaired(WithFaceG8), makePaired(WithFaceG81)};
    return lists[listKind(includeFace)];
}

const NameList& negatedControls(bool includeFace)
{
    static const NameList lists[ListKindCount]
        = {makeNegated(BodyOnly), makeNegated(WithFaceG8), makeNegated(WithFaceG81)};
    return lists[listKind(includeFace)];
}

bool containsAnyOf(const QByteArray& text, const NameList& names)
{
    for (const QByteArray& name : names) {
        if (text.contains(name))
            return true;
    }
    return false;
}

} // namespace quillon
