#include "bench/scanned_texts.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"

#include <cstring>

namespace quillon {

static const char kWholeBody[] = " lBigToe lPinky1 head ";
static const char* const kWords[] = {"bigtoe", "pinky", "head", "breast", "abdomen2", "rheel"};

static unsigned nextRandom(unsigned* seed)
{
    *seed = *seed * 1664525u + 1013904223u;
    return *seed >> 8;
}

static QByteArray entryOf(const QString& url, float value)
{
    return "\t\t\t{\n\t\t\t\t\"url\" : \"name://@selection" + url.toLatin1()
        + "/value\",\n\t\t\t\t\"keys\" : [ [ 0, " + QByteArray::number(double(value), 'g', 7)
        + " ] ]\n\t\t\t},\n";
}

static void appendBone(const DzNode* bone, unsigned* seed, QByteArray* out)
{
    static const char* const kChannels[] = {"translation/x", "translation/y", "translation/z",
        "rotation/x", "rotation/y", "rotation/z", "scale/general", "scale/x", "scale/y", "scale/z"};
    for (const char* channel : kChannels) {
        const bool isTurn = channel[0] == 'r';
        const float value
            = isTurn ? float(nextRandom(seed)) / (1 << 24) * 80 - 40 : channel[0] == 's';
        out->append(entryOf("/" + bone->getName() + ":?" + channel, value));
    }
}

static QByteArray wholePreset(const DzFigure* figure)
{
    QByteArray text = "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n"
                      "\t\t\"id\" : \"/00000000\",\n\t\t\"type\" : \"preset_pose\"\n\t},\n"
                      "\t\"scene\" : {\n\t\t\"animations\" : [\n";
    unsigned seed = 1;
    DzBoneList bones;
    figure->getAllBones(bones);
    for (int i = bones.size() - 1; i >= 0; --i)
        appendBone(bones.at(i), &seed, &text);
    for (int i = 0; i < figure->getNumProperties(); ++i) {
        const QString name = figure->getProperty(i)->getName();
        if (name.contains(QLatin1String("CTRL"))
            && !name.contains(QLatin1String("breast"), Qt::CaseInsensitive))
            text += entryOf("#" + name + ":?value", 0.25f);
    }
    return text;
}

QByteArray presetText(const DzFigure* figure, int bytes)
{
    const QByteArray whole = wholePreset(figure);
    QByteArray text;
    while (text.size() < bytes)
        text += whole;
    text.truncate(bytes);
    return text;
}

QByteArray letterText(int bytes)
{
    static const char kLetters[] = "abdeghiknoprstyABDEGHIKNOPRSTY2";
    unsigned seed = 5;
    QByteArray text(bytes, 0);
    for (int i = 0; i < bytes; ++i)
        text[i] = kLetters[nextRandom(&seed) % (sizeof kLetters - 1)];
    return text;
}

QByteArray nearMissText(int bytes)
{
    unsigned seed = 9;
    QByteArray text;
    while (text.size() < bytes) {
        QByteArray word = kWords[nextRandom(&seed) % (sizeof kWords / sizeof *kWords)];
        word[int(nextRandom(&seed)) % word.size()] = nextRandom(&seed) % 2 ? 'c' : 'x';
        text += word;
    }
    text.truncate(bytes);
    return text;
}

QByteArray endingAsWholeBody(QByteArray text)
{
    const int length = int(std::strlen(kWholeBody));
    text.replace(text.size() - length, length, kWholeBody);
    return text;
}

} // namespace quillon
