// figure_loader.h - builds a stand-in figure as nodes: 170 bones, its pose controls as properties
// of the figure, its pure shapes as morphs of the figure's object, the links as controllers. A
// figure without an undo step of its own: building it records nothing; adding it to the scene does.
// Errors: null and *why as "file: text". GUI thread only.
#pragma once

#include "host/figures/figure_data.h"

class DzFigure;

namespace quillon {

// A new figure that the caller owns until dzScene->addNode takes it. Its name is that of the
// figure; its label is made unique among the scene's nodes: "Genesis 8 Female (2)".
DzFigure* loadFigure(const QString& name, QString* why);

} // namespace quillon
