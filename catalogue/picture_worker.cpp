#include "catalogue/picture_worker.h"

#include "catalogue/output_folder.h"
#include "host/body/pose_picture.h"
#include "host/figures/figure_loader.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_text.h"

#include "dzapp.h"
#include "dzappsetup.h"
#include "dzfigure.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

#include <cstdio>

namespace quillon {

static const int kQuality = 88;
static const int kMostOwnPx = 8192; // along a side; a larger one is not opened

QByteArray jobLine(const PictureJob& job)
{
    const QJsonObject line {{"pose", job.pose}, {"own", job.own}, {"male", job.male},
        {"drawn", job.drawn}, {"out", job.out}};
    return QJsonDocument(line).toJson(QJsonDocument::Compact);
}

bool readJobLine(const QByteArray& line, PictureJob* job)
{
    const QJsonObject read = QJsonDocument::fromJson(line).object();
    job->pose = read.value("pose").toString();
    job->own = read.value("own").toString();
    job->male = read.value("male").toBool();
    job->drawn = read.value("drawn").toBool();
    job->out = read.value("out").toString();
    return !job->pose.isEmpty() && !job->out.isEmpty();
}

// ---- making

// The picture within the square, on its own ground.
static QImage readPicture(const QString& file)
{
    QImageReader reader(file, "png");
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > kMostOwnPx || size.height() > kMostOwnPx)
        return QImage();
    const QImage read = reader.read();
    if (read.isNull())
        return read;
    return read.scaled(kPicturePx, kPicturePx, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

namespace {

class Studio {
public:
    Studio()
        : m_app(DzAppSetup())
    {
        createReadBuffer();
    }
    ~Studio()
    {
        freeReadBuffer();
    }
    QImage picture(const PictureJob& job)
    {
        DzFigure* figure = figureFor(job.male);
        if (!figure)
            return QImage();
        const DzUndoStackLock unrecorded;
        clearFigurePose(figure);
        if (!applyPose(figure, m_scene.getTime(), job.pose, false))
            return QImage();
        return posePicture(figure, QSize(kPicturePx, kPicturePx));
    }

private:
    // The only one in the scene.
    DzFigure* figureFor(bool male)
    {
        if (m_figure && m_male == male)
            return m_figure;
        const DzUndoStackLock unrecorded;
        m_scene.clear();
        QString why;
        m_male = male;
        m_figure = loadFigure(male ? "Genesis8Male" : "Genesis8Female", &why);
        if (m_figure)
            m_scene.addNode(m_figure);
        else
            std::fprintf(stderr, "quillon-catalogue: %s\n", why.toUtf8().constData());
        return m_figure;
    }

    DzUndoStack m_undo;
    DzScene m_scene;
    DzApp m_app;
    DzFigure* m_figure = nullptr; // the scene's
    bool m_male = false;
};

} // namespace

static bool makePicture(const PictureJob& job, Studio* studio)
{
    QImage image = job.own.isEmpty() ? QImage() : readPicture(job.own);
    if (image.isNull() && job.drawn)
        image = studio->picture(job);
    if (image.isNull())
        return false;
    // JPEG has no see-through pixels.
    QImage solid(image.size(), QImage::Format_RGB32);
    solid.fill(0xff808080);
    QPainter(&solid).drawImage(0, 0, image);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QString why;
    return solid.save(&buffer, "JPG", kQuality) && writeOutput(job.out, bytes, &why);
}

int runPictureWorker()
{
    Studio studio;
    QFile in, out;
    if (!in.open(stdin, QIODevice::ReadOnly) || !out.open(stdout, QIODevice::WriteOnly))
        return 1;
    for (QByteArray line = in.readLine(); !line.isEmpty(); line = in.readLine()) {
        PictureJob job;
        const bool made = readJobLine(line, &job) && makePicture(job, &studio);
        out.write(made ? kPictureMade : kPictureFailed);
        out.write("\n");
        out.flush();
    }
    return 0;
}

} // namespace quillon
