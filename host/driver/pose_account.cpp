#include "host/driver/pose_account.h"

#include "host/posebench/content_files.h"
#include "host/posebench/pose_preset_io.h"

#include <QCryptographicHash>
#include <QSet>

#include <climits>

namespace quillon {

static const int kWholeBody = 100; // bones that a pose of a whole body sets, at least

// What the scan calls its phases.
static const char kFound[] = "Scanning pose files";
static const char kVariants[] = "Optimizing pose index (2)";
static const char kAfterVariants[] = "Ignoring duplicate poses";
static const char kPosed[] = "Indexing poses";

static const PhaseCount* phaseOf(const QList<PhaseCount>& phases, const char* name)
{
    for (const PhaseCount& phase : phases)
        if (phase.name == QLatin1String(name))
            return &phase;
    return nullptr;
}

static QByteArray contentHash(const PosePreset& preset)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const PresetChannel& channel : preset.channels) {
        hash.addData((channel.node + '/' + channel.control + '/' + channel.property).toUtf8());
        for (const PresetKey& key : channel.keys)
            hash.addData(QByteArray::number(key.time) + ' ' + QByteArray::number(key.value));
    }
    return hash.result();
}

static bool isWholeBody(const PosePreset& preset)
{
    QSet<QString> bones;
    for (const PresetChannel& channel : preset.channels)
        bones.insert(channel.node);
    return bones.size() >= kWholeBody;
}

PresetCounts countPresets(const QStringList& content)
{
    ContentWalk walk(content);
    while (!walk.isDone())
        walk.goOn(INT_MAX);
    QSet<QByteArray> seen;
    PresetCounts counts = {int(walk.found().size()), 0};
    for (const ContentEntry& entry : walk.found()) {
        PosePreset preset;
        QString why;
        if (!readPosePreset(entry.path, &preset, &why) || !isWholeBody(preset))
            continue;
        const int before = seen.size();
        seen.insert(contentHash(preset));
        counts.copies += seen.size() == before;
    }
    return counts;
}

QStringList accountLines(const QList<PhaseCount>& phases, int indexed, const PresetCounts& counts)
{
    const PhaseCount* found = phaseOf(phases, kFound);
    const PhaseCount* variants = phaseOf(phases, kVariants);
    const PhaseCount* afterVariants = phaseOf(phases, kAfterVariants);
    const PhaseCount* posed = phaseOf(phases, kPosed);
    if (!found || !variants || !afterVariants || !posed)
        return QStringList();
    const int left = posed->shown - indexed; // what duplicates, mirror images and the like took
    const int copies = qMin(counts.copies, left);
    const struct {
        int count;
        const char* what;
    } rows[] = {
        {counts.files, "preset files in the content"},
        {found->in - counts.files,
            "are no poses of one figure: other presets, scenes, damaged files"},
        {found->in, "pose files found"},
        {afterVariants->in - variants->in,
            "are the maker's variants of another: mirrored, or without expression"},
        {posed->shown - posed->in, "are of another generation or of a part of the body"},
        {-copies, "have the same content as another"},
        {copies - left, "are mirrored or similar to another"},
        {indexed, "poses indexed"},
    };
    QStringList lines;
    for (const auto& row : rows)
        lines += QString("%1  %2").arg(row.count, 6).arg(QString(row.what));
    return lines;
}

} // namespace quillon
