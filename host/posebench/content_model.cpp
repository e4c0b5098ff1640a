#include "host/posebench/content_model.h"

#include "host/posebench/dark_theme.h"
#include "host/posebench/thumbnail_files.h"
#include "host/posebench/thumbnail_store.h"

#include <QApplication>
#include <QMimeData>
#include <QPainter>
#include <QStyle>
#include <QUrl>

using namespace quillon;

static const int kSymbolPx = 64;

// A card with a little figure: presets without a picture, or without one yet.
static QPixmap plainPreset()
{
    QPixmap picture(kSymbolPx, kSymbolPx);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kTheme.line);
    painter.drawRoundedRect(QRectF(6, 2, 52, 60), 6, 6);
    painter.setBrush(kTheme.text);
    painter.drawEllipse(QPointF(32, 17), 6.5, 6.5);
    painter.setPen(QPen(kTheme.text, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({QPointF(16, 24), QPointF(32, 29), QPointF(48, 24)}));
    painter.drawLine(32, 29, 32, 41);
    painter.drawPolyline(QPolygonF({QPointF(22, 55), QPointF(32, 41), QPointF(42, 55)}));
    return picture;
}

ContentModel::ContentModel(ThumbnailStore* store, QObject* parent)
    : QAbstractListModel(parent)
    , m_store(store)
    , m_folder(QApplication::style()->standardIcon(QStyle::SP_DirIcon).pixmap(kSymbolPx))
    , m_plain(plainPreset())
{
}

void ContentModel::setEntries(std::vector<ContentEntry> entries)
{
    beginResetModel();
    m_entries = std::move(entries);
    endResetModel();
}

const std::vector<ContentEntry>& ContentModel::entries() const
{
    return m_entries;
}

const ContentEntry* ContentModel::entryAt(const QModelIndex& index) const
{
    const bool isOurs = index.isValid() && index.row() < int(m_entries.size());
    return isOurs ? &m_entries[size_t(index.row())] : nullptr;
}

int ContentModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QPixmap ContentModel::pictureOf(const ContentEntry& entry) const
{
    if (entry.isFolder)
        return m_folder;
    const QPixmap own = m_store->thumbnail(entry.path);
    return own.isNull() ? m_plain : own;
}

QVariant ContentModel::data(const QModelIndex& index, int role) const
{
    const ContentEntry* entry = entryAt(index);
    if (!entry)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return entry->name;
    case Qt::DecorationRole:
        return pictureOf(*entry);
    case Qt::ToolTipRole:
        return QString("<b>%1</b><br>%2")
            .arg(entry->name.toHtmlEscaped(), entry->path.toHtmlEscaped());
    default:
        return QVariant();
    }
}

Qt::ItemFlags ContentModel::flags(const QModelIndex& index) const
{
    const ContentEntry* entry = entryAt(index);
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    return entry && !entry->isFolder ? flags | Qt::ItemIsDragEnabled : flags;
}

QStringList ContentModel::mimeTypes() const
{
    return {"text/uri-list"};
}

QMimeData* ContentModel::mimeData(const QModelIndexList& indexes) const
{
    QList<QUrl> urls;
    for (const QModelIndex& index : indexes)
        if (const ContentEntry* entry = entryAt(index))
            urls << QUrl::fromLocalFile(entry->path);
    QMimeData* data = new QMimeData;
    data->setUrls(urls);
    return data;
}
