// The table of poses and its file.
#include "finder_fixture.h"
#include "room_tests.h"

#include <limits>

using namespace quillon;

class TestPoseIndex : public QObject {
    Q_OBJECT
private slots:
    // the table
    void aFreshTableIsEmpty();
    void aFreshEntryIsNotIdentified();
    void aFullTableTakesNoMore();
    void copyingTakesAllFields();
    void removingMovesLaterEntriesDown_data();
    void removingMovesLaterEntriesDown();
    void removingOutsideTheTableDoesNothing();
    void truncatingForgetsTheRest();
    void resettingEmptiesEverySlot();

    // the file
    void theLayoutIsFixed();
    void noPosesGiveAFileOfEightBytes();
    void whatWasWrittenIsRead();
    void writtenReadAndWrittenAgainIsIdentical();
    void pathsOfAllScriptsSurvive_data();
    void pathsOfAllScriptsSurvive();
    void quaternionsOffUnitLengthAreNormalised_data();
    void quaternionsOffUnitLengthAreNormalised();
    void anyNonZeroFlagMeansASignature();
    void aMissingFileChangesNothing();
    void anotherVersionChangesNothing_data();
    void anotherVersionChangesNothing();
    void aFileCutShortGivesItsWholeEntries();
    void damagedCountsAndLengthsAreSurvived_data();
    void damagedCountsAndLengthsAreSurvived();
    void readingEndsAtAPathThatIsTooLong();
    void readingEndsWhereThePathsTogetherAreTooLong();
    void withoutADataFolderNothingIsWritten();
    void theFolderIsCreated();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

// An application and the table, without a figure.
struct IndexFixture : StoreFixture {
    TempFolder home;
    DzApp app;
    IndexFixture()
        : app(poseTestSetup(home.path()))
    {
        locateDataFiles();
    }
    QByteArray bytes() const
    {
        return fileBytes(dataFiles().poseIndex);
    }
    bool readBytes(const QByteArray& bytes) const
    {
        writeFile(dataFiles().poseIndex, bytes);
        return readPoseIndex();
    }
};

static void fillAtRandom(Random* random, int count)
{
    for (int n = 0; n < count; ++n) {
        const int entry = addEntry(QString("/content/pose %1.duf").arg(n), random->next(),
            random->below(2) ? kFemaleCode : kMaleCode);
        randomSignature(random, entry);
        entryToChange(entry)->hasSignature = random->below(4) != 0;
    }
}

static bool sameQuat(const DzQuat& a, const DzQuat& b, double tolerance)
{
    return nearly(a.m_x, b.m_x, tolerance) && nearly(a.m_y, b.m_y, tolerance)
        && nearly(a.m_z, b.m_z, tolerance) && nearly(a.m_w, b.m_w, tolerance);
}

static bool sameEntry(const PoseIndexEntry& a, const PoseIndexEntry& b, double tolerance = 0)
{
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        if (!sameQuat(a.signature[slot], b.signature[slot], tolerance))
            return false;
    }
    return a.path == b.path && a.contentHash == b.contentHash && a.figureCode == b.figureCode
        && a.hasSignature == b.hasSignature;
}

// ---- the table

void TestPoseIndex::aFreshTableIsEmpty()
{
    IndexFixture f;
    QCOMPARE(poseCount(), 0);
    for (const int entry : {-1, 0, 1, kPoseIndexCapacity})
        QVERIFY(!poseEntry(entry));
}

void TestPoseIndex::aFreshEntryIsNotIdentified()
{
    IndexFixture f;
    QCOMPARE(appendPose(s("/a.duf")), 0);
    QCOMPARE(poseCount(), 1);
    const PoseIndexEntry& e = *poseEntry(0);
    QCOMPARE(e.path, s("/a.duf"));
    QCOMPARE(e.contentHash, 0u);
    QCOMPARE(e.figureCode, 0xffffffffu);
    QVERIFY(!e.hasSignature);
    for (const DzQuat& each : e.signature)
        QVERIFY(each == DzQuat());
}

void TestPoseIndex::aFullTableTakesNoMore()
{
    IndexFixture f;
    for (int n = 0; n < kPoseIndexCapacity; ++n)
        QCOMPARE(appendPose(s("/a.duf")), n);
    QCOMPARE(appendPose(s("/b.duf")), -1);
    QCOMPARE(poseCount(), kPoseIndexCapacity);
    removeEntry(0);
    QCOMPARE(appendPose(s("/b.duf")), kPoseIndexCapacity - 1);
}

void TestPoseIndex::copyingTakesAllFields()
{
    IndexFixture f;
    Random random(1);
    fillAtRandom(&random, 2);
    entryToChange(0)->hasSignature = false;
    entryToChange(1)->hasSignature = true;
    copyEntry(1, 0);
    QVERIFY(sameEntry(*poseEntry(0), *poseEntry(1)));
    copyEntry(1, 1);
    QVERIFY(sameEntry(*poseEntry(0), *poseEntry(1)));
}

