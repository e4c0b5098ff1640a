#include "dztransform.h"

#include <algorithm>
#include <cmath>

static const double kPi = 3.14159265358979323846;
static const double kGimbalCosine = 1e-6; // below it the outer turns cannot be told apart
static const double kLockedWeight = 1e6;
// A channel holds single precision: at 180 degrees an angle read and set again is off by 1e-5.
static const double kRangeSlackRad = 5e-5 * kPi / 180;

Vec3d toVec3d(const DzVec3& a)
{
    return {{a.m_x, a.m_y, a.m_z}};
}

DzVec3 toDzVec3(const Vec3d& a)
{
    return DzVec3(float(a[0]), float(a[1]), float(a[2]));
}

Vec3d operator+(const Vec3d& a, const Vec3d& b)
{
    return {{a[0] + b[0], a[1] + b[1], a[2] + b[2]}};
}

Vec3d operator-(const Vec3d& a, const Vec3d& b)
{
    return {{a[0] - b[0], a[1] - b[1], a[2] - b[2]}};
}

Mat3d identity3()
{
    return diagonal3({{1, 1, 1}});
}

Mat3d diagonal3(const Vec3d& d)
{
    return {{{d[0], 0, 0}, {0, d[1], 0}, {0, 0, d[2]}}};
}

Mat3d operator*(const Mat3d& a, const Mat3d& b)
{
    Mat3d r;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r.m[i][j] = a.m[i][0] * b.m[0][j] + a.m[i][1] * b.m[1][j] + a.m[i][2] * b.m[2][j];
    return r;
}

Vec3d operator*(const Mat3d& a, const Vec3d& x)
{
    Vec3d r;
    for (int i = 0; i < 3; ++i)
        r[i] = a.m[i][0] * x[0] + a.m[i][1] * x[1] + a.m[i][2] * x[2];
    return r;
}

Mat3d transposed(const Mat3d& a)
{
    Mat3d r;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r.m[i][j] = a.m[j][i];
    return r;
}

bool inverted(const Mat3d& a, Mat3d* out)
{
    const auto cofactor = [&a](int i, int j) {
        const int r0 = (i + 1) % 3, r1 = (i + 2) % 3, c0 = (j + 1) % 3, c1 = (j + 2) % 3;
        return a.m[r0][c0] * a.m[r1][c1] - a.m[r0][c1] * a.m[r1][c0];
    };
    const double det
        = a.m[0][0] * cofactor(0, 0) + a.m[0][1] * cofactor(0, 1) + a.m[0][2] * cofactor(0, 2);
    if (det == 0 || !std::isfinite(1 / det)) {
        *out = identity3();
        return false;
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            out->m[j][i] = cofactor(i, j) / det;
    return true;
}

Mat3d toMat3d(const DzMatrix3& a)
{
    Mat3d r;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r.m[i][j] = double(a[j][i]);
    return r;
}

DzMatrix3 toDzMatrix3(const Mat3d& a)
{
    DzMatrix3 r;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r[j][i] = float(a.m[i][j]);
    return r;
}

Mat3d rotationMatrix(const DzQuat& q)
{
    const double x = q.m_x, y = q.m_y, z = q.m_z, w = q.m_w;
    return {{
        {1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y)},
        {2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x)},
        {2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y)},
    }};
}

// The largest of the four components is taken from the diagonal, the others from sums with it.
DzQuat rotationQuat(const Mat3d& r)
{
    const double trace = r.m[0][0] + r.m[1][1] + r.m[2][2];
    double q[4]; // x, y, z, w of the ordinary convention
    if (trace > 0) {
        const double s = std::sqrt(trace + 1) * 2;
        q[3] = s / 4;
        q[0] = (r.m[2][1] - r.m[1][2]) / s;
        q[1] = (r.m[0][2] - r.m[2][0]) / s;
        q[2] = (r.m[1][0] - r.m[0][1]) / s;
    } else {
        int i = r.m[1][1] > r.m[0][0] ? 1 : 0;
        if (r.m[2][2] > r.m[i][i])
            i = 2;
        const int j = (i + 1) % 3, k = (i + 2) % 3;
        const double s = std::sqrt(std::max(0.0, 1 + r.m[i][i] - r.m[j][j] - r.m[k][k])) * 2;
        q[i] = s / 4;
        q[3] = s > 0 ? (r.m[k][j] - r.m[j][k]) / s : 1;
        q[j] = s > 0 ? (r.m[j][i] + r.m[i][j]) / s : 0;
        q[k] = s > 0 ? (r.m[k][i] + r.m[i][k]) / s : 0;
    }
    return DzQuat(-q[0], -q[1], -q[2], q[3]);
}

DzQuat axisTurn(int axis, double angleRad)
{
    double c[4] = {0, 0, 0, std::cos(angleRad / 2)};
    c[axis] = -std::sin(angleRad / 2);
    return DzQuat(c[0], c[1], c[2], c[3], false);
}

DzQuat eulerTurn(DzRotationOrder order, const double anglesRad[3])
{
    DzQuat q = axisTurn(order[0], anglesRad[order[0]]);
    for (int i = 1; i < 3; ++i) {
        const double a = anglesRad[order[i]];
        if (a != 0)
            q = q * axisTurn(order[i], a);
    }
    return q;
}

