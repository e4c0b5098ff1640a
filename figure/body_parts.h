// body_parts.h - which bones and controls belong to which part of the body, by name.
// Case-sensitive. A test that is said to contain looks for a substring, one that equals compares
// exactly; names outside the tables are tested in the same way, only slower.
#pragma once

#include "figure/name_index.h"

namespace quillon {

// The groups in which the pane locks, resets and filters parts of the figure.
enum class BodyPart { UpperBody, Legs, Feet, Face, LeftHand, RightHand };
static constexpr int kBodyPartCount = 6;

enum HandSide { LeftSide = 1, RightSide = 2 };

bool isFaceBone(const QString& name); // contains; head and neck are none
bool isHandBone(const QString& name); // equals; both hands with their fingers, 40 names
bool isFootBone(const QString& name); // equals; both feet with their toes, 26 names

bool isExpressionControl(const QString& name); // contains; of the current generation
bool isTorsoArmControl(const QString& name); // contains
bool isLegControl(const QString& name); // contains
bool isHipControl(const QString& name); // contains
bool isToeFootControl(const QString& name); // equals
bool isFootControl(const QString& name); // contains, or isToeFootControl()
bool isHandControl(const QString& name, int side); // equals; side is a HandSide

// Membership. hip is of UpperBody and of Legs, and so are the hip controls: keeping either part
// keeps the hip.
bool boneInPart(const QString& name, BodyPart part);
bool controlInPart(const QString& name, BodyPart part);

} // namespace quillon
