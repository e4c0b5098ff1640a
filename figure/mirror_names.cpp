#include "figure/mirror_names.h"

namespace quillon {

// clang-format off
const char* const kPairedLimbs[] = {
    "pCTRLLegsSpreadRight", "pCTRLLegsSpreadLeft",
    "pCTRLKneesUpRight",    "pCTRLKneesUpLeft",
    "pCTRLArmsUpRight",     "pCTRLArmsUpLeft",
    "pCTRLArmsUpDwnRight",  "pCTRLArmsUpDwnLeft",
    "pCTRLArmsFrntBckRight", "pCTRLArmsFrntBckLeft",
    "pCTRLArmsDownRight",   "pCTRLArmsDownLeft",
};

const char* const kPairedBiceps[] = {"pCTRLFlexBiceps_twist_R", "pCTRLFlexBiceps_twist_L"};

const char* const kNegatedFaceG8[] = {
    "eCTRLTongueSide-Side", "eCTRLMouthSide-Side", "eCTRLJawSide-Side", "eCTRLEyesSideSide",
};

const char* const kNegatedFaceG81[] = {"facs_ctrl_EyeLookSide-Side"};

const char* const kNegatedBody[] = {
    "pCTRLWaistSide", "pCTRLNeckHeadTwist", "pCTRLNeckHeadSide-Side", "pCTRLBreastsSide-Side",
    "pCTRLWaistTwist",
};
// clang-format on

} // namespace quillon
