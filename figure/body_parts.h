// body_parts.h - which bones and controls belong to which part of the body, by name.
// Case-sensitive. A test that is said to contain looks for a substring, one that equals compares
// exactly; names outside the tables are tested in the same way, only slower. The lists are those of
// the figure's model; where only a name is given, of the last supported figure's.
#pragma once

#include "figure/figure_kind.h"
#include "figure/name_index.h"

namespace quillon {

// The groups in which the pane locks, resets and filters parts of the figure.
enum class BodyPart { UpperBody, Legs, Feet, Face, LeftHand, RightHand };
static constexpr int kBodyPartCount = 6;

enum HandSide { LeftSide = 1, RightSide = 2 };

// contains; head and neck are none
bool isFaceBone(const QString& name, const FigureModel& model = activeModel());
// equals; both hands with their fingers, 40 names
bool isHandBone(const QString& name, const FigureModel& model = activeModel());
// equals; both feet with their toes, 26 names
bool isFootBone(const QString& name, const FigureModel& model = activeModel());

// contains
bool isExpressionControl(const QString& name, const FigureModel& model = activeModel());
// contains
bool isTorsoArmControl(const QString& name, const FigureModel& model = activeModel());
// contains
bool isLegControl(const QString& name, const FigureModel& model = activeModel());
// contains
bool isHipControl(const QString& name, const FigureModel& model = activeModel());
// equals
bool isToeFootControl(const QString& name, const FigureModel& model = activeModel());
// contains, or isToeFootControl()
bool isFootControl(const QString& name, const FigureModel& model = activeModel());
// equals; side is a HandSide
bool isHandControl(const QString& name, int side, const FigureModel& model = activeModel());

// Membership. hip is of UpperBody and of Legs, and so are the hip controls: keeping either part
// keeps the hip.
bool boneInPart(const QString& name, BodyPart part, const FigureModel& model = activeModel());
bool controlInPart(const QString& name, BodyPart part, const FigureModel& model = activeModel());

} // namespace quillon
