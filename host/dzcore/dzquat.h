// dzquat.h - rotations as quaternions, in the host's convention:
//   rotated vector  q . v = conj(q) v q      (Hamilton product of the stored numbers)
//   right-handed turn by a about unit n      stored (-sin(a/2) n, cos(a/2))
//   product  a * b                           turns by a first, then by b
//   world and local                          world = local * parentWorld
// Ordinary column-vector mathematics meets this convention by conjugating on the way in and out.
#pragma once

#include "dzmatrix3.h"
#include "dzrotationorder.h"

class DZCORE_EXPORT DzQuat {
public:
    DzQuat() // identity
        : m_x(0)
        , m_y(0)
        , m_z(0)
        , m_w(1)
    {
    }
    DzQuat(double x, double y, double z, double w, bool normalize = true);
    DzQuat(const DzVec3& axis, double angleRad); // axis need not be of unit length
    DzQuat(DzRotationOrder::RotOrder order, const DzVec3& anglesRad);
    explicit DzQuat(const DzMatrix3&); // of an orthonormal, right-handed matrix

    void setValue(double x, double y, double z, double w, bool normalize = true);
    void setValue(const DzVec3& axis, double angleRad);
    void setValue(DzRotationOrder::RotOrder order, const DzVec3& anglesRad);
    void setValue(const DzMatrix3&);

    // Axis (unit) and right-handed angle in [0, 2 pi]; the identity gives (0, 0, 0) and 0.
    double getValue(DzVec3& axis) const;
    // Euler angles in radians: the middle turn in [-pi/2, pi/2]; near gimbal lock the third is 0.
    void getValue(DzRotationOrder::RotOrder order, DzVec3& anglesRad) const;
    void getMatrix(DzMatrix3&) const;

    DzQuat operator*(const DzQuat&) const; // as computed, never sign-normalised
    DzQuat& operator*=(const DzQuat& q)
    {
        return *this = *this * q;
    }
    DzQuat inverse() const;
    void invert()
    {
        *this = inverse();
    }
    DzVec3 multVec(const DzVec3&) const;
    bool isIdentity() const; // exact, either sign
    void normalize(); // a null quaternion becomes the identity
    double length() const;
    bool operator==(const DzQuat&) const; // exact
    bool operator!=(const DzQuat& q) const
    {
        return !(*this == q);
    }

    static DzQuat slerp(const DzQuat& from, const DzQuat& to, double t); // shorter way round

    double m_x, m_y, m_z, m_w;
};
