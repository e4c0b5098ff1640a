#include "host/posebench/preset_thumbnail.h"

#include "host/figures/figure_loader.h"
#include "host/posebench/preset_picture.h"

#include "dzfigure.h"
#include "dzscene.h"

namespace quillon {

namespace {

struct FigureRow {
    const char* words; // in the path, ignoring case
    const char* figure;
};

// The first that fits.
const FigureRow kFigures[] = {
    {"genesis 8.1 male", "Genesis8_1Male"},
    {"genesis 8.1 female", "Genesis8_1Female"},
    {"genesis 8 male", "Genesis8Male"},
    {"", "Genesis8Female"},
};

} // namespace

QString figureForPreset(const QString& file)
{
    for (const FigureRow& row : kFigures)
        if (file.contains(QLatin1String(row.words), Qt::CaseInsensitive))
            return QLatin1String(row.figure);
    return QString();
}

// The only figure of the scene.
static DzSkeleton* figureOfScene(const QString& name, QString* why)
{
    DzNode* there = dzScene->getNumNodes() ? dzScene->getNode(0) : nullptr;
    if (there && there->getName() == name)
        return static_cast<DzSkeleton*>(there);
    dzScene->clear();
    DzFigure* figure = loadFigure(name, why);
    if (figure)
        dzScene->addNode(figure);
    return figure;
}

QImage presetThumbnail(const QString& file, const QSize& size, QString* why)
{
    DzSkeleton* figure = figureOfScene(figureForPreset(file), why);
    return figure ? presetPicture(file, figure, size, why) : QImage();
}

} // namespace quillon
