// thumbnail_store.h - pictures of pose presets for lists: from memory, from a picture beside the
// preset, from the folder of those made before, else made by a helper process.
// The work is done in slices between events, so that a list that scrolls never waits for it; what
// was asked for last comes first. Owns: the pixmaps in memory, the helper. GUI thread only.
#pragma once

#include <QCache>
#include <QElapsedTimer>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QStringList>
#include <QTimer>

#include <vector>

class QProcess;

namespace quillon {

struct ThumbnailSetup {
    QString folder; // of the pictures that are made; created when the first one is
    QString helper; // program; empty: none are made
    qint64 limit; // bytes in the folder
};

} // namespace quillon

class ThumbnailStore : public QObject {
    Q_OBJECT
public:
    explicit ThumbnailStore(const quillon::ThumbnailSetup& setup, QObject* parent = nullptr);
    ~ThumbnailStore() override; // ends the helper

    // Null: it is not there yet and wanted now, or there is none for this preset.
    QPixmap thumbnail(const QString& preset);
    void forget(); // what is known of any preset: its files may have changed
    int made() const; // by the helper so far

signals:
    void changed(); // some that were null before are there

private slots:
    void work();
    void helperSaid();
    void helperEnded();

private:
    struct Order {
        QString file; // that the helper writes
        QString preset;
    };

    void look(const QString& preset);
    bool load(const QString& preset, const QString& picture); // false: no such picture
    bool isOrdered(const QString& preset) const;
    void order(const QString& preset, const QString& line);
    void give(const QString& preset, const QPixmap& pixmap);

    quillon::ThumbnailSetup m_setup;
    QCache<QString, QPixmap> m_pixmaps; // cost in KiB
    QSet<QString> m_without; // presets that have and get none
    QStringList m_wanted; // in the order in which they are looked for
    int m_asked; // of m_wanted, from its begin: asked for since the last slice of work
    std::vector<Order> m_ordered; // at the helper, which works in this order
    QProcess* m_helper;
    QTimer m_slice;
    qint64 m_bytes; // in the folder; -1: not counted yet
    int m_made;
};
