// browsing_rows.h - what the rows of time_browsing share: the scene they work in, processor time,
// and how a row is printed.
#pragma once

#include "bench/posed_figure.h"
#include "reference/index_tables.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QString>

#include <string>

namespace quillon {

// An application whose folders lie below `home`, with a figure in its scene.
struct BrowsingScene {
    explicit BrowsingScene(const QString& home);
    DzApp app;
    DzMainWindow window;
    PosedFigure posed;
    reference::IndexModels models; // the reference pose is the figure's own

    DzSkeleton* figure() const;
    DzTime time() const;
};

// Stores as at start, an index of the kind with a rank for every entry.
std::vector<RankRecord> freshIndex(const BrowsingScene&, reference::IndexKind kind, int count);
void browse(const BrowsingScene&, int type); // its tables made, nothing counted

inline void mustSucceed(bool done) // what a row is timed on has to be there
{
    if (!done)
        qFatal("a file could not be written");
}

double nowMs(); // of the processor, as the machine may have other work

struct BrowsingRow {
    std::string name;
    int count; // entries
    double ms;
    double referenceMs; // below 0: none
    bool sampled; // the reference
    std::uint32_t checksum;
    std::string note;
};
void printHeader();
void printRow(const BrowsingRow&);

// The rows of commands. Their index files lie in the data folder.
void timeCommands(BrowsingScene*, int count);
// Pane construction, with the files that are in the data folder.
void timePane(BrowsingScene*, int count);
// In a process of its own: how much memory an index needs that is read from the file, in MB.
double residentMB(BrowsingScene*);

} // namespace quillon
