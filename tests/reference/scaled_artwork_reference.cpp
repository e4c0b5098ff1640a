#include "reference/scaled_artwork_reference.h"

namespace quillon {
namespace reference {

QImage scaledPiece(const QImage& picture, const QRect& piece, const QSize& size)
{
    const QImage pixels = picture.copy(piece).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return pixels.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace reference
} // namespace quillon
