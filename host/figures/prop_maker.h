// prop_maker.h - a box as a node, to stand for any object that is no figure.
#pragma once

#include "dzvec3.h"

#include <QString>

class DzNode;

namespace quillon {

// A new node with a geometry box, in centimetres in its own space; the caller owns it until
// dzScene->addNode takes it. Corners may come in any order.
DzNode* makeProp(const QString& name, const DzVec3& min, const DzVec3& max);

} // namespace quillon
