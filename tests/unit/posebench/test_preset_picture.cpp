#include "room_tests.h"

#include "host/body/pose_picture.h"
#include "host/posebench/preset_picture.h"

#include "host/figures/figure_loader.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace quillon;

static const QSize kSize(96, 96);

class TestPresetPicture : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void shadedFigureFillsThePicture();
    void poseOfTheFileIsShown();
    void poseBeforeLeavesNoTrace();
    void lockedChannelsAreClearedAndStayLocked();
    void facesTheEyeWhicheverWayItFaces();
    void farAwayLooksAsAtHome();
    void nothingIsRecorded();
    void unreadableFileIsToldAndChangesNothing();

private:
    QString write(const char* name, const QByteArray& entries);
    QImage picture(const QString& file);
    DzFloatProperty* channel(const char* bone, const char* property);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<DzUndoStack> m_undo;
    std::unique_ptr<DzScene> m_scene;
    DzFigure* m_figure;
};

void TestPresetPicture::init()
{
    m_dir.reset(new QTemporaryDir);
    m_undo.reset(new DzUndoStack);
    m_scene.reset(new DzScene);
    QString why;
    m_figure = loadFigure("Genesis8Female", &why);
    QVERIFY2(m_figure, qPrintable(why));
    m_scene->addNode(m_figure);
    m_undo->clearAll();
}

void TestPresetPicture::cleanup()
{
    m_scene.reset();
    m_undo.reset();
}

static QByteArray entry(const char* place, double value)
{
    return "{\"url\": \"name://@selection" + QByteArray(place) + "/value\", \"keys\": [[0, "
        + QByteArray::number(value) + "]]}";
}

QString TestPresetPicture::write(const char* name, const QByteArray& entries)
{
    QFile file(m_dir->filePath(name));
    const bool open = file.open(QIODevice::WriteOnly);
    file.write("{\"asset_info\": {\"type\": \"preset_pose\"}, \"scene\": {\"animations\": ["
        + entries + "]}}");
    return open ? file.fileName() : QString();
}

QImage TestPresetPicture::picture(const QString& file)
{
    QString why;
    const QImage image = presetPicture(file, m_figure, kSize, &why);
    return why.isEmpty() ? image : QImage();
}

DzFloatProperty* TestPresetPicture::channel(const char* bone, const char* property)
{
    return qobject_cast<DzFloatProperty*>(m_figure->findBone(bone)->findProperty(property));
}

// The share of pixels that differ by more than a shade.
static double difference(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < kSize.height(); ++y)
        for (int x = 0; x < kSize.width(); ++x)
            count += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 12;
    return double(count) / (kSize.width() * kSize.height());
}

void TestPresetPicture::shadedFigureFillsThePicture()
{
    const QImage image = picture(write("rest.duf", ""));
    QCOMPARE(image.size(), kSize);
    int top = kSize.height(), bottom = 0;
    for (int y = 0; y < kSize.height(); ++y)
        for (int x = 0; x < kSize.width(); ++x)
            if (qRed(image.pixel(x, y)) > qBlue(image.pixel(x, y)) + 25) { // skin
                top = qMin(top, y);
                bottom = qMax(bottom, y);
            }
    QVERIFY2(top < 16 && bottom > 80, qPrintable(QString("skin in %1..%2").arg(top).arg(bottom)));
}

void TestPresetPicture::poseOfTheFileIsShown()
{
    const QImage rest = picture(write("rest.duf", ""));
    const QImage bent = picture(write("bent.duf", entry("/lThighBend:?rotation/x", -90)));
    QVERIFY(difference(rest, bent) > 0.03);
}

void TestPresetPicture::poseBeforeLeavesNoTrace()
{
    const QString rest = write("rest.duf", "");
    const QImage first = picture(rest);
    picture(write("bent.duf",
        entry("/lThighBend:?rotation/x", -90) + "," + entry(":?translation/y", 40) + ","
            + entry("/hip:?rotation/y", 50)));
    QCOMPARE(picture(rest), first);
}

void TestPresetPicture::lockedChannelsAreClearedAndStayLocked()
{
    DzFloatProperty* thigh = channel("lThighBend", "XRotate");
    thigh->setValue(0, -60);
    thigh->lock(true);
    clearFigurePose(m_figure);
    QCOMPARE(thigh->getValue(), 0.f);
    QVERIFY(thigh->isLocked());
}

void TestPresetPicture::facesTheEyeWhicheverWayItFaces()
{
    const QByteArray raised
        = entry("/lShldrBend:?rotation/z", 45) + "," + entry("/rThighBend:?rotation/x", -90);
    const QImage front = picture(write("front.duf", raised));
    const QImage turned
        = picture(write("turned.duf", raised + "," + entry("/hip:?rotation/y", 90)));
    // The figure's shadow and the lines on the floor fall another way: measured 0.03. Seen from its
    // side it would be 0.26.
    const double apart = difference(front, turned);
    QVERIFY2(apart < 0.06, qPrintable(QString::number(apart)));
}

void TestPresetPicture::farAwayLooksAsAtHome()
{
    const QImage home = picture(write("rest.duf", ""));
    const QImage away = picture(write("away.duf", entry(":?translation/x", 5000)));
    QVERIFY2(difference(home, away) < 0.001, qPrintable(QString::number(difference(home, away))));
}

void TestPresetPicture::nothingIsRecorded()
{
    picture(write("bent.duf", entry("/lThighBend:?rotation/x", -90)));
    QVERIFY(!m_undo->canUndo());
}

void TestPresetPicture::unreadableFileIsToldAndChangesNothing()
{
    channel("lThighBend", "XRotate")->setValue(0, -60);
    QString why;
    const QString absent = m_dir->filePath("absent.duf");
    QVERIFY(presetPicture(absent, m_figure, kSize, &why).isNull());
    QVERIFY2(why.startsWith(absent + ": "), qPrintable(why));
    QCOMPARE(channel("lThighBend", "XRotate")->getValue(), -60.f);
}

QUILLON_TEST(TestPresetPicture)
#include "test_preset_picture.moc"
