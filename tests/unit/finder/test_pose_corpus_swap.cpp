// Whole-body presets on all four figures, swapped: the mirror image in the world, and back again.
// Which files there are: pose_corpora.h.
#include "pose_corpora.h"
#include "room_tests.h"

#include "posefile/pose_reader.h"
#include "posefile/swap_symmetrize.h"

using namespace quillon;

class TestPoseCorpusSwap : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void swappedFiguresAreMirroredAndComeBack_data();
    void swappedFiguresAreMirroredAndComeBack();
};

static std::unique_ptr<TempFolder> g_made; // with the files made here
static QList<PoseCorpus> g_corpora;

void TestPoseCorpusSwap::initTestCase()
{
    g_made.reset(new TempFolder);
    g_corpora = poseCorpora(g_made->path("bodies"));
    tellPoseCorpora(g_corpora);
}

void TestPoseCorpusSwap::cleanupTestCase()
{
    g_made.reset();
}

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

void TestPoseCorpusSwap::swappedFiguresAreMirroredAndComeBack_data()
{
    addCorpusRows(g_corpora);
}

void TestPoseCorpusSwap::swappedFiguresAreMirroredAndComeBack()
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

QUILLON_TEST(TestPoseCorpusSwap)
#include "test_pose_corpus_swap.moc"
