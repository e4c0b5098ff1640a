// Presets that are no whole body in the host's layout: other layouts, parts of a body, files cut
// off, no poses at all. Files made here, and those beside the project where they are there
// (pose_fixture.h, sharedPoses()); the rows' names say which.
#include "odd_presets.h"
#include "room_tests.h"

#include "posefile/pose_reader.h"
#include "posefile/swap_symmetrize.h"

using namespace quillon;

class TestOtherPresets : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void otherFilesComeToWhatTheTableSays_data();
    void otherFilesComeToWhatTheTableSays();
    void otherFilesLeaveLocksAndNoTempFile_data();
    void otherFilesLeaveLocksAndNoTempFile();
};

static std::unique_ptr<TempFolder> g_made; // with the files made here

void TestOtherPresets::initTestCase()
{
    g_made.reset(new TempFolder);
}

void TestOtherPresets::cleanupTestCase()
{
    g_made.reset();
}

// What a file comes to: how many entries are found, and what is set on a Genesis 8 figure. Entries
// found but not set are lost for the reason given.
struct Outcome {
    const char* file;
    bool read;
    int entries;
    const char* calls; // in order; "sample": the five of the sample's six entries
    const char* why;
};

// The sixth of the sample is a control with %20 in its name, which no table has.
#define SAMPLE_START "Genesis8Female/YTranslate=0 lShin/XRotate=12.5 lShldrBend/ZRotate=-44.6 "
#define SAMPLE_CONTROL "Genesis8Female/pCTRLArmsUpDwnLeft=0.5"
static const char kSample[]
    = SAMPLE_START "lHand/YRotate=-5.078125e-07 " SAMPLE_CONTROL; // first of two keys: -44.6

// clang-format off
static const Outcome kOutcomes[] = {
    {"layouts/01_daz_tabs.duf", true, 6, "sample", "the host's own layout"},
    {"layouts/02_daz_tabs_gzip.duf", true, 6, "sample", "the same, compressed"},
    {"layouts/03_daz_crlf.duf", true, 6, "sample", "carriage returns are blanks around a number"},
    {"layouts/04_addon_bom_4space_keys_on_lines.duf", true, 6,
        SAMPLE_START "lHand/YRotate=-5.0781e-07 " SAMPLE_CONTROL,
        "line feeds inside an entry do not count; the file itself has fewer digits"},
    {"layouts/05_json_one_line.duf", true, 6, "sample", "entries need no line of their own"},
    {"layouts/06_json_minified.duf", true, 6, "sample", "nor blanks"},
    {"layouts/07_json_indent4_number_per_line.duf", true, 6, "sample", "numbers on lines"},
    {"layouts/08_json_keys_before_url_sorted.duf", true, 6,
        "Genesis8Female/YTranslate=12.5 lShin/XRotate=-44.6 lShldrBend/ZRotate=-5.078125e-07 "
        "lHand/YRotate=0.5 Genesis8Female/pCTRLArmsUpDwnLeft=1",
        "keys before url: each url takes the next entry's value"},
    {"layouts/09_gzip_with_bom_inside.duf", true, 6, "sample", "the mark is text like any other"},
    {"layouts/10_utf16le_bom.duf", true, 0, "", "the text ends at its first zero byte, the fourth"},
    {"layouts/11_interpolation_third_element.duf", true, 6,
        "Genesis8Female/YTranslate=0 lShin/XRotate=0 lShldrBend/ZRotate=-44.6 "
        "lHand/YRotate=-5.078125e-07 " SAMPLE_CONTROL,
        "value and interpolation together are no number: 0"},
    {"layouts/12_vector_value_key.duf", true, 7, "sample", "a translation without axis: lost"},
    {"layouts/13_trailing_comma.duf", true, 6, "sample", "it is not parsed as JSON"},
    {"layouts/14_odd_urls_duplicate_bone_string_bool_values.duf", true, 12,
        SAMPLE_START "lHand/YRotate=-5.078125e-07 " SAMPLE_CONTROL " lHand/YRotate=7",
        "the second entry of a channel wins; scale, enabled, image and foreign urls are lost"},
    {"layouts/15_neg_preset_hierarchical_pose.duf", true, 2, "", "no url both selects and turns"},
    {"layouts/16_neg_preset_material_with_animations.duf", true, 2, "", "no channel of a pose"},
    {"layouts/17_trap_preset_pose_only_in_id.duf", true, 6, "sample", "the type is not looked at"},
    {"layouts/18_trap_type_after_1024.duf", true, 6, "sample", "nor where it stands"},
    {"layouts/19_trap_truncated.duf", true, 5, "sample", "the last url has no bracket behind it"},
    {"layouts/20_trap_truncated_gzip.duf", true, 2,
        "Genesis8Female/YTranslate=0 lShin/XRotate=12.5", "what could be unpacked"},
    {"layouts/21_trap_empty.duf", false, 0, "", "no byte was read"},
    {"layouts/22_no_animations.duf", true, 0, "", "no entry"},
    {"not_poses/G8M geograft arms - no cap.duf", true, 22, "", "a scene: no url selects"},
    {"not_poses/QA-Test-Scene-01.duf", true, 29, "", "another, cut: 512 KB of 1.5 MB"},
    {"partial/hand_grip_other_generation.duf", true, 452, "", "bones of other names"},
};
// clang-format on

