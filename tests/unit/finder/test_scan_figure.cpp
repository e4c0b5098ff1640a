// What a scan reads from the figure, and how it leaves it.
#include "scan_fixture.h"
#include "room_tests.h"

#include "finder/pose_signature.h"

using namespace quillon;

class TestScanFigure : public QObject {
    Q_OBJECT
private slots:
    // signatures
    void signaturesAreThoseOfTheFile();
    void unnamedKeyBonesAreAtRest();
    void limitsDoNotHoldWhileIndexing();
    void theFiguresPlaceDoesNotMatter_data();
    void theFiguresPlaceDoesNotMatter();
    void aFileThatVanishesStaysWithoutSignature();
    void withoutHipNoPoseHasASignature();

    // what it leaves
    void oneUndoBringsTheOldPoseBack_data();
    void oneUndoBringsTheOldPoseBack();
    void aFigureAtRestGetsNoUndoStep();
    void limitFlagsAreTheUsersAgain();
    void keysOfAnAnimatedFigureStay();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static QStringList names(const char* text)
{
    return s(text).split(QLatin1Char(' '));
}

// ---- signatures

static bool nearlyEqual(const DzQuat& a, const DzQuat& b, double tolerance)
{
    return nearly(a.m_x, b.m_x, tolerance) && nearly(a.m_y, b.m_y, tolerance)
        && nearly(a.m_z, b.m_z, tolerance) && nearly(a.m_w, b.m_w, tolerance);
}

void TestScanFigure::signaturesAreThoseOfTheFile()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(21));
    QCOMPARE(f.scanned(), names("a.duf"));
    const PoseIndexEntry found = *poseEntry(0);
    QVERIFY(found.hasSignature);
    const PoseValues values = poseNumber(21);
    for (auto each = values.constBegin(); each != values.constEnd(); ++each) {
        const QString axis = s(each.key().right(1).toUpper().constData());
        const DzNode* bone = f.bone(each.key().left(each.key().size() - 2).constData());
        auto* channel = qobject_cast<DzFloatProperty*>(bone->findProperty(axis + s("Rotate")));
        channel->setIsClamped(false);
        channel->setValue(float(each.value()));
    }
    takeSignature(0, f.figure, f.time());
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        QVERIFY(nearlyEqual(found.signature[slot], poseEntry(0)->signature[slot], 1e-6));
}

void TestScanFigure::unnamedKeyBonesAreAtRest()
{
    ScanFixture f;
    PoseValues bent;
    bent["rShin/x"] = 100;
    f.add("a/bent.duf", bent);
    f.add("b/other.duf", poseNumber(40)); // right shin differs, left forearm unnamed
    f.bone("lForearmBend")->getYRotControl()->setValue(-60);
    scanPoses();
    for (int entry = 0; entry < poseCount(); ++entry)
        QVERIFY(nearlyEqual(poseEntry(entry)->signature[LeftForearmSlot], DzQuat(), 1e-9));
}

void TestScanFigure::limitsDoNotHoldWhileIndexing()
{
    ScanFixture f;
    PoseValues values;
    values["abdomenLower/x"] = 80; // beyond 35
    f.add("a.duf", values);
    scanPoses();
    QVERIFY(nearlyEqual(poseEntry(0)->signature[TorsoSlot], turn(1, 0, 0, 80), 1e-6));
    QVERIFY(f.bone("abdomenLower")->getXRotControl()->isClamped());
}

void TestScanFigure::theFiguresPlaceDoesNotMatter_data()
{
    QTest::addColumn<float>("turnDeg");
    QTest::addColumn<float>("moveCm");
    QTest::addColumn<float>("leanDeg");
    QTest::newRow("turned by 90") << 90.f << 0.f << 0.f;
    QTest::newRow("turned by 360") << 360.f << 0.f << 0.f;
    QTest::newRow("turned by 270 and moved") << -270.f << 250.f << 0.f;
    QTest::newRow("leaning") << 20.f << -3.f << 75.f;
}

void TestScanFigure::theFiguresPlaceDoesNotMatter()
{
    QFETCH(float, turnDeg);
    QFETCH(float, moveCm);
    QFETCH(float, leanDeg);
    ScanFixture f;
    for (int n = 0; n < 24; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    scanPoses();
    QVERIFY(poseCount() > 5);
    const QByteArray atRest = f.indexBytes();
    f.figure->getYRotControl()->setValue(turnDeg);
    f.figure->getXRotControl()->setValue(leanDeg);
    f.figure->getXPosControl()->setValue(moveCm);
    f.bone("hip")->getYPosControl()->setValue(-20);
    scanPoses();
    QVERIFY(f.indexBytes() == atRest);
    QCOMPARE(f.figure->getYRotControl()->getValue(), turnDeg);
    QCOMPARE(f.figure->getXRotControl()->getValue(), leanDeg);
    QCOMPARE(f.figure->getXPosControl()->getValue(), moveCm);
}

void TestScanFigure::aFileThatVanishesStaysWithoutSignature()
{
    ScanFixture f;
    f.add("a/one.duf", poseNumber(1));
    const QString gone = f.add("b/gone.duf", poseNumber(7));
    f.add("c/two.duf", poseNumber(11));
    ProgressLog log;
    log.atChange() = [&](const QString& info) {
        if (info.startsWith(s("Indexing poses... 0")))
            QFile::remove(gone);
    };
    QCOMPARE(f.scanned(), names("a/one.duf b/gone.duf c/two.duf"));
    const PoseIndexEntry e = f.entryOf("b/gone.duf");
    QVERIFY(!e.hasSignature);
    QVERIFY(e.contentHash != 0);
    for (const DzQuat& each : e.signature)
        QVERIFY(each == DzQuat());
    QVERIFY(f.entryOf("c/two.duf").hasSignature);
    QVERIFY(readPoseIndex());
    QVERIFY(!f.entryOf("b/gone.duf").hasSignature);
}

void TestScanFigure::withoutHipNoPoseHasASignature()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.figure->removeBone(f.bone("hip"));
    QCOMPARE(f.scanned(), names("a.duf"));
    QVERIFY(!poseEntry(0)->hasSignature);
}

