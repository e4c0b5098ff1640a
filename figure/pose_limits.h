// pose_limits.h - switches the limits of a figure's channels, and pulls bone translations back.
// Only flags and the values they move are changed; read and written at the scene's current time.
// Missing bones and controls are skipped. The limit walks open no undo step of their own; the two
// commands hold for themselves, and a hold of the caller takes theirs in.
//
// remember: an un-clamp keeps each bone's flag (taken from X Rotate) and each control's, and the
// next remembering clamp sets what was kept. There is one place for that, shared by all users:
// while flags of a figure are kept, a further remembering un-clamp of it keeps nothing new. A
// remembering clamp without an un-clamp before sets what the place holds, off at start.
#pragma once

#include "figure/figure_kind.h"

class DzFloatProperty;
class DzNode;
class QString;

namespace quillon {

static constexpr float kTranslationRangeCm = 0.15f; // of a left click on "Bone Translations"

// Bits of setPoseLimits' partMask.
enum LimitPart { BodyLimits = 1, FaceLimits = 2 };

// Bits of setChannelLimits' channelMask.
enum ChannelGroup { RotationChannels = 1, TranslationChannels = 2 };

void setBodyBoneLimits(DzNode* figure, bool clamp, bool remember); // rotation, not of the face
void setBodyControlLimits(DzNode* figure, bool clamp, bool remember); // not of expressions
void setFaceLimits(DzNode* figure, bool clamp, bool remember); // face bones, expression controls

// Drops the kept flags: as at start.
void forgetLimits();

// The "Pose Limits" command: one undo step, a status text. partMask: LimitPart bits.
void setPoseLimits(DzNode* figure, bool clamp, int partMask);

// One bone's channels; channelMask: ChannelGroup bits.
// remember off: locks them, translations clamped too, or releases both.
// remember on, enable off: keeps their flags (of this one bone) and releases them.
// remember on, enable on: sets the flags that were kept as set; leaves the others.
void setChannelLimits(DzNode* bone, bool enable, int channelMask, bool remember);

// Whether "Bone Translations" takes a bone of this name; the hip is none of them.
bool isTranslatableBone(const QString& name, const FigureModel& model = activeModel());

// Moves the look of the translation into [-rangeCm, rangeCm] on each axis, at the scene's time; up
// to 1.2e-7 cm, and below 0, zeroes it. Locks and limits of the channels apply; one that lies
// within already is not written. The bone is not null.
void limitTranslation(DzNode* bone, float rangeCm);

// The same with the channels' locks and limits lifted meanwhile.
void limitFreedTranslation(DzNode* bone, float rangeCm);

// The "Bone Translations" command: one undo step, a status text.
void limitBoneTranslations(DzNode* figure, float rangeCm);

} // namespace quillon
