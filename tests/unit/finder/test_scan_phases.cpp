// Which poses the phases of a scan drop.
#include "scan_fixture.h"
#include "room_tests.h"

#include "finder/scan_phases.h"
#include "posefile/custom_library.h"
#include "reference/finder_reference.h"

using namespace quillon;

class TestScanPhases : public QObject {
    Q_OBJECT
private slots:
    // dropping
    void ofTwinsTheFirstFoundStays();
    void plainAndCompressedTwinsAreDuplicates();
    void aTwinInTheCustomLibraryIsKept();
    void theMakersVariantsAreDropped();
    void aMirroredPoseIsDropped();
    void aSymmetricSitIsDroppedAfterASymmetricStand();
    void aSimilarPoseIsDropped();
    void similarPosesOfOtherFiguresAreKept();
    void customPosesNeverDropNorAreDropped();
    void everyPhaseTellsHowManyEntriesItHas();
    void noPosesGiveAnIndexOfEightBytes();

    // literal forms
    void passesEqualTheLiteralForms();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static QStringList names(const char* text)
{
    return s(text).split(QLatin1Char(' '));
}

// ---- dropping

void TestScanPhases::ofTwinsTheFirstFoundStays()
{
    ScanFixture f;
    for (const char* path : {"a/one.duf", "b/two.duf", "c/three.duf"})
        f.add(path, poseNumber(1));
    f.add("d/other.duf", poseNumber(2));
    const QStringList order = f.walked();
    scanPoses();
    QStringList expected;
    for (const QString& path : order)
        if (path.endsWith(s("other.duf")))
            expected << path;
    QString first;
    for (const QString& path : order)
        if (first.isEmpty() && !path.endsWith(s("other.duf")))
            first = path;
    expected << first;
    expected.sort();
    QStringList found = indexedPaths();
    found.sort();
    QCOMPARE(found, expected);
}

void TestScanPhases::plainAndCompressedTwinsAreDuplicates()
{
    ScanFixture f;
    f.add("plain.duf", poseNumber(1));
    QVERIFY(writeGzip(f.content("packed.duf"), poseFileText(poseNumber(1))));
    ProgressLog log;
    scanPoses();
    QCOMPARE(poseCount(), 1);
    QCOMPARE(indexedPaths().first(), f.walked().first());
}

void TestScanPhases::aTwinInTheCustomLibraryIsKept()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.add("data/Brannoc/Quillon/custom/mine.duf", poseNumber(1));
    f.add("data/Brannoc/Quillon/custom/mine too.duf", poseNumber(1));
    f.add("data/brannoc/Quillon/custom/not mine.duf", poseNumber(1)); // of another case
    const QStringList found = f.scanned();
    QCOMPARE(found.size(), 3);
    QCOMPARE(found.filter(s("Quillon/custom/mine")).size(), 2);
}

void TestScanPhases::theMakersVariantsAreDropped()
{
    ScanFixture f;
    f.add("data/Brannoc/poses/001/012f0.duf", poseNumber(1));
    f.add("data/Brannoc/poses/001/013f Mirror.duf", poseNumber(2));
    f.add("data/Brannoc/poses/MIRRORED/014f.duf", poseNumber(3));
    f.add("DATA/brannoc/poses/001/015f noExpression.duf", poseNumber(4));
    f.add("People/Poses/mirror noexpression.duf", poseNumber(5)); // of another maker
    QCOMPARE(f.scanned(),
        QStringList() << s("People/Poses/mirror noexpression.duf")
                      << s("data/Brannoc/poses/001/012f0.duf"));
}

void TestScanPhases::aMirroredPoseIsDropped()
{
    ScanFixture f;
    f.add("a/pose.duf", poseNumber(6));
    f.add("b/pose.duf", mirroredPose(poseNumber(6)));
    f.add("c/pose.duf", poseNumber(36)); // a hip turned otherwise: no mirror of either
    const QStringList order = f.walked();
    const QString firstOfPair
        = order.filter(QRegExp(s("/[ab]/pose.duf$"))).first().mid(f.content().size() + 1);
    QStringList expected = QStringList() << firstOfPair << s("c/pose.duf");
    QCOMPARE(f.scanned(), expected);
}

