#include "room_tests.h"

#include "host/body/body_mesh.h"
#include "host/body/figure_renderer.h"
#include "host/body/raster.h"

#include "host/figures/figure_loader.h"
#include "host/figures/prop_maker.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QtTest>

#include <cmath>
#include <map>
#include <memory>

using namespace quillon;

static const QSize kSizePx(300, 360);

class TestFigureRenderer : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void emptySizeGivesNoPicture();
    void emptySceneShowsTheFloorOnly();
    void figureFillsAPersonsShare();
    void sameSceneGivesTheSamePicture();
    void pictureIsOpaque();
    void selectionTintsTheSelectedBoneOnly();
    void poseMovesTheBody();
    void timeMovesTheBody();
    void faceLooksAtTheFrontCamera();
    void figuresDiffer();
    void pickingFindsTheBoneUnderAPixel_data();
    void pickingFindsTheBoneUnderAPixel();
    void boxIsDrawnAndPicked();
    void nearerThingsHideFartherOnes();
    void removedBoneLeavesADrawableFigure();
    void meshIsClosedAndOutward();
    void meshWeightsSumToOne();
    void meshIsSymmetric();
    void triangleCoversItsPixelsOnce();
    void projectionGoesBothWays();
    void framingShowsTheWholeBox_data();
    void framingShowsTheWholeBox();

private:
    DzFigure* add(const char* name);
    QImage picture(PickMap* pick = 0);

    std::unique_ptr<DzUndoStack> m_undo;
    std::unique_ptr<DzScene> m_scene;
    Camera m_camera;
};

void TestFigureRenderer::init()
{
    m_undo.reset(new DzUndoStack);
    m_scene.reset(new DzScene);
    m_camera = homeCamera();
}

void TestFigureRenderer::cleanup()
{
    m_scene.reset();
    m_undo.reset();
}

DzFigure* TestFigureRenderer::add(const char* name)
{
    QString why;
    DzFigure* figure = loadFigure(name, &why);
    m_scene->addNode(figure);
    return figure;
}

QImage TestFigureRenderer::picture(PickMap* pick)
{
    return renderSceneImage(kSizePx, m_camera, RenderOptions(), pick);
}

static int differentPixels(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y);
    return count;
}

static QPoint pixelOf(const Camera& camera, const DzVec3& world)
{
    float x, y, depth;
    projectPoint(makeView(camera, kSizePx), world, &x, &y, &depth);
    return QPoint(qRound(x), qRound(y));
}

// ---- pictures ------------------------------------------------------------------------------

void TestFigureRenderer::emptySizeGivesNoPicture()
{
    QVERIFY(renderSceneImage(QSize(0, 100), m_camera).isNull());
    QVERIFY(renderSceneImage(QSize(), m_camera).isNull());
}

void TestFigureRenderer::emptySceneShowsTheFloorOnly()
{
    PickMap pick;
    const QImage floor = picture(&pick);
    QCOMPARE(floor.size(), kSizePx);
    QVERIFY(!pick.at(150, 180));
    RenderOptions bare;
    bare.floor = false;
    QVERIFY(differentPixels(floor, renderSceneImage(kSizePx, m_camera, bare)) > 5000);
}

