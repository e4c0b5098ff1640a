#include "host/posebench/pose_preset_io.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzgzio.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <cmath>

namespace quillon {

static const char kByteOrderMark[] = "\xEF\xBB\xBF";

const PresetChannelName kPresetChannels[kPresetChannelCount] = {
    {"XTranslate", "translation/x"},
    {"YTranslate", "translation/y"},
    {"ZTranslate", "translation/z"},
    {"XRotate", "rotation/x"},
    {"YRotate", "rotation/y"},
    {"ZRotate", "rotation/z"},
    {"Scale", "scale/general"},
    {"XScale", "scale/x"},
    {"YScale", "scale/y"},
    {"ZScale", "scale/z"},
};

// ---- reading -------------------------------------------------------------------------------

static bool unpack(QByteArray* bytes)
{
    if (!bytes->startsWith("\x1f\x8b"))
        return true;
    QBuffer packed(bytes);
    DzGzIO gzip(&packed);
    if (!gzip.open(QIODevice::ReadOnly))
        return false;
    const QByteArray plain = gzip.readAll();
    if (gzip.hasFailed())
        return false;
    gzip.close();
    *bytes = plain;
    return true;
}

static QByteArray readBytes(const QString& name, QString* why)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        *why = file.errorString();
        return QByteArray();
    }
    QByteArray bytes = file.readAll();
    if (!unpack(&bytes)) {
        *why = "damaged gzip data";
        return QByteArray();
    }
    if (bytes.startsWith(kByteOrderMark))
        bytes.remove(0, 3);
    if (bytes.isEmpty())
        *why = "the file is empty";
    return bytes;
}

bool parseChannelUrl(const QString& url, PresetChannel* out)
{
    const QString scheme = "name://@selection";
    const int colon = url.indexOf(":?", scheme.size());
    if (!url.startsWith(scheme) || colon < 0 || !url.endsWith("/value"))
        return false;
    const QString place = url.mid(scheme.size(), colon - scheme.size());
    const QString channel = url.mid(colon + 2).chopped(6);
    const QString name = QUrl::fromPercentEncoding(place.mid(1).toUtf8());
    *out = PresetChannel();
    if (place.startsWith('#')) {
        out->control = name;
        out->property = "Value";
        return channel == "value" && !name.isEmpty();
    }
    if (!place.isEmpty() && !place.startsWith('/'))
        return false;
    out->node = name;
    for (const PresetChannelName& known : kPresetChannels)
        if (channel == QLatin1String(known.url))
            out->property = known.property;
    return !out->property.isEmpty();
}

static bool readEntry(const QJsonObject& entry, PresetChannel* out)
{
    if (!parseChannelUrl(entry.value("url").toString(), out))
        return false;
    const QJsonArray keys = entry.value("keys").toArray();
    for (const QJsonValue& value : keys) {
        const QJsonArray key = value.toArray();
        if (key.size() < 2 || !key.at(0).isDouble() || !key.at(1).isDouble())
            continue;
        out->keys.push_back({DzTime(std::lround(key.at(0).toDouble() * DZ_TICKS_PER_SECOND)),
            float(key.at(1).toDouble())});
    }
    return !out->keys.empty();
}

bool readPosePreset(const QString& file, PosePreset* out, QString* why)
{
    const QByteArray bytes = readBytes(file, why);
    QJsonParseError error;
    const QJsonObject root = QJsonDocument::fromJson(bytes, &error).object();
    const QString type = root.value("asset_info").toObject().value("type").toString();
    if (!bytes.isEmpty() && error.error != QJsonParseError::NoError)
        *why = QString("line %1: %2")
                   .arg(bytes.left(error.offset).count('\n') + 1)
                   .arg(error.errorString());
    else if (!bytes.isEmpty() && type != "preset_pose")
        *why = QString("holds '%1', not a pose of one figure").arg(type);
    if (type != "preset_pose") {
        *why = QString("%1: %2").arg(file, *why);
        return false;
    }
    *out = PosePreset();
    out->name = QFileInfo(file).completeBaseName();
    const QJsonArray entries = root.value("scene").toObject().value("animations").toArray();
    for (const QJsonValue& entry : entries) {
        PresetChannel channel;
        if (readEntry(entry.toObject(), &channel))
            out->channels.push_back(channel);
    }
    return true;
}

// ---- applying ------------------------------------------------------------------------------

static DzFloatProperty* controlOf(const DzSkeleton* figure, const QString& name)
{
    if (DzProperty* property = figure->findProperty(name))
        return qobject_cast<DzFloatProperty*>(property);
    const DzObject* object = figure->getObject();
    DzMorph* morph = object ? qobject_cast<DzMorph*>(object->findModifier(name)) : nullptr;
    return morph ? morph->getValueChannel() : nullptr;
}

DzFloatProperty* presetProperty(const DzSkeleton* figure, const PresetChannel& channel)
{
    if (!channel.control.isEmpty())
        return controlOf(figure, channel.control);
    const DzNode* node = channel.node.isEmpty() ? static_cast<const DzNode*>(figure)
                                                : figure->findBone(channel.node);
    return node ? qobject_cast<DzFloatProperty*>(node->findProperty(channel.property)) : nullptr;
}

int applyPosePreset(const PosePreset& preset, DzSkeleton* figure, DzTime at)
{
    DzUndoStackHold hold;
    int found = 0;
    for (const PresetChannel& channel : preset.channels) {
        DzFloatProperty* property = presetProperty(figure, channel);
        if (!property)
            continue;
        ++found;
        const DzTime start = channel.keys.front().time;
        for (const PresetKey& key : channel.keys)
            property->setRawValue(at + key.time - start, key.value);
    }
    hold.accept(QString("Apply Pose %1").arg(preset.name));
    return found;
}

} // namespace quillon
