#include "room_tests.h"

#include "bench_window_fixture.h"

#include "host/body/scene_mesh.h"
#include "host/posebench/preset_commands.h"
#include "host/posebench/viewport.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzscene.h"

#include <QDropEvent>
#include <QMimeData>
#include <QStatusBar>

#include <memory>

using namespace quillon;

// What the picture shows of a figure wherever it is, and poses that are dropped on it.
class TestViewing : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void framingKeepsAllOfAFigureInView_data();
    void framingKeepsAllOfAFigureInView();
    void framingNothingShowsTheScene();
    void framingABoneComesCloser();
    void heightIsThatOfTheLowestPoint();
    void heightLineLeadsToTheFloor();
    void pictureIsOfThisPoseTimeAndHighlight();
    void heightLabelStaysInView_data();
    void heightLabelStaysInView();
    void droppedPosesAreAppliedInTheirOrder();
    void aDropTellsWhatItDid_data();
    void aDropTellsWhatItDid();
    void onlyPresetsAreTakenFromADrop();
    void aBrokenFileAmongSeveralChangesNothing();

private:
    DzFloatProperty* hip(const char* channel) const;
    QString preset(const QString& name, const char* bone, float degrees) const;
    void drop(const QStringList& files) const;

    std::unique_ptr<BenchWindow> m_bench;
    DzFigure* m_figure = nullptr;
};

void TestViewing::init()
{
    m_bench.reset(new BenchWindow);
    m_figure = m_bench->addFigure();
}

void TestViewing::cleanup()
{
    m_bench.reset();
}

DzFloatProperty* TestViewing::hip(const char* channel) const
{
    return static_cast<DzFloatProperty*>(m_figure->findBone("hip")->findProperty(channel));
}

// ---- framing -------------------------------------------------------------------------------

static bool isInView(const ViewportWidget* view, const DzVec3& point)
{
    float x, y, depth;
    return projectPoint(makeView(view->camera(), view->size()), point, &x, &y, &depth) && x > 0
        && y > 0 && x < view->width() && y < view->height();
}

void TestViewing::framingKeepsAllOfAFigureInView_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<float>("value");
    QTest::newRow("standing") << "YTranslate" << 0.f;
    QTest::newRow("lifted by its hip") << "YTranslate" << 400.f;
    QTest::newRow("below the floor") << "YTranslate" << -250.f;
    QTest::newRow("lying on the back") << "XRotate" << -90.f;
    QTest::newRow("lying on the side") << "ZRotate" << 90.f;
    QTest::newRow("far away") << "ZTranslate" << -900.f;
}

void TestViewing::framingKeepsAllOfAFigureInView()
{
    QFETCH(QString, channel);
    QFETCH(float, value);
    ViewportWidget* view = m_bench->window->viewport();
    hip(channel.toLatin1())->setIsClamped(false);
    hip(channel.toLatin1())->setValue(value);
    view->resize(300, 500); // narrow: a lying figure is wide
    QTest::keyClick(view, Qt::Key_F);
    const std::vector<DzVec3> skin = skinPoints(m_figure);
    QVERIFY(skin.size() > 1000);
    int across[2] = {view->width(), 0};
    for (const DzVec3& point : skin) {
        QVERIFY(isInView(view, point));
        float x, y, depth;
        projectPoint(makeView(view->camera(), view->size()), point, &x, &y, &depth);
        across[0] = std::min(across[0], int(std::min(x, y)));
        across[1] = std::max(across[1], int(std::max(x, y)));
    }
    QVERIFY(across[1] - across[0] > view->width() / 2); // and not from far away
}

void TestViewing::framingNothingShowsTheScene()
{
    selectOnly(nullptr);
    hip("YTranslate")->setIsClamped(false);
    hip("YTranslate")->setValue(500);
    m_bench->window->viewport()->frameSelection();
    for (const DzVec3& point : skinPoints(m_figure))
        QVERIFY(isInView(m_bench->window->viewport(), point));
}

void TestViewing::framingABoneComesCloser()
{
    ViewportWidget* view = m_bench->window->viewport();
    view->frameSelection();
    const float whole = view->camera().distanceCm;
    selectOnly(m_figure->findBone("lHand"));
    view->frameSelection();
    QVERIFY(view->camera().distanceCm < whole / 3);
    QVERIFY(isInView(view, m_figure->findBone("lHand")->getWSPos()));
}

// ---- height --------------------------------------------------------------------------------

