#include "catalogue/catalogue_contents.h"

#include "catalogue/content_scan.h"
#include "finder/pose_pair_products.h"
#include "finder/pose_ranks.h"

#include <QCollator>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace quillon {
namespace {

struct VerdictRow {
    Verdict verdict;
    const char* word;
};

// clang-format off
const VerdictRow kVerdicts[] = {
    {Verdict::Indexed,      "indexed"},
    {Verdict::NotAPose,     "not-a-pose"},
    {Verdict::Unreadable,   "unreadable"},
    {Verdict::OverCapacity, "over-capacity"},
    {Verdict::NotWholeBody, "not-whole-body"},
    {Verdict::OtherFigure,  "other-figure"},
    {Verdict::MakerVariant, "makers-variant"},
    {Verdict::SameContent,  "same-content"},
    {Verdict::MirrorOf,     "mirror-of"},
    {Verdict::SimilarTo,    "similar-to"},
};
// clang-format on

// The innermost directory that holds the path; -1: none.
int directoryOf(const QString& path, const QStringList& directories)
{
    int found = -1;
    for (int i = 0; i < directories.size(); ++i) {
        const bool holds = path.startsWith(directories.at(i) + '/');
        if (holds && (found < 0 || directories.at(i).size() > directories.at(found).size()))
            found = i;
    }
    return found;
}

bool comesBefore(const QCollator& order, const CatalogueFile& a, const CatalogueFile& b)
{
    const int folders = order.compare(a.folder, b.folder);
    const int names = folders ? folders : order.compare(a.name, b.name);
    return names ? names < 0 : a.path < b.path;
}

template <typename Row> void sortByFolder(std::vector<Row>* rows)
{
    QCollator order(QLocale(QLocale::English)); // that of C knows no numbers
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(rows->begin(), rows->end(),
        [&order](const Row& a, const Row& b) { return comesBefore(order, a.file, b.file); });
}

} // namespace

const char* verdictWord(Verdict verdict)
{
    const auto row = std::find_if(std::begin(kVerdicts), std::end(kVerdicts),
        [verdict](const VerdictRow& each) { return each.verdict == verdict; });
    Q_ASSERT_X(row != std::end(kVerdicts), "verdictWord", "every verdict has a row");
    return row->word;
}

bool hasPartner(Verdict verdict)
{
    return verdict == Verdict::SameContent || verdict == Verdict::MirrorOf
        || verdict == Verdict::SimilarTo;
}

CatalogueFile catalogueFile(const QString& path, const QStringList& directories)
{
    CatalogueFile file;
    file.path = path;
    file.directory = directoryOf(path, directories);
    const QString product = productFolder(path);
    const QString shown = product.isEmpty() ? path : product;
    const int start = file.directory < 0 ? 0 : directories.at(file.directory).size() + 1;
    const int slash = shown.lastIndexOf('/');
    file.folder = shown.mid(start, std::max(0, slash - start));
    file.name = product.isEmpty() ? poseFileTitle(path, false) : shown.mid(slash + 1);
    return file;
}

CatalogueContents makeContents(
    const QStringList& directories, const ScanReport& report, const ContentScan& scan)
{
    CatalogueContents contents;
    contents.directories = directories;
    contents.missedFolders = report.missedFolders;
    for (int entry = 0; entry < poseCount(); ++entry)
        contents.poses.push_back({catalogueFile(poseEntry(entry)->path, directories), entry,
            rankOf(entry), scan.categoriesOf(entry)});
    for (const FileVerdict& each : report.files)
        if (each.verdict != Verdict::Indexed)
            contents.leftOut.push_back(
                {catalogueFile(each.path, directories), each.verdict, each.partner});
    sortByFolder(&contents.poses);
    sortByFolder(&contents.leftOut);
    return contents;
}

} // namespace quillon
