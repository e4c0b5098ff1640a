// bone_table.h - the bones of the figures. A bone's position in the table is its bone number, by
// which every per-bone array is indexed. Parents stand before their children.
// Order: hip, left leg, right leg, torso, left arm, right arm, neck and head, face, pectorals.
#pragma once

namespace quillon {

static constexpr int kBoneCount = 170;
static constexpr int kHipNumber = 0;

extern const char* const kBoneTable[kBoneCount];

} // namespace quillon
