#include "finder/index_edits.h"

#include "finder/pose_index.h"

#include <algorithm>
#include <cstring>

namespace quillon {

static const int kHeaderBytes = 8; // version and count
static const int kBehindPathBytes = kIndexRecordBytes - int(sizeof(qint32));

static qint32 numberAt(const QByteArray& bytes, int at)
{
    qint32 number = 0;
    if (at + int(sizeof number) <= bytes.size())
        std::memcpy(&number, bytes.constData() + at, sizeof number);
    return number;
}

bool isIndexFile(const QByteArray& bytes)
{
    return numberAt(bytes, 0) == kIndexFileVersion;
}

namespace {

struct IndexWalk {
    const QByteArray& bytes;
    int left; // entries, by the header
    int roomForPaths = kAllPathsBytes;
    int at = kHeaderBytes, pathBytes = 0; // of the entry that next() has come to

    explicit IndexWalk(const QByteArray& file)
        : bytes(file)
        , left(std::min(numberAt(file, 4), kPoseIndexCapacity))
    {
    }
    int end() const // of that entry
    {
        return at + int(sizeof(qint32)) + pathBytes + kBehindPathBytes;
    }
    bool isAt(const QByteArray& path) const
    {
        return pathBytes == path.size()
            && std::memcmp(bytes.constData() + at + sizeof(qint32), path.constData(),
                   std::size_t(pathBytes))
            == 0;
    }
    bool isWhole() const
    {
        const qint64 rest = qint64(bytes.size()) - at - qint64(sizeof(qint32)) - kBehindPathBytes;
        return pathBytes >= 0 && pathBytes <= rest
            && pathBytes <= std::min(kLongestPathBytes, roomForPaths);
    }
    // From the end of one entry to the next one; false where no whole one follows.
    bool enter(int start)
    {
        at = start;
        pathBytes = numberAt(bytes, at);
        if (left-- <= 0 || !isWhole())
            return false;
        roomForPaths -= pathBytes;
        return true;
    }
};

struct Found {
    int number = -1, at = 0, bytes = 0; // of the first entry of the path
    int count = 0, end = kHeaderBytes; // of all entries
};

} // namespace

static Found findPath(const QByteArray& bytes, const QByteArray& path)
{
    Found found;
    IndexWalk walk(bytes);
    while (walk.enter(found.end)) {
        if (found.number < 0 && walk.isAt(path)) {
            found.number = found.count;
            found.at = walk.at;
            found.bytes = walk.end() - walk.at;
        }
        ++found.count;
        found.end = walk.end();
    }
    return found;
}

static void applyEdit(const IndexEdit& edit, QByteArray* bytes)
{
    const Found found = findPath(*bytes, edit.path);
    qint32 count = found.count;
    bytes->resize(found.end);
    if (found.number >= 0) {
        bytes->replace(found.at, found.bytes, edit.record);
        count -= edit.record.isEmpty() ? 1 : 0;
    } else if (!edit.record.isEmpty() && count < kPoseIndexCapacity) {
        bytes->append(edit.record);
        ++count;
    }
    std::memcpy(bytes->data() + sizeof(qint32), &count, sizeof count);
}

void applyEdits(const IndexEdits& edits, QByteArray* bytes)
{
    if (!isIndexFile(*bytes))
        return;
    for (const IndexEdit& edit : edits)
        applyEdit(edit, bytes);
}

int entryOfPath(const QByteArray& bytes, const QByteArray& path)
{
    return isIndexFile(bytes) ? findPath(bytes, path).number : -1;
}

} // namespace quillon
