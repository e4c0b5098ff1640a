#include "finder/pose_identify.h"

#include "finder/body_words.h"
#include "finder/pose_index.h"
#include "finder/pose_pair_products.h"
#include "ground/hash.h"
#include "posefile/pose_text.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace quillon {

static const quint32 kMaleMark = kMaleCode - kFemaleCode;

static char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

static bool readsAs(const char* at, const char* word)
{
    for (; *word; ++at, ++word) {
        if (lowered(*at) != *word)
            return false;
    }
    return true;
}

static char raised(char c)
{
    return c >= 'a' && c <= 'z' ? char(c - ('a' - 'A')) : c;
}

// Looks at the byte under the word's last letter and moves on by as much as that byte allows.
bool containsWord(const char* bytes, int count, const char* word)
{
    const int length = int(std::strlen(word));
    int step[256];
    std::fill(std::begin(step), std::end(step), length);
    for (int i = 0; i + 1 < length; ++i)
        step[uchar(word[i])] = step[uchar(raised(word[i]))] = length - 1 - i;
    for (int at = 0; at + length <= count; at += step[uchar(bytes[at + length - 1])]) {
        if (readsAs(bytes + at, word))
            return true;
    }
    return false;
}

static bool containsWord(const QString& text, const char* word)
{
    return text.contains(QLatin1String(word), Qt::CaseInsensitive);
}

static const unsigned kWholeBody = BigToeWord | PinkyWord | HeadWord;

static bool isFemale(unsigned words, const QString& path, const QString& title)
{
    return (words & BreastWord) || containsWord(path, "g8f") || containsWord(path, "female")
        || containsWord(title, "f");
}

// Of a pose that is not female.
static bool isMale(const QString& path, const QString& title)
{
    return containsWord(path, "g8m") || containsWord(path, "male") || containsWord(title, "m");
}

static quint32 generationOf(unsigned words)
{
    if (words & Abdomen2Word)
        return 2;
    return words & HeelWord ? 3 : 8;
}

quint32 figureCodeOf(const char* bytes, int count, const QString& path)
{
    const unsigned words = bodyWordsIn(bytes, count);
    if ((words & kWholeBody) != kWholeBody)
        return 0;
    const QString title = posePairKind(path).isMakerFile ? poseFileTitle(path, false) : QString();
    const bool male = !isFemale(words, path, title) && isMale(path, title);
    return generationOf(words) + (male ? kMaleMark : 0);
}

// The figure code whatever it is.
static quint32 fillEntry(const char* bytes, int count, PoseIndexEntry* e)
{
    const quint32 code = figureCodeOf(bytes, count, e->path);
    const bool isBrowsable = code == kFemaleCode || code == kMaleCode;
    e->figureCode = isBrowsable ? code : 0;
    e->contentHash = isBrowsable ? djb2Hash(bytes, count) : 0;
    return code;
}

bool identifyPose(int entry, quint32* told)
{
    PoseIndexEntry* e = entryToChange(entry);
    if (!e)
        return false;
    e->figureCode = 0;
    e->contentHash = 0;
    char* buffer = readBuffer();
    const int count = buffer ? readPoseFileText(e->path, buffer, kReadBufferBytes, false) : 0;
    if (count <= 0 || isStillPacked(buffer, count))
        return false;
    const quint32 code = fillEntry(buffer, count, e);
    if (told)
        *told = code;
    return true;
}

void identifyPoseText(int entry, const QByteArray& text)
{
    if (PoseIndexEntry* e = entryToChange(entry))
        fillEntry(text.constData(), qMin(text.size(), kReadBufferBytes), e);
}

} // namespace quillon
