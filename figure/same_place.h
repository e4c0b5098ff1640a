// same_place.h - whether what was read of a place still is what it was, within what a host makes of
// a place that nobody moved.
// A host may compute in single precision, so that two readings of one place differ in their last
// digits, and a place that is written back is not quite the one that was read. Whoever wrote such
// differences back would leave keys and undo steps behind. Values that are no numbers are the same
// as nothing. The host is not known to compare its values itself.
#pragma once

#include "ground/host_types.h"

#include <algorithm>
#include <cmath>

namespace quillon {

static constexpr double kSamePlaceCm = 1e-4;
static constexpr double kSamePlaceShare = 1e-6; // of the longer of the two, from 100 cm on
static constexpr double kSameTurnRad = 1e-6;
static constexpr double kSameScale = 1e-6; // of the largest number, from 1 on

inline bool samePlace(const DzVec3& aCm, const DzVec3& bCm)
{
    const double longerCm = double(std::max(aCm.length(), bCm.length()));
    return double((aCm - bCm).length()) <= std::max(kSamePlaceCm, kSamePlaceShare * longerCm);
}

// Unit quaternions; 0 to pi. q and -q turn alike.
inline double angleBetweenRad(const DzQuat& a, const DzQuat& b)
{
    const DzQuat d = a * b.inverse();
    const double v = std::sqrt(d.m_x * d.m_x + d.m_y * d.m_y + d.m_z * d.m_z);
    return 2 * std::atan2(v, std::fabs(d.m_w));
}

inline bool sameTurn(const DzQuat& a, const DzQuat& b)
{
    return angleBetweenRad(a, b) <= kSameTurnRad;
}

inline double largestNumber(const DzMatrix3& m)
{
    double largest = 0;
    for (int i = 0; i < 12; ++i)
        largest = std::max(largest, std::fabs(double(m[i / 3][i % 3])));
    return largest;
}

// As the host gives a scale: three rows, and a translation below them.
inline bool sameScale(const DzMatrix3& a, const DzMatrix3& b)
{
    const double limit = kSameScale * std::max(1.0, std::max(largestNumber(a), largestNumber(b)));
    bool same = true;
    for (int i = 0; i < 12; ++i)
        same &= std::fabs(double(a[i / 3][i % 3]) - double(b[i / 3][i % 3])) <= limit;
    return same;
}

} // namespace quillon
