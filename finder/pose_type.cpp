#include "finder/pose_type.h"

namespace quillon {

static const int kBaseCount = UpsideDown + 1;
static const double kHalfTurnPart = 0.707f; // the single-precision number, and not 1/sqrt(2)

// clang-format off
static const double kBases[kBaseCount][4] = { // x, y, z, w; made unit length when built
    {0, 0, 0, 1},
    {0, 0, 0, 1},
    {0, 0, 0, 1},
    {0, -kHalfTurnPart, -kHalfTurnPart, 0},
    {-kHalfTurnPart, 0, 0, kHalfTurnPart},
    {-0.5, 0.5, 0.5, 0.5},
    {-0.5, -0.5, -0.5, 0.5},
    {0, 0, -1, 0},
};
// clang-format on

static DzQuat g_bases[kBaseCount];

void buildPoseTypeBases()
{
    for (int type = 0; type < kBaseCount; ++type) {
        const double* q = kBases[type];
        g_bases[type].setValue(q[0], q[1], q[2], q[3]);
    }
}

const DzQuat& poseTypeBase(int type)
{
    Q_ASSERT_X(type >= 0 && type < kBaseCount, "poseTypeBase", "the reference pose has no base");
    return g_bases[type];
}

} // namespace quillon
