#include "reference/pass_tables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace quillon {
namespace reference {

static const unsigned kFemale = 8, kMale = 264;
static const int kOther[kPassSlots] = {0, 1, 3, 2, 5, 4, 7, 6, 9, 8};

// ---- dice

Dice::Dice(std::uint64_t seed)
    : m_state(seed * 2 + 1)
{
}

std::uint32_t Dice::below(std::uint32_t count)
{
    m_state += 0x9e3779b97f4a7c15u;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
    mixed ^= mixed >> 31;
    return std::uint32_t(((mixed >> 32) * count) >> 32);
}

double Dice::unit()
{
    return below(1u << 31) / 2147483648.0;
}

double Dice::normal()
{
    const double radius = std::sqrt(-2 * std::log(1 - unit()));
    return radius * std::cos(6.283185307179586 * unit());
}

// ---- signatures

static Quat unitLength(const Quat& q)
{
    const double length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    return Quat {q.x / length, q.y / length, q.z / length, q.w / length};
}

Signature noisy(const Signature& signature, double noise, Dice* dice)
{
    Signature result = signature;
    for (Quat& q : result.slot) {
        for (double* each : {&q.x, &q.y, &q.z, &q.w})
            *each += noise * dice->normal();
        q = unitLength(q);
    }
    return result;
}

Signature randomSignature(Dice* dice)
{
    return noisy(Signature {}, 1, dice);
}

// Images by the host's turn: a quaternion is (-sin, cos) of half the angle.
static void putImages(const Quat& q, float* images)
{
    const double y[3] = {
        2 * (q.x * q.y + q.w * q.z), 1 - 2 * (q.x * q.x + q.z * q.z), 2 * (q.y * q.z - q.w * q.x)};
    const double z[3] = {
        2 * (q.x * q.z - q.w * q.y), 2 * (q.y * q.z + q.w * q.x), 1 - 2 * (q.x * q.x + q.y * q.y)};
    for (int i = 0; i < 3; ++i) {
        images[i] = float(y[i]);
        images[3 + i] = float(z[i]);
    }
}

void addSignature(const Signature& signature, PassTable* table)
{
    MirrorRow mirror = {true, {}};
    SimilarRow similar = {true, kFemale, {}};
    for (int slot = 0; slot < kPassSlots; ++slot) {
        const Quat& q = signature.slot[slot];
        mirror.yz[2 * slot] = float(q.y);
        mirror.yz[2 * slot + 1] = float(q.z);
        putImages(q, similar.images + slot * kImageNumbers);
    }
    table->mirror.push_back(mirror);
    table->similar.push_back(similar);
}

PassTable randomTable(int count, Dice* dice)
{
    PassTable table;
    for (int i = 0; i < count; ++i)
        addSignature(randomSignature(dice), &table);
    return table;
}

PassTable clusteredTable(int count, const std::vector<Signature>& centres, double noise, Dice* dice)
{
    PassTable table;
    for (int i = 0; i < count; ++i) {
        const Signature& centre = centres[dice->below(std::uint32_t(centres.size()))];
        addSignature(noisy(centre, noise, dice), &table);
    }
    return table;
}

// ---- adversaries: what becomes of a copy of an earlier signature, or of the rows of a new entry

static Signature turned(Signature signature, Dice* dice) // some q become -q
{
    for (Quat& q : signature.slot) {
        if (dice->below(2))
            q = Quat {-q.x, -q.y, -q.z, -q.w};
    }
    return signature;
}

static Signature mirrored(const Signature& signature, Dice* dice)
{
    Signature result;
    for (int slot = 0; slot < kPassSlots; ++slot) {
        const Quat& q = signature.slot[kOther[slot]];
        result.slot[slot] = Quat {q.x, -q.y, -q.z, q.w};
    }
    return dice->below(2) ? result : noisy(result, 0.03, dice);
}

static float stepped(float value, int steps) // units in the last place
{
    const float end = steps < 0 ? -std::numeric_limits<float>::infinity()
                                : std::numeric_limits<float>::infinity();
    for (int i = std::abs(steps); i > 0; --i)
        value = std::nextafter(value, end);
    return value;
}

static int fewSteps(Dice* dice)
{
    return int(dice->below(7)) - 3;
}

// One number of the later row: its sum with that of the earlier one is 0.1, or nearly.
static void moveToMirrorLimit(const MirrorRow& earlier, MirrorRow* later, Dice* dice)
{
    const int slot = int(dice->below(kPassSlots)), part = int(dice->below(2));
    const float limit = dice->below(2) ? 0.1f : -0.1f;
    const float edge = limit - earlier.yz[2 * kOther[slot] + part];
    later->yz[2 * slot + part] = stepped(edge, fewSteps(dice));
}

// One image of the later row: 0.4995 from that of the earlier one, or nearly.
static void moveToSimilarLimit(const SimilarRow& earlier, SimilarRow* later, Dice* dice)
{
    const std::size_t start = dice->below(2 * kPassSlots) * 3;
    double direction[3], squares = 0;
    const bool alongAxis = dice->below(2);
    const std::uint32_t axis = dice->below(3);
    for (std::uint32_t i = 0; i < 3; ++i) {
        direction[i] = alongAxis ? (i == axis ? 1.0 : 0.0) : dice->normal();
        squares += direction[i] * direction[i];
    }
    const double length = (dice->below(2) ? 0.4995 : -0.4995) / std::sqrt(squares);
    for (std::size_t i = 0; i < 3; ++i) {
        const float edge = float(earlier.images[start + i] + direction[i] * length);
        later->images[start + i] = alongAxis && i != axis ? edge : stepped(edge, fewSteps(dice));
    }
}

static float oddNumber(Dice* dice)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const float odd[] = {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 3e38f,
        -3e38f, 1e-42f, -0.0f, 2.0f, -1.5f};
    return odd[dice->below(9)];
}

