// likeness_pairs.cpp - random pairs of signatures and how alike they are by the Pose Finder's own
// functions, as JSON on stdout: what the page's likeness.js is held against.
//   likeness_pairs COUNT
#include "finder/pose_similarity.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

using namespace quillon;

static const float kTolerance = 4; // which rejects nothing
static const int kYaws = 360;
static const double kRadPerDeg = 3.14159265358979323846 / 180;

struct Signature {
    DzQuat slot[kSignatureSlots];
};

// As the index file and the page have it.
static DzQuat narrowed(const DzQuat& q)
{
    return DzQuat(
        double(float(q.m_x)), double(float(q.m_y)), double(float(q.m_z)), double(float(q.m_w)));
}

class Dice {
public:
    double between(double low, double high)
    {
        return low + (high - low) * double(m_engine()) / 4294967295.0;
    }
    DzQuat rotation()
    {
        return DzQuat(between(-1, 1), between(-1, 1), between(-1, 1), between(-1, 1));
    }
    Signature signature()
    {
        Signature s;
        for (DzQuat& each : s.slot)
            each = narrowed(rotation());
        return s;
    }

private:
    std::mt19937 m_engine {20};
};

// The other of a pair: unrelated, close, the same, or only turned about the vertical.
static Signature otherOf(const Signature& first, int pair, Dice* dice)
{
    Signature other = pair % 4 == 0 ? dice->signature() : first;
    for (int slot = 0; slot < kSignatureSlots && pair % 4 == 1; ++slot) {
        const DzVec3 axis(float(dice->between(-1, 1)), float(dice->between(-1, 1)), 1);
        other.slot[slot] = narrowed(other.slot[slot] * DzQuat(axis, dice->between(0, 0.3)));
    }
    if (pair % 4 == 3) {
        const DzQuat yaw(DzVec3(0, 1, 0), dice->between(0, 360) * kRadPerDeg);
        other.slot[HipSlot] = narrowed(other.slot[HipSlot] * yaw);
    }
    return other;
}

static float bestYaw(const DzQuat& hip, const DzQuat& base)
{
    float best = 0;
    for (int deg = 0; deg < kYaws; ++deg) {
        const DzQuat turned = base * DzQuat(DzVec3(0, 1, 0), deg * kRadPerDeg);
        best = std::max(best, partSimilarity(hip, turned, kTolerance));
    }
    return best;
}

static double likeness(const Signature& a, const Signature& b, unsigned areas)
{
    double sum = 0;
    int count = 0;
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        if (!(areas >> slot & 1u))
            continue;
        ++count;
        sum += double(slot == HipSlot ? bestYaw(a.slot[slot], b.slot[slot])
                                      : partSimilarity(a.slot[slot], b.slot[slot], kTolerance));
    }
    return count ? sum / count : 1;
}

static void append(const Signature& s, QJsonArray* numbers)
{
    for (const DzQuat& q : s.slot)
        for (const double number : {q.m_x, q.m_y, q.m_z, q.m_w})
            numbers->append(double(float(number)));
}

int main(int argc, char** argv)
{
    const int count = argc > 1 ? std::atoi(argv[1]) : 1000;
    Dice dice;
    QJsonArray signatures, areas, values;
    for (int pair = 0; pair < count; ++pair) {
        const Signature a = dice.signature(), b = otherOf(a, pair, &dice);
        const unsigned bits = pair < 12 ? (pair == 11 ? 0x3ffu
                                      : pair == 10    ? 0u
                                                      : 1u << pair)
                                        : unsigned(dice.between(1, 1023));
        append(a, &signatures);
        append(b, &signatures);
        areas.append(int(bits));
        values.append(likeness(a, b, bits));
    }
    const QJsonObject all {{"signatures", signatures}, {"areas", areas}, {"likeness", values}};
    std::fputs(QJsonDocument(all).toJson(QJsonDocument::Compact).constData(), stdout);
    return 0;
}
