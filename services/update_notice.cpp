#include "services/update_notice.h"

#include "ground/data_folder.h"
#include "ground/host_gzip.h"
#include "ground/plain_file.h"
#include "ground/save_result.h"
#include "ground/version_text.h"
#include "ground/whole_file.h"

#include <QEventLoop>
#include <QFile>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

namespace quillon {

struct UpdatePicture {
    QImage image; // null: none
    QString path; // that it was read from
    bool read = false;
};
static UpdatePicture g_picture;

// ---- names -----------------------------------------------------------------------------------

static QString versionTag() // "093"
{
    return QString::fromLatin1("%1%2")
        .arg(kVersionMajor)
        .arg(kVersionMinor, 2, 10, QLatin1Char('0'));
}

static QString noticeName(const char* suffix)
{
    return QLatin1String("newversion_") + versionTag() + QLatin1String(suffix);
}

QString updatePicturePath()
{
    const QString& folder = dataFiles().folder;
    return folder.isEmpty() ? QString() : folder + noticeName(".png");
}

static QString endpointUrl(const char* suffix)
{
    return QLatin1String(QUILLON_UPDATE_URL "newversion/") + noticeName(suffix);
}

QString updatePictureUrl()
{
    return endpointUrl(".png");
}

QString newVersionPageUrl()
{
    return endpointUrl(".htm");
}

QString pluginPageUrl()
{
    return QLatin1String(QUILLON_WEB_URL "index.htm");
}

// ---- the request -----------------------------------------------------------------------------

// The old picture stays until the new one is there in full.
static bool keepPicture(const QByteArray& bytes)
{
    return ensureDataFolder() && writeWholeFile(updatePicturePath(), bytes);
}

// True when the reply has come to its end, whatever it is, in time.
static bool waitFor(QNetworkReply* reply, int limitMs)
{
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setProperty("timerType", 0); // precise; the older toolkit's timers have no such property
    const bool connected = QObject::connect(reply, SIGNAL(finished()), &loop, SLOT(quit()))
        && QObject::connect(&timer, SIGNAL(timeout()), &loop, SLOT(quit()));
    Q_ASSERT(connected);
    Q_UNUSED(connected);
    timer.start(limitMs);
    if (!reply->isFinished())
        loop.exec();
    return reply->isFinished();
}

// The toolkit unpacks without a limit, and one of the toolkits takes a body cut short for a whole
// one; so both are done here.
static const char kPackedForm[] = "gzip";

static bool isCutShort(const UpdateReply& reply)
{
    bool isNumber = false;
    const qint64 announced = reply.contentLength.trimmed().toLongLong(&isNumber);
    return isNumber && reply.body.size() < announced;
}

QByteArray pictureBytesOf(const UpdateReply& reply)
{
    const QByteArray form = reply.contentEncoding.trimmed().toLower();
    if (isCutShort(reply) || reply.body.size() > kLargestReply)
        return QByteArray();
    if (form.isEmpty() || form == "identity")
        return reply.body;
    QByteArray unpacked;
    const bool whole = form == kPackedForm && unpackBytes(reply.body, kLargestReply, &unpacked);
    return whole ? unpacked : QByteArray();
}

static UpdateReply partsOf(QNetworkReply* reply)
{
    return UpdateReply {
        reply->readAll(), reply->rawHeader("Content-Length"), reply->rawHeader("Content-Encoding")};
}

void checkForUpdate(int limitMs)
{
    g_picture.read = false;
    if (dataFiles().folder.isEmpty())
        return;
    QNetworkAccessManager manager;
    QNetworkRequest request {QUrl(updatePictureUrl())};
    request.setRawHeader("User-Agent", "Mozilla Firefox");
    request.setRawHeader("Accept-Encoding", kPackedForm); // asked for here, it is left packed
    QNetworkReply* reply = manager.get(request);
    // A longer reply is not read to its end and thus runs out of time.
    reply->setReadBufferSize(kLargestReply);
    if (!waitFor(reply, limitMs)) {
        reply->disconnect();
        reply->abort();
    } else if (reply->error() == QNetworkReply::NoError) {
        const QByteArray bytes = pictureBytesOf(partsOf(reply));
        if (!bytes.isEmpty())
            logSaveResult(keepPicture(bytes));
    }
    reply->deleteLater();
}

// ---- the picture -----------------------------------------------------------------------------

bool isPictureSize(const QSize& size)
{
    return !size.isEmpty() && qint64(size.width()) * size.height() <= kLargestPicture;
}

static QImage readPicture(const QString& path)
{
    QFile file(path);
    if (!openPlainFile(&file, QIODevice::ReadOnly))
        return QImage();
    QImageReader reader(&file, "png");
    reader.setAutoDetectImageFormat(false);
    if (!reader.canRead())
        return QImage();
    if (!isPictureSize(reader.size())) // from the header
        return QImage();
    const QImage image = reader.read();
    return image.isNull() ? image : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

const QImage& updatePicture()
{
    const QString path = updatePicturePath();
    if (!g_picture.read || g_picture.path != path)
        g_picture = UpdatePicture {path.isEmpty() ? QImage() : readPicture(path), path, true};
    return g_picture.image;
}

} // namespace quillon
