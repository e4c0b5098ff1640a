// scan_fixture.h - a content directory to scan, what the progress window told meanwhile, and the
// box at the end.
#pragma once

#include "finder_fixture.h"

#include "finder/pose_scanner.h"
#include "posefile/reference_pose.h"

#include "dzprogresswatch.h"

#include <functional>

namespace quillon {

// While it lives, every record of the progress; cancels when the info begins with the given text.
class ProgressLog {
public:
    ProgressLog()
    {
        records().clear();
        cancelAt().clear();
        atChange() = nullptr;
        dzProgressHook = note;
    }
    ~ProgressLog()
    {
        dzProgressHook = nullptr;
        atChange() = nullptr;
    }
    static std::vector<DzProgressRecord>& records()
    {
        static std::vector<DzProgressRecord> list;
        return list;
    }
    static QString& cancelAt()
    {
        static QString start;
        return start;
    }
    static std::function<void(const QString& info)>& atChange()
    {
        static std::function<void(const QString&)> call;
        return call;
    }
    // Each info text once, in order.
    static QStringList infos()
    {
        QStringList list;
        for (const DzProgressRecord& each : records())
            if (list.isEmpty() || list.last() != each.info)
                list << each.info;
        return list;
    }
    static QStringList infosOf(const char* start)
    {
        return infos().filter(QRegExp(QLatin1String("^") + QRegExp::escape(QLatin1String(start))));
    }

private:
    static bool note(const DzProgressRecord& record)
    {
        records().push_back(record);
        if (atChange())
            atChange()(record.info);
        return !cancelAt().isEmpty() && record.info.startsWith(cancelAt());
    }
};

// What the info text begins with, phase by phase; at the first pose and within the phase that moves
// the figure.
static const char* const kPhaseInfos[] = {"Scanning pose files", "Identifying",
    "Optimizing pose index (1)", "Optimizing pose index (2)", "Ignoring", "Indexing poses... 0",
    "Indexing poses... 3", "Skipping mirrored", "Skipping similar", "Cleaning up"};

// One content directory. Paths of files are below it; the walk's order is the file system's.
struct ScanFixture : FinderFixture {
    BoxAnswers boxes;

    explicit ScanFixture(const QString& figureName = QLatin1String("Genesis8Female"))
        : FinderFixture(figureName)
    {
        QDir().mkpath(content());
        setContent(QStringList() << content());
        rig.undoStack.clearAll();
    }
    QString content(const char* below = "") const
    {
        const QString path = home.path(QLatin1String("content"));
        return *below ? path + QLatin1Char('/') + QString::fromUtf8(below) : path;
    }
    QString add(const char* below, const PoseValues& values)
    {
        return addText(below, poseFileText(values));
    }
    QString addText(const char* below, const QByteArray& bytes)
    {
        writeFile(content(below), bytes);
        return content(below);
    }
    // The paths below the content directory that are indexed, sorted.
    QStringList scanned()
    {
        scanPoses();
        QStringList paths;
        for (const QString& path : indexedPaths())
            paths << path.mid(content().size() + 1);
        paths.sort();
        return paths;
    }
    // The content directory's files in the order of the walk.
    QStringList walked() const
    {
        QStringList paths;
        QDirIterator files(content(), QStringList(QLatin1String("*.duf")), QDir::Files,
            QDirIterator::Subdirectories);
        while (files.hasNext())
            paths << files.next();
        return paths;
    }
    QByteArray indexBytes() const
    {
        return fileBytes(dataFiles().poseIndex);
    }
    PoseIndexEntry entryOf(const char* below) const
    {
        const int entry = indexedPaths().indexOf(content(below));
        return entry < 0 ? PoseIndexEntry() : *poseEntry(entry);
    }
};

// ---- poses that are neither mirrors nor near-duplicates of each other

inline PoseValues poseNumber(int n)
{
    PoseValues values;
    values["lShin/x"] = 10 + 33 * (n % 4);
    values["rShin/x"] = 15 + 35 * (n / 4 % 4);
    values["hip/y"] = 20 + 40 * (n / 16 % 3);
    values["hip/z"] = 30;
    values["lShldrBend/y"] = -20;
    values["lShldrBend/z"] = -25;
    values["rShldrBend/z"] = -30;
    return values;
}

// Left and right exchanged as a mirror has them.
inline PoseValues mirroredPose(const PoseValues& values)
{
    PoseValues result;
    for (auto each = values.constBegin(); each != values.constEnd(); ++each) {
        QByteArray key = each.key();
        if (key[0] == 'l')
            key[0] = 'r';
        else if (key[0] == 'r')
            key[0] = 'l';
        result[key] = key.endsWith("/x") ? each.value() : -each.value();
    }
    return result;
}

} // namespace quillon
