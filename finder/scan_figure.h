// scan_figure.h - the figure on which a scan tries the poses, and what has to be put back.
// Nothing of it is recorded for undo; the caller locks the stack. All at one time.
#pragma once

#include "figure/channel_snapshot.h"

#include <QPointer>
#include <QString>

class DzBone;
class DzSkeleton;

namespace quillon {

struct ScanFigure {
    DzSkeleton* figure;
    DzTime time;
    QPointer<DzBone> hip; // null: there is none, and no pose can be tried
    ChannelSnapshot kept; // of the figure node and its bones
};

// Remembers the channels, lifts the limits of the body's bones and puts the node at rest: whatever
// its place, a pose then gives the same signature.
ScanFigure beginScanPoses(DzSkeleton* figure, DzTime time);

// Puts the pose on the figure, its hip, which is there, at the world's origin. False when the file
// cannot be read.
bool tryPose(const ScanFigure&, const QString& path);

// Limits and channels as they were, to the key.
void endScanPoses(const ScanFigure&);

} // namespace quillon