static void putOddNumbers(PassTable* table, Dice* dice)
{
    for (std::uint32_t i = dice->below(4); i > 0; --i) {
        table->mirror.back().yz[dice->below(2 * kPassSlots)] = oddNumber(dice);
        table->similar.back().images[dice->below(kPassSlots * kImageNumbers)] = oddNumber(dice);
    }
}

static void addAdversary(std::vector<Signature>* signatures, PassTable* table, Dice* dice)
{
    const std::uint32_t earlier = dice->below(std::uint32_t(signatures->size()));
    const Signature other = (*signatures)[earlier];
    const std::uint32_t kind = dice->below(10);
    // clang-format off
    const Signature own = kind == 0 ? randomSignature(dice)
        : kind == 1 ? turned(other, dice)
        : kind <= 4 ? mirrored(other, dice)
        : kind <= 6 ? noisy(other, 0.2 * dice->unit(), dice)
        : other;
    // clang-format on
    signatures->push_back(own);
    addSignature(own, table);
    if (kind == 3 || kind == 4)
        moveToMirrorLimit(table->mirror[earlier], &table->mirror.back(), dice);
    if (kind >= 6)
        moveToSimilarLimit(table->similar[earlier], &table->similar.back(), dice);
    if (dice->below(12) == 0)
        putOddNumbers(table, dice);
    if (dice->below(6) == 0)
        table->similar.back().figureCode = dice->below(8) ? kMale : dice->below(1000);
    if (dice->below(9) == 0)
        table->mirror.back().takesPart = table->similar.back().takesPart = false;
}

PassTable adversarialTable(int count, Dice* dice)
{
    PassTable table;
    std::vector<Signature> signatures;
    const std::uint32_t fresh = 1 + dice->below(40);
    while (int(table.mirror.size()) < count) {
        if (signatures.empty() || dice->below(fresh) == 0) {
            signatures.push_back(randomSignature(dice));
            addSignature(signatures.back(), &table);
        } else {
            addAdversary(&signatures, &table, dice);
        }
    }
    return table;
}

} // namespace reference
} // namespace quillon
