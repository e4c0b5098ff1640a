#include "host/figures/figure_data.h"

#include "host/figures/json_text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QVariant>

#include <map>
#include <memory>
#include <utility>

namespace quillon {

static const char* const kFigureNames[]
    = {"Genesis8Female", "Genesis8Male", "Genesis8_1Female", "Genesis8_1Male"};
static const char* const kChannelNames[]
    = {"XTranslate", "YTranslate", "ZTranslate", "XRotate", "YRotate", "ZRotate"};
static const char* const kAxes[] = {"X", "Y", "Z"};

static QString g_folder; // empty: the default
static std::map<QString, std::unique_ptr<FigureData>> g_figures;

// ---- JSON values ---------------------------------------------------------------------------

static float number(const QVariantMap& map, const char* key)
{
    return map.value(QLatin1String(key)).toFloat();
}

static QString text(const QVariantMap& map, const char* key)
{
    return map.value(QLatin1String(key)).toString();
}

static DzVec3 point(const QVariant& value, float scale)
{
    const QVariantList xyz = value.toList();
    if (xyz.size() != 3)
        return DzVec3();
    return DzVec3(xyz[0].toFloat(), xyz[1].toFloat(), xyz[2].toFloat()) * scale;
}

// The files hold v' = q v conj(q), the host v' = conj(q) v q.
static DzQuat hostQuat(const QVariant& value)
{
    const QVariantList q = value.toList();
    if (q.size() != 4)
        return DzQuat();
    return DzQuat(-q[0].toDouble(), -q[1].toDouble(), -q[2].toDouble(), q[3].toDouble());
}

static ChannelRow channelRow(const QVariant& value)
{
    const QVariantMap map = value.toMap();
    return {text(map, "label"), number(map, "min"), number(map, "max"),
        map.value("locked").toBool(), map.value("clamped").toBool()};
}

static bool readObject(const QString& fileName, QVariantMap* out, QString* why)
{
    QFile file(QDir(figureFolder()).filePath(fileName));
    QVariant value;
    if (!file.open(QIODevice::ReadOnly)) {
        *why = QString("%1: %2").arg(file.fileName(), file.errorString());
        return false;
    }
    if (!parseJson(file.readAll(), &value, why)) {
        *why = QString("%1: %2").arg(file.fileName(), *why);
        return false;
    }
    *out = value.toMap();
    return true;
}

// ---- rows ----------------------------------------------------------------------------------

typedef QHash<QString, int> BoneNumbers;

static bool appendBone(const QVariantMap& map, BoneNumbers* numbers, FigureData* out, QString* why)
{
    BoneRow bone;
    bone.name = text(map, "name");
    bone.label = text(map, "label");
    const QString parent = text(map, "parent");
    bone.parent = parent.isEmpty() ? -1 : numbers->value(parent, -2);
    bool orderKnown = false;
    bone.order = DzRotationOrder::fromString(text(map, "rotation_order"), &orderKnown);
    if (bone.name.isEmpty() || bone.parent == -2 || !orderKnown) {
        *why = QString("bone '%1': unknown parent or rotation order").arg(bone.name);
        return false;
    }
    bone.center = point(map.value("center"), out->scale);
    bone.end = point(map.value("end"), out->scale);
    bone.orientation = hostQuat(map.value("orientation_quat_xyzw"));
    const QVariantMap rotation = map.value("rotation").toMap();
    const QVariantMap translation = map.value("translation").toMap();
    for (int axis = 0; axis < 3; ++axis) {
        bone.rotation[axis] = channelRow(rotation.value(kAxes[axis]));
        bone.translation[axis] = channelRow(translation.value(kAxes[axis]));
    }
    numbers->insert(bone.name, int(out->bones.size()));
    out->bones.push_back(bone);
    return true;
}

static int channelNumber(const QString& name) // -1: unknown
{
    for (int i = 0; i < 6; ++i)
        if (name == QLatin1String(kChannelNames[i]))
            return i;
    return -1;
}

static bool appendControl(
    const QVariantMap& map, const BoneNumbers& numbers, FigureData* out, QString* why)
{
    ControlRow control;
    control.name = text(map, "name");
    control.label = text(map, "label");
    control.path = text(map, "path");
    control.min = number(map, "min");
    control.max = number(map, "max");
    const QVariantList links = map.value("links").toList();
    for (const QVariant& value : links) {
        const QVariantList link = value.toList();
        LinkRow row = {-1, -1, 0};
        if (link.size() == 3)
            row = {numbers.value(link[0].toString(), -1), channelNumber(link[1].toString()),
                link[2].toFloat()};
        if (row.bone < 0 || row.channel < 0) {
            *why = QString("control '%1': a link names no bone or channel").arg(control.name);
            return false;
        }
        control.links.push_back(row);
    }
    out->controls.push_back(control);
    return true;
}

static FigureBuild buildRow(const QVariantMap& build, const QVariantMap& colors)
{
    return {number(build, "shoulders"), number(build, "chest"), number(build, "waist"),
        number(build, "hips"), number(build, "limbs"), number(build, "bust"), number(build, "jaw"),
        number(build, "bun"), number(build, "suit_top"), number(build, "suit_legs"),
        text(colors, "skin"), text(colors, "suit"), text(colors, "hair"), text(colors, "lips"),
        text(colors, "iris")};
}

static bool readSkeleton(
    const QString& fileName, BoneNumbers* numbers, FigureData* out, QString* why)
{
    QVariantMap skeleton;
    if (!readObject(fileName, &skeleton, why))
        return false;
    const QVariantList bones = skeleton.value("bones").toList();
    for (const QVariant& bone : bones)
        if (!appendBone(bone.toMap(), numbers, out, why)) {
            *why = QString("%1: %2").arg(fileName, *why);
            return false;
        }
    return true;
}

static bool readControls(
    const QString& fileName, const BoneNumbers& numbers, FigureData* out, QString* why)
{
    QVariantMap file;
    if (!readObject(fileName, &file, why))
        return false;
    const QVariantList controls = file.value("controls").toList();
    for (const QVariant& control : controls)
        if (!appendControl(control.toMap(), numbers, out, why)) {
            *why = QString("%1: %2").arg(fileName, *why);
            return false;
        }
    return true;
}

static bool readFigure(const QString& name, FigureData* out, QString* why)
{
    QVariantMap figure;
    if (!readObject(name + ".json", &figure, why))
        return false;
    out->name = text(figure, "name");
    out->label = text(figure, "label");
    out->generation = text(figure, "generation");
    out->scale = number(figure, "scale");
    out->build = buildRow(figure.value("build").toMap(), figure.value("colors").toMap());
    BoneNumbers numbers;
    if (!readSkeleton(text(figure, "skeleton"), &numbers, out, why))
        return false;
    const QVariantList files = figure.value("controls").toList();
    for (const QVariant& file : files)
        if (!readControls(file.toString(), numbers, out, why))
            return false;
    return true;
}

// ---- the cache -----------------------------------------------------------------------------

QStringList figureNames()
{
    QStringList names;
    for (const char* name : kFigureNames)
        names << QLatin1String(name);
    return names;
}

const FigureData* figureData(const QString& name, QString* why)
{
    if (!figureNames().contains(name)) {
        *why = QString("%1: no such figure; there are %2").arg(name, figureNames().join(", "));
        return nullptr;
    }
    std::unique_ptr<FigureData>& cached = g_figures[name];
    if (!cached) {
        std::unique_ptr<FigureData> read(new FigureData);
        if (!readFigure(name, read.get(), why))
            return nullptr;
        cached = std::move(read);
    }
    return cached.get();
}

void setFigureFolder(const QString& folder)
{
    g_folder = folder;
    g_figures.clear();
}

QString figureFolder()
{
    if (!g_folder.isEmpty())
        return g_folder;
    if (QCoreApplication::instance()) {
        const QDir installed(QCoreApplication::applicationDirPath() + "/../share/quillon/figures");
        if (installed.exists())
            return installed.canonicalPath();
    }
    return QUILLON_SOURCE_DIR "/host/figures";
}

} // namespace quillon
