// dztransform.h - double-precision mathematics of the node composition. Private to dzcore.
// Column form throughout: v' = M v. The one place where the host's quaternion convention meets
// ordinary matrices.
#pragma once

#include "dznode.h"

struct Vec3d {
    double v[3];

    double& operator[](int i)
    {
        return v[i];
    }
    double operator[](int i) const
    {
        return v[i];
    }
};

struct Mat3d {
    double m[3][3]; // [row][column]
};

Vec3d toVec3d(const DzVec3&);
DzVec3 toDzVec3(const Vec3d&);
Vec3d operator+(const Vec3d&, const Vec3d&);
Vec3d operator-(const Vec3d&, const Vec3d&);

Mat3d identity3();
Mat3d diagonal3(const Vec3d&);
Mat3d operator*(const Mat3d&, const Mat3d&);
Vec3d operator*(const Mat3d&, const Vec3d&);
Mat3d transposed(const Mat3d&);
bool inverted(const Mat3d&, Mat3d* out); // false when singular; out is then the identity

Mat3d toMat3d(const DzMatrix3&); // transposes the three axis rows
DzMatrix3 toDzMatrix3(const Mat3d&);

Mat3d rotationMatrix(const DzQuat&); // of a unit quaternion
DzQuat rotationQuat(const Mat3d&); // of an orthonormal, right-handed matrix
DzQuat axisTurn(int axis, double angleRad);
DzQuat eulerTurn(DzRotationOrder, const double anglesRad[3]); // angles by axis: x, y, z

// Angles by axis in radians: the middle turn in [-pi/2, pi/2]; near gimbal lock the third is 0.
void decompose(DzRotationOrder, const DzQuat&, double anglesRad[3]);

// What a channel takes of an angle. Radians; low and high count while it is clamped.
struct TurnRange {
    bool locked;
    bool clamped;
    double low;
    double high;
};

// The solution nearest to present (radians, by axis), whole turns included, among those within the
// ranges of clamped channels; where there is none, the nearest of all. A locked channel weighs far
// more than a free one, and keeps its value in gimbal lock where it can.
void decomposeNear(DzRotationOrder, const DzQuat&, const double present[3],
    const TurnRange ranges[3], double anglesRad[3]);

struct DzNode::Transform {
    Vec3d position;
    DzQuat rotation;
    Mat3d scale; // world
    Mat3d linear; // rotation * scale
    Mat3d localScale; // own part of scale
    Vec3d origin;
};
