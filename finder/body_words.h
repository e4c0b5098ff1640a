// body_words.h - the words by which a scan tells what a pose file holds, all looked for in one pass
// over its bytes. Owns: nothing.
#pragma once

namespace quillon {

enum BodyWord : unsigned {
    BigToeWord = 1, // "bigtoe"
    PinkyWord = 2, // "pinky"
    HeadWord = 4, // "head"
    BreastWord = 8, // "breast"
    Abdomen2Word = 16, // "abdomen2"
    HeelWord = 32 // "rheel"
};
const unsigned kAllBodyWords = 63;

// Those that stand in the bytes, wherever they stand and without regard to the case of A to Z; the
// sum of BodyWords. Zero bytes and bytes beyond ASCII are bytes as any other. bytes may be null
// when count is 0.
unsigned bodyWordsIn(const char* bytes, int count);

} // namespace quillon
