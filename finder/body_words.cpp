#include "finder/body_words.h"

#include "finder/byte_lanes.h"

namespace quillon {

// Every word has a letter that is rare in presets, and behind it one that tells it from most
// others: bi(gtoe), br(east), (a)bd(omen2), pi(nky), he(ad), (r)he(el). Blocks without a b, an h or
// a p are passed over; in others the places of those pairs are looked at.

static const int kBlockBytes = 4 * kLanes;

namespace {

struct Bytes {
    const char* begin;
    const char* end;
};

} // namespace

static char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

// The word's bit if it stands so many bytes before this place; size counts the zero at its end.
template <int size>
static unsigned wordAt(
    const Bytes& text, const char* at, int before, const char (&word)[size], BodyWord bit)
{
    if (at - text.begin < before || text.end - at < size - 1 - before)
        return 0;
    for (int i = 0; i < size - 1; ++i) {
        if (lowered(at[i - before]) != word[i])
            return 0;
    }
    return bit;
}

// Of the words whose rare letter is this byte.
static unsigned wordsAround(const Bytes& text, const char* at)
{
    switch (lowered(*at)) {
    case 'b':
        return wordAt(text, at, 0, "bigtoe", BigToeWord) | wordAt(text, at, 0, "breast", BreastWord)
            | wordAt(text, at, 1, "abdomen2", Abdomen2Word);
    case 'h':
        return wordAt(text, at, 0, "head", HeadWord) | wordAt(text, at, 1, "rheel", HeelWord);
    case 'p':
        return wordAt(text, at, 0, "pinky", PinkyWord);
    default:
        return 0;
    }
}

// ---- sixteen bytes

// Capitals as small letters; what else changes becomes no letter.
static __m128i foldedAt(const char* from)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    return _mm_or_si128(bytes, _mm_set1_epi8('a' - 'A'));
}

static __m128i are(__m128i bytes, char letter)
{
    return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(letter));
}

static __m128i rareLetters(__m128i folded)
{
    return _mm_or_si128(_mm_or_si128(are(folded, 'b'), are(folded, 'h')), are(folded, 'p'));
}

// Bit n: a pair of letters begins at byte n. Reads 17 bytes.
static unsigned pairsAt(const char* from)
{
    const __m128i here = foldedAt(from), next = foldedAt(from + 1);
    const __m128i isI = are(next, 'i');
    const __m128i behindB = _mm_or_si128(isI, _mm_or_si128(are(next, 'r'), are(next, 'd')));
    const __m128i b = _mm_and_si128(are(here, 'b'), behindB);
    const __m128i h = _mm_and_si128(are(here, 'h'), are(next, 'e'));
    const __m128i p = _mm_and_si128(are(here, 'p'), isI);
    return unsigned(_mm_movemask_epi8(_mm_or_si128(b, _mm_or_si128(h, p))));
}

// ---- a block

static bool hasRareLetter(const char* block)
{
    const __m128i first
        = _mm_or_si128(rareLetters(foldedAt(block)), rareLetters(foldedAt(block + kLanes)));
    const __m128i second = _mm_or_si128(
        rareLetters(foldedAt(block + 2 * kLanes)), rareLetters(foldedAt(block + 3 * kLanes)));
    return _mm_movemask_epi8(_mm_or_si128(first, second)) != 0;
}

static unsigned wordsInBlock(const Bytes& text, const char* block)
{
    unsigned words = 0;
    for (const char* at = block; at < block + kBlockBytes; at += kLanes) {
        for (unsigned pairs = pairsAt(at); pairs != 0; pairs &= pairs - 1)
            words |= wordsAround(text, at + lowestLane(pairs));
    }
    return words;
}

unsigned bodyWordsIn(const char* bytes, int count)
{
    const Bytes text = {bytes, bytes + count};
    const char* at = text.begin;
    unsigned words = 0;
    for (; text.end - at > kBlockBytes && words != kAllBodyWords; at += kBlockBytes) {
        if (hasRareLetter(at))
            words |= wordsInBlock(text, at);
    }
    for (; at < text.end && words != kAllBodyWords; ++at)
        words |= wordsAround(text, at);
    return words;
}

} // namespace quillon
