// time_browsing [--quick] - browsing over 1,024, 8,192 and 65,536 entries with as many ranks:
// counts of the matches of every category and under every filter, beside the literal form of
// tests/reference/; searches, commands and the start of the pane.
//
// A count goes over entries that are known from counts for other tables; "again" with the same
// tables, "fresh" over entries that were never looked at.
//
// Prints tab separated rows: processor time (the fastest of the runs), that of the literal form,
// the ratio, the exponent of growth since the size before, and a checksum of what came out. The
// literal form of more than kFullReference entries is timed for every kSampleStep-th one and the
// time multiplied; it is marked with ~. Its verdicts must be the same. Applying a pose, dialogs and
// the flush of files to disk are not in the times.
// --quick: small sizes once; says only whether the verdicts are the same.
#include "bench/browsing_rows.h"

#include "finder/browse_session.h"
#include "finder/pose_browser.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"
#include "reference/finder_reference.h"

#include <QApplication>
#include <QDir>
#include <QProcess>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <map>

using namespace quillon;
using namespace quillon::reference;

static const int kSizes[] = {1024, 8192, 65536};
static const int kQuickSizes[] = {512, 2048};
static const int kRuns = 5;
static const int kFullReference = 1024;
static const int kSampleStep = 128;

// ---- shared by all rows

BrowsingScene::BrowsingScene(const QString& home)
    : app([&home] {
        DzAppSetup setup;
        setup.dataFolderPath = home + QLatin1String("/data");
        setup.tempPath = home + QLatin1String("/temp");
        setup.documentationPath = home + QLatin1String("/docs");
        setup.settingsFile = home + QLatin1String("/settings.ini");
        setup.openUrls = false;
        return setup;
    }())
    , posed("Genesis8Female")
{
    QDir().mkpath(app.getTempPath());
    locateDataFiles();
    mustSucceed(ensureDataFolder());
    models = modelsFor(figure(), time());
}

DzSkeleton* BrowsingScene::figure() const
{
    return posed.figure;
}

DzTime BrowsingScene::time() const
{
    return posed.scene.getTime();
}

std::vector<RankRecord> quillon::freshIndex(const BrowsingScene& scene, IndexKind kind, int count)
{
    pluginSettings() = PluginSettings();
    createPoseIndex();
    createFilteredList();
    createRankStore();
    Dice dice {std::uint64_t(count)};
    makeIndex(kind, count, scene.models, ReferencePose, &dice);
    const std::vector<RankRecord> records = madeRanks(1, &dice);
    putRanks(records);
    return records;
}

void quillon::browse(const BrowsingScene& scene, int type)
{
    BrowseSession& session = browseSession();
    session.type = type;
    makeYawTable(&session.tables, type, scene.figure(), scene.time());
    setPartReferences(&session.tables, type, scene.figure(), scene.time());
    setSimilarityFilters(&session.tables, type);
    session.tablesState = Made;
}

