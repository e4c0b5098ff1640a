#include "host/driver/headless_demo.h"

#include "host/body/figure_renderer.h"
#include "host/driver/finder_demo.h"
#include "host/figures/figure_loader.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzmodifier.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzscene.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

namespace quillon {
namespace {

const QSize kPictureSize(480, 640); // a figure's own picture
const QSize kCellSize(260, 360); // on the contact sheet

const float kCloser = 0.62f; // the box of a standing figure leaves much room around it

struct Side {
    const char* caption;
    float yawDeg, pitchDeg;
};
const Side kSides[] = {
    {"front", 0, 4},
    {"three quarters", 40, 8},
    {"left side", 90, 4},
    {"back", 180, 4},
};

QImage pictureFrom(const DzFigure* figure, const Side& side, const QSize& size)
{
    Camera camera = homeCamera();
    camera.yawDeg = side.yawDeg;
    camera.pitchDeg = side.pitchDeg;
    frameBox(&camera, figure->getWSBoundingBox(), size);
    zoomCamera(&camera, kCloser);
    RenderOptions options;
    options.highlight = false;
    return renderSceneImage(size, camera, options);
}

int numControls(const DzFigure* figure) // visible properties beyond the transform
{
    int count = 0;
    for (int i = 0; i < figure->getNumProperties(); ++i)
        if (!figure->getProperty(i)->isHidden())
            ++count;
    return count - 10;
}

int numMorphs(const DzFigure* figure)
{
    const DzObject* object = figure->getObject();
    int count = 0;
    for (int i = 0; object && i < object->getNumModifiers(); ++i)
        if (qobject_cast<DzMorph*>(object->getModifier(i)))
            ++count;
    return count;
}

int numLinks(const DzFigure* figure) // controllers on the channels of the bones
{
    DzBoneList bones;
    figure->getAllBones(bones);
    int count = 0;
    for (const DzBone* bone : std::as_const(bones))
        for (int i = 0; i < bone->getNumProperties(); ++i)
            count += bone->getProperty(i)->getNumControllers();
    return count;
}

QString reportLine(const DzFigure* figure, double loadMs)
{
    return QString("%1: %2 bones, %3 controls, %4 morphs, %5 links; loaded in %6 ms")
        .arg(figure->getName())
        .arg(figure->getAllBones().size())
        .arg(numControls(figure))
        .arg(numMorphs(figure))
        .arg(numLinks(figure))
        .arg(loadMs, 0, 'f', 1);
}

bool save(const QImage& image, const QString& file, QString* why)
{
    if (image.save(file, "PNG"))
        return true;
    *why = QString("cannot write '%1'").arg(file);
    return false;
}

bool showFigure(const QString& name, const QString& home, DemoResult* result, QString* why)
{
    dzScene->clear();
    QElapsedTimer clock;
    clock.start();
    DzFigure* figure = loadFigure(name, why);
    if (!figure)
        return false;
    dzScene->addNode(figure);
    result->report += reportLine(figure, double(clock.nsecsElapsed()) / 1e6);
    SheetRow row;
    row.title = name;
    for (const Side& side : kSides)
        row.pictures.append({pictureFrom(figure, side, kCellSize), QString(side.caption)});
    result->rows.append(row);
    return save(pictureFrom(figure, kSides[1], kPictureSize),
        QString("%1/demo-%2.png").arg(home, name), why);
}

bool writeReport(
    const DemoResult& result, const QString& sheetFile, const QString& textFile, QString* why)
{
    if (!save(contactSheet(result.rows), sheetFile, why))
        return false;
    QFile file(textFile);
    const QByteArray text = result.report.join(QLatin1Char('\n')).toUtf8() + '\n';
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush())
        return true;
    *why = QString("cannot write '%1'").arg(textFile);
    return false;
}

} // namespace

// Every figure alone in the scene.
static bool showFigures(const QString& home, DemoResult* result, QString* why)
{
    for (const QString& name : figureNames())
        if (!showFigure(name, home, result, why))
            return false;
    return true;
}

bool runHeadlessDemo(const QStringList& content, const QString& home, QString* why)
{
    DemoResult result;
    if (content.isEmpty() || !runFinderDemo(content, &result, why)) {
        if (!why->isEmpty())
            return false;
        result = DemoResult();
        if (!showFigures(home, &result, why))
            return false;
    }
    dzScene->clear();
    const QString sheetFile = home + QString("/contact-sheet.png");
    const QString textFile = home + QString("/report.txt");
    if (!writeReport(result, sheetFile, textFile, why))
        return false;
    QTextStream(stdout) << sheetFile << '\n' << textFile << '\n';
    return true;
}

} // namespace quillon
