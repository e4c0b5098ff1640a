// scan_verdicts.h - what became of each file that a scan came upon, for who asks for it.
// Owns: nothing.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace quillon {

enum class Verdict {
    Indexed,
    NotAPose, // a preset of another kind
    Unreadable,
    OverCapacity, // the table was full
    NotWholeBody, // a pose of some part of a figure
    OtherFigure, // of another generation
    MakerVariant, // a mirrored or expressionless copy by the maker
    SameContent, // as the partner
    MirrorOf, // the partner
    SimilarTo, // the partner
};

// What a scan tells of a file as soon as it is known; never that it is indexed. The partner is the
// entry that is kept in its stead, of the last three; else empty.
typedef std::function<void(const QString& path, Verdict, const QString& partner)> TellVerdict;

struct FileVerdict {
    QString path;
    Verdict verdict;
    QString partner;
};

struct ScanReport {
    std::vector<FileVerdict> files; // each path once: those left out as they were told, then those
                                    // indexed, in the order of the index
    QStringList missedFolders; // that could not be listed
};

// The first verdict on a path stays. What is indexed is added last, from the index; a file that was
// found twice, as content directories lie within each other, is indexed.
class ScanReporter {
public:
    TellVerdict tell();
    void missFolder(const QString& folder);
    ScanReport finish();

private:
    ScanReport m_report;
};

} // namespace quillon