void TestPoseIndex::removingMovesLaterEntriesDown_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("rest");
    QTest::newRow("first") << 0 << "b c";
    QTest::newRow("middle") << 1 << "a c";
    QTest::newRow("last") << 2 << "a b";
}

void TestPoseIndex::removingMovesLaterEntriesDown()
{
    QFETCH(int, entry);
    QFETCH(QString, rest);
    IndexFixture f;
    for (const char* path : {"a", "b", "c"})
        addEntry(s(path), quint32(path[0]));
    removeEntry(entry);
    QCOMPARE(indexedPaths().join(s(" ")), rest);
    QCOMPARE(poseEntry(1)->contentHash, quint32(rest.at(2).unicode()));
    QCOMPARE(appendPose(s("d")), 2); // in a clean slot
    QCOMPARE(poseEntry(2)->contentHash, 0u);
    QVERIFY(!poseEntry(2)->hasSignature);
}

void TestPoseIndex::removingOutsideTheTableDoesNothing()
{
    IndexFixture f;
    addEntry(s("a"), 1);
    for (const int entry : {-1, 1, kPoseIndexCapacity, kPoseIndexCapacity + 1})
        removeEntry(entry);
    QCOMPARE(indexedPaths(), QStringList() << s("a"));
}

void TestPoseIndex::truncatingForgetsTheRest()
{
    IndexFixture f;
    Random random(2);
    fillAtRandom(&random, 5);
    truncatePoseIndex(7);
    QCOMPARE(poseCount(), 5);
    truncatePoseIndex(2);
    QCOMPARE(poseCount(), 2);
    QVERIFY(!poseEntry(2));
    truncatePoseIndex(-3);
    QCOMPARE(poseCount(), 0);
}

void TestPoseIndex::resettingEmptiesEverySlot()
{
    IndexFixture f;
    Random random(3);
    fillAtRandom(&random, 9);
    resetPoseIndex();
    QCOMPARE(poseCount(), 0);
    for (int n = 0; n < 9; ++n) {
        appendPose(QString());
        QVERIFY(sameEntry(*poseEntry(n), PoseIndexEntry()));
    }
}

// ---- the file

void TestPoseIndex::theLayoutIsFixed()
{
    IndexFixture f;
    addEntry(QString::fromUtf8("/\xc3\xa4.duf"), 0x04030201, kMaleCode);
    PoseIndexEntry& e = *entryToChange(0);
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        e.signature[slot] = DzQuat(0, 0, 0, slot % 2 ? 1 : -1, false);
    e.signature[LeftThighSlot] = DzQuat(0.5, -0.5, 0.5, 0.5, false);
    QVERIFY(writePoseIndex());
    QByteArray expected;
    expected += QByteArray::fromHex("01000000"); // version
    expected += QByteArray::fromHex("01000000"); // count
    expected += QByteArray::fromHex("07000000") + "/\xc3\xa4.duf";
    expected += QByteArray::fromHex("01020304"); // hash
    expected += QByteArray::fromHex("08010000"); // 264
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        if (slot == 4)
            expected += QByteArray::fromHex("0000003f000000bf0000003f0000003f");
        else
            expected += QByteArray::fromHex("000000000000000000000000")
                + QByteArray::fromHex(slot % 2 ? "0000803f" : "000080bf");
    }
    expected += '\x01';
    QCOMPARE(f.bytes().toHex(), expected.toHex());
}

void TestPoseIndex::noPosesGiveAFileOfEightBytes()
{
    IndexFixture f;
    QVERIFY(writePoseIndex());
    QCOMPARE(f.bytes(), QByteArray::fromHex("0100000000000000"));
}

void TestPoseIndex::whatWasWrittenIsRead()
{
    IndexFixture f;
    Random random(4);
    fillAtRandom(&random, 40);
    entryToChange(7)->path.clear(); // nothing follows a length of 0
    QVERIFY(writePoseIndex());
    std::vector<PoseIndexEntry> written;
    for (int n = 0; n < 40; ++n)
        written.push_back(*poseEntry(n));
    resetPoseIndex();
    addEntry(s("/other.duf"), 5);
    QVERIFY(readPoseIndex());
    QCOMPARE(poseCount(), 40);
    for (int n = 0; n < 40; ++n)
        QVERIFY(sameEntry(*poseEntry(n), written[size_t(n)], 1e-7)); // narrowed to floats
}

