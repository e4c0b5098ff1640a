#include "host/posebench/content_files.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <dirent.h>
#include <sys/stat.h>

namespace quillon {

static bool isFolderEntry(const dirent& entry, const QString& path)
{
    return entry.d_type == DT_DIR
        || ((entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN) && QFileInfo(path).isDir());
}

static void takeEntry(const dirent& entry, const QString& folder, std::vector<ContentEntry>* out)
{
    const QString name = QFile::decodeName(entry.d_name);
    if (name.startsWith('.'))
        return;
    const bool isPreset = name.endsWith(".duf", Qt::CaseInsensitive);
    if (isPreset && entry.d_type == DT_REG)
        out->push_back({name.left(name.size() - 4), folder + name, false});
    else if (entry.d_type != DT_REG && isFolderEntry(entry, folder + name))
        out->push_back({name, folder + name, true});
    else if (isPreset && QFileInfo(folder + name).isFile())
        out->push_back({name.left(name.size() - 4), folder + name, false});
}

bool readContentFolder(const QString& folder, std::vector<ContentEntry>* out)
{
    DIR* const dir = opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return false;
    const QString prefix = folder.endsWith('/') ? folder : folder + '/';
    while (const dirent* entry = readdir(dir))
        takeEntry(*entry, prefix, out);
    closedir(dir);
    return true;
}

static qint64 changeTime(const QString& path)
{
    struct stat about;
    if (stat(QFile::encodeName(path).constData(), &about) != 0)
        return 0;
    return qint64(about.st_mtim.tv_sec) * 1000 + about.st_mtim.tv_nsec / 1000000;
}

static qint64 readTime(ContentEntry* entry)
{
    if (entry->changedMs == kNotAsked)
        entry->changedMs = changeTime(entry->path);
    return entry->changedMs;
}

namespace {

struct SortKey {
    bool isPreset;
    qint64 age; // a larger number comes later
    QString name;
    size_t at;
};

} // namespace

void sortContent(ContentOrder order, std::vector<ContentEntry>* entries)
{
    std::vector<SortKey> keys;
    keys.reserve(entries->size());
    for (ContentEntry& entry : *entries) {
        const qint64 age = order == ContentOrder::Newest ? -readTime(&entry) : 0;
        keys.push_back({!entry.isFolder, age, entry.name.toCaseFolded(), keys.size()});
    }
    std::stable_sort(keys.begin(), keys.end(), [](const SortKey& a, const SortKey& b) {
        return a.isPreset != b.isPreset ? b.isPreset
            : a.age != b.age            ? a.age < b.age
                                        : a.name < b.name;
    });
    std::vector<ContentEntry> sorted;
    sorted.reserve(entries->size());
    for (const SortKey& key : keys)
        sorted.push_back(std::move((*entries)[key.at]));
    entries->swap(sorted);
}

static QString pathEnd(const QString& path, int parts)
{
    const QStringList all = path.split('/', Qt::SkipEmptyParts);
    return parts < all.size() ? QStringList(all.mid(all.size() - parts)).join('/') : path;
}

QStringList shortNames(const QStringList& paths)
{
    QStringList names;
    for (const QString& path : paths) {
        const auto isShared = [&](const QString& name, int parts) {
            return std::any_of(paths.begin(), paths.end(), [&](const QString& other) {
                return other != path && pathEnd(other, parts) == name;
            });
        };
        int parts = 1;
        while (isShared(pathEnd(path, parts), parts) && pathEnd(path, parts) != path)
            ++parts;
        names << pathEnd(path, parts);
    }
    return names;
}

bool nameMatches(const QString& name, const QStringList& words)
{
    return std::all_of(words.begin(), words.end(),
        [&](const QString& word) { return name.contains(word, Qt::CaseInsensitive); });
}

ContentWalk::ContentWalk(const QStringList& roots)
    : m_open(roots)
{
}

bool ContentWalk::isDone() const
{
    return m_open.isEmpty();
}

const std::vector<ContentEntry>& ContentWalk::found() const
{
    return m_found;
}

std::vector<ContentEntry> ContentWalk::matching(const QStringList& words, ContentOrder order)
{
    std::vector<ContentEntry> list;
    for (ContentEntry& entry : m_found) {
        if (!nameMatches(entry.name, words))
            continue;
        if (order == ContentOrder::Newest)
            readTime(&entry);
        list.push_back(entry);
    }
    sortContent(order, &list);
    return list;
}

void ContentWalk::goOn(int ms)
{
    QElapsedTimer clock;
    clock.start();
    std::vector<ContentEntry> entries;
    while (!m_open.isEmpty() && clock.elapsed() < ms) {
        const QString folder = m_open.takeFirst();
        const QString canonical = QFileInfo(folder).canonicalFilePath();
        if (m_seen.contains(canonical))
            continue;
        m_seen.insert(canonical);
        entries.clear();
        readContentFolder(folder, &entries);
        for (ContentEntry& entry : entries)
            if (entry.isFolder)
                m_open.append(entry.path);
            else
                m_found.push_back(std::move(entry));
    }
}

} // namespace quillon
