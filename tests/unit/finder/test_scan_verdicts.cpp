// What a scan tells of each file that it came upon.
#include "scan_fixture.h"
#include "room_tests.h"
#include "without_rights.h"

#include "finder/scan_verdicts.h"

using namespace quillon;

class TestScanVerdicts : public QObject {
    Q_OBJECT
private slots:
    void whatIsIndexedIsTold();
    void aPresetOfAnotherKindIsNotAPose();
    void anUnreadableFileIsToldInEitherPhase();
    void withoutRoomEveryPoseIsOverCapacity();
    void aPartOfTheBodyIsNotTheWhole();
    void aPoseOfAnotherGenerationIsOfAnotherFigure();
    void theMakersVariantsAreTold();
    void aTwinHasTheSameContentAsTheFirst();
    void aMirrorIsToldWithWhatItMirrors();
    void aSimilarPoseIsToldWithItsLike();
    void aPathIsToldOnce();
    void aFolderThatCannotBeListedIsTold();
    void aScanThatIsAskedShowsAndSavesNothing();
    void aCancelledScanTellsWhatItKnew();
    void whoDoesNotAskGetsTheSameIndex();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

// ---- a report as lines "name: verdict partner", sorted

static const char* verdictText(Verdict verdict)
{
    // clang-format off
    switch (verdict) {
    case Verdict::Indexed:      return "indexed";
    case Verdict::NotAPose:     return "not a pose";
    case Verdict::Unreadable:   return "unreadable";
    case Verdict::OverCapacity: return "over capacity";
    case Verdict::NotWholeBody: return "not the whole body";
    case Verdict::OtherFigure:  return "other figure";
    case Verdict::MakerVariant: return "maker's variant";
    case Verdict::SameContent:  return "same content";
    case Verdict::MirrorOf:     return "mirror";
    case Verdict::SimilarTo:    return "similar";
    }
    // clang-format on
    return "";
}

static QStringList lines(const ScanFixture& f, const ScanReport& report)
{
    QStringList list;
    const int below = f.content().size() + 1;
    for (const FileVerdict& each : report.files) {
        QString line = each.path.mid(below) + s(": ") + s(verdictText(each.verdict));
        if (!each.partner.isEmpty())
            line += QLatin1Char(' ') + each.partner.mid(below);
        list << line;
    }
    list.sort();
    return list;
}

static ScanReport report(const ScanFixture& f, bool* finished = nullptr)
{
    ScanReport told;
    const bool done = scanWithReport(f.figure, f.time(), &told);
    if (finished)
        *finished = done;
    return told;
}

// Directories below the content folder, walked in this order.
static void setOrder(ScanFixture* f, const char* folders)
{
    QStringList directories;
    for (const QString& each : s(folders).split(QLatin1Char(' ')))
        directories << f->content() + QLatin1Char('/') + each;
    f->setContent(directories);
}

// ---- verdicts

void TestScanVerdicts::whatIsIndexedIsTold()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.add("b.duf", poseNumber(2));
    QCOMPARE(lines(f, report(f)), QStringList() << s("a.duf: indexed") << s("b.duf: indexed"));
}

void TestScanVerdicts::aPresetOfAnotherKindIsNotAPose()
{
    ScanFixture f;
    f.addText("empty.duf", QByteArray());
    f.addText("shape.duf", poseFileText(poseNumber(1)).replace("preset_pose", "preset_shape"));
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("empty.duf: not a pose") << s("shape.duf: not a pose"));
}

void TestScanVerdicts::anUnreadableFileIsToldInEitherPhase()
{
    ScanFixture f;
    f.add("closed.duf", poseNumber(1));
    f.add("gone.duf", poseNumber(2));
    QVERIFY(setMode(f.home.path(), 0755) && setMode(f.content("closed.duf"), 0));
    ProgressLog log;
    ProgressLog::atChange() = [&f](const QString& info) {
        if (info.startsWith(s("Identifying")))
            QFile::resize(f.content("gone.duf"), 0);
    };
    QVERIFY(giveToChild(f.content("gone.duf")));
    const QStringList expected = QStringList()
        << s("closed.duf: unreadable") << s("gone.duf: unreadable");
    QCOMPARE(runWithoutRights([&] { return lines(f, report(f)) == expected ? 0 : 1; }), 0);
}

void TestScanVerdicts::withoutRoomEveryPoseIsOverCapacity()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.add("b.duf", poseNumber(2));
    f.addText("shape.duf", "preset_shape");
    freePoseIndex(); // a table of no room at all
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("a.duf: over capacity") << s("b.duf: over capacity")
                      << s("shape.duf: not a pose"));
}

void TestScanVerdicts::aPartOfTheBodyIsNotTheWhole()
{
    ScanFixture f;
    f.addText("hand.duf", poseFileText(poseNumber(1)).replace("lBigToe", "lThumb1"));
    QCOMPARE(lines(f, report(f)), QStringList() << s("hand.duf: not the whole body"));
}

