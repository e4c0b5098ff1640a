// pose_targets.h - the channels of one figure that the names of a pose text stand for.
// Each name is looked up on the figure once; the pointers are good as long as the figure's
// structure stays as it is, so an object of this kind lives for one reading.
#pragma once

#include "figure/figure_kind.h"
#include "figure/name_index.h"
#include "posefile/pose_text.h"

#include <bitset>

class DzBone;
class DzFloatProperty;
class DzSkeleton;

namespace quillon {

// Id (name_index.h) of a name given as Latin-1 bytes, line feeds in it not counted; -1: in no
// table.
int nameIdOf(const TextSpan& name);

class PoseTargets {
public:
    explicit PoseTargets(DzSkeleton* figure);

    // Where an entry's value goes; null when the entry is to be ignored. A name has to be in the
    // bone list or the control list of the figure's model; "root" is the figure node, which takes
    // no code 7. The hip's translation is nowhere: a pose never moves the figure from its place.
    DzFloatProperty* channel(const TextSpan& name, int code);

private:
    int knownId(const TextSpan& name);
    DzFloatProperty* control(int id);
    DzBone* bone(int id);

    DzSkeleton* m_figure;
    const FigureModel& m_model;
    TextSpan m_lastName; // the channels of a bone stand one after the other
    int m_lastId;
    std::bitset<kNameCount> m_controlKnown;
    std::bitset<kNameCount> m_boneKnown;
    DzFloatProperty* m_control[kNameCount]; // by name id, where known
    DzBone* m_bone[kNameCount];
};

} // namespace quillon
