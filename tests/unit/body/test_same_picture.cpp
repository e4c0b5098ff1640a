#include "room_tests.h"

#include "host/body/raster.h"
#include "host/figures/figure_loader.h"
#include "host/figures/prop_maker.h"
#include "reference/figure_renderer_reference.h"
#include "reference/raster_reference.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QtTest>

#include <memory>
#include <random>

using namespace quillon;

// The picture of the scene and its literal form, byte for byte.
class TestSamePicture : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void figuresInPoses_data();
    void figuresInPoses();
    void camerasAndSizes_data();
    void camerasAndSizes();
    void samplesAndOptions_data();
    void samplesAndOptions();
    void sceneOfBoxes();
    void emptyScene();
    void cameraComesBack();
    void blurredMasks_data();
    void blurredMasks();

private:
    DzFigure* add(const char* name);
    void addBoxes();

    std::unique_ptr<DzUndoStack> m_undo;
    std::unique_ptr<DzScene> m_scene;
};

void TestSamePicture::init()
{
    m_undo.reset(new DzUndoStack);
    m_scene.reset(new DzScene);
}

void TestSamePicture::cleanup()
{
    m_scene.reset();
    m_undo.reset();
}

DzFigure* TestSamePicture::add(const char* name)
{
    QString why;
    DzFigure* figure = loadFigure(name, &why);
    m_scene->addNode(figure);
    return figure;
}

void TestSamePicture::addBoxes()
{
    DzNode* front = makeProp("Front", DzVec3(-20, 0, -20), DzVec3(20, 40, 20));
    DzNode* tilted = makeProp("Tilted", DzVec3(-30, -10, -5), DzVec3(30, 10, 5));
    m_scene->addNode(front);
    m_scene->addNode(tilted);
    front->getXPosControl()->setValue(60);
    front->getYRotControl()->setValue(30);
    tilted->getYPosControl()->setValue(90);
    tilted->getZRotControl()->setValue(50);
    tilted->select(true);
}

// Every rotation of every bone by up to that much.
static void bend(DzFigure* figure, unsigned seed, float mostDeg)
{
    std::mt19937 dice(seed);
    std::uniform_real_distribution<float> turn(-mostDeg, mostDeg);
    DzBoneList bones;
    figure->getAllBones(bones);
    for (DzBone* bone : std::as_const(bones))
        for (DzFloatProperty* channel :
            {bone->getXRotControl(), bone->getYRotControl(), bone->getZRotControl()})
            channel->setValue(turn(dice));
}

static bool isSame(const QSize& size, const Camera& camera, const RenderOptions& options)
{
    PickMap pick, literalPick;
    const QImage image = renderSceneImage(size, camera, options, &pick);
    const QImage literal = reference::renderSceneImage(size, camera, options, &literalPick);
    return image == literal && pick.width == literalPick.width && pick.height == literalPick.height
        && pick.node == literalPick.node && pick.nodes == literalPick.nodes;
}

// ---- figures and cameras -------------------------------------------------------------------

void TestSamePicture::figuresInPoses_data()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<float>("mostDeg");
    for (const char* name :
        {"Genesis8Female", "Genesis8Male", "Genesis8_1Female", "Genesis8_1Male"})
        for (float mostDeg : {0.f, 15.f, 60.f})
            QTest::newRow(qPrintable(QString("%1 by %2").arg(name).arg(double(mostDeg))))
                << QString(name) << mostDeg;
}

void TestSamePicture::figuresInPoses()
{
    QFETCH(QString, figure);
    QFETCH(float, mostDeg);
    DzFigure* posed = add(qPrintable(figure));
    bend(posed, unsigned(mostDeg), mostDeg);
    posed->findBone("lForearmBend")->select(true);
    Camera camera;
    camera.yawDeg = 3 * mostDeg;
    QVERIFY(isSame(QSize(300, 360), camera, RenderOptions()));
}

void TestSamePicture::camerasAndSizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<float>("yawDeg");
    QTest::addColumn<float>("pitchDeg");
    QTest::addColumn<float>("distanceCm");
    QTest::newRow("wide") << QSize(411, 203) << 30.f << 10.f << 400.f;
    QTest::newRow("narrow") << QSize(101, 399) << -140.f << 20.f << 400.f;
    QTest::newRow("one pixel") << QSize(1, 1) << 0.f << 6.f << 400.f;
    QTest::newRow("one row") << QSize(200, 1) << 0.f << 6.f << 400.f;
    QTest::newRow("from above") << QSize(300, 300) << 10.f << 89.f << 300.f;
    QTest::newRow("from below the floor") << QSize(300, 300) << 10.f << -60.f << 300.f;
    QTest::newRow("along the horizon") << QSize(300, 300) << 90.f << 0.f << 500.f;
    QTest::newRow("within the body") << QSize(300, 300) << 200.f << 5.f << 10.f;
    QTest::newRow("close") << QSize(300, 300) << 200.f << 5.f << 60.f;
    QTest::newRow("far") << QSize(300, 300) << 45.f << 30.f << 5000.f;
}

