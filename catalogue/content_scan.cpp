#include "catalogue/content_scan.h"

#include "catalogue/catalogue_options.h"
#include "finder/browse_tables.h"
#include "finder/category_table.h"
#include "finder/kept_ranks.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "finder/pose_scanner.h"
#include "ground/data_folder.h"
#include "host/figures/figure_loader.h"
#include "posefile/pose_text.h"

#include "dzappsetup.h"
#include "dzfigure.h"
#include "dzprogresswatch.h"

#include <QDir>
#include <QFile>

namespace quillon {
namespace {

// As posebench names the folders of a home.
QString dataOf(const QString& home)
{
    return home + "/data";
}

QString tempOf(const QString& home)
{
    return home + "/temp";
}

DzAppSetup setupOf(const QString& home, const QStringList& content)
{
    DzAppSetup setup;
    setup.dataFolderPath = dataOf(home);
    setup.tempPath = tempOf(home);
    setup.appDataPath = home;
    setup.contentDirectories = content;
    setup.openUrls = false;
    return setup;
}

// After the scan. The user's files are only read: the ranks are those of copies. Ranks that are
// kept for poses which were away return where the poses are found now.
void takeRanks(const QString& userHome)
{
    if (!ensureDataFolder())
        return;
    const DataFiles of = dataFilesFor(dataOf(userHome), tempOf(userHome));
    QFile::copy(of.ranks, dataFiles().ranks);
    QFile::copy(of.ranksKept, dataFiles().ranksKept);
    readRanks();
    (void)moveRanksAfterScan(false); // what cannot be saved here is shown all the same
}

// The one watcher of progress windows, which the library calls without anything of ours. There
// while it is watched.
const ShowScan* g_show = nullptr;

bool showRecord(const DzProgressRecord& record)
{
    if (!record.info.isEmpty())
        (*g_show)(record.info);
    return false;
}

std::vector<unsigned> allCategories(const DzSkeleton* figure, DzTime time)
{
    std::vector<unsigned> of(size_t(poseCount()), 0);
    for (int type = Sitting; type <= UpsideDown; ++type) {
        BrowseTables tables;
        setSimilarityFilters(&tables, type);
        makeYawTable(&tables, type, figure, time);
        setPartReferences(&tables, type, figure, time);
        for (int entry = 0; entry < poseCount(); ++entry)
            of[size_t(entry)] |= unsigned(isMatch(&tables, entry)) << type;
    }
    return of;
}

} // namespace

ContentScan::ContentScan(const CatalogueOptions& options)
{
    if (!m_home.isValid())
        return; // as run() tells
    m_app.reset(new DzApp(setupOf(m_home.path(), options.content)));
    QDir().mkpath(m_app->getTempPath());
    locateDataFiles();
    createPoseIndex();
    createRankStore();
    createReadBuffer();
}

ContentScan::~ContentScan()
{
    freeReadBuffer();
    freeRankStore();
    freePoseIndex();
}

bool ContentScan::run(
    const CatalogueOptions& options, const ShowScan& show, ScanReport* report, QString* why)
{
    if (!m_home.isValid()) {
        *why = "no temporary folder: " + m_home.errorString();
        return false;
    }
    m_figure = loadFigure(options.figure, why);
    if (!m_figure)
        return false;
    m_scene.addNode(m_figure);
    m_figure->select(true);
    m_scene.setPrimarySelection(m_figure);
    g_show = &show;
    dzProgressHook = showRecord;
    const bool finished = scanWithReport(m_figure, m_scene.getTime(), report);
    dzProgressHook = nullptr;
    g_show = nullptr;
    if (!options.home.isEmpty())
        takeRanks(options.home);
    m_categories = allCategories(m_figure, m_scene.getTime());
    if (!finished)
        *why = "the scan did not come to its end";
    return finished;
}

unsigned ContentScan::categoriesOf(int entry) const
{
    return m_categories[size_t(entry)];
}

} // namespace quillon
