// content_files.h - folders and pose presets as the content library lists them.
// Reads names only, no file: a folder of tens of thousands of files opens at once.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

namespace quillon {

const qint64 kNotAsked = -1;

struct ContentEntry {
    QString name; // as it is shown: without .duf
    QString path; // absolute
    bool isFolder;
    qint64 changedMs = kNotAsked; // last change, milliseconds since 1970; 0: the file is gone
};

enum class ContentOrder { Name, Newest };

// Its folders, then its presets. False: there is no such folder.
bool readContentFolder(const QString& folder, std::vector<ContentEntry>* out);

// Folders stay before presets. Newest: by their times. Each file is asked once: an entry that has
// its time keeps it.
void sortContent(ContentOrder order, std::vector<ContentEntry>* entries);

// For each path as much of its end as no other one has: "content", or "old/content" beside
// "new/content".
QStringList shortNames(const QStringList& paths);

// Every word of the text occurs in the name, ignoring case.
bool nameMatches(const QString& name, const QStringList& words);

// Walks through folders bit by bit, between other work. Every folder is entered once, whatever
// links lead to it.
class ContentWalk {
public:
    explicit ContentWalk(const QStringList& roots);
    bool isDone() const;
    void goOn(int ms); // adds to found() for about that long
    const std::vector<ContentEntry>& found() const; // presets
    // Those of all these words, sorted. The walk keeps their times: the next letter asks no file
    // that was asked for the one before.
    std::vector<ContentEntry> matching(const QStringList& words, ContentOrder order);

private:
    QStringList m_open; // folders still to read
    QSet<QString> m_seen; // canonical
    std::vector<ContentEntry> m_found;
};

} // namespace quillon
