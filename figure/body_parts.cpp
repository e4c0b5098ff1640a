#include "figure/body_parts.h"

#include "figure/figure_kind.h"

#include <iterator>
#include <vector>

namespace quillon {

// clang-format off
static const char* const kFaceBoneNames[] = {
    "upperTeeth", "tongue04", "tongue03", "tongue02", "tongue01", "lowerTeeth",
    "lNasolabialLower", "rNasolabialLower", "lNasolabialMouthCorner", "rNasolabialMouthCorner",
    "lLipCorner", "lLipLowerOuter", "lLipLowerInner", "LipLowerMiddle", "rLipLowerInner",
    "rLipLowerOuter", "rLipCorner", "LipBelow", "Chin", "lCheekLower", "rCheekLower", "BelowJaw",
    "lJawClench", "rJawClench", "lowerFaceRig", "lowerJaw", "rBrowInner", "rBrowMid",
    "rBrowOuter", "lBrowInner", "lBrowMid", "lBrowOuter", "CenterBrow", "MidNoseBridge",
    "lEyelidInner", "lEyelidUpperInner", "lEyelidUpper", "lEyelidUpperOuter", "lEyelidOuter",
    "lEyelidLowerOuter", "lEyelidLower", "lEyelidLowerInner", "rEyelidInner", "rEyelidUpperInner",
    "rEyelidUpper", "rEyelidUpperOuter", "rEyelidOuter", "rEyelidLowerOuter", "rEyelidLower",
    "rEyelidLowerInner", "lSquintInner", "lSquintOuter", "rSquintInner", "rSquintOuter",
    "lCheekUpper", "rCheekUpper", "Nose", "lNostril", "rNostril", "lLipBelowNose",
    "rLipBelowNose", "lLipNasolabialCrease", "rLipNasolabialCrease", "lNasolabialUpper",
    "rNasolabialUpper", "lNasolabialMiddle", "rNasolabialMiddle", "LipUpperMiddle",
    "lLipUpperOuter", "lLipUpperInner", "rLipUpperInner", "rLipUpperOuter", "upperFaceRig",
    "lEye", "rEye", "lEar", "rEar",
};

static const char* const kExpressionControlsG81[] = {
    "eCTRLEyesClosedR", "eCTRLEyesClosedL", "facs_",
};

static const char* const kExpressionControlsG8[] = {
    "eCTRLCheekFlexL", "eCTRLCheekFlexR", "eCTRLCheekSlackL", "eCTRLCheekSlackR",
    "eCTRLCheeksBalloonL", "eCTRLCheeksBalloonR", "eCTRLCheeksSuckInL", "eCTRLCheeksSuckInR",
    "eCTRLEyelidsUpperDownR", "eCTRLEyelidsUpperDownL", "eCTRLEyelidsUpperUpL",
    "eCTRLEyelidsUpperUpR", "eCTRLEyesSquintL", "eCTRLEyesSquintR", "eCTRLEyesWidenL",
    "eCTRLEyesWidenR", "eCTRLMouthBareTeeth", "eCTRLMouthNarrowL", "eCTRLMouthNarrowR",
    "eCTRLMouthOpenLipsClose", "eCTRLMouthSide-SideL", "eCTRLMouthSide-SideR", "eCTRLMouthWideL",
    "eCTRLMouthWideR", "eCTRLLipsPressed", "eCTRLLipsPucker", "PHMBrowCompression_HD_div2",
    "eCTRLBrowInnerUp-Down", "eCTRLBrowInnerUp-DownL", "eCTRLBrowInnerUp-DownR",
    "eCTRLBrowOuterUp-Down", "eCTRLBrowOuterUp-DownL", "eCTRLBrowOuterUp-DownR",
    "eCTRLBrowSqueeze", "eCTRLBrowSqueezeL", "eCTRLBrowSqueezeR", "eCTRLBrowUp-Down",
    "eCTRLBrowUp-DownL", "eCTRLBrowUp-DownR", "eCTRLCheekCrease", "ePHMCheekCreaseL",
    "ePHMCheekCreaseR", "eCTRLCheekEyeFlex", "eCTRLCheekEyeFlexL", "eCTRLCheekEyeFlexR",
    "eCTRLCheekFlex-Slack", "eCTRLCheekFlex-SlackL", "eCTRLCheekFlex-SlackR",
    "eCTRLCheeksBalloonPucker", "eCTRLCheeksBalloon-SuckIn", "eCTRLCheeksBalloon-SuckInL",
    "eCTRLCheeksBalloon-SuckInR", "eCTRLCheeksDimpleCreaseHD", "PHMCheeksDimpleCreaseL_HD_div2",
    "PHMCheeksDimpleCreaseR_HD_div2", "eCTRLJawOut-In", "eCTRLJawSide-Side", "eCTRLAfraid_HD",
    "eCTRLAngry_HD", "eCTRLFlirting_HD", "eCTRLFrown_HD", "eCTRLShock_HD",
    "eCTRLSmileFullFace_HD", "eCTRLSmileOpenFullFace_HD", "eCTRLSurprised_HD",
    "eCTRLEyelidsLowerUpDown", "eCTRLEyelidsLowerUpDownL", "eCTRLEyelidsLowerUpDownR",
    "eCTRLEyelidsUpperUp-Down", "eCTRLEyelidsUpperUp-DownL", "eCTRLEyelidsUpperUp-DownR",
    "eCTRLEyesClosed", "eCTRLEyesClosedL", "eCTRLEyesClosedR", "eCTRLEyesCrossed",
    "eCTRLEyesRelax", "eCTRLEyesRelaxL", "eCTRLEyesRelaxR", "eCTRLEyesSideSide",
    "eCTRLEyesSquint-Widen", "eCTRLEyesSquint-WidenL", "eCTRLEyesSquint-WidenR",
    "eCTRLEyesUpDown", "eCTRLMouthClosed", "eCTRLMouthCornerForward-Back",
    "eCTRLMouthCornerForward-BackL", "eCTRLMouthCornerForward-BackR", "eCTRLMouthCornerUp-Down",
    "eCTRLMouthCornerUp-DownL", "eCTRLMouthCornerUp-DownR", "eCTRLMouthFrown", "eCTRLMouthOpen",
    "eCTRLMouthSide-Side", "eCTRLMouthSmile", "eCTRLMouthSmileOpen", "eCTRLMouthSmileSimple",
    "eCTRLMouthSmileSimpleL", "eCTRLMouthSmileSimpleR", "eCTRLMouthWide-Narrow",
    "eCTRLMouthWide-NarrowL", "eCTRLMouthWide-NarrowR", "eCTRLLipBottomOut-In",
    "eCTRLLipBottomOut-InL", "eCTRLLipBottomOut-InR", "eCTRLLipBottomUp-Down",
    "eCTRLLipBottomUp-DownL", "eCTRLLipBottomUp-DownR", "eCTRLLipTopOut-In", "eCTRLLipTopOut-InL",
    "eCTRLLipTopOut-InR", "eCTRLLipTopUp-Down", "eCTRLLipTopUp-DownL", "eCTRLLipTopUp-DownR",
    "eCTRLLipsClosed-BareTeeth", "eCTRLLipsPart", "eCTRLLipsPartCenter", "eCTRLLipsPuckerWide",
    "eCTRLLipsPucker-Pressed", "eCTRLTongueBendTip", "eCTRLTongueCurl", "eCTRLTongueIn-Out",
    "eCTRLTongueNarrow-Wide", "eCTRLTongueRaise-Lower", "eCTRLTongueSide-Side",
    "eCTRLTongueUp-Down", "PHMNoseCompression_HD_div2", "eCTRLNoseScrunch", "eCTRLNoseWrinkle",
    "eCTRLNostrilsFlex", "eCTRLvAA", "eCTRLvEE", "eCTRLvEH", "eCTRLvER", "eCTRLvF", "eCTRLvIH",
    "eCTRLvIY", "eCTRLvK", "eCTRLvL", "eCTRLvM", "eCTRLvOW", "eCTRLvS", "eCTRLvSH", "eCTRLvT",
    "eCTRLvTH", "eCTRLvUW", "eCTRLvW", "CTRLCheeksDimpleCreaseHD",
};

static const char* const kTorsoArmControls[] = {
    "pCTRLWaistSide", "pCTRLTorsoSlump", "pCTRLShldrsFrntBck", "pCTRLrBreastUp-Down",
    "pCTRLrBreastSide-Side", "pCTRLNeckHeadTwist", "pCTRLNeckHeadSide-Side", "pCTRLNeckHeadBend",
    "pCTRLlBreastUp-Down", "pCTRLlBreastSide-Side", "pCTRLBreastsUp-Down", "pCTRLBreastsIn-Out",
    "pCTRLBreastsFlatten", "pCTRLArmsUpRight", "pCTRLArmsUpLeft", "pCTRLArmsUpDwnRight",
    "pCTRLArmsUpDwnLeft", "pCTRLArmsUpDwn", "pCTRLArmsFrntBckRight", "pCTRLArmsFrntBckLeft",
    "pCTRLArmsDownRight", "pCTRLArmsDownLeft", "pCTRLFlexBiceps_twist_R",
    "pCTRLFlexBiceps_twist_L", "pCTRLBreastsSide-Side", "pCTRLBreastsHangForward",
    "pCTRLWaistTwist", "pCTRLWaistBend", "pCTRLShouldersShrug", "pCTRLArmsFrntBck",
};

static const char* const kLegControls[] = {
    "pCTRLLegsSpreadRight", "pCTRLLegsSpreadLeft", "pCTRLLegsSpread", "pCTRLKneesUpLeft",
    "pCTRLKneesUp", "pCTRLKneesUpRight",
};

static const char* const kHipControls[] = {
    "pCTRLHipBendFwd", "pCTRLHipBendBck", "pCTRLHipBend",
};

static const char* const kToeFootControls[] = {
    "pCTRLlRingToeBend", "pCTRLlPinkyToeBend", "pCTRLlMidToeBend", "pCTRLlIndexToeBend",
    "pCTRLlToesSpread", "pCTRLlToesSmallCurl", "pCTRLlToesFanDown", "pCTRLlBigToeBend",
    "pCTRLlFootTipToes", "pCTRLlFootHeeledShoe", "pCTRLlFootTwist", "pCTRLlFootRoll",
    "pCTRLrRingToeBend", "pCTRLrPinkyToeBend", "pCTRLrMidToeBend", "pCTRLrIndexToeBend",
    "pCTRLrToesSpread", "pCTRLrToesSmallCurl", "pCTRLrToesFanDown", "pCTRLrBigToeBend",
    "pCTRLrFootTipToes", "pCTRLrFootHeeledShoe", "pCTRLrFootTwist", "pCTRLrFootRoll",
};

static const char* const kFootControls[] = {
    "pCTRLrToesSpread", "pCTRLrToesSmallCurl", "pCTRLrToesFanDown", "pCTRLrFootTwist",
    "pCTRLrFootRoll", "pCTRLrFootHeeledShoe", "pCTRLrBigToeBend", "pCTRLlToesSpread",
    "pCTRLlToesSmallCurl", "pCTRLlToesFanDown", "pCTRLlFootTwist", "pCTRLlFootRoll",
    "pCTRLlFootHeeledShoe", "pCTRLlBigToeBend", "pCTRLrFootTipToes", "pCTRLlFootTipToes",
};

static const char* const kLeftHandControls[] = {
    "pCTRLlThumbInOut", "pCTRLlThumbGrasp", "pCTRLlThumbFist", "pCTRLlThumbBend",
    "pCTRLlRingBend", "pCTRLlPinkyBend", "pCTRLlMidBend", "pCTRLlIndexBend", "pCTRLlHandSpread",
    "pCTRLlHandGrasp", "pCTRLlHandFist", "pCTRLlHandChop", "pCTRLlFingersOut",
    "pCTRLlFingersInOut", "pCTRLlFingersIn", "pCTRLlFingersGrasp", "pCTRLlFingersFist",
};

static const char* const kRightHandControls[] = {
    "pCTRLrThumbInOut", "pCTRLrThumbGrasp", "pCTRLrThumbFist", "pCTRLrThumbBend",
    "pCTRLrRingBend", "pCTRLrPinkyBend", "pCTRLrMidBend", "pCTRLrIndexBend", "pCTRLrHandSpread",
    "pCTRLrHandGrasp", "pCTRLrHandFist", "pCTRLrHandChop", "pCTRLrFingersOut",
    "pCTRLrFingersInOut", "pCTRLrFingersIn", "pCTRLrFingersGrasp", "pCTRLrFingersFist",
};

static const char* const kUpperBodyBones[] = {
    "hip", "abdomenLower", "abdomenUpper", "chestLower", "chestUpper", "lCollar", "rCollar",
    "lShldrBend", "lShldrTwist", "rShldrBend", "rShldrTwist", "lForearmBend", "lForearmTwist",
    "rForearmBend", "rForearmTwist", "neckLower", "neckUpper", "head", "lPectoral", "rPectoral",
};

static const char* const kLegBones[] = {
    "hip", "pelvis", "lThighBend", "lThighTwist", "rThighBend", "rThighTwist", "lShin", "rShin",
};

static const char* const kFeetBones[] = {
    "lFoot", "rFoot", "lMetatarsals", "rMetatarsals", "lToe", "rToe", "lBigToe", "lBigToe_2",
    "lSmallToe1", "lSmallToe1_2", "lSmallToe2", "lSmallToe2_2", "lSmallToe3", "lSmallToe3_2",
    "lSmallToe4", "lSmallToe4_2", "rBigToe", "rBigToe_2", "rSmallToe1", "rSmallToe1_2",
    "rSmallToe2", "rSmallToe2_2", "rSmallToe3", "rSmallToe3_2", "rSmallToe4", "rSmallToe4_2",
};

static const char* const kLeftHandBones[] = {
    "lHand", "lThumb1", "lThumb2", "lThumb3", "lCarpal1", "lIndex1", "lIndex2", "lIndex3",
    "lCarpal2", "lMid1", "lMid2", "lMid3", "lCarpal3", "lRing1", "lRing2", "lRing3", "lCarpal4",
    "lPinky1", "lPinky2", "lPinky3",
};

static const char* const kRightHandBones[] = {
    "rHand", "rThumb1", "rThumb2", "rThumb3", "rCarpal1", "rIndex1", "rIndex2", "rIndex3",
    "rCarpal2", "rMid1", "rMid2", "rMid3", "rCarpal3", "rRing1", "rRing2", "rRing3", "rCarpal4",
    "rPinky1", "rPinky2", "rPinky3",
};
// clang-format on

static_assert(std::size(kFaceBoneNames) == 77, "face bones");
static_assert(std::size(kExpressionControlsG81) == 3, "expression controls of Genesis 8.1");
static_assert(std::size(kExpressionControlsG8) == 147, "expression controls of Genesis 8");
static_assert(std::size(kTorsoArmControls) == 30, "torso and arm controls");
static_assert(std::size(kLegControls) == 6, "leg controls");
static_assert(std::size(kHipControls) == 3, "hip controls");
static_assert(std::size(kToeFootControls) == 24, "toe and foot controls, exact");
static_assert(std::size(kFootControls) == 16, "foot controls");
static_assert(std::size(kLeftHandControls) == 17, "controls of one hand");
static_assert(std::size(kRightHandControls) == 17, "controls of one hand");
static_assert(
    std::size(kUpperBodyBones) == 20, "bones of torso, neck, head and arms, with the hip");
static_assert(std::size(kLegBones) == 8, "bones of both legs, with hip and pelvis");
static_assert(std::size(kFeetBones) == 26, "bones of both feet");
static_assert(std::size(kLeftHandBones) == 20, "bones of one hand");
static_assert(std::size(kRightHandBones) == 20, "bones of one hand");

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
