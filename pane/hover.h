// hover.h - the pointer over the pane: where it was last seen, which button lies under it, and
// whether that changes the picture.
// Owns: the remembered pointer position. GUI thread only.
#pragma once

#include <QPoint>
#include <QSize>
#include <QString>

namespace quillon {

// Remembers the position and looks up what lies under it. True when something visible changed:
// another button is enlarged, or another tip is shown. Run after every move and every press.
bool updateHover(const QSize& pane, const QPoint& position);
// The pointer has left the pane. Result as above.
bool leaveHover(const QSize& pane);

// Where the pointer was last seen; far outside the pane when it is not over it.
const QPoint& hoverPosition();
const QString& hoverTip(); // text for the text area, may be empty

} // namespace quillon
