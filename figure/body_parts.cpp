#include "figure/body_parts.h"

#include <cstring>
#include <vector>

namespace quillon {

namespace {

struct Answers {
    std::vector<QString> wanted[NameTestCount]; // what a test looks for
    unsigned bits[kNameCount]; // one for each test, by name id
};

} // namespace

static bool runTest(const Answers& answers, int test, const QString& name)
{
    const bool exact = test >= FirstExactTest;
    for (const QString& wanted : answers.wanted[test]) {
        if (exact ? name == wanted : bool(name.contains(wanted)))
            return true;
    }
    return false;
}

// What two generations share is tested once: a list that the first has, too, has its answers.
static Answers buildAnswers(const FigureModel& model, const Answers* first)
{
    Answers answers;
    std::memset(answers.bits, 0, sizeof answers.bits);
    for (int test = 0; test < NameTestCount; ++test) {
        const NameList& names = model.tests[test];
        for (const char* name : names)
            answers.wanted[test].push_back(QLatin1String(name));
        const bool shared = first && names.names == modelFor(FigureKind(0)).tests[test].names;
        for (int id = 0; id < kNameCount; ++id)
            answers.bits[id] |= shared ? first->bits[id] & 1u << test
                                       : unsigned(runTest(answers, test, nameText(id))) << test;
    }
    return answers;
}

static std::vector<Answers> buildAllAnswers()
{
    std::vector<Answers> answers;
    for (int kind = 0; kind < kFigureKindCount; ++kind)
        answers.push_back(
            buildAnswers(modelFor(FigureKind(kind)), kind ? &answers.front() : nullptr));
    return answers;
}

static bool passes(const QString& name, NameTest test, const FigureModel& model)
{
    static const std::vector<Answers> allAnswers = buildAllAnswers(); // by FigureKind
    const Answers& answers = allAnswers[size_t(model.kind)];
    const int id = nameId(name);
    return id < 0 ? runTest(answers, test, name) : (answers.bits[id] >> test) & 1u;
}

bool isFaceBone(const QString& name, const FigureModel& model)
{
    return passes(name, FaceBone, model);
}

bool isHandBone(const QString& name, const FigureModel& model)
{
    return passes(name, LeftHandBone, model) || passes(name, RightHandBone, model);
}

bool isFootBone(const QString& name, const FigureModel& model)
{
    return passes(name, FootBone, model);
}

bool isExpressionControl(const QString& name, const FigureModel& model)
{
    return passes(name, ExpressionControl, model);
}

bool isTorsoArmControl(const QString& name, const FigureModel& model)
{
    return passes(name, TorsoArmControl, model);
}

bool isLegControl(const QString& name, const FigureModel& model)
{
    return passes(name, LegControl, model);
}

bool isHipControl(const QString& name, const FigureModel& model)
{
    return passes(name, HipControl, model);
}

bool isToeFootControl(const QString& name, const FigureModel& model)
{
    return passes(name, ToeFootControl, model);
}

bool isFootControl(const QString& name, const FigureModel& model)
{
    return passes(name, FootPattern, model) || passes(name, ToeFootControl, model);
}

bool isHandControl(const QString& name, int side, const FigureModel& model)
{
    if (side != LeftSide && side != RightSide)
        return false;
    return passes(name, side == LeftSide ? LeftHandControl : RightHandControl, model);
}

bool boneInPart(const QString& name, BodyPart part, const FigureModel& model)
{
    static const NameTest kTestOfPart[kBodyPartCount]
        = {UpperBodyBone, LegBone, FootBone, FaceBone, LeftHandBone, RightHandBone};
    Q_ASSERT_X(int(part) >= 0 && int(part) < kBodyPartCount, "boneInPart", "one of the parts");
    return passes(name, kTestOfPart[int(part)], model);
}

bool controlInPart(const QString& name, BodyPart part, const FigureModel& model)
{
    switch (part) {
    case BodyPart::UpperBody:
        return isHipControl(name, model) || isTorsoArmControl(name, model);
    case BodyPart::Legs:
        return isHipControl(name, model) || isLegControl(name, model);
    case BodyPart::Feet:
        return isFootControl(name, model);
    case BodyPart::Face:
        return isExpressionControl(name, model);
    case BodyPart::LeftHand:
        return isHandControl(name, LeftSide, model);
    case BodyPart::RightHand:
        return isHandControl(name, RightSide, model);
    }
    return false;
}

} // namespace quillon