void TestViewing::heightIsThatOfTheLowestPoint()
{
    DzVec3 lowest;
    QVERIFY(lowestPoint(sceneMesh(false), m_figure, &lowest));
    const float standing = lowest.m_y;
    QCOMPARE(heightText(standing), QString("On the floor"));
    hip("YTranslate")->setValue(hip("YTranslate")->getValue() + 37.5f);
    QVERIFY(lowestPoint(sceneMesh(false), m_figure, &lowest));
    QVERIFY(std::fabs(lowest.m_y - standing - 37.5f) < 0.01f); // sums of floats
    QCOMPARE(heightText(37.5f), QString("37.5 cm above the floor"));
    QCOMPARE(heightText(-2.04f), QString("2.0 cm below the floor"));
    QVERIFY(!lowestPoint(sceneMesh(false), nullptr, &lowest));
}

static int accentPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            count += c.red() > 230 && c.green() > 140 && c.green() < 200 && c.blue() < 90;
        }
    return count;
}

void TestViewing::heightLineLeadsToTheFloor()
{
    ViewportWidget* view = m_bench->window->viewport();
    RenderOptions plain = view->renderOptions();
    plain.highlight = false; // of the same colour
    view->setRenderOptions(plain);
    const int standing = accentPixels(view->grab().toImage());
    hip("YTranslate")->setValue(hip("YTranslate")->getValue() + 40);
    const QImage image = view->grab().toImage();
    const int lifted = accentPixels(image);
    QVERIFY2(lifted > standing + 30, qPrintable(QString("%1, %2").arg(standing).arg(lifted)));
    DzVec3 lowest; // below which the line ends
    QVERIFY(lowestPoint(sceneMesh(false), m_figure, &lowest));
    float x, y, depth;
    QVERIFY(projectPoint(
        makeView(view->camera(), view->size()), DzVec3(lowest.m_x, 0, lowest.m_z), &x, &y, &depth));
    QVERIFY(accentPixels(image.copy(int(x) - 6, int(y) - 1, 12, 3)) >= 6);
}

// The skin is kept while only the camera moves, and no longer.
void TestViewing::pictureIsOfThisPoseTimeAndHighlight()
{
    ViewportWidget* view = m_bench->window->viewport();
    selectOnly(m_figure->findBone("chestUpper"));
    const QImage marked = view->grabScene();
    RenderOptions plain = view->renderOptions();
    plain.highlight = false;
    view->setRenderOptions(plain);
    QVERIFY(view->grabScene() != marked);
    const DzTime now = dzScene->getTime();
    hip("YRotate")->setValue(now, 0);
    hip("YRotate")->setValue(now + 480, 90);
    const QImage before = view->grabScene();
    dzScene->setTime(now + 480);
    const QImage turned = view->grabScene();
    QVERIFY(turned != before);
    QVERIFY(turned == renderSceneImage(view->size(), view->camera(), plain));
    dzScene->setTime(now);
    hip("YRotate")->setValue(30);
    QVERIFY(view->grabScene() == renderSceneImage(view->size(), view->camera(), plain));
    view->showView(90, 0);
    QVERIFY(view->grabScene() == renderSceneImage(view->size(), view->camera(), plain));
}

void TestViewing::heightLabelStaysInView_data()
{
    QTest::addColumn<QPointF>("lowest");
    QTest::addColumn<QPointF>("floor");
    QTest::addColumn<QPoint>("place"); // of a label of 200 x 30 in a view of 500 x 400
    QTest::newRow("room on the right")
        << QPointF(100, 100) << QPointF(100, 300) << QPoint(110, 188);
    QTest::newRow("none on the right")
        << QPointF(350, 100) << QPointF(350, 300) << QPoint(141, 188);
    QTest::newRow("the floor is below the view")
        << QPointF(100, 300) << QPointF(100, 900) << QPoint(110, 360);
    QTest::newRow("the figure is above it")
        << QPointF(100, -900) << QPointF(100, 300) << QPoint(110, 10);
    QTest::newRow("beyond the right edge")
        << QPointF(900, 100) << QPointF(900, 300) << QPoint(290, 188);
    QTest::newRow("beyond the left edge")
        << QPointF(-90, 100) << QPointF(-90, 300) << QPoint(10, 188);
}

