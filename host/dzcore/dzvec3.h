// dzvec3.h - a point or a direction, three single-precision numbers. Centimetres in the scene;
// radians where it carries Euler angles.
#pragma once

#include "dzcore_export.h"

#include <cmath>

class DzVec3 {
public:
    DzVec3()
        : m_x(0)
        , m_y(0)
        , m_z(0)
        , m_w(0)
    {
    }
    DzVec3(float x, float y, float z, float w = 0)
        : m_x(x)
        , m_y(y)
        , m_z(z)
        , m_w(w)
    {
    }

    float& operator[](int i) // 0..2: x, y, z
    {
        return i == 0 ? m_x : i == 1 ? m_y : m_z;
    }
    float operator[](int i) const
    {
        return i == 0 ? m_x : i == 1 ? m_y : m_z;
    }

    void setValue(float x, float y, float z)
    {
        m_x = x;
        m_y = y;
        m_z = z;
    }

    DzVec3 operator-() const
    {
        return DzVec3(-m_x, -m_y, -m_z);
    }
    DzVec3 operator+(const DzVec3& v) const
    {
        return DzVec3(m_x + v.m_x, m_y + v.m_y, m_z + v.m_z);
    }
    DzVec3 operator-(const DzVec3& v) const
    {
        return DzVec3(m_x - v.m_x, m_y - v.m_y, m_z - v.m_z);
    }
    DzVec3 operator*(float f) const
    {
        return DzVec3(m_x * f, m_y * f, m_z * f);
    }
    DzVec3 operator/(float f) const
    {
        return DzVec3(m_x / f, m_y / f, m_z / f);
    }
    DzVec3& operator+=(const DzVec3& v)
    {
        return *this = *this + v;
    }
    DzVec3& operator-=(const DzVec3& v)
    {
        return *this = *this - v;
    }
    DzVec3& operator*=(float f)
    {
        return *this = *this * f;
    }
    bool operator==(const DzVec3& v) const // exact
    {
        return m_x == v.m_x && m_y == v.m_y && m_z == v.m_z;
    }
    bool operator!=(const DzVec3& v) const
    {
        return !(*this == v);
    }

    float dot(const DzVec3& v) const
    {
        return m_x * v.m_x + m_y * v.m_y + m_z * v.m_z;
    }
    DzVec3 cross(const DzVec3& v) const
    {
        return DzVec3(
            m_y * v.m_z - m_z * v.m_y, m_z * v.m_x - m_x * v.m_z, m_x * v.m_y - m_y * v.m_x);
    }
    float length() const
    {
        return std::sqrt(dot(*this));
    }
    void normalize() // a null vector stays as it is
    {
        *this = normalized();
    }
    DzVec3 normalized() const
    {
        const float len = length();
        return len > 0 ? *this / len : *this;
    }

    float m_x, m_y, m_z, m_w;
};
