// figure_kind.h - which node is a figure the tools work on.
// Only the generation is told apart, never the sex. It is one process-wide flag that every
// two-variant table reads; it describes the last supported figure, whatever is selected since.
// GUI thread only, as everything in this folder. Nothing here changes the scene.
#pragma once

class DzNode;
class DzSkeleton;

namespace quillon {

enum class FigureKind { Genesis8, Genesis8_1 };

// The generation of the figure that isSupportedFigure() last accepted; Genesis 8 at start.
FigureKind figureKind();
bool isGenesis81();

void resetFigureKind(); // back to Genesis 8, when the first pane is built

// By the node's exact name. Sets the generation when it returns true; leaves it otherwise.
// False for null.
bool isSupportedFigure(const DzNode* node);

// A skeleton, or a bone that stands for its skeleton. False for null.
bool isFigureNode(const DzNode* node);

// The skeleton that the node is or belongs to; null unless isFigureNode().
DzSkeleton* figureOf(const DzNode* node);

} // namespace quillon
