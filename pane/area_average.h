// area_average.h - makes a piece of a picture smaller by averaging areas, with the numbers of the
// toolkit's smooth scaling (5.15) and so with its bytes, but quickly where the picture is flat, as
// artwork mostly is. Without threads. Owns: nothing.
//
// A pixel is the average of a window of source pixels: along each side a first weight, equal ones
// and a last one, 1 << 14 together. Rows are summed first and lose their last four bits. The window
// of a pixel that sees one colour only gives that colour, so runs of a colour are filled.
#pragma once

#include <QImage>
#include <QRect>
#include <QSize>

#include <cstddef>
#include <vector>

namespace quillon {

struct ColourRun {
    int end; // behind its last pixel in the row
    QRgb colour;
};

// A picture to take pieces from.
struct FlatPicture {
    QImage image; // ARGB32_Premultiplied
    std::vector<ColourRun> runs; // all pixels, row by row
    std::vector<std::size_t> firstOfRow; // its place in runs
};

FlatPicture flatPicture(const QImage& image);

// ARGB32_Premultiplied. piece: within the picture. size: not empty; any that is not smaller along
// both sides is left to the toolkit.
QImage scaledPiece(const FlatPicture& picture, const QRect& piece, const QSize& size);

} // namespace quillon
