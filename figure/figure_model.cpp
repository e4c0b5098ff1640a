#include "figure/figure_model.h"

#include "figure/bone_control_links.h"
#include "figure/bone_table.h"
#include "figure/control_tables.h"
#include "figure/mirror_names.h"
#include "figure/part_tables.h"

#include <iterator>

namespace quillon {

template <int count> static constexpr NameList list(const char* const (&names)[count])
{
    return NameList {names, count};
}

static const char* const kNamesG8[] = {"Genesis8Female", "Genesis8Male"};
static const char* const kNamesG81[] = {"Genesis8_1Female", "Genesis8_1Male"};

// clang-format off
static const SignatureBones kSignatureBones[] = {
    {{"pelvis"}}, // times the hip in the world
    {{"chestUpper", "chestLower", "abdomenUpper", "abdomenLower"}},
    {{"lShin"}},
    {{"rShin"}},
    {{"lThighBend"}},
    {{"rThighBend"}},
    {{"lShldrBend", "lCollar"}},
    {{"rShldrBend", "rCollar"}},
    {{"lForearmBend"}},
    {{"rForearmBend"}},
};

// A further generation goes here, as another row:
//   {FigureKind::Newer, list(kNamesNewer), list(kBoneTable), list(kControlTableNewer), ...},
static const FigureModel kModels[] = {
    {
        FigureKind::Genesis8, list(kNamesG8),
        list(kBoneTable), list(kBodyControlTableG8), kBoneControlLinksG8,
        {
            list(kFaceBoneNames), list(kExpressionControlsG8), list(kTorsoArmControls),
            list(kLegControls), list(kHipControls), list(kFootControls), list(kToeFootControls),
            list(kLeftHandControls), list(kRightHandControls), list(kUpperBodyBones),
            list(kLegBones), list(kFeetBones), list(kLeftHandBones), list(kRightHandBones),
        },
        list(kPairedLimbs), list(kPairedBiceps), list(kNegatedFaceG8), list(kNegatedBody),
        {"eCTRL", "L", "R", true},
        list(kTranslatableBones), list(kFaceCorrectives),
        kBodyCorrectives, int(std::size(kBodyCorrectives)), false, kSignatureBones,
    },
    {
        FigureKind::Genesis8_1, list(kNamesG81),
        list(kBoneTable), list(kBodyControlTableG81), kBoneControlLinksG81,
        {
            list(kFaceBoneNames), list(kExpressionControlsG81), list(kTorsoArmControls),
            list(kLegControls), list(kHipControls), list(kFootControls), list(kToeFootControls),
            list(kLeftHandControls), list(kRightHandControls), list(kUpperBodyBones),
            list(kLegBones), list(kFeetBones), list(kLeftHandBones), list(kRightHandBones),
        },
        list(kPairedLimbs), list(kPairedBiceps), list(kNegatedFaceG81), list(kNegatedBody),
        {"facs_", "Left", "Right", false},
        list(kTranslatableBones), list(kFaceCorrectives),
        kBodyCorrectives, int(std::size(kBodyCorrectives)), true, kSignatureBones,
    },
};
// clang-format on

static_assert(std::size(kModels) == kFigureKindCount, "one row per kind, in their order");
static_assert(std::size(kSignatureBones) == kSignatureRows, "one row per slot");

const FigureModel& modelFor(FigureKind kind)
{
    return kModels[int(kind)];
}

} // namespace quillon