void TestFigureRenderer::figureFillsAPersonsShare()
{
    add("Genesis8Female");
    PickMap pick;
    picture(&pick);
    int covered = 0;
    int top = kSizePx.height();
    int bottom = 0;
    for (int y = 0; y < kSizePx.height(); ++y)
        for (int x = 0; x < kSizePx.width(); ++x)
            if (pick.at(x, y)) {
                ++covered;
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    const int crown = pixelOf(m_camera, DzVec3(0, 170, 0)).y();
    const int soles = pixelOf(m_camera, DzVec3(0, 0, 8)).y();
    QVERIFY2(std::abs(top - crown) <= 4, qPrintable(QString("%1 %2").arg(top).arg(crown)));
    QVERIFY2(std::abs(bottom - soles) <= 6, qPrintable(QString("%1 %2").arg(bottom).arg(soles)));
    const double share = double(covered) / ((bottom - top) * (bottom - top));
    QVERIFY2(share > 0.15 && share < 0.35, qPrintable(QString::number(share)));
}

void TestFigureRenderer::sameSceneGivesTheSamePicture()
{
    add("Genesis8Female");
    const QImage first = picture();
    const QImage again = picture();
    QVERIFY(first == again);
}

void TestFigureRenderer::pictureIsOpaque()
{
    add("Genesis8Male");
    const QImage image = picture();
    for (int y = 0; y < image.height(); y += 7)
        for (int x = 0; x < image.width(); x += 7)
            QCOMPARE(qAlpha(image.pixel(x, y)), 255);
}

void TestFigureRenderer::selectionTintsTheSelectedBoneOnly()
{
    DzFigure* figure = add("Genesis8Female");
    DzBone* shin = figure->findBone("lShin");
    const QImage before = picture();
    shin->select(true);
    const QImage after = picture();
    const QPoint calf
        = pixelOf(m_camera, (shin->getWSPos() + figure->findBone("lFoot")->getWSPos()) * 0.5f);
    const QPoint otherCalf = pixelOf(m_camera,
        (figure->findBone("rShin")->getWSPos() + figure->findBone("rFoot")->getWSPos()) * 0.5f);
    const QColor bare(before.pixel(calf));
    const QColor lit(after.pixel(calf));
    QVERIFY2(lit.red() - lit.blue() > bare.red() - bare.blue() + 15, qPrintable(lit.name()));
    QCOMPARE(after.pixel(otherCalf), before.pixel(otherCalf));
    RenderOptions plain;
    plain.highlight = false;
    QVERIFY(renderSceneImage(kSizePx, m_camera, plain) == before);
}

void TestFigureRenderer::poseMovesTheBody()
{
    DzFigure* figure = add("Genesis8Female");
    PickMap pick;
    picture(&pick);
    const QPoint level = pixelOf(m_camera, DzVec3(50, 137, -3)); // where a T-pose has the arm
    QVERIFY(!pick.at(level.x(), level.y()));
    figure->findBone("lShldrBend")->getZRotControl()->setValue(45);
    picture(&pick);
    const DzNode* arm = pick.at(level.x(), level.y());
    QVERIFY(arm && arm->getName().startsWith("lForearm"));
}

void TestFigureRenderer::timeMovesTheBody()
{
    DzFigure* figure = add("Genesis8Female");
    DzFloatProperty* turn = figure->getYRotControl();
    turn->setValue(0, 0);
    turn->setValue(1600, 90);
    const QImage front = picture();
    m_scene->setTime(1600);
    const QImage side = picture();
    QVERIFY(differentPixels(front, side) > 2000);
    m_scene->setTime(0);
    QVERIFY(picture() == front);
}

// The eyes' whites are seen from the front and not from behind.
void TestFigureRenderer::faceLooksAtTheFrontCamera()
{
    DzFigure* figure = add("Genesis8Female");
    m_camera.target = figure->findBone("lEye")->getWSPos();
    m_camera.distanceCm = 60;
    m_camera.pitchDeg = 0;
    PickMap pick;
    picture(&pick);
    QCOMPARE(pick.at(150, 180)->getName(), QString("lEye"));
    m_camera.yawDeg = 180;
    picture(&pick);
    QCOMPARE(pick.at(150, 180)->getName(), QString("head"));
}

void TestFigureRenderer::figuresDiffer()
{
    DzFigure* female = add("Genesis8Female");
    const QImage first = picture();
    m_scene->removeNode(female);
    add("Genesis8Male");
    QVERIFY(differentPixels(first, picture()) > 3000);
}

// ---- picking -------------------------------------------------------------------------------

void TestFigureRenderer::pickingFindsTheBoneUnderAPixel_data()
{
    QTest::addColumn<QString>("from"); // the pixel lies half way between two joints
    QTest::addColumn<QString>("to");
    QTest::newRow("lShldrTwist") << "lShldrTwist"
                                 << "lForearmBend";
    QTest::newRow("rForearmBend") << "rForearmBend"
                                  << "rForearmTwist";
    QTest::newRow("lShin") << "lShin"
                           << "lFoot";
    QTest::newRow("rThighTwist") << "rThighTwist"
                                 << "rShin";
}

void TestFigureRenderer::pickingFindsTheBoneUnderAPixel()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    DzFigure* figure = add("Genesis8Female");
    PickMap pick;
    picture(&pick);
    const QPoint px = pixelOf(
        m_camera, (figure->findBone(from)->getWSPos() + figure->findBone(to)->getWSPos()) * 0.5f);
    const DzNode* node = pick.at(px.x(), px.y());
    QVERIFY(node);
    QCOMPARE(node->getName(), QString(QTest::currentDataTag()));
    QVERIFY(!pick.at(-1, 0) && !pick.at(0, kSizePx.height()) && !pick.at(2, 2));
}

