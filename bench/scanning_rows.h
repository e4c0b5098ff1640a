// scanning_rows.h - what the parts of time_scanning share; each times some rows and prints them.
#pragma once

#include "bench/common_row.h"

#include <QByteArray>
#include <QString>

class DzFigure;

namespace quillon {
namespace scanning {

const int kPresetBytes = 164 * 1024;

// --quick: small sizes once, nothing printed but what differs.
bool isQuick();
void setQuick(bool quick);
bool areSame(); // all checksums so far and those of their references

// Prints the row and holds its checksum against the reference's.
void finish(CommonRow row, std::uint32_t referenceSum);

std::vector<int> counts(); // of presets
std::string eachUs(double ms, int count); // "1.25 us each"
QString malePath(); // of a preset

template <typename Work> double timed(Work work)
{
    if (!isQuick())
        return medianMs(work);
    work();
    return 1;
}

void timeTexts(const DzFigure* figure); // words and hash of bytes
void timePhases(const DzFigure* figure); // on the index
void timeTelling(); // the progress window
void timePassBegins();
void timeWalk(); // of a folder without a pose
void timePoses(DzFigure* figure);

} // namespace scanning
} // namespace quillon
