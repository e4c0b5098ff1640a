// figure_calls.h - the calls of this room that ask the scene for the time, and those whose choices
// come as numbers: a number without a meaning does nothing. The room's edge for those who have
// neither; nothing that a press runs comes through here.
#pragma once

class DzNode;
class DzSkeleton;

namespace quillon {

void resetPose(DzNode* figure, int mode); // a ResetMode
bool inResetPart(const DzNode* bone, int mode); // likewise; false for any other number

void bakePose(DzNode* figure, int part); // a BakePart

// See pose_limits.h.
void setBodyBoneLimits(DzNode* figure, bool clamp, bool remember);
void setBodyControlLimits(DzNode* figure, bool clamp, bool remember);
void setFaceLimits(DzNode* figure, bool clamp, bool remember);
void setPoseLimits(DzNode* figure, bool clamp, int partMask); // LimitPart bits
void limitTranslation(DzNode* bone, float rangeCm);
void limitBoneTranslations(DzNode* figure, float rangeCm);

bool optimizeEditing(DzNode* node, DzSkeleton* figure, int centre); // a CentreChoice

} // namespace quillon
