// own_picture.h - the picture that the maker of a pose preset put beside it.
// Owns: nothing.
#pragma once

#include <QString>

namespace quillon {

// name.duf.png, name.png or name.tip.png beside name.duf, the first that is there; empty: none.
QString ownPicture(const QString& preset);

} // namespace quillon
