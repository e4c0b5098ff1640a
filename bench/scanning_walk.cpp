// Walking through a folder without a pose.
#include "bench/scanning_rows.h"

#include "finder/content_walk.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

namespace quillon {
namespace scanning {

namespace {

struct Walk {
    double longestMs = 0; // without a question for a cancel
    std::uint32_t entries = 0;
    double last = 0;

    bool isDone()
    {
        const double now = processorMs();
        longestMs = entries > 0 ? std::max(longestMs, now - last) : 0;
        last = now;
        ++entries;
        return false;
    }
};

} // namespace

static void fillFolder(const QString& folder, int count)
{
    QDir().mkpath(folder);
    const QByteArray base = QFile::encodeName(folder) + "/picture ";
    for (int n = 0; n < count; ++n)
        QFile(QFile::decodeName(base + QByteArray::number(n) + ".png")).open(QIODevice::WriteOnly);
}

// The way by which names were looked for in the listing itself.
static std::uint32_t walkByName(const QString& folder)
{
    QDirIterator files(folder, QStringList(QLatin1String("*.duf")), QDir::Files | QDir::NoSymLinks,
        QDirIterator::Subdirectories);
    while (files.hasNext())
        files.next();
    return 0;
}

void timeWalk()
{
    const int count = isQuick() ? 200 : 200000;
    QTemporaryDir folder;
    fillFolder(folder.path(), count);
    CommonRow row;
    row.name = "walk_without_pose";
    row.n = count;
    Walk walk;
    ContentVisitor visitor;
    visitor.missFolder = [](const QString&) {};
    visitor.visitPreset = [](const QString&) {};
    visitor.isDone = [&walk] { return walk.isDone(); };
    walkContent(folder.path(), visitor);
    row.checksum = walk.entries;
    visitor.isDone = [] { return false; };
    row.ms = timed([&] { walkContent(folder.path(), visitor); });
    row.referenceMs = timed([&] { walkByName(folder.path()); });
    row.note = "at most " + QByteArray::number(walk.longestMs, 'f', 3).toStdString()
        + " ms without a question for a cancel; reference: a listing by name, which asks at its "
          "end";
    finish(row, std::uint32_t(count));
}

} // namespace scanning
} // namespace quillon