static QString callsOf(const PoseFixture& f)
{
    setCalls().clear();
    applyPoseText(f.figure, 0, recordCall);
    QStringList calls;
    for (const SetCall& each : setCalls())
        calls << channelPath(each.channel) + "=" + QString::number(double(each.value), 'g', 7);
    return calls.join(" ");
}

static int entryCount()
{
    const TextSpan text = poseText();
    setPoseText(text.begin, int(text.end - text.begin));
    int count = 0;
    for (TextSpan entry; nextEntry(&entry);)
        ++count;
    return count;
}

// Empty when the table has a row for each file beside the project.
static QString firstWithoutRow()
{
    QStringList inTable;
    for (const Outcome& outcome : kOutcomes)
        inTable << QLatin1String(outcome.file);
    for (const char* folder : {"/layouts", "/not_poses", "/partial"}) {
        for (const QString& path : presetsIn(sharedPoses() + folder)) {
            if (!inTable.contains(path.mid(sharedPoses().size() + 1)))
                return path;
        }
    }
    return QString();
}

// Those made here; then, where they are, those beside the project.
static void addOtherRows()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("read");
    QTest::addColumn<int>("entries");
    QTest::addColumn<QString>("calls");
    QTest::addColumn<QString>("why");
    for (const OddPreset& each : oddPresets()) {
        const QString path = g_made->path("odd/") + each.name + ".duf";
        writeFile(path, each.bytes);
        QTest::newRow(qPrintable(QString("made here: ") + each.name))
            << path << each.read << each.entries << QString(each.calls) << QString(each.why);
    }
    if (!QDir(sharedPoses()).exists())
        return;
    VERIFY_NONE(firstWithoutRow());
    for (const Outcome& each : kOutcomes) {
        const bool sample = qstrcmp(each.calls, "sample") == 0;
        QTest::newRow(qPrintable(QString("beside the project: ") + each.file))
            << sharedPoses() + "/" + each.file << each.read << each.entries
            << QString(sample ? kSample : each.calls) << QString(each.why);
    }
}

void TestOtherPresets::otherFilesComeToWhatTheTableSays_data()
{
    addOtherRows();
}

void TestOtherPresets::otherFilesComeToWhatTheTableSays()
{
    QFETCH(QString, path);
    QFETCH(bool, read);
    QFETCH(int, entries);
    QFETCH(QString, calls);
    QFETCH(QString, why);
    QVERIFY2(QFile::exists(path), qPrintable(path));
    PoseFixture f;
    QCOMPARE(loadPoseText(path), read);
    const QString found = callsOf(f);
    QVERIFY2(found == calls, qPrintable(why + ": " + found));
    QCOMPARE(entryCount(), entries);
}

void TestOtherPresets::otherFilesLeaveLocksAndNoTempFile_data()
{
    addOtherRows();
}

void TestOtherPresets::otherFilesLeaveLocksAndNoTempFile()
{
    QFETCH(QString, path);
    QFETCH(bool, read);
    PoseFixture f;
    const FigureState before = stateOf(f.figure);
    QCOMPARE(applyPoseFile(path, true), read);
    swapOrSymmetrize(f.figure, 1, f.time(), false);
    QVERIFY(f.tempFiles().isEmpty());
    const FigureState after = stateOf(f.figure);
    for (size_t i = 0; i < after.size(); ++i)
        QVERIFY2(after[i].locked == before[i].locked && after[i].clamped == before[i].clamped,
            qPrintable(after[i].path));
}

QUILLON_TEST(TestOtherPresets)
#include "test_other_presets.moc"
