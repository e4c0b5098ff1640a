#include "pane/page_texts.h"

#include "finder/browse_session.h"
#include "finder/pose_index.h"
#include "finder/pose_pair_products.h"
#include "ground/plugin_settings.h"

namespace quillon {

// Deleted wherever they stand, in this order.
static const char* const kMirrorWords[] = {
    " (mirrored pose)",
    " (mirror pose)",
    " (mirrored)",
    " (mirror)",
    " mirrored pose",
    " mirror pose",
    " mirrored",
    " mirror",
    " (mir pose)",
    " (mir)",
    " mir pose",
};
static const char kMirAtTheEnd[] = " mir"; // all of them go, but only when one ends the name
static const char kMPose[] = " m pose";

QString withoutMirrorWords(const QString& title)
{
    QString name = title;
    for (const char* words : kMirrorWords)
        name.remove(QLatin1String(words), Qt::CaseInsensitive);
    if (name.endsWith(QLatin1String(kMirAtTheEnd), Qt::CaseInsensitive))
        name.remove(QLatin1String(kMirAtTheEnd), Qt::CaseInsensitive);
    name.remove(QLatin1String(kMPose), Qt::CaseInsensitive);
    return name;
}

QString counterText()
{
    const BrowseSession& browse = browseSession();
    const int position = pluginSettings().currentPose;
    if (browse.matchCount == 0 || !poseEntry(position))
        return QLatin1String("NO MATCHING POSES FOUND");
    if (browse.tablesState != Applied || browse.matchOrdinal == kOrdinalUnknown)
        return QString::fromLatin1("MATCHING POSES FOUND: %1").arg(browse.matchCount);
    if (browse.type == AllPoses)
        return QString::fromLatin1("POSE %1 of %2").arg(position + 1).arg(poseCount());
    return QString::fromLatin1("MATCHING POSE %1 of %2")
        .arg(browse.matchOrdinal)
        .arg(browse.matchCount);
}

// A file of the pose-pair products is called by its product and its number there.
static QString poseName(const QString& path)
{
    if (posePairKind(path).kind == 0)
        return withoutMirrorWords(poseFileTitle(path, false));
    const QString folder = productFolder(path);
    const QString name = folder.mid(folder.lastIndexOf(QLatin1Char('/')) + 1);
    return name.isEmpty() ? poseFileTitle(path, false) : name;
}

QStringList poseLabelLines()
{
    const int position = pluginSettings().currentPose;
    const PoseIndexEntry* entry = poseEntry(position);
    if (!entry)
        return QStringList();
    QStringList lines(poseName(entry->path));
    const QString product = productLabel(position);
    if (!product.isEmpty())
        lines.append(product);
    return lines;
}

} // namespace quillon
