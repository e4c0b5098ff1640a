#include "pane/area_average.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <vector>

namespace quillon {

namespace {

// ---- windows -----------------------------------------------------------------------------------

const int kWholeBits = 14; // all weights of a window along one side
const int kRowBits = 4; // that the sum of a row loses
const int kResultBits = 2 * kWholeBits - kRowBits;

// Of one pixel along one side.
struct Window {
    int first, last; // source pixels
    unsigned head, body, tail; // weights: of the first, of those between, of the last
};

std::vector<Window> windowsOf(int from, int to)
{
    const int body = ((to << kWholeBits) + from - 1) / from;
    const qint64 step = (qint64(from) << 16) / to;
    std::vector<Window> windows;
    windows.reserve(std::size_t(to));
    for (int i = 0; i < to; ++i) {
        const qint64 at = i * step;
        const int head = int(((0x10000 - (at & 0xffff)) * body) >> 16);
        const int first = int(at >> 16);
        int last = first + 1, tail = (1 << kWholeBits) - head;
        for (; tail > body; tail -= body)
            ++last;
        windows.push_back({first, last, unsigned(head), unsigned(body), unsigned(tail)});
    }
    return windows;
}

// ---- one pixel ---------------------------------------------------------------------------------

// Two channels in one number, 32 bits apart.
struct Sums {
    quint64 blueRed, greenAlpha;
};

quint64 spread(quint64 pixel)
{
    return (pixel | pixel << 16) & Q_UINT64_C(0x000000ff000000ff);
}

void add(const Sums& sums, unsigned weight, Sums* to)
{
    to->blueRed += sums.blueRed * weight;
    to->greenAlpha += sums.greenAlpha * weight;
}

// run: the one that the first pixel of the window lies in, or one before it. left: of the piece.
Sums rowSums(const ColourRun* run, int left, const Window& x)
{
    Sums sums = {0, 0};
    for (int i = x.first; i <= x.last; ++i) {
        while (run->end <= left + i)
            ++run;
        const Sums pixel = {spread(run->colour), spread(run->colour >> 8)};
        add(pixel, i == x.first ? x.head : i == x.last ? x.tail : x.body, &sums);
    }
    const quint64 kept = Q_UINT64_C(0x0fffffff0fffffff);
    return {sums.blueRed >> kRowBits & kept, sums.greenAlpha >> kRowBits & kept};
}

QRgb packed(const Sums& sums)
{
    const quint64 kept = Q_UINT64_C(0x000000ff000000ff);
    const quint64 both
        = (sums.blueRed >> kResultBits & kept) | (sums.greenAlpha >> kResultBits & kept) << 8;
    return QRgb(both | both >> 16);
}

// ---- one row -----------------------------------------------------------------------------------

struct Scaling {
    const FlatPicture& picture;
    QRect piece;
    std::vector<Window> columns, rows;
    std::vector<int> ends; // per source column: the first window that reaches it or beyond
};

// The source rows of a window, walked from left to right by their runs: a picture's pixels lie far
// apart in memory.
class RowWalk {
public:
    RowWalk(const Scaling& s, const Window& y)
        : m_scaling(s)
        , m_y(y)
    {
        for (int i = y.first; i <= y.last; ++i) {
            const std::size_t row = std::size_t(s.piece.top() + i);
            m_runs.push_back(&s.picture.runs[s.picture.firstOfRow[row]]);
        }
    }
    // Goes on to a column. Whether all rows have one colour there, and up to where, in the piece.
    bool isFlat(int column, ColourRun* span)
    {
        const int at = m_scaling.piece.left() + column;
        bool flat = true;
        *span = {INT_MAX, 0};
        for (const ColourRun*& run : m_runs) {
            while (run->end <= at)
                ++run;
            flat = flat && (span->end == INT_MAX || run->colour == span->colour);
            *span = {std::min(span->end, run->end), run->colour};
        }
        span->end = std::min(span->end - m_scaling.piece.left(), m_scaling.piece.width());
        return flat;
    }
    QRgb average(const Window& x) const
    {
        Sums sums = {0, 0};
        const std::size_t last = m_runs.size() - 1;
        for (std::size_t i = 0; i <= last; ++i)
            add(rowSums(m_runs[i], m_scaling.piece.left(), x),
                i == 0          ? m_y.head
                    : i == last ? m_y.tail
                                : m_y.body,
                &sums);
        return packed(sums);
    }

private:
    const Scaling& m_scaling;
    const Window& m_y;
    std::vector<const ColourRun*> m_runs; // one a row
};

void scaleRow(const Scaling& s, const Window& y, QRgb* out)
{
    RowWalk walk(s, y);
    const int count = int(s.columns.size());
    for (int i = 0; i < count;) {
        const Window& x = s.columns[std::size_t(i)];
        ColourRun span;
        const int end = walk.isFlat(x.first, &span) ? s.ends[std::size_t(span.end)] : i;
        if (end > i)
            std::fill(out + i, out + end, span.colour);
        else
            out[i] = walk.average(x);
        i = std::max(i + 1, end);
    }
}

std::vector<int> endsOf(const std::vector<Window>& windows, int from)
{
    std::vector<int> ends;
    std::size_t end = 0;
    for (int column = 0; column <= from; ++column) {
        while (end < windows.size() && windows[end].last < column)
            ++end;
        ends.push_back(int(end));
    }
    return ends;
}

} // namespace

FlatPicture flatPicture(const QImage& image)
{
    FlatPicture picture;
    picture.image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int width = image.width();
    for (int y = 0; y < image.height(); ++y) {
        picture.firstOfRow.push_back(picture.runs.size());
        const QRgb* row = reinterpret_cast<const QRgb*>(picture.image.constScanLine(y));
        for (int x = 0; x < width;) {
            const QRgb colour = row[x];
            while (x < width && row[x] == colour)
                ++x;
            picture.runs.push_back({x, colour});
        }
    }
    return picture;
}

QImage scaledPiece(const FlatPicture& picture, const QRect& piece, const QSize& size)
{
    const QImage& image = picture.image;
    if (size.width() >= piece.width() || size.height() >= piece.height())
        return image.copy(piece).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    Scaling s = {picture, piece, windowsOf(piece.width(), size.width()),
        windowsOf(piece.height(), size.height()), {}};
    s.ends = endsOf(s.columns, piece.width());
    QImage out(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
        scaleRow(s, s.rows[std::size_t(y)], reinterpret_cast<QRgb*>(out.scanLine(y)));
    return out;
}

} // namespace quillon
