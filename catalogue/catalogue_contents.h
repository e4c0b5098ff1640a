// catalogue_contents.h - what a catalogue tells: the poses that are indexed and the files that are
// left out, each with its reason and its picture.
// Made from the index and a scan's report. Owns: nothing outside itself.
#pragma once

#include "finder/pose_index.h"
#include "finder/scan_verdicts.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon {

class ContentScan;

// A file and how it is shown.
struct CatalogueFile {
    QString path;
    int directory = -1; // of the content directories; -1: in none of them
    QString folder; // the product's, below the directory, without slashes at its ends
    QString name;
    QString picture; // below the output folder; empty: there is none
};

struct CataloguePose {
    CatalogueFile file;
    int entry; // of the index
    int rank; // PoseRank
    unsigned categories; // bits by PoseType
};

struct LeftOutFile {
    CatalogueFile file;
    Verdict verdict;
    QString partner; // path; empty: none
};

struct CatalogueContents {
    QStringList directories;
    std::vector<CataloguePose> poses; // by folder, then name
    std::vector<LeftOutFile> leftOut; // likewise
    QStringList missedFolders;
};

// Without pictures. The directories as they were scanned.
CatalogueContents makeContents(
    const QStringList& directories, const ScanReport&, const ContentScan&);

// Folder and name of a file: where it lies, or, of a pose of the maker, what the product is called.
CatalogueFile catalogueFile(const QString& path, const QStringList& directories);

const char* verdictWord(Verdict); // "mirror-of", as in catalogue.json
bool hasPartner(Verdict);

} // namespace quillon
