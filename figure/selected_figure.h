// selected_figure.h - from the scene's selection to the figure that a command works on, and whether
// a node is still there after something that ran events. The one place that asks the scene what is
// selected: a press asks once, what the press calls is told.
#pragma once

#include <QPointer>

class DzBone;
class DzNode;
class DzSkeleton;

namespace quillon {

DzNode* selectedNode(); // the primary selection; null without one

// Null unless the node is a supported figure or a bone of one.
DzSkeleton* supportedFigureAnywhereOf(const DzNode* node);

// The same, and null where the figure is no root node, but stands on a prop, say.
DzSkeleton* supportedFigureOf(const DzNode* node);

DzSkeleton* selectedFigure(); // that of the primary selection

// The figure's bone "hip"; null without figure or bone.
DzBone* hipOf(const DzSkeleton* figure);

bool isInScene(const DzNode* node); // false for null

// Holds on to a node across a box, a dialog or a progress window: all of them run events, and with
// them whatever scripts and users do to the scene.
class HeldNode {
public:
    explicit HeldNode(DzNode* node); // null: there is nothing that could go
    bool isGone() const; // deleted since, or taken out of the scene

private:
    bool m_isAny;
    QPointer<DzNode> m_node;
};

} // namespace quillon
