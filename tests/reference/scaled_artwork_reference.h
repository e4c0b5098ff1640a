// scaled_artwork_reference.h - a piece of a picture at another size, scaled by the toolkit.
#pragma once

#include <QImage>

namespace quillon {
namespace reference {

// ARGB32_Premultiplied. The piece lies within the picture.
QImage scaledPiece(const QImage& picture, const QRect& piece, const QSize& size);

} // namespace reference
} // namespace quillon
