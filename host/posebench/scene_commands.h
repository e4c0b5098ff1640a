// scene_commands.h - what the menus do to the scene, one undo step each.
// Errors: null or false and *why as a sentence that can be shown.
#pragma once

#include "dzvec3.h"

#include <QString>

#include <vector>

class DzNode;
class DzSkeleton;

namespace quillon {

DzNode* addFigureToScene(const QString& name, QString* why); // becomes the only selection
DzNode* addPropToScene(const QString& name, const DzVec3& min, const DzVec3& max);
bool removeSelectedNodes(); // root nodes only; false: none was selected
void newScene(); // forgets every undo step

void selectOnly(DzNode* node); // null: nothing
DzSkeleton* figureToPose(); // that of the primary selection; null without

// Around everything that is selected, else around the whole scene: the skin of figures as they are
// posed, the corners of props, a little around bones. World, cm; empty: there is nothing.
std::vector<DzVec3> selectionPoints();

} // namespace quillon
