#include "finder/category_table.h"

#include <cstddef>
#include <iterator>

namespace quillon {

static const double k707 = 0.707f; // the single-precision number, and not 1/sqrt(2)

// clang-format off
static const PartReferences kSittingParts = {
    { 0,      0,      0,     1    }, // hip
    { 0,      0,      0,     1    }, // torso
    {-0.689, -0.104,  0.12,  0.707}, // left shin, right shin
    {-0.689,  0.104, -0.12,  0.707},
    { 0.698,  0.036, -0.122, 0.704}, // left thigh, right thigh
    { 0.698, -0.036,  0.122, 0.704},
    {-0.004,  0,      0.13,  0.991}, // left arm, right arm
    {-0.004,  0,     -0.13,  0.991},
    { 0.268,  0.273,  0.008, 0.924}, // left forearm, right forearm
    { 0.268, -0.273, -0.008, 0.924},
};
static const PartReferences kStraightParts = {
    { 0,      0,      0,     1    },
    { 0,      0,      0,     1    },
    { 0,      0,      0,     1    },
    { 0,      0,      0,     1    },
    { 0,      0,      0,     1    },
    { 0,      0,      0,     1    },
    {-0.008,  0,      0.259, 0.966},
    {-0.008,  0,     -0.259, 0.966},
    { 0,      0,      0,     1    },
    { 0,      0,      0,     1    },
};

static const unsigned kHip = 1u << HipSlot;
static const unsigned kTorso = 1u << TorsoSlot;
static const unsigned kThighs = 1u << LeftThighSlot | 1u << RightThighSlot;

static const CategoryRow kCategories[] = {
    {AllPoses,       { 0,     0,     0,    1   }, &kStraightParts, 0,              false},
    {Sitting,        { 0,     0,     0,    1   }, &kSittingParts,  kHip | kThighs, false},
    {Standing,       { 0,     0,     0,    1   }, &kStraightParts, kHip | kThighs, false},
    {LyingBellyUp,   { 0,    -k707, -k707, 0   }, &kStraightParts, kHip | kTorso,  false},
    {LyingBellyDown, {-k707,  0,     0,    k707}, &kStraightParts, kHip | kTorso,  false},
    {LyingLeftSide,  {-0.5,   0.5,   0.5,  0.5 }, &kStraightParts, kHip,           false},
    {LyingRightSide, {-0.5,  -0.5,  -0.5,  0.5 }, &kStraightParts, kHip,           false},
    {UpsideDown,     { 0,     0,    -1,    0   }, &kStraightParts, kHip,           false},
    {ReferencePose,  { 0,     0,     0,    1   }, nullptr,         0,              true },
};
// clang-format on
static_assert(std::size(kCategories) == std::size_t(kCategoryCount), "one row per category");

bool isCategory(int type)
{
    return type >= 0 && type < kCategoryCount;
}

const CategoryRow& categoryRow(int type)
{
    Q_ASSERT_X(isCategory(type), "categoryRow", "a category");
    const CategoryRow& row = kCategories[type];
    Q_ASSERT_X(row.type == type, "categoryRow", "rows stand in the order of the enumeration");
    return row;
}

DzQuat poseTypeBase(int type)
{
    const CategoryRow& row = categoryRow(type);
    Q_ASSERT_X(row.parts, "poseTypeBase", "the reference pose has no base");
    return DzQuat(row.base[0], row.base[1], row.base[2], row.base[3]);
}

} // namespace quillon