// ---- what it leaves

static void addFigureAndPhaseRows()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<QString>("cancelAt"); // empty: the scan goes through
    for (const char* figure : kTestFigures)
        QTest::newRow(figure) << s(figure) << QString();
    for (const char* phase : kPhaseInfos)
        QTest::newRow(phase) << s("Genesis8Female") << s(phase);
}

void TestScanFigure::oneUndoBringsTheOldPoseBack_data()
{
    addFigureAndPhaseRows();
}

void TestScanFigure::oneUndoBringsTheOldPoseBack()
{
    QFETCH(QString, figure);
    QFETCH(QString, cancelAt);
    ScanFixture f(figure);
    for (int n = 0; n < 8; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    Random random(77);
    poseAtRandom(&random, f.figure);
    f.figure->getYRotControl()->setValue(90);
    f.figure->getXPosControl()->setValue(33);
    f.rig.undoStack.clearAll();
    const FigureState before = stateOf(f.figure);
    ProgressLog log;
    log.cancelAt() = cancelAt;
    QVERIFY(scanPoses());
    QCOMPARE(log.records().back().cancelled, !cancelAt.isEmpty());
    QVERIFY(!f.rig.undoStack.isLocked());
    QCOMPARE(f.rig.undoStack.getHoldDepth(), 0);
    QCOMPARE(f.rig.undoStack.getUndoCaptions(), names("quillon_stack"));
    for (const FigureBone& each : bonesOf(f.figure))
        QCOMPARE(each.bone->getXRotControl()->getValue(), 0.f);
    const FigureState cleared = stateOf(f.figure);
    QVERIFY(f.rig.undoStack.undo());
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QVERIFY(f.rig.undoStack.redo());
    VERIFY_SAME_STATE(cleared, stateOf(f.figure));
}

void TestScanFigure::aFigureAtRestGetsNoUndoStep()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.figure->getYRotControl()->setValue(45);
    f.rig.undoStack.clearAll();
    const FigureState before = stateOf(f.figure);
    QVERIFY(!scanPoses());
    QCOMPARE(f.rig.undoStack.getNumUndoItems(), 0);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestScanFigure::limitFlagsAreTheUsersAgain()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    const DzNode* free = f.bone("lShin");
    free->getXRotControl()->setIsClamped(false);
    free->getYRotControl()->setIsClamped(false);
    free->getZRotControl()->setIsClamped(false);
    f.bone("rShin")->getXRotControl()->lock(true);
    const FigureState before = stateOf(f.figure);
    ProgressLog log;
    bool wereFree = false;
    log.atChange() = [&](const QString& info) {
        if (info.startsWith(s("Indexing")))
            wereFree = !f.bone("rShin")->getXRotControl()->isClamped()
                && f.bone("lEye")->getXRotControl()->isClamped();
    };
    scanPoses();
    QVERIFY(wereFree);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestScanFigure::keysOfAnAnimatedFigureStay()
{
    ScanFixture f;
    f.add("a.duf", poseNumber(1));
    f.bone("lShin")->getXRotControl()->setValue(0, 0.f);
    f.bone("lShin")->getXRotControl()->setValue(320, 80.f);
    f.bone("rShin")->getXRotControl()->setValue(160, 0.f); // resting at the scan's time
    f.figure->getZPosControl()->setValue(0, 5.f);
    f.figure->getZPosControl()->setValue(320, 50.f);
    f.rig.scene.setTime(160);
    f.rig.undoStack.clearAll();
    const FigureState before = stateOf(f.figure);
    scanPoses();
    QCOMPARE(f.bone("lShin")->getXRotControl()->getValue(320), 80.f); // only this time is cleared
    QCOMPARE(f.bone("lShin")->getXRotControl()->getValue(160), 0.f);
    QCOMPARE(f.bone("hip")->getXRotControl()->getNumKeys(), 0);
    QVERIFY(f.rig.undoStack.undo());
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

QUILLON_TEST(TestScanFigure)
#include "test_scan_figure.moc"