void TestScanVerdicts::aPoseOfAnotherGenerationIsOfAnotherFigure()
{
    ScanFixture f;
    f.addText("second.duf", poseFileText(poseNumber(1)) + "abdomen2");
    f.addText("third.duf", poseFileText(poseNumber(2)) + "rHeel");
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("second.duf: other figure") << s("third.duf: other figure"));
}

void TestScanVerdicts::theMakersVariantsAreTold()
{
    ScanFixture f;
    f.add("data/Brannoc/poses/001/012f0.duf", poseNumber(1));
    f.add("data/Brannoc/poses/001/013f Mirror.duf", poseNumber(2));
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("data/Brannoc/poses/001/012f0.duf: indexed")
                      << s("data/Brannoc/poses/001/013f Mirror.duf: maker's variant"));
}

void TestScanVerdicts::aTwinHasTheSameContentAsTheFirst()
{
    ScanFixture f;
    for (const char* path : {"a/one.duf", "b/two.duf", "c/three.duf"})
        f.add(path, poseNumber(1));
    setOrder(&f, "b c a");
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("a/one.duf: same content b/two.duf") << s("b/two.duf: indexed")
                      << s("c/three.duf: same content b/two.duf"));
}

void TestScanVerdicts::aMirrorIsToldWithWhatItMirrors()
{
    ScanFixture f;
    f.add("a/other.duf", poseNumber(36));
    f.add("b/pose.duf", poseNumber(6));
    f.add("c/pose.duf", mirroredPose(poseNumber(6)));
    setOrder(&f, "a b c");
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("a/other.duf: indexed") << s("b/pose.duf: indexed")
                      << s("c/pose.duf: mirror b/pose.duf"));
}

void TestScanVerdicts::aSimilarPoseIsToldWithItsLike()
{
    ScanFixture f;
    PoseValues close = poseNumber(3);
    close["lShin/x"] += 20; // a chord of 0.35
    f.add("a/other.duf", poseNumber(36));
    f.add("b/pose.duf", poseNumber(3));
    f.add("c/close.duf", close);
    setOrder(&f, "a b c");
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("a/other.duf: indexed") << s("b/pose.duf: indexed")
                      << s("c/close.duf: similar b/pose.duf"));
}

// ---- the report

void TestScanVerdicts::aPathIsToldOnce()
{
    ScanFixture f;
    f.add("a/pose.duf", poseNumber(1));
    f.addText("a/shape.duf", "preset_shape");
    f.setContent(QStringList() << f.content("a") << f.content("a"));
    QCOMPARE(lines(f, report(f)),
        QStringList() << s("a/pose.duf: indexed") << s("a/shape.duf: not a pose"));
}

void TestScanVerdicts::aFolderThatCannotBeListedIsTold()
{
    ScanFixture f;
    f.add("closed/pose.duf", poseNumber(1));
    QVERIFY(setMode(f.home.path(), 0755) && setMode(f.content("closed"), 0));
    const int told = runWithoutRights([&f] {
        const ScanReport each = report(f);
        return each.files.empty() && each.missedFolders == QStringList(f.content("closed")) ? 0 : 1;
    });
    setMode(f.content("closed"), 0755);
    QCOMPARE(told, 0);
}

void TestScanVerdicts::aScanThatIsAskedShowsAndSavesNothing()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    bool finished = false;
    report(f, &finished);
    QVERIFY(finished);
    QVERIFY(f.boxes.boxes.isEmpty());
    QVERIFY(f.indexBytes().isEmpty());
    QCOMPARE(poseCount(), 1);
}

void TestScanVerdicts::aCancelledScanTellsWhatItKnew()
{
    ScanFixture f;
    f.add("a/pose.duf", poseNumber(1));
    f.add("b/pose.duf", poseNumber(1));
    setOrder(&f, "a b");
    ProgressLog log;
    ProgressLog::cancelAt() = s("Skipping mirrored");
    bool finished = true;
    QCOMPARE(
        lines(f, report(f, &finished)), QStringList() << s("b/pose.duf: same content a/pose.duf"));
    QVERIFY(!finished);
    QCOMPARE(poseCount(), 0);
}

void TestScanVerdicts::whoDoesNotAskGetsTheSameIndex()
{
    ScanFixture f;
    for (int n = 0; n < 12; ++n)
        f.add(QByteArray("p" + QByteArray::number(n) + ".duf").constData(), poseNumber(n % 8));
    report(f);
    const QStringList asked = indexedPaths();
    scanPoses();
    QCOMPARE(indexedPaths(), asked);
    QVERIFY(asked.size() > 3 && asked.size() < 12);
}

QUILLON_TEST(TestScanVerdicts)
#include "test_scan_verdicts.moc"
