// dzmatrix3.h - 4 x 3 matrix in row-vector order: rows 0 to 2 are the images of the axes, row 3 is
// a translation. v' = v * M; A * B applies A first.
#pragma once

#include "dzvec3.h"

class DZCORE_EXPORT DzMatrix3 {
public:
    DzMatrix3(bool identity = true); // false: all zero
    DzMatrix3(const DzVec3& row0, const DzVec3& row1, const DzVec3& row2,
        const DzVec3& translation = DzVec3());

    DzVec3& operator[](int row)
    {
        return m_row[row];
    }
    const DzVec3& operator[](int row) const
    {
        return m_row[row];
    }
    const DzVec3& row(int i) const
    {
        return m_row[i];
    }

    DzVec3 multVec(const DzVec3&) const; // with translation
    DzMatrix3 operator*(const DzMatrix3&) const;
    DzMatrix3 inverse() const; // identity when the matrix is singular
    bool isIdentity() const; // exact
    bool operator==(const DzMatrix3&) const; // exact
    bool operator!=(const DzMatrix3& m) const
    {
        return !(*this == m);
    }

private:
    DzVec3 m_row[4];
};
