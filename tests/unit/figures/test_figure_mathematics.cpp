// The host's mathematics on a loaded figure, against worked numbers and a computation of the test's
// own: ordinary column matrices in double precision.
#include "figure_files.h"
#include "room_tests.h"

#include "host/figures/figure_loader.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <utility>

using namespace quillon;

static const double kRadPerDeg = M_PI / 180;
static const double kRoundTrip = 1e-4; // what the host promises

// ---- the test's own mathematics ------------------------------------------------------------

struct Mat {
    double m[3][3];
};

static Mat times(const Mat& a, const Mat& b)
{
    Mat out = {};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k)
                out.m[i][j] += a.m[i][k] * b.m[k][j];
    return out;
}

static Mat transposed(const Mat& a)
{
    Mat out;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            out.m[i][j] = a.m[j][i];
    return out;
}

// Right-handed turn about an axis, for column vectors.
static Mat turn(int axis, double deg)
{
    const double c = std::cos(deg * kRadPerDeg);
    const double s = std::sin(deg * kRadPerDeg);
    const int u = (axis + 1) % 3;
    const int v = (axis + 2) % 3;
    Mat out = {};
    out.m[axis][axis] = 1;
    out.m[u][u] = out.m[v][v] = c;
    out.m[u][v] = -s;
    out.m[v][u] = s;
    return out;
}

static Mat identity()
{
    return turn(0, 0);
}

// The usual v' = q v conj(q).
static Mat fromUsualQuat(double x, double y, double z, double w)
{
    const double n = 2 / (x * x + y * y + z * z + w * w);
    return {{{1 - n * (y * y + z * z), n * (x * y - w * z), n * (x * z + w * y)},
        {n * (x * y + w * z), 1 - n * (x * x + z * z), n * (y * z - w * x)},
        {n * (x * z - w * y), n * (y * z + w * x), 1 - n * (x * x + y * y)}}};
}

// First letter first: the last one stands on the left.
static Mat euler(const QString& order, const double (&deg)[3])
{
    Mat out = identity();
    for (const QChar& letter : order) {
        const int axis = letter.unicode() - 'X';
        out = times(turn(axis, deg[axis]), out);
    }
    return out;
}

static double difference(const Mat& expected, const DzQuat& q)
{
    double worst = 0;
    for (int column = 0; column < 3; ++column) {
        DzVec3 axis;
        axis[column] = 1;
        const DzVec3 image = q.multVec(axis);
        for (int row = 0; row < 3; ++row)
            worst = std::max(worst, std::fabs(image[row] - expected.m[row][column]));
    }
    return worst;
}

static double difference(const DzQuat& a, const DzQuat& b) // either sign is the same turn
{
    const double d[2] = {1, -1};
    double best = 10;
    for (double s : d)
        best = std::min(best,
            std::max(std::max(std::fabs(a.m_x - s * b.m_x), std::fabs(a.m_y - s * b.m_y)),
                std::max(std::fabs(a.m_z - s * b.m_z), std::fabs(a.m_w - s * b.m_w))));
    return best;
}

// ---- the figure ----------------------------------------------------------------------------

class TestFigureMathematics : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void hipMinus90LaysTheFigureOnItsBack();
    void thighMinus90LiftsTheLegForward();
    void shinPlus90BendsTheKneeBack();
    void forearmAndShoulderTurnAsTheRigSays();
    void worldIsLocalTimesParent();
    void figureAndHipTurnAddUp();
    void localRotationMatchesMatrices_data();
    void localRotationMatchesMatrices();
    void everyBoneMatchesMatrices();
    void positionsMatchMatrices();
    void worldRotationRoundTripsAtEveryBone();
    void localRotationRoundTripsAtEveryBone();
    void worldPositionRoundTripsAtEveryBone();
    void worldTransformRoundTripsAtEveryBone();
    void roundTripsHoldAtAnotherTime();

private:
    DzBone* bone(const char* name);
    void setRotDeg(DzNode* node, double x, double y, double z);
    void freeChannels(); // no locks, no limits
    void pose(unsigned seed); // random rotations and translations everywhere

    std::unique_ptr<DzUndoStack> m_undo;
    std::unique_ptr<DzScene> m_scene;
    DzFigure* m_figure;
    QList<DzBone*> m_bones;
};

