// Whole-body presets on all four figures: what is set is what the file says. The samples and files
// made here; where real ones lie beside the project (pose_fixture.h, sharedPoses()), these as well.
// The rows' names say which.
#include "pose_corpora.h"
#include "room_tests.h"

#include "posefile/pose_reader.h"
#include "preset_json.h"

#include <map>

using namespace quillon;

class TestPoseCorpus : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void unlockedFiguresReadAsTheFile_data();
    void unlockedFiguresReadAsTheFile();
    void loadedFiguresKeepLocksAndLimits_data();
    void loadedFiguresKeepLocksAndLimits();
};

static std::unique_ptr<TempFolder> g_made; // with the files made here
static QList<PoseCorpus> g_corpora;

void TestPoseCorpus::initTestCase()
{
    g_made.reset(new TempFolder);
    g_corpora = poseCorpora(g_made->path("bodies"));
    tellPoseCorpora(g_corpora);
}

void TestPoseCorpus::cleanupTestCase()
{
    g_made.reset();
}

// What the file says of the figure's channels, by the tests' own reader; the hip's translation,
// which is never applied, not among it.
typedef std::map<DzFloatProperty*, float> FilePose;

static DzFloatProperty* channelOfUrl(const QByteArray& url, const PoseFixture& f)
{
    const QByteArray start = "name://@selection";
    const int query = url.indexOf(":?");
    const QString name = QString::fromLatin1(url.mid(start.size() + 1, query - start.size() - 1));
    const QByteArray path = url.mid(query + 2);
    if (url.at(start.size()) == '#')
        return isBodyControl(name) ? findControl(name, f.figure) : nullptr;
    const DzNode* node
        = url.at(start.size()) == ':' ? static_cast<DzNode*>(f.figure) : f.figure->findBone(name);
    static const char* const kPaths[] = {"rotation/x/value", "rotation/y/value", "rotation/z/value",
        "translation/x/value", "translation/y/value", "translation/z/value"};
    for (int i = 0; node && i < kPoseChannelCount; ++i) {
        if (path == kPaths[i] && (i < 3 || name != "hip"))
            return poseChannelsOf(node).channel[i];
    }
    return nullptr;
}

static FilePose poseInFile(const QString& path, const PoseFixture& f, bool* ok)
{
    FilePose pose;
    QByteArray text = unpackedFile(path);
    if (text.startsWith("\xef\xbb\xbf"))
        text.remove(0, 3);
    for (const auto& each : PresetJson::animations(text, ok)) {
        if (DzFloatProperty* channel = channelOfUrl(each.first, f))
            pose[channel] = float(each.second);
    }
    return pose;
}

static const int kEntriesOfABody = 6 * kBoneCount - 3 + 6; // without the hip's translation

// ---- whole-body poses

static bool controlsDrive(const DzNode* figure)
{
    for (const FigureControl& each : controlsOf(figure)) {
        if (each.property->getValue() != 0)
            return true;
    }
    return false;
}

// The channel's value; where controls drive the figure, what it would be without them.
static float ownValue(DzFloatProperty* channel, bool driven)
{
    if (!driven)
        return channel->getValue();
    const bool before = channel->setOverrideControllers(true);
    const float value = channel->getValue();
    channel->setOverrideControllers(before);
    return value;
}

void TestPoseCorpus::unlockedFiguresReadAsTheFile_data()
{
    addCorpusRows(g_corpora);
}

void TestPoseCorpus::unlockedFiguresReadAsTheFile()
{
    QFETCH(QString, figure);
    QFETCH(QStringList, files);
    PoseFixture f(figure);
    clearAllLocks(f.figure);
    liftEveryLimit(f.figure);
    const DzUndoStackLock unrecorded;
    for (const QString& path : files) {
        bool ok = false;
        const FilePose pose = poseInFile(path, f, &ok);
        QVERIFY2(ok && int(pose.size()) >= kEntriesOfABody, qPrintable(path));
        QVERIFY2(applyPoseFile(path, true), qPrintable(path));
        const bool driven = controlsDrive(f.figure);
        for (const auto& each : pose)
            QVERIFY2(ownValue(each.first, driven) == each.second,
                qPrintable(path + ": " + channelPath(each.first)));
        QVERIFY(f.bone("hip")->getLocalPos() == DzVec3(0, 0, 0));
    }
}

static float limited(const DzFloatProperty* channel, float value)
{
    return channel->isClamped() ? std::max(channel->getMin(), std::min(channel->getMax(), value))
                                : value;
}

void TestPoseCorpus::loadedFiguresKeepLocksAndLimits_data()
{
    addCorpusRows(g_corpora);
}