namespace {

// E = R(k) R(j) R(i), the turn about i first; s = +1 for a cyclic sequence of axes.
struct Sequence {
    int i, j, k;
    double s;
    explicit Sequence(DzRotationOrder order)
        : i(order[0])
        , j(order[1])
        , k(order[2])
        , s((order[0] + 1) % 3 == order[1] ? 1 : -1)
    {
    }
};

struct Solution {
    double first, middle, third;
    bool gimbal;
};

Solution solve(const Sequence& q, const Mat3d& e)
{
    Solution r;
    const double sine = std::max(-1.0, std::min(1.0, -q.s * e.m[q.k][q.i]));
    const double cosine = std::hypot(e.m[q.i][q.i], e.m[q.j][q.i]);
    r.middle = std::atan2(sine, cosine);
    r.gimbal = cosine < kGimbalCosine;
    if (r.gimbal) {
        r.middle = sine > 0 ? kPi / 2 : -kPi / 2;
        r.third = 0;
        r.first = std::atan2(-q.s * e.m[q.j][q.k], e.m[q.j][q.j]);
    } else {
        r.first = std::atan2(q.s * e.m[q.k][q.j], e.m[q.k][q.k]);
        r.third = std::atan2(q.s * e.m[q.j][q.i], e.m[q.i][q.i]);
    }
    return r;
}

double nearestTurn(double angle, double present)
{
    return angle + 2 * kPi * std::floor((present - angle) / (2 * kPi) + 0.5);
}

bool isWithin(const TurnRange& range, double angle)
{
    return !range.clamped
        || (angle >= range.low - kRangeSlackRad && angle <= range.high + kRangeSlackRad);
}

// Brings the angle into the range by whole turns, as near to present as that allows. False: none
// is inside; it is then the nearest without the range.
bool bringNear(const TurnRange& range, double present, double* angle)
{
    *angle = nearestTurn(*angle, present);
    if (isWithin(range, *angle))
        return true;
    const double fullTurn = 2 * kPi;
    const double inside = *angle < range.low
        ? *angle + fullTurn * std::ceil((range.low - kRangeSlackRad - *angle) / fullTurn)
        : *angle + fullTurn * std::floor((range.high + kRangeSlackRad - *angle) / fullTurn);
    if (!isWithin(range, inside))
        return false;
    *angle = inside;
    return true;
}

double cost(const double angles[3], const double present[3], const TurnRange ranges[3])
{
    double sum = 0;
    for (int i = 0; i < 3; ++i) {
        const double d = angles[i] - present[i];
        sum += d * d * (ranges[i].locked ? kLockedWeight : 1);
    }
    return sum;
}

struct Choice {
    bool made, allowed;
    double cost;
    double angles[3];
};

struct Goal {
    const Sequence& seq;
    const double* present;
    const TurnRange* ranges;
};

// Allowed goes before near; of equals the first offered stays.
void offer(const Goal& goal, const Solution& r, Choice* best)
{
    Choice next = {true, true, 0, {0, 0, 0}};
    next.angles[goal.seq.i] = r.first;
    next.angles[goal.seq.j] = r.middle;
    next.angles[goal.seq.k] = r.third;
    for (int i = 0; i < 3; ++i)
        next.allowed &= bringNear(goal.ranges[i], goal.present[i], &next.angles[i]);
    next.cost = cost(next.angles, goal.present, goal.ranges);
    if (!best->made || (next.allowed && !best->allowed)
        || (next.allowed == best->allowed && next.cost < best->cost))
        *best = next;
}

// In gimbal lock only the sum of the outer turns (or their difference) is fixed.
Solution withFirst(const Sequence& seq, const DzQuat& q, Solution r, double first)
{
    const Mat3d e = rotationMatrix(axisTurn(seq.i, -first) * q);
    r.first = first;
    r.third = std::atan2(-seq.s * e.m[seq.i][seq.j], e.m[seq.j][seq.j]);
    return r;
}

Solution withThird(const Sequence& seq, const DzQuat& q, Solution r, double third)
{
    const Mat3d e = rotationMatrix(q * axisTurn(seq.k, -third));
    r.third = third;
    r.first = std::atan2(-seq.s * e.m[seq.j][seq.k], e.m[seq.j][seq.j]);
    return r;
}

// One outer turn keeps its angle; where the ranges forbid that, one of them stands at an end.
void offerLocked(const Goal& goal, const DzQuat& q, const Solution& r, Choice* best)
{
    const Sequence& seq = goal.seq;
    const TurnRange &first = goal.ranges[seq.i], &third = goal.ranges[seq.k];
    const Solution firstKept = withFirst(seq, q, r, goal.present[seq.i]);
    const Solution thirdKept = withThird(seq, q, r, goal.present[seq.k]);
    const bool keepFirst = first.locked && !third.locked;
    offer(goal, keepFirst ? firstKept : thirdKept, best);
    if (best->allowed)
        return;
    offer(goal, keepFirst ? thirdKept : firstKept, best);
    for (double end : {first.low, first.high})
        if (first.clamped)
            offer(goal, withFirst(seq, q, r, end), best);
    for (double end : {third.low, third.high})
        if (third.clamped)
            offer(goal, withThird(seq, q, r, end), best);
}

} // namespace

void decompose(DzRotationOrder order, const DzQuat& q, double anglesRad[3])
{
    const Sequence seq(order);
    const Solution r = solve(seq, rotationMatrix(q));
    anglesRad[seq.i] = r.first;
    anglesRad[seq.j] = r.middle;
    anglesRad[seq.k] = r.third;
}

void decomposeNear(DzRotationOrder order, const DzQuat& q, const double present[3],
    const TurnRange ranges[3], double anglesRad[3])
{
    const Sequence seq(order);
    const Solution r = solve(seq, rotationMatrix(q));
    const Goal goal = {seq, present, ranges};
    Choice best = {false, false, 0, {0, 0, 0}};
    if (r.gimbal) {
        offerLocked(goal, q, r, &best);
    } else {
        offer(goal, r, &best);
        offer(goal, Solution {r.first + kPi, kPi - r.middle, r.third + kPi, false}, &best);
    }
    std::copy(best.angles, best.angles + 3, anglesRad);
}
