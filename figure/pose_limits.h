// pose_limits.h - switches the limits of a figure's channels, and pulls bone translations back.
// Only flags and the values they move are changed; read and written at one time, in ticks.
// Missing bones and controls are skipped. The limit walks open no undo step of their own; the two
// commands hold for themselves, and a hold of the caller takes theirs in.
//
// remember: an un-clamp keeps each bone's flag (taken from X Rotate) and each control's, and the
// next remembering clamp sets what was kept. There is one place for that, shared by all users:
// while flags of a figure are kept, a further remembering un-clamp of it keeps nothing new. A
// remembering clamp without an un-clamp before sets what the place holds, off at start.
#pragma once

#include "figure/figure_kind.h"
#include "ground/host_types.h"

class DzFloatProperty;
class DzNode;
class QString;

namespace quillon {

static constexpr float kTranslationRangeCm = 0.15f; // that "Bone Translations" leaves

enum LimitPart { BodyLimits = 1, FaceLimits = 2, AllLimits = BodyLimits | FaceLimits };

// Bits of setChannelLimits' channelMask.
enum ChannelGroup { RotationChannels = 1, TranslationChannels = 2 };

// Rotations of the bones that are none of the face; the controls that are no expressions; face
// bones and expressions.
void setBodyBoneLimits(DzNode* figure, bool clamp, bool remember, DzTime time);
void setBodyControlLimits(DzNode* figure, bool clamp, bool remember, DzTime time);
void setFaceLimits(DzNode* figure, bool clamp, bool remember, DzTime time);

// Drops the kept flags: as at start.
void forgetLimits();

// The "Pose Limits" command: one undo step, a status text.
void setPoseLimits(DzNode* figure, bool clamp, LimitPart part, DzTime time);

// One bone's channels; not null. channelMask: ChannelGroup bits.
// remember off: locks them, translations clamped too, or releases both.
// remember on, enable off: keeps their flags (of this one bone) and releases them.
// remember on, enable on: sets the flags that were kept as set; leaves the others.
void setChannelLimits(DzNode* bone, bool enable, int channelMask, bool remember);

// Whether "Bone Translations" takes a bone of this name; the hip is none of them.
bool isTranslatableBone(const QString& name, const FigureModel& model = activeModel());

// Moves the look of the translation into [-rangeCm, rangeCm] on each axis; a range up to 1.2e-7 cm,
// and one below 0, zeroes it. Locks and limits of the channels apply; one that lies within already
// is not written. The bone is not null.
void limitTranslation(DzNode* bone, float rangeCm, DzTime time);

// The same with the channels' locks and limits lifted meanwhile.
void limitFreedTranslation(DzNode* bone, float rangeCm, DzTime time);

// The "Bone Translations" command: one undo step, a status text. A figure that is null has no
// bones.
void limitBoneTranslations(DzNode* figure, float rangeCm, DzTime time);

} // namespace quillon
