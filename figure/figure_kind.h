// figure_kind.h - which node is a figure the tools work on, and what is known about it.
// Only the generation is told apart, never the sex. Tools read the model of the figure they work
// on. One process-wide flag holds the generation of the last supported figure, whatever is selected
// since: it stands in where there is only a name to go by.
// GUI thread only, as everything in this folder. Nothing here changes the scene.
#pragma once

#include "figure/figure_model.h"

class DzNode;
class DzSkeleton;

namespace quillon {

// By the node's exact name; None for any other, and for null.
FigureKind generationOf(const DzNode* node);

// The tables of the figure that the node is or belongs to. Of a node that is of no supported
// figure, or null: activeModel().
const FigureModel& modelOf(const DzNode* node);

// ---- the flag

// Of the figure that isSupportedFigure() last accepted; Genesis 8 at start.
const FigureModel& activeModel();
bool isGenesis81();

void resetFigureKind(); // back to Genesis 8, when the first pane is built

// generationOf() is not None. Sets the flag when it returns true; leaves it otherwise.
bool isSupportedFigure(const DzNode* node);

// ---- nodes

// A skeleton, or a bone that stands for its skeleton. False for null.
bool isFigureNode(const DzNode* node);

// The skeleton that the node is or belongs to; null unless isFigureNode().
DzSkeleton* figureOf(const DzNode* node);

} // namespace quillon
