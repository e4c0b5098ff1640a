#include "ground/hash.h"

#include <emmintrin.h>

namespace quillon {

static const quint32 kStart = 5381;
static const quint32 kFactor = 33;

static quint32 hashOnward(quint32 hash, const char* bytes, qint64 count)
{
    for (qint64 i = 0; i < count; ++i)
        hash = hash * kFactor + quint32(qint32(static_cast<signed char>(bytes[i])));
    return hash;
}

// ---- a block of bytes at a time
//
// The hash is a polynomial in 33 whose coefficients are the bytes, the last one with power 0. Two
// neighbours make b0 * 33 + b1, which fits 16 bits; each such pair times its power of 33 is added
// up in two parts, the low and the high half of the power, as the register multiplies 16 bits by 16
// and adds in 32.

static const int kRegisterBytes = 16;
static const int kBlockRegisters = 8;
static const int kBlockBytes = kBlockRegisters * kRegisterBytes;
static const int kBlockPairs = kBlockBytes / 2;

static constexpr quint32 powerOfFactor(int exponent)
{
    quint32 power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= kFactor;
    return power;
}

namespace {

struct alignas(16) PairPowers {
    qint16 low[kBlockPairs]; // signed; what that takes too much stands in high
    qint16 high[kBlockPairs];
};

} // namespace

static constexpr PairPowers powersOfBlock()
{
    PairPowers powers = {};
    for (int pair = 0; pair < kBlockPairs; ++pair) {
        const quint32 power = powerOfFactor(kBlockBytes - 2 - 2 * pair);
        powers.low[pair] = qint16(power & 0xffff);
        powers.high[pair] = qint16((power - quint32(qint32(powers.low[pair]))) >> 16);
    }
    return powers;
}

static constexpr PairPowers kPowers = powersOfBlock();

static __m128i load(const void* from)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

static __m128i pairsOf(__m128i bytes) // 8 times b0 * 33 + b1
{
    const __m128i first = _mm_slli_epi16(bytes, 8); // b0 * 256
    const __m128i times33 = _mm_mulhi_epi16(first, _mm_set1_epi16(qint16(kFactor * 256)));
    return _mm_add_epi16(times33, _mm_srai_epi16(bytes, 8));
}

static __m128i product(__m128i a, quint32 b) // of four lanes, each modulo 2^32
{
    const __m128i factor = _mm_set1_epi32(int(b));
    const __m128i even = _mm_mul_epu32(a, factor);
    const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), factor);
    const __m128i lowHalves = _mm_set_epi32(0, -1, 0, -1);
    return _mm_or_si128(_mm_and_si128(even, lowHalves), _mm_slli_epi64(odd, 32));
}

// Four numbers whose sum is the block's share.
static __m128i shareOf(const char* block)
{
    __m128i low = _mm_setzero_si128(), high = _mm_setzero_si128();
    for (int i = 0; i < kBlockRegisters; ++i) {
        const __m128i pairs = pairsOf(load(block + i * kRegisterBytes));
        const int at = i * kRegisterBytes / 2;
        low = _mm_add_epi32(low, _mm_madd_epi16(pairs, load(kPowers.low + at)));
        high = _mm_add_epi32(high, _mm_madd_epi16(pairs, load(kPowers.high + at)));
    }
    return _mm_add_epi32(low, _mm_slli_epi32(high, 16));
}

static quint32 sumOf(__m128i lanes)
{
    alignas(16) quint32 lane[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(lane), lanes);
    return lane[0] + lane[1] + lane[2] + lane[3];
}

quint32 djb2Hash(const char* bytes, qint64 count)
{
    const qint64 inBlocks = count - count % kBlockBytes;
    __m128i lanes = _mm_cvtsi32_si128(int(kStart));
    for (qint64 at = 0; at < inBlocks; at += kBlockBytes)
        lanes = _mm_add_epi32(product(lanes, powerOfFactor(kBlockBytes)), shareOf(bytes + at));
    return hashOnward(sumOf(lanes), bytes + inBlocks, count - inBlocks);
}

} // namespace quillon