void TestScanPhases::aSymmetricSitIsDroppedAfterASymmetricStand()
{
    ScanFixture f;
    PoseValues stand, sit;
    stand["lShldrBend/z"] = sit["lShldrBend/z"] = -40;
    stand["rShldrBend/z"] = sit["rShldrBend/z"] = 40;
    sit["lThighBend/x"] = sit["rThighBend/x"] = -60;
    sit["lShin/x"] = sit["rShin/x"] = 60;
    f.add("stand/pose.duf", stand);
    f.add("sit/pose.duf", sit);
    f.setContent(QStringList() << f.content("stand") << f.content("sit"));
    QCOMPARE(f.scanned(), names("stand/pose.duf"));
}

void TestScanPhases::aSimilarPoseIsDropped()
{
    ScanFixture f;
    PoseValues close = poseNumber(3), distant = poseNumber(3);
    close["lShin/x"] += 20; // a chord of 0.35
    distant["rShin/x"] += 60; // a chord of 1
    f.add("a/pose.duf", poseNumber(3));
    f.add("b/close.duf", close);
    f.add("c/distant.duf", distant);
    f.setContent(QStringList() << f.content("a") << f.content("b") << f.content("c"));
    QCOMPARE(f.scanned(), names("a/pose.duf c/distant.duf"));
}

void TestScanPhases::similarPosesOfOtherFiguresAreKept()
{
    ScanFixture f;
    PoseValues close = poseNumber(3);
    close["lShin/x"] += 5;
    f.add("female/pose.duf", poseNumber(3));
    f.add("male/pose.duf", close);
    QCOMPARE(f.scanned(), names("female/pose.duf male/pose.duf"));
    QCOMPARE(f.entryOf("female/pose.duf").figureCode, kFemaleCode);
    QCOMPARE(f.entryOf("male/pose.duf").figureCode, kMaleCode);
    f.add("male/twin.duf", poseNumber(3)); // the same bytes: one file for both figures
    QCOMPARE(f.scanned().size(), 2);
}

void TestScanPhases::customPosesNeverDropNorAreDropped()
{
    ScanFixture f;
    PoseValues close = poseNumber(3);
    close["lShin/x"] += 5;
    f.add("data/Brannoc/Quillon/custom/a.duf", poseNumber(3));
    f.add("z/close.duf", close);
    f.add("z/mirrored.duf", mirroredPose(poseNumber(3)));
    f.setContent(QStringList() << f.content("data") << f.content("z"));
    scanPoses();
    // the mirror of the close one falls, or the close one as the mirror's; the custom pose stays
    QCOMPARE(poseCount(), 2);
    QVERIFY(isCustomLibraryPath(poseEntry(0)->path));
    f.setContent(QStringList() << f.content("z") << f.content("data"));
    scanPoses();
    QCOMPARE(poseCount(), 2);
    QVERIFY(isCustomLibraryPath(poseEntry(1)->path));
}

