#include "figure/body_parts.h"

#include "figure/figure_kind.h"
#include "figure/part_tables.h"

#include <iterator>
#include <vector>

namespace quillon {

namespace {

// One bit of the answer kept for each table name.
enum NameTest {
    FaceBone,
    ExpressionG8,
    ExpressionG81,
    TorsoArm,
    Leg,
    HipBend,
    ToeFoot,
    FootPattern,
    LeftHandControl,
    RightHandControl,
    UpperBodyBone,
    LegBone,
    FootBone,
    LeftHandBone,
    RightHandBone,
    NameTestCount
};

struct TestRow {
    NameTest test;
    const char* const* names;
    int count;
    bool exact; // the name equals one of them; otherwise it contains one
};

const TestRow kTests[] = {
    {FaceBone, kFaceBoneNames, std::size(kFaceBoneNames), false},
    {ExpressionG8, kExpressionControlsG8, std::size(kExpressionControlsG8), false},
    {ExpressionG81, kExpressionControlsG81, std::size(kExpressionControlsG81), false},
    {TorsoArm, kTorsoArmControls, std::size(kTorsoArmControls), false},
    {Leg, kLegControls, std::size(kLegControls), false},
    {HipBend, kHipControls, std::size(kHipControls), false},
    {ToeFoot, kToeFootControls, std::size(kToeFootControls), true},
    {FootPattern, kFootControls, std::size(kFootControls), false},
    {LeftHandControl, kLeftHandControls, std::size(kLeftHandControls), true},
    {RightHandControl, kRightHandControls, std::size(kRightHandControls), true},
    {UpperBodyBone, kUpperBodyBones, std::size(kUpperBodyBones), true},
    {LegBone, kLegBones, std::size(kLegBones), true},
    {FootBone, kFeetBones, std::size(kFeetBones), true},
    {LeftHandBone, kLeftHandBones, std::size(kLeftHandBones), true},
    {RightHandBone, kRightHandBones, std::size(kRightHandBones), true},
};
static_assert(std::size(kTests) == NameTestCount, "one row per test, in the order of NameTest");

struct Answers {
    std::vector<QString> names[NameTestCount]; // what a test looks for
    unsigned bits[kNameCount]; // answers for the table names, by name id
};

} // namespace

static bool runTest(const Answers& answers, NameTest test, const QString& name)
{
    const bool exact = kTests[test].exact;
    for (const QString& wanted : answers.names[test]) {
        if (exact ? name == wanted : name.contains(wanted))
            return true;
    }
    return false;
}

static Answers buildAnswers()
{
    Answers answers;
    for (const TestRow& row : kTests) {
        for (int i = 0; i < row.count; ++i)
            answers.names[row.test].push_back(QLatin1String(row.names[i]));
    }
    for (int id = 0; id < kNameCount; ++id) {
        answers.bits[id] = 0;
        for (const TestRow& row : kTests)
            answers.bits[id] |= unsigned(runTest(answers, row.test, nameText(id))) << row.test;
    }
    return answers;
}

static bool passes(const QString& name, NameTest test)
{
    static const Answers answers = buildAnswers();
    const int id = nameId(name);
    return id < 0 ? runTest(answers, test, name) : (answers.bits[id] >> test) & 1u;
}

bool isFaceBone(const QString& name)
{
    return passes(name, FaceBone);
}

bool isHandBone(const QString& name)
{
    return passes(name, LeftHandBone) || passes(name, RightHandBone);
}

bool isFootBone(const QString& name)
{
    return passes(name, FootBone);
}

bool isExpressionControl(const QString& name)
{
    return passes(name, isGenesis81() ? ExpressionG81 : ExpressionG8);
}

bool isTorsoArmControl(const QString& name)
{
    return passes(name, TorsoArm);
}

bool isLegControl(const QString& name)
{
    return passes(name, Leg);
}

bool isHipControl(const QString& name)
{
    return passes(name, HipBend);
}

bool isToeFootControl(const QString& name)
{
    return passes(name, ToeFoot);
}

bool isFootControl(const QString& name)
{
    return passes(name, FootPattern) || passes(name, ToeFoot);
}

bool isHandControl(const QString& name, int side)
{
    if (side != LeftSide && side != RightSide)
        return false;
    return passes(name, side == LeftSide ? LeftHandControl : RightHandControl);
}

bool boneInPart(const QString& name, BodyPart part)
{
    static const NameTest kTestOfPart[kBodyPartCount]
        = {UpperBodyBone, LegBone, FootBone, FaceBone, LeftHandBone, RightHandBone};
    return passes(name, kTestOfPart[int(part)]);
}

bool controlInPart(const QString& name, BodyPart part)
{
    switch (part) {
    case BodyPart::UpperBody:
        return isHipControl(name) || isTorsoArmControl(name);
    case BodyPart::Legs:
        return isHipControl(name) || isLegControl(name);
    case BodyPart::Feet:
        return isFootControl(name);
    case BodyPart::Face:
        return isExpressionControl(name);
    case BodyPart::LeftHand:
        return isHandControl(name, LeftSide);
    case BodyPart::RightHand:
        return isHandControl(name, RightSide);
    }
    return false;
}

} // namespace quillon