void TestPoseIndex::writtenReadAndWrittenAgainIsIdentical()
{
    IndexFixture f;
    Random random(5);
    fillAtRandom(&random, 500);
    QVERIFY(writePoseIndex());
    const QByteArray first = f.bytes();
    QVERIFY(readPoseIndex());
    QVERIFY(writePoseIndex());
    QVERIFY(f.bytes() == first);
    QVERIFY(readPoseIndex());
    QVERIFY(writePoseIndex());
    QVERIFY(f.bytes() == first);
}

void TestPoseIndex::pathsOfAllScriptsSurvive_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("Japanese") << QString::fromUtf8("/コンテンツ/ポーズ/座る.duf");
    QTest::newRow("Cyrillic") << QString::fromUtf8("/Содержимое/Поза сидя.duf");
    QTest::newRow("combining marks") << QString::fromUtf8("/cafe\u0301/n\u0303.duf");
    QTest::newRow("composed") << QString::fromUtf8("/caf\u00e9/\u00f1.duf");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("/\U0001F938/a.duf");
    QTest::newRow("a byte-order mark was left out") << QChar(0xfeff) + s("/a.duf");
}

void TestPoseIndex::pathsOfAllScriptsSurvive()
{
    QFETCH(QString, path);
    IndexFixture f;
    addEntry(path, 1);
    QVERIFY(writePoseIndex());
    QVERIFY(readPoseIndex());
    QCOMPARE(poseEntry(0)->path, path);
}

static QVariantList numbers(const DzQuat& q)
{
    return QVariantList() << q.m_x << q.m_y << q.m_z << q.m_w;
}

void TestPoseIndex::quaternionsOffUnitLengthAreNormalised_data()
{
    QTest::addColumn<QVariantList>("stored"); // x, y, z, w
    QTest::addColumn<QVariantList>("read");
    const auto row = [](const char* name, const DzQuat& stored, const DzQuat& read) {
        QTest::newRow(name) << numbers(stored) << numbers(read);
    };
    const auto quat
        = [](double x, double y, double z, double w) { return DzQuat(x, y, z, w, false); };
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double most = double(std::numeric_limits<float>::max());
    const double half = std::sqrt(0.5);
    row("twice the length", quat(0, 0, 2, 0), quat(0, 0, 1, 0));
    row("0.707", quat(0.707, 0, 0, 0.707), quat(half, 0, 0, half));
    row("largest numbers", quat(most, 0, 0, most), quat(half, 0, 0, half));
    row("zero", quat(0, 0, 0, 0), DzQuat());
    row("not a number", quat(nan, 0, 0, 1), DzQuat());
    row("infinite", quat(0, inf, 0, 1), DzQuat());
    row("negative identity", quat(0, 0, 0, -1), quat(0, 0, 0, -1));
}

void TestPoseIndex::quaternionsOffUnitLengthAreNormalised()
{
    QFETCH(QVariantList, stored);
    QFETCH(QVariantList, read);
    IndexFixture f;
    addEntry(s("/a"), 1);
    QVERIFY(writePoseIndex());
    QByteArray bytes = f.bytes();
    const int hipAt = 8 + 4 + 2 + 4 + 4;
    for (int i = 0; i < 4; ++i) {
        const float number = float(stored.at(i).toDouble());
        std::memcpy(bytes.data() + hipAt + 4 * i, &number, 4);
    }
    QVERIFY(f.readBytes(bytes));
    const DzQuat expected(read.at(0).toDouble(), read.at(1).toDouble(), read.at(2).toDouble(),
        read.at(3).toDouble(), false);
    QVERIFY(sameQuat(poseEntry(0)->signature[HipSlot], expected, 1e-12));
}

void TestPoseIndex::anyNonZeroFlagMeansASignature()
{
    IndexFixture f;
    addEntry(s("/a"), 1);
    QVERIFY(writePoseIndex());
    QByteArray bytes = f.bytes();
    bytes[bytes.size() - 1] = '\x80';
    QVERIFY(f.readBytes(bytes));
    QVERIFY(poseEntry(0)->hasSignature);
    bytes[bytes.size() - 1] = '\0';
    QVERIFY(f.readBytes(bytes));
    QVERIFY(!poseEntry(0)->hasSignature);
}

void TestPoseIndex::aMissingFileChangesNothing()
{
    IndexFixture f;
    addEntry(s("/a"), 1);
    QVERIFY(!readPoseIndex());
    QCOMPARE(indexedPaths(), QStringList() << s("/a"));
}

void TestPoseIndex::anotherVersionChangesNothing_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("0") << QByteArray::fromHex("00000000");
    QTest::newRow("2") << QByteArray::fromHex("02000000");
    QTest::newRow("negative") << QByteArray::fromHex("ffffffff");
    QTest::newRow("empty file") << QByteArray();
}