void TestFigureRenderer::boxIsDrawnAndPicked()
{
    DzNode* box = makeProp("Box", DzVec3(-20, 0, -20), DzVec3(20, 40, 20));
    m_scene->addNode(box);
    box->getXPosControl()->setValue(60);
    PickMap pick;
    picture(&pick);
    const QPoint middle = pixelOf(m_camera, DzVec3(60, 20, 0));
    QCOMPARE(pick.at(middle.x(), middle.y()), box);
    const QPoint origin = pixelOf(m_camera, DzVec3(0, 20, 0));
    QVERIFY(!pick.at(origin.x(), origin.y()));
}

void TestFigureRenderer::nearerThingsHideFartherOnes()
{
    DzNode* back = makeProp("Back", DzVec3(-30, 60, -60), DzVec3(30, 120, -50));
    DzNode* front = makeProp("Front", DzVec3(-10, 80, 50), DzVec3(10, 100, 60));
    m_scene->addNode(front);
    m_scene->addNode(back);
    PickMap pick;
    picture(&pick);
    const QPoint middle = pixelOf(m_camera, DzVec3(0, 90, 0));
    QCOMPARE(pick.at(middle.x(), middle.y()), front);
    m_camera.yawDeg = 180;
    picture(&pick);
    QCOMPARE(pick.at(middle.x(), middle.y()), back);
}

void TestFigureRenderer::removedBoneLeavesADrawableFigure()
{
    DzFigure* figure = add("Genesis8Female");
    QVERIFY(figure->removeBone(figure->findBone("lHand")));
    PickMap pick;
    QVERIFY(!picture(&pick).isNull());
    const QPoint px = pixelOf(m_camera, figure->findBone("lMid2")->getWSPos());
    QVERIFY(pick.at(px.x(), px.y()));
}

// ---- mesh ----------------------------------------------------------------------------------

static const BodyMesh& femaleMesh()
{
    QString why;
    return bodyMesh(*figureData("Genesis8Female", &why));
}

// Every triangle turns its front to where its vertices' normals point, and the mesh encloses the
// volume of a body (some 60 litres).
void TestFigureRenderer::meshIsClosedAndOutward()
{
    const BodyMesh& mesh = femaleMesh();
    QVERIFY(mesh.triangles.size() > 30000 && mesh.triangles.size() % 3 == 0);
    double volume = 0;
    int inward = 0;
    for (size_t i = 0; i < mesh.triangles.size(); i += 3) {
        const MeshVertex& a = mesh.vertices[mesh.triangles[i]];
        const MeshVertex& b = mesh.vertices[mesh.triangles[i + 1]];
        const MeshVertex& c = mesh.vertices[mesh.triangles[i + 2]];
        const DzVec3 face = (b.position - a.position).cross(c.position - a.position);
        inward += face.dot(a.normal + b.normal + c.normal) < 0;
        volume += a.position.dot(b.position.cross(c.position)) / 6;
    }
    QVERIFY2(volume > 40000 && volume < 90000, qPrintable(QString::number(volume)));
    QVERIFY2(inward < int(mesh.triangles.size() / 3 / 200), qPrintable(QString::number(inward)));
}

void TestFigureRenderer::meshWeightsSumToOne()
{
    for (const MeshVertex& vertex : femaleMesh().vertices) {
        float sum = 0;
        for (int i = 0; i < 4; ++i) {
            QVERIFY(vertex.bone[i] >= 0 && vertex.bone[i] < 170);
            QVERIFY(vertex.weight[i] >= 0);
            sum += vertex.weight[i];
        }
        QVERIFY(std::fabs(sum - 1) < 1e-5f);
        QVERIFY(std::fabs(vertex.normal.length() - 1) < 1e-3f);
        QVERIFY(vertex.openness > 0 && vertex.openness <= 1);
    }
}

