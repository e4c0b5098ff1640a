// Whole-body presets on all four figures: what is set is what the file says. The samples and files
// made here; where real ones lie beside the project (pose_fixture.h, sharedPoses()), these as well.
// The rows' names say which.
#include "pose_corpora.h"
#include "room_tests.h"
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

QUILLON_TEST(TestPoseCorpus)
#include "test_pose_corpus.moc"
