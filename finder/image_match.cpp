#include "finder/image_match.h"

#include "finder/byte_lanes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <xmmintrin.h>

namespace quillon {

static const float kLeastScore = 0.001f;
static_assert(kBallRows * kBallLanes * kBallYaws == kYawCount, "each yaw is in one ball");

// ---- two rotations

static float squaredDistance(const float* a, const float* b) // of one axis
{
    const float x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    return x * x + y * y + z * z;
}

// The scores of both axes side by side; the other two lanes are at a distance of 0.
bool areNear(const Images& a, const Images& b)
{
    const __m128 squares = _mm_setr_ps(squaredDistance(a.y, b.y), squaredDistance(a.z, b.z), 0, 0);
    const __m128 share = _mm_div_ps(_mm_sqrt_ps(squares), _mm_set1_ps(kBrowseTolerance));
    const __m128 scores = _mm_sub_ps(_mm_set1_ps(1), share);
    return _mm_movemask_ps(_mm_cmple_ps(scores, _mm_set1_ps(kLeastScore))) == 0;
}

// ---- guesses

static const double kReach = 0.75 * 0.999; // images that are near are less apart
static const double kSlack = 1e-3; // for guesses and single precision, many times over
static const double kUnitTolerance = 1e-5; // of a squared length

Images guessedImages(double x, double y, double z, double w)
{
    if (!(std::fabs(x * x + y * y + z * z + w * w - 1) < kUnitTolerance)) {
        const float none = std::numeric_limits<float>::quiet_NaN();
        return Images {{none, none, none}, {none, none, none}};
    }
    return Images {
        {float(2 * (x * y + w * z)), float(1 - 2 * (x * x + z * z)), float(2 * (y * z - w * x))},
        {float(2 * (x * z - w * y)), float(2 * (y * z + w * x)), float(1 - 2 * (x * x + y * y))}};
}

bool mayBeNear(const Images& guess, const Images& b)
{
    const double most = (kReach + kSlack) * (kReach + kSlack);
    return !(squaredDistance(guess.y, b.y) > most) && !(squaredDistance(guess.z, b.z) > most);
}

// ---- balls

static const float kMostOfAnImage = 2; // of each number; the slack is meant for these

namespace {

struct Ball {
    double centre[3], radius;
    bool isSmall; // all numbers are as those of images; never with a NaN
};

} // namespace

static bool isSmallImage(const float* image)
{
    return std::all_of(
        image, image + 3, [](float each) { return std::fabs(each) <= kMostOfAnImage; });
}

static Ball ballAbout(const float* const (&images)[kBallYaws])
{
    Ball ball = {{0, 0, 0}, 0, true};
    for (const float* image : images) {
        for (int i = 0; i < 3; ++i)
            ball.centre[i] += double(image[i]) / kBallYaws;
        ball.isSmall = ball.isSmall && isSmallImage(image);
    }
    for (const float* image : images) {
        double squares = 0;
        for (int i = 0; i < 3; ++i)
            squares += (image[i] - ball.centre[i]) * (image[i] - ball.centre[i]);
        ball.radius = std::max(ball.radius, std::sqrt(squares));
    }
    return ball;
}

static void putBall(const Ball& ball, int axis, int lane, BallRow* row)
{
    const double outside = kReach + ball.radius + kSlack, inside = kReach - ball.radius - kSlack;
    for (int i = 0; i < 3; ++i)
        row->centre[axis][i][lane] = float(ball.centre[i]);
    row->outside[axis][lane]
        = ball.isSmall ? float(outside * outside) : std::numeric_limits<float>::infinity();
    row->inside[axis][lane] = ball.isSmall && inside > 0 ? float(inside * inside) : -1;
}

static int firstYaw(int row, int lane)
{
    return (row * kBallLanes + lane) * kBallYaws;
}

// ---- rings

static float radiusOf(const float* image)
{
    return std::sqrt(image[0] * image[0] + image[2] * image[2]);
}

static void widen(Span* span, float value)
{
    span->low = std::min(span->low, value);
    span->high = std::max(span->high, value);
}

static void addToRing(const float* image, Ring* ring)
{
    const float infinity = std::numeric_limits<float>::infinity();
    if (!isSmallImage(image))
        *ring = Ring {{-infinity, infinity}, {0, infinity}};
    widen(&ring->height, image[1]);
    widen(&ring->radius, radiusOf(image));
}

static void makeRings(YawImages* yaws)
{
    for (Ring& ring : yaws->rings)
        ring = Ring {{kMostOfAnImage, -kMostOfAnImage}, {2 * kMostOfAnImage, 0}};
    for (const Images& each : yaws->at) {
        addToRing(each.y, &yaws->rings[0]);
        addToRing(each.z, &yaws->rings[1]);
    }
}

void makeBalls(YawImages* yaws)
{
    for (int row = 0; row < kBallRows; ++row) {
        for (int lane = 0; lane < kBallLanes; ++lane) {
            const float *y[kBallYaws], *z[kBallYaws];
            for (int i = 0; i < kBallYaws; ++i) {
                y[i] = yaws->at[firstYaw(row, lane) + i].y;
                z[i] = yaws->at[firstYaw(row, lane) + i].z;
            }
            putBall(ballAbout(y), 0, lane, &yaws->rows[row]);
            putBall(ballAbout(z), 1, lane, &yaws->rows[row]);
        }
    }
    makeRings(yaws);
}

static float gap(const Span& span, float value) // a NaN for a NaN
{
    return value < span.low ? span.low - value
        : value > span.high ? value - span.high
                            : value - value;
}

static bool isOutside(const Ring& ring, const float* image)
{
    const float height = gap(ring.height, image[1]), radius = gap(ring.radius, radiusOf(image));
    return height * height + radius * radius > float((kReach + kSlack) * (kReach + kSlack));
}

bool mayBeNearSome(const YawImages& yaws, const Images& guess)
{
    return !isOutside(yaws.rings[0], guess.y) && !isOutside(yaws.rings[1], guess.z);
}

// ---- the search

static __m128 squaredDistances(const float (&centre)[3][kBallLanes], const float* image)
{
    __m128 sum = _mm_setzero_ps();
    for (int i = 0; i < 3; ++i) {
        const __m128 apart = _mm_sub_ps(_mm_set1_ps(image[i]), _mm_loadu_ps(centre[i]));
        sum = _mm_add_ps(sum, _mm_mul_ps(apart, apart));
    }
    return sum;
}

namespace {

struct BallMasks {
    unsigned possible, sure; // bit n: lane n
};

} // namespace

// What is no number is neither outside nor inside.
static BallMasks masksOf(const BallRow& row, const Images& hip)
{
    const __m128 y = squaredDistances(row.centre[0], hip.y);
    const __m128 z = squaredDistances(row.centre[1], hip.z);
    const __m128 outside = _mm_or_ps(_mm_cmpgt_ps(y, _mm_loadu_ps(row.outside[0])),
        _mm_cmpgt_ps(z, _mm_loadu_ps(row.outside[1])));
    const __m128 inside = _mm_and_ps(
        _mm_cmplt_ps(y, _mm_loadu_ps(row.inside[0])), _mm_cmplt_ps(z, _mm_loadu_ps(row.inside[1])));
    const unsigned all = (1u << kBallLanes) - 1;
    return BallMasks {~unsigned(_mm_movemask_ps(outside)) & all, unsigned(_mm_movemask_ps(inside))};
}

static bool isNearOneOf(const Images* yaws, const Images& hip)
{
    return std::any_of(
        yaws, yaws + kBallYaws, [&hip](const Images& yaw) { return areNear(hip, yaw); });
}

// Most hips that are near one yaw are well inside of some ball, and the first of its yaws will do.
bool isNearSome(const YawImages& yaws, const Images& hip)
{
    if (!mayBeNearSome(yaws, hip))
        return false;
    unsigned possible[kBallRows];
    for (int row = 0; row < kBallRows; ++row) {
        const BallMasks masks = masksOf(yaws.rows[row], hip);
        if (masks.sure && areNear(hip, yaws.at[firstYaw(row, lowestLane(masks.sure))]))
            return true;
        possible[row] = masks.possible;
    }
    for (int row = 0; row < kBallRows; ++row) {
        for (unsigned left = possible[row]; left != 0; left &= left - 1) {
            if (isNearOneOf(yaws.at + firstYaw(row, lowestLane(left)), hip))
                return true;
        }
    }
    return false;
}

} // namespace quillon
