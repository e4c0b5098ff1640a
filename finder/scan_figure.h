// scan_figure.h - the figure on which a scan tries the poses, and what has to be put back.
// Nothing of it is recorded for undo; the caller locks the stack. All at one time.
#pragma once

#include "dzquat.h"
#include "dztime.h"

#include <QString>

#include <vector>

class DzFloatProperty;
class DzSkeleton;

namespace quillon {

// One channel before the first pose. A value is stored in a key of the time, which may not have
// been there.
struct KeptChannel {
    DzFloatProperty* channel;
    float raw;
    bool hasOwnKey;
};

struct ScanFigure {
    DzSkeleton* figure;
    DzTime time;
    std::vector<KeptChannel> kept; // of the figure node and its bones
};

// Remembers the channels, lifts the limits of the body's bones and puts the node at rest: whatever
// its place, a pose then gives the same signature.
ScanFigure beginScanPoses(DzSkeleton* figure, DzTime time);

// Puts the pose on the figure, its hip at the world's origin. False when the file cannot be read or
// there is no hip.
bool tryPose(const ScanFigure&, const QString& path);

// Limits and channels as they were, to the key.
void endScanPoses(const ScanFigure&);

} // namespace quillon
