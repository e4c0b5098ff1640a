// part_tables.h - the lists of names by which bones and controls are sorted.
// What a test on a list does, contain or equal, is told in body_parts.h; the sizes are part of the
// tables. Which generation has which: figure_model.cpp. Case-sensitive; the lists of a side hold no
// name of the other.
#pragma once

#include "figure/figure_model.h"

namespace quillon {

// ---- parts of the body: patterns, that a name may contain
extern const char* const kFaceBoneNames[77];
extern const char* const kExpressionControlsG81[3];
extern const char* const kExpressionControlsG8[147];
extern const char* const kTorsoArmControls[30];
extern const char* const kLegControls[6];
extern const char* const kHipControls[3];
extern const char* const kFootControls[16];

// ---- parts of the body: whole names
extern const char* const kToeFootControls[24];
extern const char* const kLeftHandControls[17];
extern const char* const kRightHandControls[17];
extern const char* const kUpperBodyBones[20]; // torso, neck, head and arms, with the hip
extern const char* const kLegBones[8]; // both, with hip and pelvis
extern const char* const kFeetBones[26];
extern const char* const kLeftHandBones[20];
extern const char* const kRightHandBones[20];

// ---- what single tools take
// The main bones, whose translation "Bone Translations" limits; the hip's places the figure.
extern const char* const kTranslatableBones[26];

// Shapes that belong to a bone's pose but are no channel of it: of any face bone, and two for each
// bone whose name contains the pattern.
extern const char* const kFaceCorrectives[10];
extern const CorrectivePair kBodyCorrectives[4];

} // namespace quillon
