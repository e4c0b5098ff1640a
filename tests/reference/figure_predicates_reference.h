// figure_predicates_reference.h - the tests on names in their literal form: a walk through a list
// with one comparison each. Slow and plain; what figure/ answers faster is held against it.
// The generation is an argument here.
#pragma once

#include <QString>

namespace quillon {
namespace reference {

int boneIndex(const QString& name);
int controlIndex(const QString& name, bool genesis81);
bool controlDrivesBone(const QString& controlName, int boneNumber, bool genesis81);

bool isFaceBone(const QString& name);
bool isExpressionControl(const QString& name, bool genesis81);
bool isTorsoArmControl(const QString& name);
bool isLegControl(const QString& name);
bool isHipControl(const QString& name);
bool isToeFootControl(const QString& name);
bool isFootControl(const QString& name);
bool isHandControl(const QString& name, int side);

} // namespace reference
} // namespace quillon