void TestFigureMathematics::init()
{
    m_undo.reset(new DzUndoStack);
    m_scene.reset(new DzScene);
    QString why;
    m_figure = loadFigure("Genesis8Female", &why);
    QVERIFY2(m_figure, qPrintable(why));
    m_scene->addNode(m_figure);
    m_bones.clear();
    m_figure->getAllBones(m_bones);
    QCOMPARE(m_bones.size(), 170);
    m_undo->lock();
}

void TestFigureMathematics::cleanup()
{
    m_scene.reset();
    m_undo.reset();
}

DzBone* TestFigureMathematics::bone(const char* name)
{
    return m_figure->findBone(name);
}

void TestFigureMathematics::setRotDeg(DzNode* node, double x, double y, double z)
{
    node->getXRotControl()->setValue(float(x));
    node->getYRotControl()->setValue(float(y));
    node->getZRotControl()->setValue(float(z));
}

void TestFigureMathematics::freeChannels()
{
    for (DzBone* b : std::as_const(m_bones))
        for (int i = 0; i < b->getNumProperties(); ++i)
            if (DzFloatProperty* p = qobject_cast<DzFloatProperty*>(b->getProperty(i))) {
                p->lock(false);
                p->setIsClamped(false);
            }
}

void TestFigureMathematics::pose(unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> angle(-80, 80);
    std::uniform_real_distribution<double> shift(-3, 3);
    freeChannels();
    for (DzBone* b : std::as_const(m_bones)) {
        setRotDeg(b, angle(random), angle(random), angle(random));
        b->getXPosControl()->setValue(float(shift(random)));
        b->getYPosControl()->setValue(float(shift(random)));
        b->getZPosControl()->setValue(float(shift(random)));
    }
    setRotDeg(m_figure, angle(random), angle(random), angle(random));
}

// ---- worked numbers ------------------------------------------------------------------------

static QString text(const DzVec3& v)
{
    return QString("(%1, %2, %3)").arg(v.m_x).arg(v.m_y).arg(v.m_z);
}

#define COMPARE_VEC(actual, expected, tolerance)                                                   \
    QVERIFY2(((actual) - (expected)).length() <= (tolerance), qPrintable(text(actual)))

void TestFigureMathematics::hipMinus90LaysTheFigureOnItsBack()
{
    DzBone* hip = bone("hip");
    setRotDeg(hip, -90, 0, 0);
    const DzQuat q = hip->getWSRot();
    COMPARE_VEC(q.multVec(DzVec3(0, 0, 1)), DzVec3(0, 1, 0), 1e-6f); // front axis up
    COMPARE_VEC(q.multVec(DzVec3(0, 1, 0)), DzVec3(0, 0, -1), 1e-6f); // head away from the viewer
    COMPARE_VEC(q.multVec(DzVec3(1, 0, 0)), DzVec3(1, 0, 0), 1e-6f);
    QVERIFY(std::fabs(q.m_x - std::sqrt(0.5)) < 1e-6);
    QVERIFY(std::fabs(q.m_w - std::sqrt(0.5)) < 1e-6);
    // Lying: everything at about the height of the hip, the head behind it.
    QVERIFY(std::fabs(bone("head")->getWSPos().m_y - hip->getWSPos().m_y) < 5);
    QVERIFY(bone("head")->getWSPos().m_z < -40);
    QVERIFY(bone("Nose")->getWSPos().m_y > bone("head")->getWSPos().m_y);
}

void TestFigureMathematics::thighMinus90LiftsTheLegForward()
{
    DzBone* thigh = bone("lThighBend");
    thigh->getXRotControl()->setValue(-90);
    const DzQuat local = thigh->getLocalRot();
    QVERIFY2(std::fabs(local.m_x - 0.7071) < 0.012, qPrintable(QString::number(local.m_x)));
    QVERIFY(std::fabs(local.m_w - std::sqrt(0.5)) < 1e-6);
    const DzVec3 knee = bone("lShin")->getWSPos() - thigh->getWSPos();
    QVERIFY2(knee.m_z > 40, qPrintable(text(knee))); // a thigh's length ahead
    QVERIFY2(std::fabs(knee.m_y) < 8, qPrintable(text(knee)));
    COMPARE_VEC(bone("rShin")->getWSPos(), bone("rShin")->getOrigin(), 1e-4f);
}

void TestFigureMathematics::shinPlus90BendsTheKneeBack()
{
    bone("lShin")->getXRotControl()->setValue(90);
    const DzVec3 ankle = bone("lFoot")->getWSPos() - bone("lShin")->getWSPos();
    QVERIFY2(ankle.m_z < -35, qPrintable(text(ankle)));
    QVERIFY2(std::fabs(ankle.m_y) < 8, qPrintable(text(ankle)));
}

