#include "reference/pose_reader_reference.h"

#include "figure/figure_lookup.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <cmath>

namespace quillon {
namespace reference {

static QString g_text;
static int g_cursor = 0;

void setPoseText(const QByteArray& bytes)
{
    const int zero = bytes.indexOf('\0');
    g_text = QLatin1String(zero < 0 ? bytes : bytes.left(zero));
    g_cursor = 0;
}

QString nextEntry()
{
    const int url = g_text.indexOf(QLatin1String("\"url\""), g_cursor);
    if (url < 0)
        return QString();
    const int bracket = g_text.indexOf(QLatin1Char(']'), url + 1);
    if (bracket < 0)
        return QString();
    g_cursor = bracket + 1;
    return g_text.mid(url, g_cursor - url).remove(QLatin1Char('\n'));
}

static int axisCode(const QString& entry, int codeOfX)
{
    if (entry.contains(QLatin1String("/x/value")))
        return codeOfX;
    if (entry.contains(QLatin1String("/y/value")))
        return codeOfX + 1;
    if (entry.contains(QLatin1String("/z/value")))
        return codeOfX + 2;
    return 0;
}

int channelOf(const QString& entry)
{
    if (entry.contains(QLatin1String("?value/value")))
        return 7;
    if (entry.contains(QLatin1String("?rotation/")))
        return axisCode(entry, 1);
    if (entry.contains(QLatin1String("?translation/")))
        return axisCode(entry, 4);
    return 0;
}

QString nodeNameOf(const QString& entry)
{
    const int selection = entry.indexOf(QLatin1String("selection"));
    if (selection < 0)
        return QString();
    const int from = selection + 10;
    if (from < entry.size() && entry.at(from) == QLatin1Char('?'))
        return QLatin1String("root");
    const int colon = from <= entry.size() ? entry.indexOf(QLatin1Char(':'), from) : -1;
    return colon < 0 ? QString() : entry.mid(from, colon - from);
}

static bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r'));
}

static float numberOf(const QString& text)
{
    int from = 0, to = text.size();
    while (from < to && isBlank(text.at(from)))
        ++from;
    while (to > from && isBlank(text.at(to - 1)))
        --to;
    bool isNumber = false;
    const float value = float(text.mid(from, to - from).toLatin1().toDouble(&isNumber));
    return isNumber && std::isfinite(value) && value != 0 ? value : 0; // no -0
}

// The number between the second comma at or after from and the "]" behind it.
static float numberAfterTwoCommas(const QString& text, int from)
{
    const int first = text.indexOf(QLatin1Char(','), from);
    if (first < 0)
        return 0;
    const int second = text.indexOf(QLatin1Char(','), first + 1);
    if (second < 0)
        return 0;
    const int bracket = text.indexOf(QLatin1Char(']'), second + 1);
    return bracket < 0 ? 0 : numberOf(text.mid(second + 1, bracket - second - 1));
}

float valueOf(const QString& entry)
{
    return numberAfterTwoCommas(entry, 0);
}

static DzFloatProperty* transformChannel(const DzNode* node, int code)
{
    DzFloatProperty* const channels[]
        = {node->getXRotControl(), node->getYRotControl(), node->getZRotControl(),
            node->getXPosControl(), node->getYPosControl(), node->getZPosControl()};
    return channels[code - 1];
}

static DzFloatProperty* channelFor(DzSkeleton* figure, const QString& name, int code)
{
    if (name == QLatin1String("root"))
        return code == 7 ? nullptr : transformChannel(figure, code);
    if (boneIndex(name) < 0 && !isBodyControl(name))
        return nullptr;
    if (code == 7)
        return findControl(name, figure);
    const DzBone* bone = figure->findBone(name);
    if (!bone || (code >= 4 && name == QLatin1String("hip")))
        return nullptr;
    return transformChannel(bone, code);
}

void applyPoseText(DzSkeleton* figure, DzTime time, SetChannel set)
{
    for (int n = 0; n < 100000; ++n) {
        const QString entry = nextEntry();
        if (entry.isEmpty())
            return;
        const int code = channelOf(entry);
        if (code == 0)
            continue;
        const QString name = nodeNameOf(entry);
        const float value = valueOf(entry);
        if (DzFloatProperty* channel = channelFor(figure, name, code))
            set(channel, time, value);
    }
}

static float keyValue(const QString& bone, const char* axis)
{
    const QString key = QLatin1String("selection/") + bone + QLatin1String(":?rotation/")
        + QLatin1String(axis) + QLatin1String("/value");
    const int at = g_text.indexOf(key);
    return at < 0 ? 0 : numberAfterTwoCommas(g_text, at);
}

void applyKeyBoneText(DzSkeleton* figure, DzTime time, SetChannel set)
{
    static const char* const kBones[] = {"lShin", "rShin", "lThighBend", "rThighBend", "pelvis",
        "lForearmBend", "rForearmBend", "lShldrBend", "rShldrBend", "lCollar", "rCollar",
        "chestUpper", "chestLower", "abdomenUpper", "abdomenLower", "hip"};
    for (const char* boneName : kBones) {
        const QString name = QLatin1String(boneName);
        const DzBone* bone = figure->findBone(name);
        if (!bone)
            continue;
        const float x = keyValue(name, "x"), y = keyValue(name, "y"), z = keyValue(name, "z");
        set(bone->getXRotControl(), time, x);
        set(bone->getYRotControl(), time, y);
        set(bone->getZRotControl(), time, z);
    }
}

} // namespace reference
} // namespace quillon
