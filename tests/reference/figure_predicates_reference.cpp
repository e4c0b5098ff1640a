#include "reference/figure_predicates_reference.h"

#include "figure/bone_control_links.h"
#include "figure/bone_table.h"
#include "figure/control_tables.h"

namespace quillon {
namespace reference {

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
// clang-format on

template <int count> static int indexIn(const char* const (&names)[count], const QString& name)
{
    for (int i = 0; i < count; ++i) {
        if (name == QLatin1String(names[i]))
            return i;
    }
    return -1;
}

template <int count> static bool containsOne(const char* const (&names)[count], const QString& name)
{
    for (int i = 0; i < count; ++i) {
        if (name.contains(QLatin1String(names[i])))
            return true;
    }
    return false;
}

int boneIndex(const QString& name)
{
    return indexIn(kBoneTable, name);
}

int controlIndex(const QString& name, bool genesis81)
{
    return genesis81 ? indexIn(kBodyControlTableG81, name) : indexIn(kBodyControlTableG8, name);
}

bool controlDrivesBone(const QString& controlName, int boneNumber, bool genesis81)
{
    const char* const* rows = genesis81 ? kBoneControlLinksG81 : kBoneControlLinksG8;
    const QChar dot = QLatin1Char('.');
    return QString(QLatin1String(rows[boneNumber])).contains(dot + controlName + dot);
}

bool isFaceBone(const QString& name)
{
    return containsOne(kFaceBoneNames, name);
}

bool isExpressionControl(const QString& name, bool genesis81)
{
    return genesis81 ? containsOne(kExpressionControlsG81, name)
                     : containsOne(kExpressionControlsG8, name);
}

bool isTorsoArmControl(const QString& name)
{
    return containsOne(kTorsoArmControls, name);
}

bool isLegControl(const QString& name)
{
    return containsOne(kLegControls, name);
}

bool isHipControl(const QString& name)
{
    return containsOne(kHipControls, name);
}

bool isToeFootControl(const QString& name)
{
    return indexIn(kToeFootControls, name) >= 0;
}

bool isFootControl(const QString& name)
{
    return containsOne(kFootControls, name) || isToeFootControl(name);
}

bool isHandControl(const QString& name, int side)
{
    return side == 1 ? indexIn(kLeftHandControls, name) >= 0
                     : indexIn(kRightHandControls, name) >= 0;
}

} // namespace reference
} // namespace quillon
