// content_model.h - folders and presets as a list for a view, with their pictures.
#pragma once

#include "host/posebench/content_files.h"

#include <QAbstractListModel>
#include <QIcon>

class ThumbnailStore;

class ContentModel : public QAbstractListModel {
    Q_OBJECT
public:
    explicit ContentModel(ThumbnailStore* store, QObject* parent = nullptr); // store: lives longer

    void setEntries(std::vector<quillon::ContentEntry> entries);
    const std::vector<quillon::ContentEntry>& entries() const;
    const quillon::ContentEntry* entryAt(const QModelIndex&) const; // null: not of this list

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex&, int role) const override;
    Qt::ItemFlags flags(const QModelIndex&) const override;
    QStringList mimeTypes() const override; // presets can be dragged onto the picture
    QMimeData* mimeData(const QModelIndexList&) const override;

private:
    QPixmap pictureOf(const quillon::ContentEntry&) const;

    ThumbnailStore* m_store;
    std::vector<quillon::ContentEntry> m_entries;
    QPixmap m_folder, m_plain; // a folder; a preset without a picture
};
