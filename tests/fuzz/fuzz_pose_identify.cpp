// What a scan takes a file for: the words in its bytes, its figure code and its hash. The first
// line is the file's path.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include "finder/body_words.h"
#include "finder/pose_identify.h"
#include "ground/hash.h"
#include "reference/finder_reference.h"
#include "reference/hash_reference.h"

using namespace quillon;

static const struct {
    const char* text;
    unsigned bit;
} kWords[] = {{"bigtoe", BigToeWord}, {"pinky", PinkyWord}, {"head", HeadWord},
    {"breast", BreastWord}, {"abdomen2", Abdomen2Word}, {"rheel", HeelWord}};

QUILLON_FUZZ_TARGET(pose_identify)
{
    const QByteArray line = input.takeLine();
    const QString path = QString::fromUtf8(line.constData(), line.size());
    const unsigned words = reference::bodyWordsIn(input.copy());
    FUZZ_CHECK(bodyWordsIn(input.bytes, input.count) == words);
    for (const auto& word : kWords)
        FUZZ_CHECK(containsWord(input.bytes, input.count, word.text) == ((words & word.bit) != 0));
    FUZZ_CHECK(figureCodeOf(input.bytes, input.count, path)
        == reference::figureCodeOf(input.copy(), path));
    FUZZ_CHECK(djb2Hash(input.bytes, input.count) == reference::djb2Hash(input.bytes, input.count));
}
