// pose_scanner.h - finds all whole-body poses in the content directories, takes their signatures on
// a figure, drops copies, mirrors and near-duplicates, and saves the pose index.
// Runs in a progress window that can be cancelled and tells the outcome in a box. The figure's
// pose is cleared before and after, as one undo step; nothing else of a scan is recorded, and the
// figure keeps its place, limits and locks.
#pragma once

#include "finder/scan_verdicts.h"
#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

// Without content directories nothing happens, without a figure only a box is shown. A figure that
// is gone while the progress window runs ends the scan as Cancel does.
// Otherwise the index and the current position are replaced and the reference pose is deleted; a
// cancelled scan leaves an empty index in memory and the file as it was.
// True when the figure's pose was changed, so that there is something to undo.
bool scanPosesOn(DzSkeleton* figure, DzTime time);

// The scan without what is around it, for who wants to know of every file what became of it: shows
// no box and saves nothing. There is a figure; a content directory that cannot be listed is a
// missed folder. False when it was cancelled, the index then being empty; the report holds what was
// told.
bool scanWithReport(DzSkeleton* figure, DzTime time, ScanReport* report);

} // namespace quillon
