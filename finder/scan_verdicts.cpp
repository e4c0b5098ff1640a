#include "finder/scan_verdicts.h"

#include "finder/pose_index.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace quillon {

TellVerdict ScanReporter::tell()
{
    return [this](const QString& path, Verdict verdict, const QString& partner) {
        m_report.files.push_back(FileVerdict {path, verdict, partner});
    };
}

void ScanReporter::missFolder(const QString& folder)
{
    m_report.missedFolders << folder;
}

ScanReport ScanReporter::finish()
{
    QSet<QString> seen;
    for (int entry = 0; entry < poseCount(); ++entry)
        seen.insert(poseEntry(entry)->path);
    std::vector<FileVerdict>& files = m_report.files;
    const auto isKnown = [&seen](const FileVerdict& each) {
        const bool known = seen.contains(each.path);
        seen.insert(each.path);
        return known;
    };
    std::vector<FileVerdict> kept; // a loop: remove_if need not ask in order
    for (const FileVerdict& each : files) {
        if (!isKnown(each))
            kept.push_back(each);
    }
    files.swap(kept);
    for (int entry = 0; entry < poseCount(); ++entry)
        files.push_back(FileVerdict {poseEntry(entry)->path, Verdict::Indexed, QString()});
    return std::exchange(m_report, ScanReport());
}

} // namespace quillon
