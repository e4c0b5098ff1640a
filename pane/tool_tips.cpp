#include "pane/tool_tips.h"

#include "finder/pose_index.h"
#include "finder/pose_pair_products.h"
#include "finder/pose_ranks.h"
#include "ground/plugin_settings.h"

#include <iterator>

namespace quillon {

static const char* const kRankTips[] = {
    // by rank
    "Current Pose Rank\r\nUnranked\r\n(click to change)",
    "Current Pose Rank\r\nFavorite\r\n(click to change)",
    "Current Pose Rank\r\nHidden\r\n(click to change)",
    "\r\nThis is a Custom Library Pose\r\n",
};

static const char kFolderTip[] = "Browse to the product's folder\r\n\r\n";
static const char kDeleteTip[] = "\r\nDelete current custom pose\r\n";

QString toolTip(const ButtonRow* row)
{
    if (!row)
        return QString();
    return row->tipText ? row->tipText() : QString(QLatin1String(row->tip));
}

QString rankTip()
{
    const int rank = pluginSettings().currentRank;
    return QLatin1String(kRankTips[qBound(0, rank, int(std::size(kRankTips)) - 1)]);
}

// Names the folder where the current pose is one of the maker's products.
QString folderTip()
{
    if (pluginSettings().currentRank == CustomLibraryPose)
        return QLatin1String(kDeleteTip);
    const PoseIndexEntry* entry = poseEntry(pluginSettings().currentPose);
    return QLatin1String(kFolderTip) + (entry ? productFolder(entry->path) : QString());
}

} // namespace quillon