void TestScanPhases::everyPhaseTellsHowManyEntriesItHas()
{
    ScanFixture f;
    PoseValues close = poseNumber(1);
    close["lShin/x"] += 5;
    f.add("a/1.duf", poseNumber(1));
    f.add("b/2.duf", poseNumber(1)); // duplicate
    f.add("c/3.duf", mirroredPose(poseNumber(1))); // mirror
    f.add("d/4.duf", close); // similar
    f.addText("e/5.duf", "preset_pose"); // no pose of the whole body
    f.add("f/data/Brannoc/poses/001/012f mirror.duf", poseNumber(2));
    f.add("g/7.duf", poseNumber(9));
    QStringList directories;
    for (const char* each : {"a", "b", "c", "d", "e", "f", "g"})
        directories << f.content(each);
    f.setContent(directories);
    ProgressLog log;
    QCOMPARE(f.scanned(), names("a/1.duf g/7.duf"));
    const auto count = [&](const char* phase) { return log.infosOf(phase); };
    QCOMPARE(count("Scanning pose files").last(), s("Scanning pose files... 7"));
    QCOMPARE(count("Identifying").last(), s("Identifying pose files... 6 of 7"));
    QCOMPARE(count("Optimizing pose index (1)").last(), s("Optimizing pose index (1)... 6 of 7"));
    QCOMPARE(count("Optimizing pose index (2)").last(), s("Optimizing pose index (2)... 6 of 7"));
    QCOMPARE(count("Ignoring").last(), s("Ignoring duplicate poses... 5 of 6"));
    QCOMPARE(count("Indexing").last(), s("Indexing poses... 5 of 6"));
    QCOMPARE(count("Indexing").size(), 5); // not the one that is no pose
    QCOMPARE(count("Skipping mirrored").last(), s("Skipping mirrored poses... 5 of 6"));
    QCOMPARE(count("Skipping similar").last(), s("Skipping similar poses... 5 of 6"));
    QCOMPARE(count("Cleaning up").last(), s("Cleaning up... 5 of 6"));
}

void TestScanPhases::noPosesGiveAnIndexOfEightBytes()
{
    ScanFixture f;
    scanPoses();
    QCOMPARE(f.indexBytes(), QByteArray::fromHex("0100000000000000"));
    QCOMPARE(f.boxes.boxes.first().text, s("Success! Indexed pose files: 0"));
}

// ---- literal forms

// Entries at random, many of them close to each other or to each other's mirrors.
static void fillWithNeighbours(Random* random, int count)
{
    for (int n = 0; n < count; ++n) {
        const int entry
            = addEntry(random->below(12) ? s("/c/a.duf") : s("/data/Brannoc/Quillon/custom/a.duf"),
                quint32(random->below(count)), random->below(3) ? kFemaleCode : kMaleCode);
        PoseIndexEntry& e = *entryToChange(entry);
        randomSignature(random, entry);
        if (n == 0 || random->below(4) == 0)
            continue;
        const PoseIndexEntry& other = *poseEntry(random->below(n));
        const bool asMirror = random->below(2) == 0;
        for (int slot = 0; slot < kSignatureSlots; ++slot) {
            const int from = asMirror && slot > 1 ? 2 + ((slot - 2) ^ 1) : slot;
            const DzQuat& q = other.signature[from];
            e.signature[slot] = (asMirror ? DzQuat(q.m_x, -q.m_y, -q.m_z, q.m_w, false) : q)
                * turn(random->between(-1, 1), 1, 0, random->between(0, asMirror ? 16 : 33));
        }
    }
}

static ScanWatch quietWatch()
{
    ScanWatch watch;
    watch.missFile = [](const QString&) {};
    watch.show = [](int, int) {};
    watch.isCancelled = [] { return false; };
    return watch;
}

static std::vector<quint32> hashes()
{
    std::vector<quint32> all;
    for (int entry = 0; entry < poseCount(); ++entry)
        all.push_back(poseEntry(entry)->contentHash);
    return all;
}

void TestScanPhases::passesEqualTheLiteralForms()
{
    typedef bool (*Pass)(const ScanWatch&);
    static const struct {
        Pass fast;
        void (*literal)();
    } kPasses[] = {{markDuplicates, reference::markDuplicates},
        {markMirrored, reference::markMirrored}, {markSimilar, reference::markSimilar}};
    for (unsigned seed = 1; seed <= 6; ++seed) {
        StoreFixture f;
        Random random(seed);
        fillWithNeighbours(&random, 400);
        for (const auto& pass : kPasses) {
            const std::vector<quint32> before = hashes();
            QVERIFY(pass.fast(quietWatch()));
            const std::vector<quint32> fast = hashes();
            for (int entry = 0; entry < poseCount(); ++entry)
                entryToChange(entry)->contentHash = before[size_t(entry)];
            pass.literal();
            QVERIFY(hashes() == fast);
            QVERIFY(fast != before);
        }
    }
}

QUILLON_TEST(TestScanPhases)
#include "test_scan_phases.moc"