void TestFigureMathematics::forearmAndShoulderTurnAsTheRigSays()
{
    bone("lForearmBend")->getYRotControl()->setValue(-90);
    const DzVec3 hand = bone("lHand")->getWSPos() - bone("lForearmBend")->getWSPos();
    QVERIFY2(hand.m_z > 20, qPrintable(text(hand))); // left forearm Y negative: forward
    bone("lForearmBend")->getYRotControl()->setValue(0);
    bone("lShldrBend")->getZRotControl()->setValue(45);
    const DzVec3 arm = bone("lHand")->getWSPos() - bone("lShldrBend")->getWSPos();
    QVERIFY2(std::fabs(arm.m_y) < 2 && arm.m_x > 50, qPrintable(text(arm))); // level: a T-pose
}

void TestFigureMathematics::worldIsLocalTimesParent()
{
    pose(7);
    for (const DzBone* b : std::as_const(m_bones)) {
        const DzQuat world = b->getLocalRot() * b->getNodeParent()->getWSRot();
        QVERIFY2(difference(world, b->getWSRot()) < 1e-6, qPrintable(b->getName()));
    }
}

void TestFigureMathematics::figureAndHipTurnAddUp()
{
    setRotDeg(m_figure, 0, 30, 0);
    setRotDeg(bone("hip"), 0, 20, 0);
    QVERIFY(difference(bone("hip")->getWSRot(), DzQuat(DzVec3(0, 1, 0), 50 * kRadPerDeg)) < 1e-6);
    setRotDeg(bone("hip"), 40, 20, 0);
    const DzQuat expected = bone("hip")->getLocalRot() * DzQuat(DzVec3(0, 1, 0), 30 * kRadPerDeg);
    QVERIFY(difference(bone("hip")->getWSRot(), expected) < 1e-6);
}

// ---- against matrices ----------------------------------------------------------------------