void TestSamePicture::camerasAndSizes()
{
    QFETCH(QSize, size);
    QFETCH(float, yawDeg);
    QFETCH(float, pitchDeg);
    QFETCH(float, distanceCm);
    Camera camera;
    camera.yawDeg = yawDeg;
    camera.pitchDeg = pitchDeg;
    camera.distanceCm = distanceCm;
    bend(add("Genesis8Female"), 7, 25);
    addBoxes();
    QVERIFY(isSame(size, camera, RenderOptions()));
    camera.target = DzVec3(300, 88, 0); // the figure leaves the picture
    QVERIFY(isSame(size, camera, RenderOptions()));
}

void TestSamePicture::samplesAndOptions_data()
{
    QTest::addColumn<int>("samples");
    QTest::addColumn<bool>("floor");
    QTest::addColumn<bool>("highlight");
    for (int samples = 1; samples <= 4; ++samples)
        QTest::newRow(qPrintable(QString::number(samples))) << samples << true << true;
    QTest::newRow("without floor") << 2 << false << true;
    QTest::newRow("without highlight") << 2 << true << false;
}

void TestSamePicture::samplesAndOptions()
{
    RenderOptions options;
    QFETCH(int, samples);
    QFETCH(bool, floor);
    QFETCH(bool, highlight);
    options.samples = samples;
    options.floor = floor;
    options.highlight = highlight;
    DzFigure* figure = add("Genesis8_1Male");
    figure->select(true);
    addBoxes();
    QVERIFY(isSame(QSize(203, 251), Camera(), options));
}

void TestSamePicture::sceneOfBoxes()
{
    addBoxes();
    Camera camera;
    camera.yawDeg = 25;
    QVERIFY(isSame(QSize(300, 300), camera, RenderOptions()));
}

void TestSamePicture::emptyScene()
{
    QVERIFY(isSame(QSize(300, 300), Camera(), RenderOptions()));
}

// What is kept of a picture is of its own camera, size and floor.
void TestSamePicture::cameraComesBack()
{
    addBoxes();
    RenderOptions bare;
    bare.floor = false;
    const QSize size(160, 120);
    QVERIFY(isSame(size, Camera(), RenderOptions()));
    QVERIFY(isSame(size, Camera(), bare));
    QVERIFY(isSame(size, Camera(), RenderOptions()));
    QVERIFY(isSame(size.transposed(), Camera(), RenderOptions()));
    for (int changed = 0; changed < 7; ++changed) {
        Camera camera;
        float* const values[] = {&camera.target.m_x, &camera.target.m_y, &camera.target.m_z,
            &camera.yawDeg, &camera.pitchDeg, &camera.distanceCm, &camera.fieldDeg};
        *values[changed] += 9;
        QVERIFY(isSame(size, Camera(), RenderOptions()));
        QVERIFY(isSame(size, camera, RenderOptions()));
    }
}

// ---- masks ---------------------------------------------------------------------------------

void TestSamePicture::blurredMasks_data()
{
    QTest::addColumn<QRect>("covered"); // of 60 x 40
    QTest::addColumn<int>("radius");
    QTest::newRow("nothing") << QRect() << 4;
    QTest::newRow("everything") << QRect(0, 0, 60, 40) << 4;
    QTest::newRow("a pixel") << QRect(30, 20, 1, 1) << 3;
    QTest::newRow("a corner") << QRect(0, 0, 5, 5) << 4;
    QTest::newRow("the other corner") << QRect(58, 39, 2, 1) << 4;
    QTest::newRow("a column") << QRect(12, 0, 1, 40) << 2;
    QTest::newRow("a row near the edge") << QRect(0, 36, 60, 1) << 5;
    QTest::newRow("wider than the mask") << QRect(20, 10, 9, 9) << 70;
    QTest::newRow("no radius") << QRect(20, 10, 9, 9) << 0;
}

void TestSamePicture::blurredMasks()
{
    QFETCH(QRect, covered);
    QFETCH(int, radius);
    Mask mask = makeMask(60, 40);
    reference::Mask literal = reference::makeMask(60, 40);
    for (int y = covered.top(); y <= covered.bottom(); ++y)
        for (int x = covered.left(); x <= covered.right(); ++x)
            mask.cover[size_t(y) * 60 + size_t(x)] = literal.cover[size_t(y) * 60 + size_t(x)]
                = (x * 7 + y * 3) % 5 ? 255 : 0;
    blurMask(&mask, radius);
    reference::blurMask(&literal, radius);
    QVERIFY(mask.cover == literal.cover);
}

QUILLON_TEST(TestSamePicture)
#include "test_same_picture.moc"
