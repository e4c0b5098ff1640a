// scene_commands.h - what the menus do to the scene, one undo step each.
// Errors: null or false and *why as a sentence that can be shown.
#pragma once

#include "dzbox3.h"

#include <QString>

class DzNode;
class DzSkeleton;

namespace quillon {

DzNode* addFigureToScene(const QString& name, QString* why); // becomes the only selection
DzNode* addPropToScene(const QString& name, const DzVec3& min, const DzVec3& max);
bool removeSelectedNodes(); // root nodes only; false: none was selected
void newScene(); // forgets every undo step

void selectOnly(DzNode* node); // null: nothing
DzSkeleton* figureToPose(); // that of the primary selection; null without
DzBox3 selectionBox(); // of the selected nodes in the world, else of the whole scene

} // namespace quillon