double quillon::nowMs()
{
    return double(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

void quillon::printHeader()
{
    std::printf("row\tn\tms\treference_ms\tratio\texponent\tchecksum\tnote\n");
}

void quillon::printRow(const BrowsingRow& row)
{
    static std::map<std::string, BrowsingRow> before;
    std::string reference = "-", ratio = "-", exponent = "-";
    char text[64];
    if (row.referenceMs >= 0) {
        std::snprintf(text, sizeof text, "%s%.1f", row.sampled ? "~" : "", row.referenceMs);
        reference = text;
        std::snprintf(text, sizeof text, "%.1f", row.referenceMs / row.ms);
        ratio = text;
    }
    if (before.count(row.name)) {
        const BrowsingRow& last = before[row.name];
        std::snprintf(text, sizeof text, "%.2f",
            std::log(row.ms / last.ms) / std::log(double(row.count) / last.count));
        exponent = text;
    }
    before[row.name] = row;
    std::printf("%s\t%d\t%.3f\t%s\t%s\t%s\t%08x\t%s\n", row.name.c_str(), row.count, row.ms,
        reference.c_str(), ratio.c_str(), exponent.c_str(), row.checksum,
        row.note.empty() ? "-" : row.note.c_str());
    std::fflush(stdout);
}

// ---- counts

namespace {

struct Filter {
    const char* name;
    int type;
    bool onEveryKind;
    void (*set)(PluginSettings*);
};

const Filter kFilters[] = {
    {"all poses", AllPoses, true, [](PluginSettings*) {}},
    {"sitting", Sitting, true, [](PluginSettings*) {}},
    {"standing", Standing, false, [](PluginSettings*) {}},
    {"belly up", LyingBellyUp, false, [](PluginSettings*) {}},
    {"belly down", LyingBellyDown, false, [](PluginSettings*) {}},
    {"left side", LyingLeftSide, true, [](PluginSettings*) {}},
    {"right side", LyingRightSide, false, [](PluginSettings*) {}},
    {"upside down", UpsideDown, false, [](PluginSettings*) {}},
    {"reference pose", ReferencePose, false, [](PluginSettings*) {}},
    {"reference pose, every area", ReferencePose, true,
        [](PluginSettings* s) { std::fill_n(s->similarity, kBodyAreaCount, true); }},
    {"sitting, women", Sitting, false, [](PluginSettings* s) { s->includeMale = false; }},
    {"sitting, favourites", Sitting, false,
        [](PluginSettings* s) { s->rankFilter = ShowFavorite; }},
    {"all poses, custom", AllPoses, false,
        [](PluginSettings* s) { s->rankFilter = ShowCustomLibrary; }},
    {"all poses, no pairs", AllPoses, false, [](PluginSettings* s) { s->ignorePosePairs = true; }},
};

// The first is as those of users; the others are asked for a few categories only.
struct KindRow {
    const char* name;
    IndexKind kind;
    bool everyFilter;
};
const KindRow kKinds[] = {{"", IndexKind::Clustered, true},
    {", random index", IndexKind::Random, false}, {", all alike", IndexKind::Alike, false}};

struct Count {
    double freshMs; // nothing is known of any entry, and the tables are just made
    double firstMs, againMs; // the tables are just made, the same once more
    std::vector<int> matches;
};

} // namespace

static double timedCount(const BrowsingScene& scene)
{
    const double start = nowMs();
    countMatches(scene.figure(), scene.time());
    return nowMs() - start;
}

static Count timeCounts(const BrowsingScene& scene, int type, int runs)
{
    Count count = {1e9, 1e9, 1e9, {}};
    for (int run = 0; run < runs; ++run) {
        browseSession().tables = BrowseTables();
        browse(scene, type);
        count.freshMs = std::min(count.freshMs, timedCount(scene));
        browse(scene, type);
        count.firstMs = std::min(count.firstMs, timedCount(scene));
        count.againMs = std::min(count.againMs, timedCount(scene));
    }
    count.matches = browseSession().matches;
    return count;
}

// The literal form of every step-th entry; *same: its verdicts are those of the matches.
static double timeReference(
    const std::vector<RankRecord>& records, const std::vector<int>& matches, int step, bool* same)
{
    const double start = nowMs();
    for (int entry = step / 2; entry < poseCount(); entry += step) {
        const bool listed = std::binary_search(matches.begin(), matches.end(), entry);
        *same = *same && reference::passes(entry, records) == listed;
    }
    return (nowMs() - start) * step;
}

static std::uint32_t checksumOf(const std::vector<int>& matches)
{
    std::uint32_t sum = 2166136261u;
    for (const int each : matches)
        sum = (sum ^ std::uint32_t(each)) * 16777619u;
    return sum;
}

static bool countRow(const BrowsingScene& scene, const std::vector<RankRecord>& records,
    const Filter& filter, const char* index, bool quick)
{
    pluginSettings() = PluginSettings();
    filter.set(&pluginSettings());
    const int entries = poseCount();
    const Count count = timeCounts(scene, filter.type, quick ? 1 : kRuns);
    const int step = !quick && entries > kFullReference ? kSampleStep : 1;
    bool same = true;
    const double literalMs = timeReference(records, count.matches, step, &same);
    if (quick)
        return same;
    BrowsingRow row = {std::string("recount ") + filter.name + index, entries, count.firstMs,
        literalMs, step > 1, checksumOf(count.matches),
        std::to_string(count.matches.size()) + " match" + (same ? "" : ", VERDICTS DIFFER")};
    printRow(row);
    BrowsingRow again = row, fresh = row;
    again.name += ", again";
    again.ms = count.againMs;
    printRow(again);
    fresh.name += ", fresh";
    fresh.ms = count.freshMs;
    printRow(fresh);
    return same;
}

static bool countRows(const BrowsingScene& scene, const KindRow& kind, int count, bool quick)
{
    const std::vector<RankRecord> records = freshIndex(scene, kind.kind, count);
    bool same = true;
    for (const Filter& filter : kFilters) {
        if (kind.everyFilter || filter.onEveryKind)
            same = countRow(scene, records, filter, kind.name, quick) && same;
    }
    return same;
}

// ---- everything

// In a process of its own, as memory once used is seldom given back.
static void memoryRow(const QString& program, const QString& home, int count)
{
    QProcess process;
    process.start(program, QStringList() << QLatin1String("--resident") << home);
    process.waitForFinished(-1);
    printRow(BrowsingRow {"resident memory, MB", count, process.readAll().trimmed().toDouble(), -1,
        false, 0, "index and ranks read, every category counted"});
}

static bool timeAll(const QString& home, const QString& program)
{
    printHeader();
    bool same = true;
    for (const int count : kSizes) {
        BrowsingScene scene(home); // commands change the pose
        for (const KindRow& kind : kKinds)
            same = countRows(scene, kind, count, false) && same;
        timeCommands(&scene, count);
        timePane(&scene, count);
        memoryRow(program, home, count);
    }
    return same;
}

static bool checkAll(const QString& home)
{
    const BrowsingScene scene(home);
    bool same = true;
    for (const int count : kQuickSizes) {
        for (const KindRow& kind : kKinds)
            same = countRows(scene, kind, count, true) && same;
    }
    return same;
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc > 2 && std::strcmp(argv[1], "--resident") == 0) {
        BrowsingScene scene(QString::fromLocal8Bit(argv[2]));
        std::printf("%.1f\n", residentMB(&scene));
        return 0;
    }
    const QString home
        = QDir::tempPath() + QString::fromLatin1("/time_browsing_%1").arg(app.applicationPid());
    const bool quick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
    const bool same = quick ? checkAll(home) : timeAll(home, app.applicationFilePath());
    QDir(home).removeRecursively();
    std::fprintf(quick ? stdout : stderr, "%s\n",
        same ? "all verdicts are those of the literal form" : "VERDICTS DIFFER");
    return same ? 0 : 1;
}
