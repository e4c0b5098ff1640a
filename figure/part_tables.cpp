#include "figure/part_tables.h"

namespace quillon {

// clang-format off
const char* const kFaceBoneNames[] = {
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

const char* const kExpressionControlsG81[] = {
    "eCTRLEyesClosedR", "eCTRLEyesClosedL", "facs_",
};

const char* const kExpressionControlsG8[] = {
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

const char* const kTorsoArmControls[] = {
    "pCTRLWaistSide", "pCTRLTorsoSlump", "pCTRLShldrsFrntBck", "pCTRLrBreastUp-Down",
    "pCTRLrBreastSide-Side", "pCTRLNeckHeadTwist", "pCTRLNeckHeadSide-Side", "pCTRLNeckHeadBend",
    "pCTRLlBreastUp-Down", "pCTRLlBreastSide-Side", "pCTRLBreastsUp-Down", "pCTRLBreastsIn-Out",
    "pCTRLBreastsFlatten", "pCTRLArmsUpRight", "pCTRLArmsUpLeft", "pCTRLArmsUpDwnRight",
    "pCTRLArmsUpDwnLeft", "pCTRLArmsUpDwn", "pCTRLArmsFrntBckRight", "pCTRLArmsFrntBckLeft",
    "pCTRLArmsDownRight", "pCTRLArmsDownLeft", "pCTRLFlexBiceps_twist_R",
    "pCTRLFlexBiceps_twist_L", "pCTRLBreastsSide-Side", "pCTRLBreastsHangForward",
    "pCTRLWaistTwist", "pCTRLWaistBend", "pCTRLShouldersShrug", "pCTRLArmsFrntBck",
};

const char* const kLegControls[] = {
    "pCTRLLegsSpreadRight", "pCTRLLegsSpreadLeft", "pCTRLLegsSpread", "pCTRLKneesUpLeft",
    "pCTRLKneesUp", "pCTRLKneesUpRight",
};

const char* const kHipControls[] = {
    "pCTRLHipBendFwd", "pCTRLHipBendBck", "pCTRLHipBend",
};

const char* const kToeFootControls[] = {
    "pCTRLlRingToeBend", "pCTRLlPinkyToeBend", "pCTRLlMidToeBend", "pCTRLlIndexToeBend",
    "pCTRLlToesSpread", "pCTRLlToesSmallCurl", "pCTRLlToesFanDown", "pCTRLlBigToeBend",
    "pCTRLlFootTipToes", "pCTRLlFootHeeledShoe", "pCTRLlFootTwist", "pCTRLlFootRoll",
    "pCTRLrRingToeBend", "pCTRLrPinkyToeBend", "pCTRLrMidToeBend", "pCTRLrIndexToeBend",
    "pCTRLrToesSpread", "pCTRLrToesSmallCurl", "pCTRLrToesFanDown", "pCTRLrBigToeBend",
    "pCTRLrFootTipToes", "pCTRLrFootHeeledShoe", "pCTRLrFootTwist", "pCTRLrFootRoll",
};

const char* const kFootControls[] = {
    "pCTRLrToesSpread", "pCTRLrToesSmallCurl", "pCTRLrToesFanDown", "pCTRLrFootTwist",
    "pCTRLrFootRoll", "pCTRLrFootHeeledShoe", "pCTRLrBigToeBend", "pCTRLlToesSpread",
    "pCTRLlToesSmallCurl", "pCTRLlToesFanDown", "pCTRLlFootTwist", "pCTRLlFootRoll",
    "pCTRLlFootHeeledShoe", "pCTRLlBigToeBend", "pCTRLrFootTipToes", "pCTRLlFootTipToes",
};

const char* const kLeftHandControls[] = {
    "pCTRLlThumbInOut", "pCTRLlThumbGrasp", "pCTRLlThumbFist", "pCTRLlThumbBend",
    "pCTRLlRingBend", "pCTRLlPinkyBend", "pCTRLlMidBend", "pCTRLlIndexBend", "pCTRLlHandSpread",
    "pCTRLlHandGrasp", "pCTRLlHandFist", "pCTRLlHandChop", "pCTRLlFingersOut",
    "pCTRLlFingersInOut", "pCTRLlFingersIn", "pCTRLlFingersGrasp", "pCTRLlFingersFist",
};

const char* const kRightHandControls[] = {
    "pCTRLrThumbInOut", "pCTRLrThumbGrasp", "pCTRLrThumbFist", "pCTRLrThumbBend",
    "pCTRLrRingBend", "pCTRLrPinkyBend", "pCTRLrMidBend", "pCTRLrIndexBend", "pCTRLrHandSpread",
    "pCTRLrHandGrasp", "pCTRLrHandFist", "pCTRLrHandChop", "pCTRLrFingersOut",
    "pCTRLrFingersInOut", "pCTRLrFingersIn", "pCTRLrFingersGrasp", "pCTRLrFingersFist",
};

const char* const kUpperBodyBones[] = {
    "hip", "abdomenLower", "abdomenUpper", "chestLower", "chestUpper", "lCollar", "rCollar",
    "lShldrBend", "lShldrTwist", "rShldrBend", "rShldrTwist", "lForearmBend", "lForearmTwist",
    "rForearmBend", "rForearmTwist", "neckLower", "neckUpper", "head", "lPectoral", "rPectoral",
};

const char* const kLegBones[] = {
    "hip", "pelvis", "lThighBend", "lThighTwist", "rThighBend", "rThighTwist", "lShin", "rShin",
};

const char* const kFeetBones[] = {
    "lFoot", "rFoot", "lMetatarsals", "rMetatarsals", "lToe", "rToe", "lBigToe", "lBigToe_2",
    "lSmallToe1", "lSmallToe1_2", "lSmallToe2", "lSmallToe2_2", "lSmallToe3", "lSmallToe3_2",
    "lSmallToe4", "lSmallToe4_2", "rBigToe", "rBigToe_2", "rSmallToe1", "rSmallToe1_2",
    "rSmallToe2", "rSmallToe2_2", "rSmallToe3", "rSmallToe3_2", "rSmallToe4", "rSmallToe4_2",
};

const char* const kLeftHandBones[] = {
    "lHand", "lThumb1", "lThumb2", "lThumb3", "lCarpal1", "lIndex1", "lIndex2", "lIndex3",
    "lCarpal2", "lMid1", "lMid2", "lMid3", "lCarpal3", "lRing1", "lRing2", "lRing3", "lCarpal4",
    "lPinky1", "lPinky2", "lPinky3",
};

const char* const kRightHandBones[] = {
    "rHand", "rThumb1", "rThumb2", "rThumb3", "rCarpal1", "rIndex1", "rIndex2", "rIndex3",
    "rCarpal2", "rMid1", "rMid2", "rMid3", "rCarpal3", "rRing1", "rRing2", "rRing3", "rCarpal4",
    "rPinky1", "rPinky2", "rPinky3",
};

const char* const kTranslatableBones[] = {
    "abdomenLower", "abdomenUpper", "chestLower", "chestUpper", "lCollar", "rCollar",
    "lShldrBend", "rShldrBend", "lForearmBend", "rForearmBend", "lHand", "rHand", "pelvis",
    "lThighBend", "rThighBend", "lShin", "rShin", "lFoot", "rFoot", "lToe", "rToe", "neckLower",
    "neckUpper", "head", "lPectoral", "rPectoral",
};

const char* const kFaceCorrectives[] = {
    "PHMBrowCompression_HD_div2", "eCTRLCheekCrease", "ePHMCheekCreaseL", "ePHMCheekCreaseR",
    "CTRLCheeksDimpleCreaseHD", "PHMCheeksDimpleCreaseL_HD_div2",
    "PHMCheeksDimpleCreaseR_HD_div2", "eCTRLTongueIn-Out", "eCTRLTongueNarrow-Wide",
    "PHMNoseCompression_HD_div2",
};

const CorrectivePair kBodyCorrectives[] = {
    {"lThighBend", {"pJCMFlexGluteClench_L", "pJCMFlexQuad_L"}},
    {"rThighBend", {"pJCMFlexGluteClench_R", "pJCMFlexQuad_R"}},
    {"lPectoral", {"pPBMlBreastsFlatten", "pPBMlBreastsHangForward"}},
    {"rPectoral", {"pPBMrBreastsFlatten", "pPBMrBreastsHangForward"}},
};
// clang-format on

} // namespace quillon