void TestFigureMathematics::localRotationMatchesMatrices_data()
{
    QTest::addColumn<QString>("order");
    for (const char* order : {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"})
        QTest::newRow(order) << order;
}

void TestFigureMathematics::localRotationMatchesMatrices()
{
    QFETCH(QString, order);
    std::mt19937 random(3);
    std::uniform_real_distribution<double> angle(-179, 179);
    DzBone* hand = bone("lHand");
    freeChannels();
    hand->setRotationOrder(DzRotationOrder::fromString(order));
    hand->setOrientation(DzQuat());
    for (int i = 0; i < 200; ++i) {
        const double deg[3] = {angle(random), angle(random), angle(random)};
        setRotDeg(hand, deg[0], deg[1], deg[2]);
        QVERIFY(difference(euler(order, deg), hand->getLocalRot()) < 1e-5);
    }
}

struct BoneFacts {
    Mat orientation;
    QString order, parent;
    double center[3];
};

static QHash<QString, BoneFacts> boneFacts()
{
    QHash<QString, BoneFacts> facts;
    for (const QVariant& value : figureRows("skeleton.json", "bones")) {
        const QVariantMap row = value.toMap();
        const QVariantList q = row.value("orientation_quat_xyzw").toList();
        const QVariantList c = row.value("center").toList();
        facts.insert(row.value("name").toString(),
            {fromUsualQuat(q[0].toDouble(), q[1].toDouble(), q[2].toDouble(), q[3].toDouble()),
                row.value("rotation_order").toString(), row.value("parent").toString(),
                {c[0].toDouble(), c[1].toDouble(), c[2].toDouble()}});
    }
    return facts;
}

// Column form: L = O E O'.
static Mat localMatrix(const BoneFacts& facts, const DzNode* node)
{
    const double deg[3] = {node->getXRotControl()->getValue(), node->getYRotControl()->getValue(),
        node->getZRotControl()->getValue()};
    return times(facts.orientation, times(euler(facts.order, deg), transposed(facts.orientation)));
}

void TestFigureMathematics::everyBoneMatchesMatrices()
{
    const QHash<QString, BoneFacts> facts = boneFacts();
    for (unsigned seed = 1; seed <= 5; ++seed) {
        pose(seed);
        for (const DzBone* b : std::as_const(m_bones)) {
            const double d = difference(localMatrix(facts[b->getName()], b), b->getLocalRot());
            QVERIFY2(d < 2e-5, qPrintable(QString("%1: %2").arg(b->getName()).arg(d)));
        }
    }
}

void TestFigureMathematics::positionsMatchMatrices()
{
    const QHash<QString, BoneFacts> facts = boneFacts();
    pose(11);
    setRotDeg(m_figure, 0, 0, 0);
    QHash<QString, Mat> rotation;
    QHash<QString, DzVec3> position;
    rotation.insert(QString(), identity());
    for (const DzBone* b : std::as_const(m_bones)) { // parents come first
        const BoneFacts& f = facts[b->getName()];
        const double shift[3] = {b->getXPosControl()->getValue(), b->getYPosControl()->getValue(),
            b->getZPosControl()->getValue()};
        DzVec3 at = position.value(f.parent);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) {
                const double parent = f.parent.isEmpty() ? 0 : facts[f.parent].center[j];
                at[i] += float(rotation[f.parent].m[i][j] * (f.center[j] - parent + shift[j]));
            }
        position.insert(b->getName(), at);
        rotation.insert(b->getName(), times(rotation[f.parent], localMatrix(f, b)));
        COMPARE_VEC(b->getWSPos(), at, 2e-3f); // ten bones deep, summed in single precision
    }
}

// ---- round trips ---------------------------------------------------------------------------

void TestFigureMathematics::worldRotationRoundTripsAtEveryBone()
{
    std::mt19937 random(21);
    std::uniform_real_distribution<double> part(-1, 1);
    pose(20);
    for (DzBone* b : std::as_const(m_bones)) {
        const DzQuat target(part(random), part(random), part(random), part(random));
        b->setWSRot(target);
        const double d = difference(b->getWSRot(), target);
        QVERIFY2(d <= kRoundTrip, qPrintable(QString("%1: %2").arg(b->getName()).arg(d)));
    }
}

void TestFigureMathematics::localRotationRoundTripsAtEveryBone()
{
    std::mt19937 random(22);
    std::uniform_real_distribution<double> part(-1, 1);
    pose(23);
    for (DzBone* b : std::as_const(m_bones)) {
        const DzQuat target(part(random), part(random), part(random), part(random));
        b->setLocalRot(target);
        QVERIFY2(difference(b->getLocalRot(), target) <= kRoundTrip, qPrintable(b->getName()));
    }
}

void TestFigureMathematics::worldPositionRoundTripsAtEveryBone()
{
    std::mt19937 random(24);
    std::uniform_real_distribution<float> place(-150, 150);
    pose(25);
    for (DzBone* b : std::as_const(m_bones)) {
        const DzVec3 target(place(random), place(random), place(random));
        b->setWSPos(target);
        COMPARE_VEC(b->getWSPos(), target, kRoundTrip * 2); // of 150 cm in single precision
    }
}

void TestFigureMathematics::worldTransformRoundTripsAtEveryBone()
{
    pose(26);
    QList<DzVec3> positions;
    QList<DzQuat> rotations;
    for (const DzBone* b : std::as_const(m_bones)) {
        positions << b->getWSPos();
        rotations << b->getWSRot();
    }
    pose(27);
    for (int i = 0; i < m_bones.size(); ++i) { // parents first, so nothing moves afterwards
        m_bones[i]->setWSRot(rotations[i]);
        m_bones[i]->setWSPos(positions[i]);
    }
    for (int i = 0; i < m_bones.size(); ++i) {
        const double d = difference(m_bones[i]->getWSRot(), rotations[i]);
        QVERIFY2(d <= kRoundTrip, qPrintable(QString("%1: %2").arg(m_bones[i]->getName()).arg(d)));
        COMPARE_VEC(m_bones[i]->getWSPos(), positions[i], 5e-4f);
    }
}

void TestFigureMathematics::roundTripsHoldAtAnotherTime()
{
    const DzTime later = 10 * m_scene->getTimeStep();
    freeChannels();
    DzBone* hand = bone("rHand");
    const DzQuat target(DzVec3(1, 2, 3), 1.0);
    hand->setWSRot(0, DzQuat());
    hand->setWSRot(later, target);
    QVERIFY(difference(hand->getWSRot(later), target) <= kRoundTrip);
    QVERIFY(difference(hand->getWSRot(0), DzQuat()) <= kRoundTrip);
    QVERIFY(difference(hand->getWSRot(), DzQuat()) <= kRoundTrip); // the clock stands at 0
    m_scene->setTime(later);
    QVERIFY(difference(hand->getWSRot(), target) <= kRoundTrip);
}

QUILLON_TEST(TestFigureMathematics)
#include "test_figure_mathematics.moc"
