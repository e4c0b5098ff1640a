// Changes of single entries in the bytes of an index file, against a literal form and against what
// reading the file gives.
#include "finder_fixture.h"
#include "room_tests.h"

#include "finder/index_edits.h"

using namespace quillon;

static const int kBehindPath = 4 + 4 + 160 + 1;

static QByteArray number(qint32 n)
{
    return QByteArray(reinterpret_cast<const char*>(&n), 4);
}

// The bytes behind the path are all of one kind, so that entries of one path can be told apart.
static QByteArray record(const QByteArray& path, char kind)
{
    return number(path.size()) + path + QByteArray(kBehindPath, kind);
}

// ---- the literal form

struct LiteralEntry {
    QByteArray path, bytes;
};

static QList<LiteralEntry> literalEntries(const QByteArray& file)
{
    QList<LiteralEntry> entries;
    qint32 count = 0;
    memcpy(&count, file.mid(4, 4).leftJustified(4, '\0').constData(), 4);
    int at = 8;
    while (entries.size() < qMin(count, kPoseIndexCapacity) && at + 4 <= file.size()) {
        qint32 pathBytes = 0;
        memcpy(&pathBytes, file.constData() + at, 4);
        if (pathBytes < 0 || pathBytes > kLongestPathBytes)
            break;
        const int bytes = 4 + pathBytes + kBehindPath;
        if (at + bytes > file.size())
            break;
        const LiteralEntry entry = {file.mid(at + 4, pathBytes), file.mid(at, bytes)};
        entries << entry;
        at += bytes;
    }
    return entries;
}

static QByteArray literalEdit(const QByteArray& file, const IndexEdit& edit)
{
    QList<LiteralEntry> entries = literalEntries(file);
    int at = 0;
    while (at < entries.size() && entries.at(at).path != edit.path)
        ++at;
    const LiteralEntry fresh = {edit.path, edit.record};
    if (at < entries.size() && edit.record.isEmpty())
        entries.removeAt(at);
    else if (at < entries.size())
        entries[at] = fresh;
    else if (!edit.record.isEmpty())
        entries << fresh;
    QByteArray bytes = number(1) + number(entries.size());
    for (const LiteralEntry& each : entries)
        bytes += each.bytes;
    return bytes;
}

static QByteArray randomPath(Random* random)
{
    static const char* const kPaths[]
        = {"", "/a.duf", "/b.duf", "/aa.duf", "/b\xc3\xa4um.duf", "/c"};
    return kPaths[random->below(6)];
}

static QByteArray randomFile(Random* random)
{
    const int count = random->below(8);
    QByteArray file = number(1) + number(count + (random->below(4) ? 0 : random->below(5) - 2));
    for (int n = 0; n < count; ++n)
        file += record(randomPath(random), char('a' + random->below(26)));
    switch (random->below(5)) {
    case 0:
        return file.left(4 + random->below(file.size() - 3));
    case 1:
        return file + "more that nobody reads";
    case 2:
        return file + number(random->below(2) ? -1 : kLongestPathBytes + 1)
            + QByteArray(40000, 'x');
    default:
        return file;
    }
}

class TestIndexEdits : public QObject {
    Q_OBJECT

private slots:
    void editsEqualTheLiteralForm()
    {
        Random random(7);
        for (int run = 0; run < 3000; ++run) {
            QByteArray bytes = randomFile(&random), expected = bytes;
            IndexEdits edits;
            for (int n = 1 + random.below(3); n > 0; --n) {
                const QByteArray path = randomPath(&random);
                edits.push_back(
                    IndexEdit {path, random.below(2) ? record(path, char('A' + n)) : QByteArray()});
                expected = literalEdit(expected, edits.back());
            }
            applyEdits(edits, &bytes);
            QVERIFY2(bytes == expected, qPrintable(QString::number(run)));
        }
    }

