#include "posefile/pose_writer.h"

#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "ground/host_gzip.h"
#include "ground/whole_file.h"
#include "posefile/pose_channels.h"
#include "posefile/pose_text.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <QBuffer>

#include <charconv>

namespace quillon {

namespace {

const int kSignificantDigits = 7;
const int kRoomForPose = 256 * 1024; // bytes of a usual file

const struct ChannelPath {
    const char* property;
    const char* path;
} kChannelPaths[] = {
    {"Scale", "scale/general"},
    {"XScale", "scale/x"},
    {"YScale", "scale/y"},
    {"ZScale", "scale/z"},
    {"XRotate", "rotation/x"},
    {"YRotate", "rotation/y"},
    {"ZRotate", "rotation/z"},
    {"XTranslate", "translation/x"},
    {"YTranslate", "translation/y"},
    {"ZTranslate", "translation/z"},
};

const char kHeadBeforeId[] = "{\n"
                             "   \"file_version\" : \"0.6.0.0\",\n"
                             "   \"asset_info\" : {\n"
                             "      \"id\" : \"";
const char kHeadBehindId[] = "\",\n"
                             "      \"type\" : \"preset_pose\",\n"
                             "      \"contributor\" : {\n"
                             "         \"author\" : \"Unknown\",\n"
                             "         \"email\" : \"\",\n"
                             "         \"website\" : \"\"\n"
                             "      },\n"
                             "      \"revision\" : \"1.0\",\n"
                             "      \"modified\" : \"\"\n"
                             "   },\n"
                             "   \"scene\" : {\n"
                             "      \"animations\" : [\n";
const char kBetweenEntries[] = "         },\n";
const char kBehindEntries[] = "         }\n";
const char kTail[] = "      ]\n"
                     "   }\n"
                     "}\n";

// The text of a file while it grows.
struct PoseDraft {
    QByteArray text;
    bool hasEntry;
};

} // namespace

QString channelPathOf(const QString& propertyName, bool* notTransform)
{
    for (const ChannelPath& row : kChannelPaths) {
        if (propertyName == QLatin1String(row.property)) {
            *notTransform = false;
            return QLatin1String(row.path);
        }
    }
    *notTransform = true;
    return propertyName;
}

static void appendNumber(float value, QByteArray* out)
{
    char digits[32];
    const double unsignedZero = value == 0 ? 0.0 : double(value);
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, unsignedZero,
        std::chars_format::general, kSignificantDigits);
    out->append(digits, int(end.ptr - digits));
}

float valueAsWritten(float value)
{
    QByteArray text;
    appendNumber(value, &text);
    return numberOf(TextSpan {text.constData(), text.constData() + text.size()});
}

// url: what stands between "@selection" and "/value".
static void appendEntry(const QString& url, float value, PoseDraft* draft)
{
    if (draft->hasEntry)
        draft->text += kBetweenEntries;
    draft->hasEntry = true;
    draft->text += "         {\n            \"url\" : \"name://@selection";
    draft->text += url.toUtf8();
    draft->text += "/value\",\n            \"keys\" : [ [ 0, ";
    appendNumber(value, &draft->text);
    draft->text += " ] ]\n";
}

static bool isPoseChannel(const QString& propertyName)
{
    return propertyName.contains(QLatin1String("rotate"), Qt::CaseInsensitive)
        || propertyName.contains(QLatin1String("translate"), Qt::CaseInsensitive);
}

static void appendBone(const DzBone* bone, DzTime time, PoseDraft* draft)
{
    const QString start = QLatin1Char('/') + bone->getName() + QLatin1String(":?");
    for (int i = 0; i < bone->getNumProperties(); ++i) {
        const DzFloatProperty* channel = qobject_cast<DzFloatProperty*>(bone->getProperty(i));
        if (!channel || !isPoseChannel(channel->getName()))
            continue;
        bool notTransform = false;
        const QString path = channelPathOf(channel->getName(), &notTransform);
        if (!notTransform)
            appendEntry(start + path, storedValue(channel, time), draft);
    }
}

static void appendControl(const FigureControl& control, DzTime time, PoseDraft* draft)
{
    bool notTransform = false;
    const QString name = channelPathOf(controlName(control.number), &notTransform);
    if (notTransform)
        appendEntry(QLatin1Char('#') + name + QLatin1String(":?value"),
            storedValue(control.property, time), draft);
}

static void appendPose(const DzSkeleton* figure, DzTime time, PoseDraft* draft)
{
    for (const FigureBone& each : bonesOf(figure))
        appendBone(each.bone, time, draft);
    for (const FigureControl& each : controlsOf(figure))
        appendControl(each, time, draft);
    draft->text += kBehindEntries;
}

QByteArray textOfPose(const DzSkeleton* figure, DzTime time, bool male)
{
    PoseDraft draft = {QByteArray(), false};
    draft.text.reserve(kRoomForPose);
    draft.text += kHeadBeforeId;
    draft.text += male ? "G8M" : "G8F";
    draft.text += kHeadBehindId;
    if (figure)
        appendPose(figure, time, &draft);
    draft.text += kTail;
    return draft.text;
}

bool writePose(
    const DzSkeleton* figure, DzTime time, const QString& path, bool male, bool compressed)
{
    return writePoseText(textOfPose(figure, time, male), path, compressed);
}

bool writePoseText(const QByteArray& text, const QString& path, bool compressed)
{
    removeLeftoversOf(path); // wherever the user saves
    if (!compressed)
        return writeWholeFile(path, text);
    QBuffer packed;
    packed.open(QIODevice::WriteOnly);
    return writePacked(&packed, text) && writeWholeFile(path, packed.data());
}

bool writePassingPose(const DzSkeleton* figure, DzTime time, const QString& path)
{
    return writePlainFile(path, textOfPose(figure, time, false));
}

} // namespace quillon
