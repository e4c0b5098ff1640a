#include "dztransform.h"

#include <algorithm>
#include <cmath>

static const double kPi = 3.14159265358979323846;
static const double kGimbalCosine = 1e-6; // below it the outer turns cannot be told apart
static const double kLockedWeight = 1e6;

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

double cost(const double angles[3], const double present[3], const bool locked[3])
{
    double sum = 0;
    for (int i = 0; i < 3; ++i) {
        const double d = angles[i] - present[i];
        sum += d * d * (locked[i] ? kLockedWeight : 1);
    }
    return sum;
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
    const bool locked[3], double anglesRad[3])
{
    const Sequence seq(order);
    Solution r = solve(seq, rotationMatrix(q));
    if (r.gimbal) {
        // only first + third (or their difference) is fixed: keep one of them
        if (locked[seq.i] && !locked[seq.k]) {
            r.first = present[seq.i];
            const DzQuat rest = axisTurn(seq.i, -r.first) * q;
            const Mat3d e = rotationMatrix(rest);
            r.third = std::atan2(-seq.s * e.m[seq.i][seq.j], e.m[seq.j][seq.j]);
        } else {
            r.third = present[seq.k];
            const DzQuat rest = q * axisTurn(seq.k, -r.third);
            const Mat3d e = rotationMatrix(rest);
            r.first = std::atan2(-seq.s * e.m[seq.j][seq.k], e.m[seq.j][seq.j]);
        }
    }
    double best = -1;
    for (int flip = 0; flip < (r.gimbal ? 1 : 2); ++flip) {
        double a[3];
        a[seq.i] = flip ? r.first + kPi : r.first;
        a[seq.j] = flip ? kPi - r.middle : r.middle;
        a[seq.k] = flip ? r.third + kPi : r.third;
        for (int i = 0; i < 3; ++i)
            a[i] = nearestTurn(a[i], present[i]);
        const double c = cost(a, present, locked);
        if (best < 0 || c < best) {
            best = c;
            std::copy(a, a + 3, anglesRad);
        }
    }
}
