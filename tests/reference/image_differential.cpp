#include "reference/image_differential.h"

#include "finder/image_match.h"
#include "reference/pass_tables.h"

#include <cmath>
#include <limits>

namespace quillon {
namespace reference {

// ---- made-up tables and hips

static Quat product(const Quat& a, const Quat& b) // turns by a first
{
    return Quat {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
        a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
        a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
        a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

static Images imagesOf(const Quat& q)
{
    return guessedImages(q.x, q.y, q.z, q.w);
}

// Sines by a sum of terms, as no two libraries need to agree on theirs.
static Quat yawOf(int deg)
{
    const double half = -deg * 0.017453292519943295 / 2;
    double sine = 0, cosine = 0, term = 1;
    for (int n = 1; n < 40; n += 2) {
        cosine += term;
        term *= half / n;
        sine += term;
        term *= -half / (n + 1);
    }
    return Quat {0, sine, 0, cosine};
}

static float oddNumber(Dice* dice)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const float odd[] = {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 3e38f,
        -3e38f, 1e-42f, -0.0f, 2.5f, -1.5f};
    return odd[dice->below(9)];
}

static YawImages madeYaws(Dice* dice)
{
    const bool upright = dice->below(3) == 0;
    const Quat base = upright ? Quat {0, 0, 0, 1} : randomSignature(dice).slot[0];
    YawImages yaws;
    for (int deg = 0; deg < kYawCount; ++deg)
        yaws.at[deg] = imagesOf(product(base, yawOf(deg)));
    if (dice->below(8) == 0)
        yaws.at[dice->below(kYawCount)].z[dice->below(3)] = oddNumber(dice);
    makeBalls(&yaws);
    return yaws;
}

// Along an axis, so that the distance is as exact as numbers get.
static void moveToLimit(Images* hip, const Images& yaw, Dice* dice)
{
    const bool isY = dice->below(2);
    float* image = isY ? hip->y : hip->z;
    const std::uint32_t axis = dice->below(3);
    for (std::uint32_t i = 0; i < 3; ++i)
        image[i] = isY ? yaw.y[i] : yaw.z[i];
    const float end = dice->below(2) ? 4.0f : -4.0f;
    image[axis] += end > 0 ? 0.74925f : -0.74925f;
    for (std::uint32_t steps = dice->below(9); steps > 0; --steps)
        image[axis] = std::nextafter(image[axis], steps % 2 ? end : -end);
}

static Images madeHip(const YawImages& yaws, Dice* dice)
{
    const Images& yaw = yaws.at[dice->below(kYawCount)];
    Images hip = dice->below(3) == 0 ? imagesOf(randomSignature(dice).slot[0]) : yaw;
    const float spread = float(dice->unit()) * 0.6f;
    for (int i = 0; i < 3; ++i) {
        hip.y[i] += spread * float(dice->unit() - 0.5);
        hip.z[i] += spread * float(dice->unit() - 0.5);
    }
    if (dice->below(3) == 0)
        moveToLimit(&hip, yaw, dice);
    if (dice->below(12) == 0)
        (dice->below(2) ? hip.y : hip.z)[dice->below(3)] = oddNumber(dice);
    return hip;
}

// ---- the plain loop

static float scoreOf(const float* a, const float* b)
{
    const float x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    const float s = (std::sqrt(x * x + y * y + z * z) - 0) / (0.75f - 0) * (0.0f - 1.0f) + 1;
    return s < 0 ? 0 : s < 1 ? s : 1;
}

static bool isNearByLoop(const YawImages& yaws, const Images& hip)
{
    for (const Images& yaw : yaws.at) {
        if (!(scoreOf(hip.y, yaw.y) <= 0.001f || scoreOf(hip.z, yaw.z) <= 0.001f))
            return true;
    }
    return false;
}

bool imagesAgree(std::uint64_t seed, int hips, std::string* why)
{
    Dice dice(seed);
    const YawImages yaws = madeYaws(&dice);
    for (int n = 0; n < hips; ++n) {
        const Images hip = madeHip(yaws, &dice);
        const bool isNear = isNearByLoop(yaws, hip);
        if (isNearSome(yaws, hip) != isNear || (isNear && !mayBeNearSome(yaws, hip))) {
            *why = "seed " + std::to_string(seed) + ", hip " + std::to_string(n);
            return false;
        }
    }
    return true;
}

std::uint64_t checksumOfImages(std::uint64_t seed, int hips)
{
    Dice dice(seed);
    const YawImages yaws = madeYaws(&dice);
    std::uint64_t sum = seed;
    for (int n = 0; n < hips; ++n)
        sum = sum * 31 + (isNearSome(yaws, madeHip(yaws, &dice)) ? 7 : 3);
    return sum;
}

} // namespace reference
} // namespace quillon
