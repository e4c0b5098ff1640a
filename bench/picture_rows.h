// picture_rows.h - times of drawing as rows of a table, beside those of a literal form, and a CRC
// of what was drawn.
#pragma once

#include <QImage>

#include <functional>

namespace quillon {

struct Times {
    double ms = 0; // of the processor, in all threads together
    double ownMs = 0; // in the thread that asked: the wall's on a machine with nothing else to do,
                      // when it waits for no other
    double wallMs = 0;
};

// Each clock's time at that place of the sorted runs: 0 the fastest, 0.5 the median.
Times timeAt(double place, int runs, const std::function<void()>& run);

quint32 crcOf(const QImage& image, quint32 before = 0); // as ARGB32_Premultiplied

enum class Clock { Processor, Wall };

struct PictureRow {
    const char* name;
    double n; // how much was drawn
    Times now, literal; // literal.ms 0: there is none
    quint32 crc, literalCrc;
    Clock clock = Clock::Processor; // which is the row's time; the note has the others
};

// Whether both forms drew the same.
bool agrees(const PictureRow& row);

void printHeader();
// before: the row of the same name and another n, null: none.
void print(const PictureRow& row, const PictureRow* before = nullptr);

} // namespace quillon
