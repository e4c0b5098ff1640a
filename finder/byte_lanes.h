// byte_lanes.h - sixteen bytes side by side, one register of every x86-64.
// The only file of this folder that knows compilers apart. Owns: nothing.
#pragma once

#include <emmintrin.h>
#ifdef _MSC_VER
#include <intrin.h>
#endif

namespace quillon {

const int kLanes = 16;
const unsigned kAllLanes = (1u << kLanes) - 1;

struct alignas(16) ByteLanes {
    unsigned char at[kLanes];
};

inline __m128i lanesOf(const ByteLanes& bytes)
{
    return _mm_load_si128(reinterpret_cast<const __m128i*>(bytes.at));
}

inline ByteLanes bytesOf(__m128i lanes)
{
    ByteLanes bytes;
    _mm_store_si128(reinterpret_cast<__m128i*>(bytes.at), lanes);
    return bytes;
}

inline ByteLanes everyLane(int byte) // 0..255
{
    return bytesOf(_mm_set1_epi8(char(byte)));
}

inline unsigned lanesThatAreZero(__m128i lanes) // bit n: lane n
{
    return unsigned(_mm_movemask_epi8(_mm_cmpeq_epi8(lanes, _mm_setzero_si128())));
}

inline int lowestLane(unsigned mask) // of a mask that is not 0
{
#ifdef _MSC_VER
    unsigned long lane;
    _BitScanForward(&lane, mask);
    return int(lane);
#else
    return __builtin_ctz(mask);
#endif
}

} // namespace quillon