void TestViewing::heightLabelStaysInView()
{
    QFETCH(QPointF, lowest);
    QFETCH(QPointF, floor);
    QFETCH(QPoint, place);
    const QRect found = heightLabelPlace(QSize(200, 30), lowest, floor, QSize(500, 400));
    QCOMPARE(found, QRect(place, QSize(200, 30)));
    QVERIFY(QRect(0, 0, 500, 400).contains(found));
}

// ---- drops ---------------------------------------------------------------------------------

QString TestViewing::preset(const QString& name, const char* bone, float degrees) const
{
    QFile file(m_bench->home.path() + '/' + name);
    const bool open = file.open(QIODevice::WriteOnly);
    Q_ASSERT(open);
    Q_UNUSED(open);
    file.write(QString("{ \"asset_info\" : { \"type\" : \"preset_pose\" }, \"scene\" : { "
                       "\"animations\" : [ { \"url\" : \"name://@selection/%1:?rotation/x/value\", "
                       "\"keys\" : [ [ 0, %2 ] ] } ] } }")
                   .arg(bone)
                   .arg(double(degrees))
                   .toUtf8());
    return file.fileName();
}

void TestViewing::drop(const QStringList& files) const
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& file : files)
        urls << QUrl::fromLocalFile(file);
    data.setUrls(urls);
    ViewportWidget* view = m_bench->window->viewport();
    QDragEnterEvent enter(view->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore(); // as the toolkit has it before it asks
    QCoreApplication::sendEvent(view, &enter);
    if (!enter.isAccepted())
        return;
    QDropEvent dropped(view->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(view, &dropped);
}

static float shin(const DzFigure* figure, const char* bone)
{
    return static_cast<DzFloatProperty*>(figure->findBone(bone)->findProperty("XRotate"))
        ->getValue();
}

void TestViewing::droppedPosesAreAppliedInTheirOrder()
{
    const int steps = m_bench->undo.getNumUndoItems();
    drop(
        {preset("a.duf", "lShin", 20), preset("b.duf", "rShin", 30), preset("c.DUF", "lShin", 40)});
    QCOMPARE(shin(m_figure, "lShin"), 40.f);
    QCOMPARE(shin(m_figure, "rShin"), 30.f);
    QCOMPARE(m_bench->undo.getNumUndoItems(), steps + 1);
    QCOMPARE(m_bench->undo.getUndoCaption(), QString("Apply 3 Poses"));
    QVERIFY(m_bench->window->statusBar()->currentMessage().contains("3 channels set"));
    m_bench->undo.undo();
    QCOMPARE(shin(m_figure, "lShin"), 0.f);
    drop({preset("d.duf", "lShin", 10)});
    QCOMPARE(m_bench->undo.getUndoCaption(), QString("Apply Pose d"));
}

void TestViewing::aDropTellsWhatItDid_data()
{
    QTest::addColumn<QStringList>("bones");
    QTest::addColumn<QString>("message");
    QTest::newRow("one") << QStringList({"lShin"}) << "0: 1 channel set.";
    QTest::newRow("two") << QStringList({"lShin", "rShin"}) << "2 Poses: 2 channels set.";
    QTest::newRow("none") << QStringList({"tail"}) << "0: nothing in it is for this figure.";
}

void TestViewing::aDropTellsWhatItDid()
{
    QFETCH(QStringList, bones);
    QFETCH(QString, message);
    QStringList files;
    for (const QString& bone : bones)
        files << preset(QString("%1.duf").arg(files.size()), bone.toLatin1(), 20);
    drop(files);
    QCOMPARE(m_bench->window->statusBar()->currentMessage(), message);
}

void TestViewing::onlyPresetsAreTakenFromADrop()
{
    drop({preset("a.txt", "lShin", 20)});
    QCOMPARE(shin(m_figure, "lShin"), 0.f);
    drop({preset("a.txt", "lShin", 20), preset("b.duf", "rShin", 30)});
    QCOMPARE(shin(m_figure, "lShin"), 0.f);
    QCOMPARE(shin(m_figure, "rShin"), 30.f);
}

void TestViewing::aBrokenFileAmongSeveralChangesNothing()
{
    QFile broken(m_bench->home.path() + "/broken.duf");
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no preset");
    broken.close();
    drop({preset("a.duf", "lShin", 20), broken.fileName()});
    QCOMPARE(shin(m_figure, "lShin"), 0.f);
    QVERIFY(m_bench->window->statusBar()->currentMessage().contains("broken.duf"));
}

QUILLON_TEST(TestViewing)
#include "test_viewing.moc"
