// Writing of pose presets: tabs, a blank before and after each colon, every entry as four lines.
#include "host/posebench/pose_preset_io.h"

#include "dzapp.h"
#include "dzbone.h"
#include "dzcontentmgr.h"
#include "dzfloatproperty.h"
#include "dzgzio.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzskeleton.h"

#include <QBuffer>
#include <QDateTime>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

#include <cstdio>

namespace quillon {

static QByteArray number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.7g", value == 0 ? 0.0 : value); // no minus zero
    return text;
}

static QByteArray keyText(double seconds, double value)
{
    return "[ " + number(seconds) + ", " + number(value) + " ]";
}

static QByteArray keysText(const DzFloatProperty* property, const DzTimeRange& range)
{
    QByteArrayList keys;
    for (int i = 0; i < property->getNumKeys() && range.getDuration() > 0; ++i) {
        const DzTime time = property->getKeyTime(i);
        if (range.isIncluded(time))
            keys << keyText(
                double(time - range.getStart()) / DZ_TICKS_PER_SECOND, property->getKeyValue(i));
    }
    if (keys.isEmpty())
        keys << keyText(0, property->getRawValue(range.getStart()));
    return "[ " + keys.join(", ") + " ]";
}

static QByteArray entryText(
    const QByteArray& url, const DzFloatProperty* property, const DzTimeRange& range)
{
    return "\t\t\t{\n\t\t\t\t\"url\" : \"" + url
        + "/value\",\n\t\t\t\t\"keys\" : " + keysText(property, range) + "\n\t\t\t}";
}

static void appendNode(
    const DzNode* node, const QByteArray& place, const DzTimeRange& range, QByteArrayList* entries)
{
    for (const PresetChannelName& channel : kPresetChannels)
        if (auto* property
            = qobject_cast<DzFloatProperty*>(node->findProperty(QLatin1String(channel.property))))
            *entries << entryText(
                "name://@selection" + place + ":?" + channel.url, property, range);
}

// Leaf bones before the bones that carry them; the hip comes last.
static void appendBones(const DzNode* below, const DzTimeRange& range, QByteArrayList* entries)
{
    for (int i = 0; i < below->getNumNodeChildren(); ++i) {
        const DzNode* node = below->getNodeChild(i);
        appendBones(node, range, entries);
        if (qobject_cast<const DzBone*>(node))
            appendNode(node, "/" + QUrl::toPercentEncoding(node->getName()), range, entries);
    }
}

static bool isTransform(const DzProperty* property)
{
    for (const PresetChannelName& channel : kPresetChannels)
        if (property->getName() == QLatin1String(channel.property))
            return true;
    return false;
}

static void appendControl(const QString& name, const DzFloatProperty* property,
    const DzTimeRange& range, QByteArrayList* entries)
{
    *entries << entryText(
        "name://@selection#" + QUrl::toPercentEncoding(name) + ":?value", property, range);
}

static QByteArrayList allEntries(const DzSkeleton* figure, const DzTimeRange& range)
{
    QByteArrayList entries;
    appendBones(figure, range, &entries);
    appendNode(figure, "", range, &entries);
    for (int i = 0; i < figure->getNumProperties(); ++i) {
        const auto* property = qobject_cast<DzFloatProperty*>(figure->getProperty(i));
        if (property && !property->isHidden() && !isTransform(property))
            appendControl(property->getName(), property, range, &entries);
    }
    const DzObject* object = figure->getObject();
    for (int i = 0; object && i < object->getNumModifiers(); ++i)
        if (const auto* morph = qobject_cast<DzMorph*>(object->getModifier(i)))
            appendControl(morph->getName(), morph->getValueChannel(), range, &entries);
    return entries;
}

// Below the content directory that holds the file, else the whole path; "/C%3A/..." for a drive.
static QByteArray assetId(const QString& file)
{
    const QString path = QFileInfo(file).absoluteFilePath();
    QString id = path.startsWith('/') ? path : '/' + path;
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    for (int i = 0; content && i < content->getNumContentDirectories(); ++i) {
        const QString root = content->getContentDirectoryPath(i);
        if (path.startsWith(root + '/')) {
            id = path.mid(root.size());
            break;
        }
    }
    return QUrl::toPercentEncoding(id, "/");
}

static QByteArray presetText(
    const QString& file, const DzSkeleton* figure, const DzTimeRange& range)
{
    const QByteArray modified
        = QDateTime::currentDateTimeUtc().toString("yyyy-MM-ddTHH:mm:ssZ").toLatin1();
    return "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n\t\t\"id\" : \""
        + assetId(file)
        + "\",\n\t\t\"type\" : \"preset_pose\",\n\t\t\"contributor\" : {\n\t\t\t\"author\" : \"\","
          "\n\t\t\t\"email\" : \"\",\n\t\t\t\"website\" : \"\"\n\t\t},\n\t\t\"revision\" : \"1.0\","
          "\n\t\t\"modified\" : \""
        + modified + "\"\n\t},\n\t\"scene\" : {\n\t\t\"animations\" : [\n"
        + allEntries(figure, range).join(",\n") + "\n\t\t]\n\t}\n}";
}

static QByteArray packed(const QByteArray& plain)
{
    QBuffer out;
    DzGzIO gzip(&out);
    if (!gzip.open(QIODevice::WriteOnly) || gzip.write(plain) != plain.size())
        return QByteArray();
    gzip.close();
    return out.data();
}

bool savePosePreset(
    const QString& file, const DzSkeleton* figure, const PresetSaveOptions& options, QString* why)
{
    const QByteArray plain = presetText(file, figure, options.range);
    const QByteArray bytes = options.compress ? packed(plain) : plain;
    QSaveFile out(file);
    if (bytes.isEmpty() || !out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size()
        || !out.commit()) {
        *why = QString("%1: %2").arg(
            file, bytes.isEmpty() ? "cannot be compressed" : out.errorString());
        return false;
    }
    return true;
}

} // namespace quillon
