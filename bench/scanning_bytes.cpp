// Telling from a file's bytes what it holds, and their hash.
#include "bench/scanning_rows.h"

#include "bench/scanned_texts.h"
#include "finder/pose_identify.h"
#include "ground/hash.h"
#include "posefile/pose_text.h"
#include "reference/finder_reference.h"
#include "reference/hash_reference.h"

namespace quillon {
namespace scanning {

static std::vector<int> textSizes()
{
    return isQuick() ? std::vector<int> {1024, 8192}
                     : std::vector<int> {1024, 8192, 65536, kReadBufferBytes};
}

typedef std::uint32_t (*TextWork)(const QByteArray&);

static std::uint32_t codeOf(const QByteArray& text)
{
    return figureCodeOf(text.constData(), text.size(), malePath());
}

static std::uint32_t literalCodeOf(const QByteArray& text)
{
    return reference::figureCodeOf(text, malePath());
}

static std::uint32_t hashOf(const QByteArray& text)
{
    return djb2Hash(text.constData(), text.size());
}

static std::uint32_t literalHashOf(const QByteArray& text)
{
    return reference::djb2Hash(text.constData(), text.size());
}

static std::uint32_t bothOf(const QByteArray& text)
{
    return codeOf(text) * 31 + hashOf(text);
}

static std::uint32_t literalBothOf(const QByteArray& text)
{
    return literalCodeOf(text) * 31 + literalHashOf(text);
}

static void timeText(
    const char* name, TextWork work, TextWork literal, const std::vector<QByteArray>& texts)
{
    CommonRow before;
    for (const QByteArray& text : texts) {
        CommonRow row;
        row.name = name;
        row.n = text.size();
        row.ms = timed([&] { row.checksum = work(text); });
        std::uint32_t literalSum = 0;
        row.referenceMs = timed([&] { literalSum = literal(text); });
        if (before.n > 0)
            row.exponent = exponentOf(row.ms, row.n, before.ms, before.n);
        row.note = QByteArray::number(double(row.n) / row.ms / 1e6, 'f', 1).toStdString() + " GB/s";
        finish(row, literalSum);
        before = row;
    }
}

void timeTexts(const DzFigure* figure)
{
    std::vector<QByteArray> presets, letters, misses;
    for (const int size : textSizes()) {
        presets.push_back(endingAsWholeBody(presetText(figure, size)));
        letters.push_back(endingAsWholeBody(letterText(size)));
        misses.push_back(endingAsWholeBody(nearMissText(size)));
    }
    timeText("identify_preset", codeOf, literalCodeOf, presets);
    timeText("identify_letters", codeOf, literalCodeOf, letters);
    timeText("identify_near_misses", codeOf, literalCodeOf, misses);
    timeText("hash", hashOf, literalHashOf, presets);
    timeText("identify_and_hash", bothOf, literalBothOf, presets);
}

} // namespace scanning
} // namespace quillon