void TestFigureRenderer::meshIsSymmetric()
{
    double balance = 0;
    double left = 0;
    for (const MeshVertex& vertex : femaleMesh().vertices) {
        balance += vertex.position.m_x;
        left += vertex.position.m_x > 0;
    }
    const double count = double(femaleMesh().vertices.size());
    QVERIFY2(std::fabs(balance / count) < 0.3, qPrintable(QString::number(balance / count)));
    QVERIFY(std::fabs(left / count - 0.5) < 0.01);
}

// ---- raster and camera ---------------------------------------------------------------------

// A square of two triangles far from the origin: no pixel is missed, none is outside.
void TestFigureRenderer::triangleCoversItsPixelsOnce()
{
    Raster raster = makeRaster(990, 690, 30, 20);
    const auto corner = [](float x, float y) { return RasterPoint {x, y, 0.01f}; };
    const RasterPoint a = corner(1000.3f, 700.2f);
    const RasterPoint b = corner(1000.3f, 704.7f);
    const RasterPoint c = corner(1004.9f, 704.7f);
    const RasterPoint d = corner(1004.9f, 700.2f);
    fillTriangle(&raster, a, b, c, 1);
    fillTriangle(&raster, a, c, d, 2);
    int covered = 0;
    for (int y = 690; y < 710; ++y)
        for (int x = 990; x < 1020; ++x)
            if (!isEmpty(raster, raster.at(x, y))) {
                QVERIFY(x >= 1001 && x <= 1004 && y >= 701 && y <= 704);
                ++covered;
            }
    QCOMPARE(covered, 16);
    fillTriangle(&raster, a, c, b, 3); // seen from behind
    for (int y = 701; y <= 704; ++y)
        for (int x = 1001; x <= 1004; ++x)
            QVERIFY(raster.hits[raster.at(x, y)].triangle != 3);
}

void TestFigureRenderer::projectionGoesBothWays()
{
    Camera camera;
    camera.yawDeg = 37;
    camera.pitchDeg = -20;
    const View view = makeView(camera, kSizePx);
    float x, y, depth;
    QVERIFY(projectPoint(view, camera.target, &x, &y, &depth));
    QVERIFY(std::fabs(x - 150) < 1e-3f && std::fabs(y - 180) < 1e-3f);
    QVERIFY(std::fabs(depth - camera.distanceCm) < 1e-2f);
    QVERIFY(!projectPoint(view, view.eye - view.forward, &x, &y, &depth));
    // Dragging moves what is at the target with the pointer.
    panCamera(&camera, kSizePx, 25, -10);
    QVERIFY(projectPoint(makeView(camera, kSizePx), Camera().target, &x, &y, &depth));
    QVERIFY(std::fabs(x - 175) < 0.1f && std::fabs(y - 170) < 0.1f);
}

void TestFigureRenderer::framingShowsTheWholeBox_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("upright") << QSize(200, 600);
    QTest::newRow("square") << QSize(400, 400);
    QTest::newRow("wide") << QSize(900, 300);
}

void TestFigureRenderer::framingShowsTheWholeBox()
{
    QFETCH(QSize, size);
    const DzBox3 box(DzVec3(20, 100, -10), DzVec3(60, 140, 10));
    Camera camera;
    camera.yawDeg = 50;
    frameBox(&camera, box, size);
    const View view = makeView(camera, size);
    for (int corner = 0; corner < 8; ++corner) {
        const DzVec3 p(
            corner & 1 ? 20.f : 60.f, corner & 2 ? 100.f : 140.f, corner & 4 ? -10.f : 10.f);
        float x, y, depth;
        QVERIFY(projectPoint(view, p, &x, &y, &depth));
        QVERIFY(x > 0 && x < size.width() && y > 0 && y < size.height());
    }
}

QUILLON_TEST(TestFigureRenderer)
#include "test_figure_renderer.moc"