void TestPoseIndex::anotherVersionChangesNothing()
{
    QFETCH(QByteArray, start);
    IndexFixture f;
    addEntry(s("/a"), 1);
    QVERIFY(writePoseIndex());
    const QByteArray bytes = start.isEmpty() ? start : start + f.bytes().mid(4);
    addEntry(s("/b"), 2);
    QVERIFY(f.readBytes(bytes));
    QCOMPARE(indexedPaths(), QStringList() << s("/a") << s("/b"));
}

void TestPoseIndex::aFileCutShortGivesItsWholeEntries()
{
    IndexFixture f;
    Random random(6);
    fillAtRandom(&random, 3);
    QVERIFY(writePoseIndex());
    const QByteArray whole = f.bytes();
    const int entryBytes = (whole.size() - 8) / 3;
    for (int size = 4; size <= whole.size(); ++size) {
        resetPoseIndex();
        QVERIFY(f.readBytes(whole.left(size)));
        QCOMPARE(poseCount(), std::max(0, (size - 8) / entryBytes));
    }
}

void TestPoseIndex::damagedCountsAndLengthsAreSurvived_data()
{
    QTest::addColumn<QByteArray>("count");
    QTest::addColumn<QByteArray>("length");
    QTest::addColumn<int>("entries");
    const QByteArray one = QByteArray::fromHex("01000000"), two = QByteArray::fromHex("02000000");
    QTest::newRow("as it was") << one << two << 1;
    QTest::newRow("negative count") << QByteArray::fromHex("ffffffff") << two << 0;
    QTest::newRow("largest count") << QByteArray::fromHex("ffffff7f") << two << 1;
    QTest::newRow("negative length") << one << QByteArray::fromHex("ffffffff") << 0;
    QTest::newRow("largest length") << one << QByteArray::fromHex("ffffff7f") << 0;
    QTest::newRow("length beyond the file") << one << QByteArray::fromHex("03000000") << 0;
}

void TestPoseIndex::damagedCountsAndLengthsAreSurvived()
{
    QFETCH(QByteArray, count);
    QFETCH(QByteArray, length);
    QFETCH(int, entries);
    IndexFixture f;
    addEntry(s("/a"), 1);
    QVERIFY(writePoseIndex());
    QVERIFY(f.readBytes(f.bytes().replace(4, 4, count).replace(8, 4, length)));
    QCOMPARE(poseCount(), entries);
}

static QByteArray number(int value)
{
    return QByteArray(reinterpret_cast<const char*>(&value), 4);
}

// An index of entries with paths of these lengths.
static QByteArray indexWith(const std::vector<int>& pathLengths)
{
    const QByteArray behindPath(4 + 4 + 160 + 1, '\0');
    QByteArray bytes = number(1) + number(int(pathLengths.size()));
    for (const int length : pathLengths)
        bytes += number(length) + QByteArray(length, 'p') + behindPath;
    return bytes;
}

void TestPoseIndex::readingEndsAtAPathThatIsTooLong()
{
    IndexFixture f;
    QVERIFY(f.readBytes(indexWith({5, 32767, 6})));
    QCOMPARE(poseCount(), 3);
    QCOMPARE(poseEntry(1)->path, QString(32767, QLatin1Char('p')));
    QVERIFY(f.readBytes(indexWith({5, 32768, 6})));
    QCOMPARE(poseCount(), 1);
    QCOMPARE(poseEntry(0)->path.size(), 5);
}

void TestPoseIndex::readingEndsWhereThePathsTogetherAreTooLong()
{
    IndexFixture f;
    std::vector<int> lengths(1024, 32767); // 1024 bytes less than 32 MB
    lengths.push_back(1023);
    lengths.push_back(1);
    QVERIFY(f.readBytes(indexWith(lengths)));
    QCOMPARE(poseCount(), 1026);
    lengths.push_back(1);
    lengths.push_back(0);
    QVERIFY(f.readBytes(indexWith(lengths)));
    QCOMPARE(poseCount(), 1026);
}

void TestPoseIndex::withoutADataFolderNothingIsWritten()
{
    StoreFixture f; // no application
    locateDataFiles();
    addEntry(s("/a"), 1);
    QVERIFY(!writePoseIndex());
    QVERIFY(!readPoseIndex());
    IndexFixture blocked;
    writeFile(blocked.home.path(s("data")), "a file where the folder should be");
    QVERIFY(!writePoseIndex());
}

void TestPoseIndex::theFolderIsCreated()
{
    IndexFixture f;
    QVERIFY(!QDir(dataFiles().folder).exists());
    QVERIFY(writePoseIndex());
    QCOMPARE(filesIn(dataFiles().folder).size(), 1);
    QVERIFY(filesIn(dataFiles().folder).first().startsWith(s("poseIndex_")));
}

QUILLON_TEST(TestPoseIndex)
#include "test_pose_index.moc"