    void whichEntryAPathIsEqualsTheLiteralForm()
    {
        Random random(8);
        for (int run = 0; run < 1000; ++run) {
            const QByteArray bytes = randomFile(&random), path = randomPath(&random);
            const QList<LiteralEntry> entries = literalEntries(bytes);
            int expected = -1;
            for (int i = entries.size() - 1; i >= 0; --i)
                expected = entries.at(i).path == path ? i : expected;
            QCOMPARE(entryOfPath(bytes, path), expected);
        }
    }

    // The entries that reading gives are those that an edit keeps.
    void anEditKeepsWhatReadingGives()
    {
        StoreFixture f;
        TempFolder home;
        DzApp app(poseTestSetup(home.path()));
        locateDataFiles();
        Random random(9);
        for (int run = 0; run < 300; ++run) {
            QByteArray bytes = randomFile(&random);
            resetPoseIndex();
            writeFile(dataFiles().poseIndex, bytes);
            QVERIFY(readPoseIndex());
            const QStringList before = indexedPaths();
            applyEdits({{"/new.duf", record("/new.duf", 'n')}}, &bytes);
            writeFile(dataFiles().poseIndex, bytes);
            QVERIFY(readPoseIndex());
            QCOMPARE(indexedPaths(), QStringList(before) << "/new.duf");
        }
    }

    void pathsTogetherEndWhereReadingEnds()
    {
        StoreFixture f;
        TempFolder home;
        DzApp app(poseTestSetup(home.path()));
        locateDataFiles();
        const int many = kAllPathsBytes / kLongestPathBytes + 5;
        QByteArray bytes = number(1) + number(many);
        for (int n = 0; n < many; ++n)
            bytes += record(QByteArray(kLongestPathBytes, 'p'), 'x');
        writeFile(dataFiles().poseIndex, bytes);
        QVERIFY(readPoseIndex());
        const int read = poseCount();
        QVERIFY(read < many);
        applyEdits({{"/none.duf", QByteArray()}}, &bytes);
        QCOMPARE(literalEntries(bytes).size(), read);
    }

    void aFullIndexTakesNoNewEntry()
    {
        QByteArray bytes = number(1) + number(kPoseIndexCapacity);
        for (int n = 0; n < kPoseIndexCapacity; ++n)
            bytes += record("/a.duf", 'x');
        const QByteArray before = bytes;
        applyEdits({{"/new.duf", record("/new.duf", 'n')}}, &bytes);
        QVERIFY(bytes == before);
        applyEdits({{"/a.duf", record("/a.duf", 'n')}}, &bytes); // one that is there changes
        QVERIFY(bytes.mid(8, 179) == record("/a.duf", 'n'));
        QCOMPARE(bytes.size(), before.size());
    }

    void whatIsNoIndexIsLeft()
    {
        for (const QByteArray& other :
            {QByteArray(), QByteArray("\1"), number(2) + number(0), QByteArray("something else")}) {
            QByteArray bytes = other;
            applyEdits({{"/a.duf", record("/a.duf", 'x')}}, &bytes);
            QCOMPARE(bytes, other);
            QVERIFY(!isIndexFile(bytes));
            QCOMPARE(entryOfPath(bytes, "/a.duf"), -1);
        }
    }

    void theRecordOfAnEntryIsThatOfTheFile()
    {
        StoreFixture f;
        TempFolder home;
        DzApp app(poseTestSetup(home.path()));
        locateDataFiles();
        Random random(4);
        QByteArray expected = number(1) + number(3);
        for (int n = 0; n < 3; ++n) {
            randomSignature(&random, addEntry(QString("/%1.duf").arg(n), random.next()));
            expected += recordOf(n);
        }
        QVERIFY(writePoseIndex());
        QVERIFY(fileBytes(dataFiles().poseIndex) == expected);
        QCOMPARE(recordOf(3), QByteArray());
    }
};

QUILLON_TEST(TestIndexEdits)
#include "test_index_edits.moc"
