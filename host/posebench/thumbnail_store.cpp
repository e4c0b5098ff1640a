#include "host/posebench/thumbnail_store.h"

#include "host/body/own_picture.h"
#include "host/posebench/thumbnail_files.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QProcess>

#include <algorithm>

using namespace quillon;

static const int kMemoryKiB = 64 << 10;
static const int kMostWanted = 300; // more than a screen shows; older ones are asked for again
static const int kMostOrdered = 4; // at the helper at once
static const int kSliceMs = 4; // between two events
static const int kPauseMs = 8;
static const int kSmallPx = 512; // a picture of this size is read at once, a larger one elsewhere
static const int kPatienceMs = 1000; // for a helper to end

ThumbnailStore::ThumbnailStore(const ThumbnailSetup& setup, QObject* parent)
    : QObject(parent)
    , m_setup(setup)
    , m_pixmaps(kMemoryKiB)
    , m_asked(0)
    , m_helper(nullptr)
    , m_bytes(-1)
    , m_made(0)
{
    m_slice.setInterval(kPauseMs);
    connect(&m_slice, SIGNAL(timeout()), SLOT(work()));
}

ThumbnailStore::~ThumbnailStore()
{
    if (!m_helper)
        return;
    m_helper->disconnect(this);
    m_helper->closeWriteChannel(); // it ends when it has read that
    if (!m_helper->waitForFinished(kPatienceMs)) {
        m_helper->kill();
        m_helper->waitForFinished(kPatienceMs);
    }
}

QPixmap ThumbnailStore::thumbnail(const QString& preset)
{
    if (const QPixmap* known = m_pixmaps.object(preset))
        return *known;
    if (m_without.contains(preset))
        return QPixmap();
    // What a list paints now comes in its order, before what it has painted earlier.
    const int before = m_wanted.indexOf(preset);
    if (before >= 0)
        m_wanted.removeAt(before);
    m_asked -= before >= 0 && before < m_asked;
    m_wanted.insert(m_asked++, preset);
    if (m_wanted.size() > kMostWanted)
        m_wanted.removeLast();
    if (!m_slice.isActive())
        m_slice.start();
    return QPixmap();
}

void ThumbnailStore::forget()
{
    m_pixmaps.clear();
    m_without.clear();
}

int ThumbnailStore::made() const
{
    return m_made;
}

void ThumbnailStore::work()
{
    QElapsedTimer clock;
    clock.start();
    const int before = m_pixmaps.size();
    while (
        !m_wanted.isEmpty() && int(m_ordered.size()) < kMostOrdered && clock.elapsed() < kSliceMs)
        look(m_wanted.takeFirst());
    m_asked = 0;
    if (m_pixmaps.size() != before)
        emit changed();
    if (m_wanted.isEmpty() || int(m_ordered.size()) >= kMostOrdered)
        m_slice.stop(); // the helper's answer goes on
}

bool ThumbnailStore::isOrdered(const QString& preset) const
{
    return std::any_of(m_ordered.begin(), m_ordered.end(),
        [&preset](const Order& each) { return each.preset == preset; });
}

void ThumbnailStore::look(const QString& preset)
{
    if (m_pixmaps.contains(preset) || m_without.contains(preset) || isOrdered(preset))
        return;
    // One that cannot be read is none; a large one is made smaller, and kept as of its own file.
    const QString own = ownPicture(preset);
    const QSize px = own.isEmpty() ? QSize() : QImageReader(own).size();
    const bool isLarge = std::max(px.width(), px.height()) > kSmallPx;
    if (px.isValid() && !isLarge && load(preset, own))
        return;
    const QString source = isLarge ? own : preset;
    const QString made = thumbnailFile(m_setup.folder, source);
    if (made.isEmpty())
        m_without.insert(preset);
    else if (load(preset, made))
        markUsed(made);
    else
        order(preset, source + '\t' + made);
}

bool ThumbnailStore::load(const QString& preset, const QString& picture)
{
    const QImage image(picture);
    if (image.isNull())
        return false;
    give(preset,
        QPixmap::fromImage(image.width() > kThumbnailPx || image.height() > kThumbnailPx
                ? image.scaled(
                    kThumbnailPx, kThumbnailPx, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                : image));
    return true;
}

void ThumbnailStore::give(const QString& preset, const QPixmap& pixmap)
{
    m_pixmaps.insert(
        preset, new QPixmap(pixmap), std::max(1, pixmap.width() * pixmap.height() * 4 / 1024));
}

// ---- helper --------------------------------------------------------------------------------

// line: what to draw, a tabulator, the file to write.
void ThumbnailStore::order(const QString& preset, const QString& line)
{
    if (m_setup.helper.isEmpty() || line.contains('\n')) {
        m_without.insert(preset);
        return;
    }
    m_ordered.push_back({line.section('\t', -1), preset});
    if (!m_helper) {
        QDir().mkpath(m_setup.folder);
        m_helper = new QProcess(this);
        m_helper->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        connect(m_helper, SIGNAL(readyReadStandardOutput()), SLOT(helperSaid()));
        connect(m_helper, SIGNAL(finished(int, QProcess::ExitStatus)), SLOT(helperEnded()));
        connect(m_helper, SIGNAL(errorOccurred(QProcess::ProcessError)), SLOT(helperEnded()));
        m_helper->start(m_setup.helper, {"--thumbnails"});
    }
    if (m_helper) // it may have failed in start()
        m_helper->write(line.toUtf8() + '\n');
}

void ThumbnailStore::helperSaid()
{
    while (m_helper && m_helper->canReadLine()) {
        const QString file = QString::fromUtf8(m_helper->readLine()).trimmed();
        const auto order = std::find_if(m_ordered.begin(), m_ordered.end(),
            [&file](const Order& each) { return each.file == file; });
        if (order == m_ordered.end())
            continue;
        const QString preset = order->preset;
        m_ordered.erase(order);
        if (!load(preset, file)) {
            m_without.insert(preset);
            continue;
        }
        ++m_made;
        m_bytes = m_bytes < 0 ? trimThumbnails(m_setup.folder, m_setup.limit)
                              : m_bytes + QFileInfo(file).size();
        if (m_bytes > m_setup.limit)
            m_bytes = trimThumbnails(m_setup.folder, m_setup.limit);
    }
    m_asked = 0;
    emit changed();
    if (!m_wanted.isEmpty())
        m_slice.start();
}

// It could not start, or the preset that it worked on was too much for it: that one is not asked
// for again, and the others are.
void ThumbnailStore::helperEnded()
{
    if (!m_helper || m_helper->state() != QProcess::NotRunning)
        return; // what it has said is read before it ends
    if (m_helper->error() == QProcess::FailedToStart) {
        m_setup.helper.clear();
    } else if (!m_ordered.empty()) {
        m_without.insert(m_ordered.front().preset);
        m_ordered.erase(m_ordered.begin());
    }
    m_helper->deleteLater();
    m_helper = nullptr;
    for (size_t i = 0; i < m_ordered.size(); ++i)
        m_wanted.insert(m_asked + int(i), m_ordered[i].preset);
    m_ordered.clear();
    if (!m_wanted.isEmpty())
        m_slice.start();
}