void TestPoseCorpus::loadedFiguresKeepLocksAndLimits()
{
    QFETCH(QString, figure);
    QFETCH(QStringList, files);
    QFETCH(bool, pastLimits);
    PoseFixture f(figure);
    const DzUndoStackLock unrecorded;
    const FigureState asLoaded = stateOf(f.figure);
    int lockedCount = 0, limitedCount = 0;
    for (const QString& path : files) {
        bool ok = false;
        const FilePose pose = poseInFile(path, f, &ok);
        QVERIFY2(ok && applyPoseFile(path, true), qPrintable(path));
        const bool driven = controlsDrive(f.figure);
        for (const auto& each : pose) {
            DzFloatProperty* channel = each.first;
            const float raw = channel->isLocked() ? 0 : each.second;
            QVERIFY2(channel->getRawValue() == raw, qPrintable(path + channelPath(channel)));
            QVERIFY2(ownValue(channel, driven) == limited(channel, raw),
                qPrintable(path + channelPath(channel)));
            lockedCount += channel->isLocked() && each.second != 0;
            limitedCount += limited(channel, raw) != raw;
        }
    }
    // else the files would not have come near a lock or limit
    if (pastLimits)
        QVERIFY(lockedCount > files.size() && limitedCount > files.size());
    const FigureState after = stateOf(f.figure);
    for (size_t i = 0; i < after.size(); ++i)
        QVERIFY2(after[i].locked == asLoaded[i].locked && after[i].clamped == asLoaded[i].clamped,
            qPrintable(after[i].path));
}

// ---- mirrored

static DzQuat mirroredTurn(const DzQuat& q) // at the plane X = 0
{
    return DzQuat(q.m_x, -q.m_y, -q.m_z, q.m_w, false);
}

static bool hangsOnJaw(const DzNode* node)
{
    for (; node; node = node->getNodeParent()) {
        if (node->getName() == QLatin1String("lowerJaw"))
            return true;
    }
    return false;
}

static const DzBone* partnerOf(const DzBone* bone, const DzFigure* figure)
{
    const QString name = bone->getName();
    const bool left = name.startsWith('l'), right = name.startsWith('r');
    const DzBone* partner
        = left || right ? figure->findBone(QChar(left ? 'r' : 'l') + name.mid(1)) : nullptr;
    return partner ? partner : bone;
}

// Empty when every bone's turn in the world is the mirrored one of its partner's before.
static QString firstNotMirrored(const PoseFixture& f, const std::vector<WorldPlace>& before)
{
    static const double kToleranceDeg = 0.01;
    for (const FigureBone& each : bonesOf(f.figure)) {
        if (hangsOnJaw(each.bone))
            continue; // "rowerJaw"
        const DzQuat expected = mirroredTurn(before[size_t(each.number)].rot_world);
        const double offDeg = angleDeg(partnerOf(each.bone, f.figure)->getWSRot(), expected);
        if (!(offDeg <= kToleranceDeg))
            return QString("%1 is off by %2 deg").arg(each.bone->getName()).arg(offDeg);
    }
    return QString();
}

// The samples' faces are those of Genesis 8, whose sided controls are none of an 8.1 figure.
static void clearOlderFace(const DzNode* figure)
{
    for (const FigureControl& each : controlsOf(figure)) {
        if (each.property->getName().startsWith("eCTRL"))
            each.property->setValue(0);
    }
}

void TestPoseCorpus::swappedFiguresAreMirroredAndComeBack_data()
{
    addCorpusRows();
}

void TestPoseCorpus::swappedFiguresAreMirroredAndComeBack()
{
    QFETCH(QString, figure);
    QFETCH(QStringList, files);
    PoseFixture f(figure);
    const DzUndoStackLock unrecorded;
    for (const QString& path : files) {
        QVERIFY(applyPoseFile(path, true));
        if (isGenesis81())
            clearOlderFace(f.figure);
        const RawPose raw = rawPose(f.figure);
        const std::vector<WorldPlace> before = worldPlaces(f.figure);
        swapOrSymmetrize(f.figure, 1, f.time(), false);
        const QString found = firstNotMirrored(f, before);
        QVERIFY2(found.isEmpty(), qPrintable(path + ": " + found));
        swapOrSymmetrize(f.figure, 1, f.time(), false);
        const QString other = firstOtherValue(raw, rawPose(f.figure), 5e-5); // seven digits
        QVERIFY2(other.isEmpty(), qPrintable(path + ": " + other));
    }
    QVERIFY(f.tempFiles().isEmpty());
}

// ---- other files

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

void TestPoseCorpus::otherFilesComeToWhatTheTableSays_data()
{
    addOtherRows();
}

void TestPoseCorpus::otherFilesComeToWhatTheTableSays()
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

void TestPoseCorpus::otherFilesLeaveLocksAndNoTempFile_data()
{
    addOtherRows();
}

void TestPoseCorpus::otherFilesLeaveLocksAndNoTempFile()
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

QUILLON_TEST(TestPoseCorpus)
#include "test_pose_corpus.moc"
