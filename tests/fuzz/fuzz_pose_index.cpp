// The index file: what is in it against a plain reading of the bytes, and the index written and
// read again against itself.
#include "fuzz/dat_bytes.h"
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

using namespace quillon;

static const int kSignatureBytes = kSignatureSlots * 4 * int(sizeof(float));

struct PlainEntry {
    QByteArray path;
    quint32 hash, code;
    QByteArray signature;
    bool hasSignature;
};

static bool takeEntry(fuzz::DatBytes* file, PlainEntry* entry)
{
    if (file->size() < 4)
        return false;
    const qint32 pathBytes = file->number<qint32>();
    if (pathBytes < 0 || qint64(file->size()) < qint64(pathBytes) + 4 + 4 + kSignatureBytes + 1)
        return false;
    entry->path = file->take(pathBytes);
    entry->hash = file->number<quint32>();
    entry->code = file->number<quint32>();
    entry->signature = file->take(kSignatureBytes);
    entry->hasSignature = file->number<quint8>() != 0;
    return true;
}

static std::vector<PlainEntry> plainEntries(const QByteArray& bytes)
{
    std::vector<PlainEntry> entries;
    fuzz::DatBytes file = {bytes};
    if (file.number<qint32>() != 1)
        return entries;
    const qint32 count = std::min(file.number<qint32>(), qint32(kPoseIndexCapacity));
    PlainEntry entry;
    while (qint32(entries.size()) < count && takeEntry(&file, &entry))
        entries.push_back(entry);
    return entries;
}

// Unit quaternions, the identity where the file has no direction.
static void checkSignature(const PoseIndexEntry& entry, const QByteArray& stored)
{
    fuzz::DatBytes file = {stored};
    for (const DzQuat& q : entry.signature) {
        double numbers[4], square = 0;
        for (double& each : numbers) {
            each = double(file.number<float>());
            square += each * each;
        }
        const bool turns = std::isfinite(square) && square != 0;
        const double length = std::sqrt(square), identity[4] = {0, 0, 0, 1};
        const double read[4] = {q.m_x, q.m_y, q.m_z, q.m_w};
        for (int i = 0; i < 4; ++i) // what was written as floats of unit length is off by 1e-6
            FUZZ_CHECK(nearly(read[i], turns ? numbers[i] / length : identity[i], 1e-6));
    }
}

// Behind another letter a byte-order mark is none.
static QString textOf(const QByteArray& utf8)
{
    const QByteArray behind = '/' + utf8;
    return QString::fromUtf8(behind.constData(), behind.size()).mid(1);
}

static void checkEntries(const std::vector<PlainEntry>& expected)
{
    FUZZ_CHECK(poseCount() == int(expected.size()));
    for (int i = 0; i < poseCount(); ++i) {
        const PoseIndexEntry& read = *poseEntry(i);
        const PlainEntry& plain = expected[size_t(i)];
        FUZZ_CHECK(read.path == textOf(plain.path));
        FUZZ_CHECK(read.contentHash == plain.hash && read.figureCode == plain.code);
        FUZZ_CHECK(read.hasSignature == plain.hasSignature);
        checkSignature(read, plain.signature);
    }
    FUZZ_CHECK(!poseEntry(poseCount()));
}

QUILLON_FUZZ_TARGET(pose_index)
{
    fuzz::world();
    truncatePoseIndex(0);
    writeFile(dataFiles().poseIndex, input.copy());
    FUZZ_CHECK(readPoseIndex());
    checkEntries(plainEntries(input.copy()));

    FUZZ_CHECK(writePoseIndex());
    const QByteArray written = fileBytes(dataFiles().poseIndex);
    const int count = poseCount();
    truncatePoseIndex(0);
    FUZZ_CHECK(readPoseIndex());
    FUZZ_CHECK(poseCount() == count);
    FUZZ_CHECK(writePoseIndex());
    FUZZ_CHECK(fileBytes(dataFiles().poseIndex) == written);
}
