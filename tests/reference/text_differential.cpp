#include "reference/text_differential.h"

#include "finder/body_words.h"
#include "finder/pose_identify.h"
#include "ground/hash.h"
#include "reference/finder_reference.h"
#include "reference/hash_reference.h"
#include "reference/pass_tables.h"

namespace quillon {
namespace reference {

static const struct {
    const char* text;
    unsigned bit;
} kWords[] = {{"bigtoe", BigToeWord}, {"pinky", PinkyWord}, {"head", HeadWord},
    {"breast", BreastWord}, {"abdomen2", Abdomen2Word}, {"rheel", HeelWord}};
static const int kWordCount = int(std::size(kWords));
static const char* const kPieces[]
    = {"big", "toe", "pin", "ky", "he", "ad", "eas", "t", "br", "abdomen", "2", "r", "heel", "rhee",
        "l", "\n", " ", "\xe4", "\xff", "data/Brannoc/poses/", "g8", "m", "f", "male", "fe"};
static const int kPieceCount = int(std::size(kPieces));

// ---- made-up texts

static QByteArray anyBytes(int count, Dice* dice)
{
    QByteArray text(count, '\0');
    for (int i = 0; i < count; ++i)
        text[i] = char(dice->below(256));
    return text;
}

static QByteArray wordOf(Dice* dice)
{
    QByteArray word = kWords[dice->below(kWordCount)].text;
    if (dice->below(4) == 0) { // not quite
        static const char kLast[] = "aAeEzZ@[`{\0";
        word[int(dice->below(quint32(word.size())))] = kLast[dice->below(sizeof kLast)];
    }
    for (int i = 0; i < word.size(); ++i) {
        if (dice->below(3) == 0 && word.at(i) >= 'a' && word.at(i) <= 'z')
            word[i] = char(word.at(i) - 'a' + 'A');
    }
    return word;
}

static QByteArray wordsAndPieces(int count, Dice* dice)
{
    QByteArray text;
    while (text.size() < count) {
        text += dice->below(3) ? QByteArray(kPieces[dice->below(quint32(kPieceCount))])
                               : wordOf(dice);
    }
    return text.left(count);
}

// Letters of the words only, so that most beginnings lead nowhere.
static QByteArray nearMisses(int count, Dice* dice)
{
    static const char kLetters[] = "bigtoepnkyhadrsm2lBPHARE";
    QByteArray text(count, ' ');
    for (int i = 0; i < count; ++i)
        text[i] = kLetters[dice->below(sizeof kLetters - 1)];
    return text;
}

// Words far apart: what is between looks like none.
static QByteArray loneWords(int count, Dice* dice)
{
    QByteArray text(count, dice->below(2) ? ' ' : 'b');
    for (quint32 n = dice->below(8); n > 0; --n) {
        const QByteArray word = wordOf(dice);
        const int last = count - word.size();
        if (last >= 0) {
            const bool atTheEnd = dice->below(4) == 0;
            const int at = atTheEnd ? last : int(dice->below(quint32(last + 1)));
            text.replace(at, word.size(), word);
        }
    }
    return text;
}

static QByteArray textOf(int count, Dice* dice)
{
    switch (dice->below(4)) {
    case 0:
        return anyBytes(count, dice);
    case 1:
        return wordsAndPieces(count, dice);
    case 2:
        return nearMisses(count, dice);
    default:
        return loneWords(count, dice);
    }
}

static QString pathOf(Dice* dice)
{
    QByteArray path("/");
    for (quint32 n = dice->below(6); n > 0; --n)
        path += kPieces[dice->below(quint32(kPieceCount))];
    return QString::fromLatin1(path + ".duf");
}

// ---- comparing

static QString difference(const QByteArray& text, const QString& path, long* bodies)
{
    const char* const bytes = text.constData();
    const unsigned words = reference::bodyWordsIn(text);
    if (quillon::bodyWordsIn(bytes, text.size()) != words)
        return QLatin1String("words");
    for (const auto& word : kWords) {
        if (containsWord(bytes, text.size(), word.text) != ((words & word.bit) != 0))
            return QLatin1String(word.text);
    }
    const quint32 code = reference::figureCodeOf(text, path);
    if (quillon::figureCodeOf(bytes, text.size(), path) != code)
        return QLatin1String("figure code");
    if (quillon::djb2Hash(bytes, text.size()) != reference::djb2Hash(bytes, text.size()))
        return QLatin1String("hash");
    *bodies += code != 0;
    return QString();
}

bool textsAgree(std::uint64_t seed, int mostBytes, long* bodies, std::string* why)
{
    Dice dice(seed);
    const int count = int(dice.below(quint32(mostBytes) + 1));
    const QByteArray text = textOf(count, &dice);
    const QString what = difference(text, pathOf(&dice), bodies);
    if (!what.isEmpty()) {
        *why = "seed " + std::to_string(seed) + ", " + std::to_string(count)
            + " bytes: " + what.toStdString();
    }
    return what.isEmpty();
}

} // namespace reference
} // namespace quillon
