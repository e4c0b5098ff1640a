// reset_pose.h - returns parts of a figure to the zero pose.
// Rotation and translation channels go to 0, and so do the controls that drive them; parts that are
// not reset keep their local placement. Values are read and written at one time, in ticks. Missing
// bones and controls are skipped; locked ones keep their value. No undo step is opened: the caller
// holds. A value that is 0 already is not written, so that no needless key appears; one
// that only reads 0, because limits hide what is stored, is. Stored is 0 afterwards, too, unless a
// driver that the reset leaves alone moves the channel.
#pragma once

#include "ground/host_types.h"

class DzNode;

namespace quillon {

enum ResetMode {
    ResetWholeFigure = -1,
    ResetBody = 1, // the selected bones and all below them; face, hands and feet stay
    ResetExtremities = 2, // only face, hands and feet among those
    ResetSelected = 3 // the selected bones alone, of whatever part
};

// figure: the figure node or a bone of it; null or another node: nothing happens. The figure node
// selected itself stands for all bones of the mode. The hip of ResetBody and ResetSelected only
// loses its world rotation; its translation stays.
void resetPose(DzNode* figure, ResetMode mode, DzTime time);

// Whether a reset of selected bones takes this one; never with ResetWholeFigure. Not null.
bool inResetPart(const DzNode* bone, ResetMode mode);

// Rotation and translation channels that are not 0. Not null.
void zeroBoneChannels(DzNode* bone, DzTime time);

// The bone's correctives and every body control that drives them or the bone's channels through
// controller links, then the channels. Not null.
void resetBone(DzNode* bone, DzTime time);

// Sets the value channels of the morphs of the figure's object whose names begin with "facs_" to 0,
// in the tables or not and of whatever generation. The figure is not null; one without an object
// has no morphs. A channel within 1.2e-7 of 0 is left alone.
void zeroFacsMorphs(DzNode* figure, DzTime time);

} // namespace quillon
