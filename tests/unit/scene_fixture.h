// scene_fixture.h - a scene and an undo stack for the lifetime of a test, and numbers to compare.
#pragma once

#include "dzeulerchoice.h"
#include "dzinexact.h"
#include "dzquat.h"
#include "dzscene.h"
#include "dzundostack.h"
#include "dzvec3.h"

#include <algorithm>
#include <cmath>
#include <memory>

struct SceneFixture {
    DzUndoStack undoStack;
    DzScene scene;
};

// How the host chooses angles, for the lifetime of a test: within limits, or whatever they are.
struct EulerChoice {
    explicit EulerChoice(bool ignoresLimits)
    {
        dzEulerIgnoresLimits = ignoresLimits;
    }
    ~EulerChoice()
    {
        dzEulerIgnoresLimits = false;
    }
};

// The host reads places with noise, for the lifetime of a test.
struct PlaceReadingNoise {
    explicit PlaceReadingNoise(bool on = true)
    {
        dzPlaceReadingNoise = on;
    }
    ~PlaceReadingNoise()
    {
        dzPlaceReadingNoise = false;
    }
};

inline bool nearly(double a, double b, double tolerance)
{
    return std::fabs(a - b) <= tolerance;
}

inline double distance(const DzVec3& a, const DzVec3& b)
{
    return (a - b).length();
}

// Angle in degrees between two rotations, either sign of the quaternions. Through the vector part,
// so that small angles are exact.
inline double angleDeg(const DzQuat& a, const DzQuat& b)
{
    const DzQuat d = a * b.inverse();
    const double v = std::sqrt(d.m_x * d.m_x + d.m_y * d.m_y + d.m_z * d.m_z);
    return 2 * std::atan2(v, std::fabs(d.m_w)) * 180 / 3.14159265358979323846;
}

// Repeatable random numbers, the same on every machine.
class Random {
public:
    explicit Random(unsigned seed)
        : m_state(seed * 2654435761u + 12345u)
    {
    }
    unsigned next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 17;
        m_state ^= m_state << 5;
        return m_state;
    }
    double between(double low, double high)
    {
        return low + (high - low) * (next() / 4294967296.0);
    }
    int below(int n)
    {
        return int(next() % unsigned(n));
    }

private:
    unsigned m_state;
};
