// What goes with a swap: the hip's translation, the temporary files, undo, locks, time.
#include "pose_fixture.h"
#include "room_tests.h"

#include "figure/hip_centre.h"
#include "ground/file_lock.h"
#include "ground/plugin_settings.h"
#include "posefile/pose_writer.h"
#include "posefile/swap_symmetrize.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace quillon;

class TestSwapAround : public QObject {
    Q_OBJECT
private slots:
    void theHipsTranslationMovesOntoTheFigure();
    void aPoseWithoutHipTranslationLeavesTheFigureAlone();
    void aLockedFigureKeepsTheHipsTranslation();
    void noHipMeansNothingHappens();
    void noFileIsLeftAfterSuccess();
    void partLocksHoldWhereTheyAreAskedFor_data();
    void partLocksHoldWhereTheyAreAskedFor();
    void aFailedApplyLeavesBothFiles();
    void leftoversOfAFailureAreNotApplied();
    void anotherHostsFilesAreNotTouched();
    void linksInTheirPlaceAreNotWrittenThrough();
    void aFullDiskAppliesNoOlderFile();
    void anUnusableTempFolderChangesNothing_data();
    void anUnusableTempFolderChangesNothing();
    void oneBoneAtFrameTenKeysTwoChannels_data();
    void oneBoneAtFrameTenKeysTwoChannels();
    void onlyWhatChangesIsWritten_data();
    void onlyWhatChangesIsWritten();
    void undoBringsBackEveryBitInOneStep_data();
    void undoBringsBackEveryBitInOneStep();
    void everyLockStaysAsItWas();
    void valuesAreThoseOfTheScenesTime();
};

// ---- the hip

void TestSwapAround::theHipsTranslationMovesOntoTheFigure()
{
    PoseFixture f;
    f.figure->setWSPos(DzVec3(100, 5, -30));
    f.figure->getYRotControl()->setValue(40);
    f.bone("hip")->setLocalPos(DzVec3(10, -20, 30));
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    f.selectBones(QStringList() << "LipBelow");
    swapOrSymmetrize(f.figure, SelectedBonesOnly, f.time(), false);
    QVERIFY(f.bone("hip")->getLocalPos() == DzVec3(0, 0, 0));
    VERIFY_NONE(firstMoved(f.figure, before, 1e-4, 1e-4));
    QVERIFY(distance(f.figure->getWSPos(), DzVec3(100, 5, -30)) > 30);
}

void TestSwapAround::aPoseWithoutHipTranslationLeavesTheFigureAlone()
{
    PoseFixture f;
    hipAsCentre(f.figure, f.bone("hip"), f.time());
    QCOMPARE(f.figure->getXPosControl()->getNumKeys(), 0);
    QCOMPARE(f.bone("hip")->getXPosControl()->getNumKeys(), 0);
}

void TestSwapAround::aLockedFigureKeepsTheHipsTranslation()
{
    PoseFixture f;
    f.bone("hip")->setLocalPos(DzVec3(10, -20, 30));
    f.figure->getXPosControl()->lock(true);
    const std::vector<WorldPlace> before = worldPlaces(f.figure);
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
    VERIFY_NONE(firstMoved(f.figure, before, 1e-4, 1e-4));
}

void TestSwapAround::noHipMeansNothingHappens()
{
    PoseFixture f;
    f.figure->removeBone(f.bone("hip"));
    f.selectFigure();
    f.bone("lShin")->getXRotControl()->setValue(10);
    const FigureState before = stateOf(f.figure);
    QVERIFY(!swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false));
    QVERIFY(!swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), true));
    QVERIFY(!mirrorWholePose(f.figure, f.time()));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QVERIFY(f.tempFiles().isEmpty());
}

// ---- the temporary files

static const char kTemp1[] = "qlntemp_0DE54EF1.duf";
static const char kTemp2[] = "qlntemp_0DE54EF2.duf";

void TestSwapAround::noFileIsLeftAfterSuccess()
{
    PoseFixture f;
    QVERIFY(applyThroughTempFiles(f.figure, true, false, false, true, true));
    QVERIFY(f.tempFiles().isEmpty());
}

void TestSwapAround::partLocksHoldWhereTheyAreAskedFor_data()
{
    QTest::addColumn<bool>("useLocks");
    QTest::newRow("with locks") << true;
    QTest::newRow("without") << false;
}

void TestSwapAround::partLocksHoldWhereTheyAreAskedFor()
{
    QFETCH(bool, useLocks);
    PoseFixture f;
    std::fill_n(pluginSettings().partLocks, kPartLockCount, true);
    const DzFloatProperty* bend = f.bone("lShin")->getXRotControl();
    f.bone("lShin")->getXRotControl()->setValue(20);
    QVERIFY(applyThroughTempFiles(f.figure, true, useLocks, false, true, true));
    std::fill_n(pluginSettings().partLocks, kPartLockCount, false);
    QCOMPARE(bend->getValue(), useLocks ? 20.f : 0.f);
    QVERIFY(!bend->isLocked());
}

void TestSwapAround::aFailedApplyLeavesBothFiles()
{
    PoseFixture f;
    f.bone("hip")->setName(QLatin1String("notHip")); // refused by applying, not by writing
    const FigureState before = stateOf(f.figure);
    QVERIFY(!applyThroughTempFiles(f.figure, true, true, false, true, true));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QCOMPARE(f.tempFiles(), QStringList() << kTemp1 << kTemp2);
    f.bone("notHip")->setName(QLatin1String("hip"));
    QVERIFY(applyThroughTempFiles(f.figure, true, true, false, true, true)); // writes over them
    QVERIFY(f.tempFiles().isEmpty());
}

void TestSwapAround::leftoversOfAFailureAreNotApplied()
{
    PoseFixture f;
    const QString temp = f.app.getTempPath() + "/";
    writeFile(temp + kTemp2, presetOf(valueEntry("/lShin:?rotation/x", "77")));
    QDir().mkpath(temp + kTemp1); // so that nothing can be written there
    const FigureState before = stateOf(f.figure);
    QVERIFY(!applyThroughTempFiles(f.figure, true, false, false, true, true));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestSwapAround::anotherHostsFilesAreNotTouched()
{
    PoseFixture f;
    const QString temp = f.app.getTempPath() + "/";
    writeFile(temp + kTemp1, "the other's");
    const FigureState before = stateOf(f.figure);
    {
        const FileLock other(temp + kTemp1 + ".lock", 0);
        QVERIFY(other.isHeld());
        QVERIFY(!applyThroughTempFiles(f.figure, true, true, false, true, true));
        QCOMPARE(fileBytes(temp + kTemp1), QByteArray("the other's"));
    }
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QVERIFY(applyThroughTempFiles(f.figure, true, true, false, true, true));
    QVERIFY(f.tempFiles().isEmpty());
}

void TestSwapAround::linksInTheirPlaceAreNotWrittenThrough()
{
#ifdef Q_OS_UNIX
    PoseFixture f;
    const QString temp = f.app.getTempPath() + "/";
    writeFile(f.file("mine.txt"), "mine");
    QVERIFY(QFile::link(f.file("mine.txt"), temp + kTemp1));
    QVERIFY(QFile::link(f.file("mine.txt"), temp + kTemp2));
    QVERIFY(applyThroughTempFiles(f.figure, true, false, false, true, true));
    QFile mine(f.file("mine.txt"));
    QVERIFY(mine.open(QIODevice::ReadOnly));
    QCOMPARE(mine.readAll(), QByteArray("mine"));
    QVERIFY(f.tempFiles().isEmpty());
#endif
}

// The mirrored file, longer by its signs, does not fit; one of an earlier command lies in its
// place.
void TestSwapAround::aFullDiskAppliesNoOlderFile()
{
#ifdef Q_OS_UNIX
    PoseFixture f;
    for (const FigureBone& each : bonesOf(f.figure))
        each.bone->getYRotControl()->setValue(1);
    QVERIFY(writePoseFile(f.file("pose.duf"), false, false));
    const FigureState before = stateOf(f.figure);
    const QString older = f.app.getTempPath() + "/" + kTemp2;
    writeFile(older, presetOf(valueEntry("/lShin:?rotation/x", "77")));
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit;
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit small = {rlim_t(QFileInfo(f.file("pose.duf")).size()), limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool applied = applyThroughTempFiles(f.figure, true, false, false, true, true);
    setrlimit(RLIMIT_FSIZE, &limit);
    QVERIFY(!applied);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
#endif
}

enum class Unusable { FileInItsPlace, Missing, WrittenFile, RewrittenFile };

// One bone, or with an empty name the whole figure.
void TestSwapAround::anUnusableTempFolderChangesNothing_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<int>("unusable");
    for (const char* selected : {"", "lShldrBend", "hip"}) {
        const QByteArray start = QByteArray(*selected ? selected : "whole figure") + ", ";
        QTest::newRow(start + "a file in its place")
            << QString(selected) << int(Unusable::FileInItsPlace);
        QTest::newRow(start + "missing") << QString(selected) << int(Unusable::Missing);
        QTest::newRow(start + "no room for the pose")
            << QString(selected) << int(Unusable::WrittenFile);
        QTest::newRow(start + "no room for the mirrored pose")
            << QString(selected) << int(Unusable::RewrittenFile);
    }
}

static void spoilTempFolder(const PoseFixture& f, Unusable how)
{
    const QString temp = f.app.getTempPath();
    if (how == Unusable::WrittenFile)
        QDir().mkpath(temp + "/" + kTemp1);
    else if (how == Unusable::RewrittenFile)
        QDir().mkpath(temp + "/" + kTemp2);
    else
        QDir().rmdir(temp);
    if (how == Unusable::FileInItsPlace)
        writeFile(temp, "a regular file");
}

void TestSwapAround::anUnusableTempFolderChangesNothing()
{
    QFETCH(QString, selected);
    QFETCH(int, unusable);
    PoseFixture f;
    spoilTempFolder(f, Unusable(unusable));
    Random random(64);
    poseAtRandom(&random, f.figure); // with a hip translation
    if (!selected.isEmpty())
        f.selectBones(QStringList() << selected);
    pluginSettings().partLocks[0] = true;
    f.rig.scene.setTime(1600); // so that a value set to what it was leaves a key
    const FigureState before = stateOf(f.figure);
    QVERIFY(!swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QVERIFY(!swapOrSymmetrize(f.figure, SelectedBonesOnly, f.time(), true));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QVERIFY(!mirrorWholePose(f.figure, f.time()));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    pluginSettings() = PluginSettings();
}

// ---- what is written

void TestSwapAround::oneBoneAtFrameTenKeysTwoChannels_data()
{
    QTest::addColumn<bool>("symmetrize");
    QTest::newRow("swap") << false;
    QTest::newRow("symmetrize") << true;
}

void TestSwapAround::oneBoneAtFrameTenKeysTwoChannels()
{
    QFETCH(bool, symmetrize);
    PoseFixture f;
    f.bone("rForearmBend")->getYRotControl()->setValue(30);
    f.bone("lShin")->getXRotControl()->setValue(12.3456793f); // more digits than the file holds
    f.rig.scene.setTime(1600);
    f.selectBones(QStringList() << "lForearmBend");
    FigureState expected = stateOf(f.figure);
    for (ChannelState& each : expected) {
        const bool left = each.path == "lForearmBend/YRotate";
        if (!left && (symmetrize || each.path != "rForearmBend/YRotate"))
            continue;
        if (left)
            each.keys = {{0, 0.f}, {1600, -30.f}};
        else
            each.keys.push_back({1600, 0.f});
        each.value = left ? -30.f : 0.f;
    }
    QVERIFY(swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), symmetrize));
    FigureState after = stateOf(f.figure);
    for (ChannelState& each : after) {
        if (each.path == "lForearmBend/YRotate" && each.keys.size() == 1)
            each.keys.insert(each.keys.begin(), {0, 0.f}); // the channel had no key
    }
    VERIFY_SAME_STATE(expected, after);
}

enum class Command { ThisBone, Bones, Symmetrize, WholeFigure, Mirror, MirrorWithLocks };

void TestSwapAround::onlyWhatChangesIsWritten_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("ticks");
    const std::pair<const char*, Command> rows[] = {{"swap of a bone", Command::ThisBone},
        {"swap of bones with those below", Command::Bones},
        {"symmetrize of bones with those below", Command::Symmetrize},
        {"swap of the figure", Command::WholeFigure}, {"mirroring", Command::Mirror},
        {"mirroring with locked parts", Command::MirrorWithLocks}};
    for (const auto& row : rows) {
        QTest::newRow(row.first) << int(row.second) << 0;
        QTest::newRow(qPrintable(QString("%1, at frame 10").arg(row.first)))
            << int(row.second) << 1600;
    }
}

static bool run(const PoseFixture& f, Command command)
{
    if (command == Command::Mirror || command == Command::MirrorWithLocks)
        return mirrorWholePose(f.figure, f.time());
    const int kind = command == Command::ThisBone ? SelectedBonesOnly : BonesBelowToo;
    return swapOrSymmetrize(f.figure, kind, f.time(), command == Command::Symmetrize);
}

// A channel whose keys are others has another value, too, and not only in the last of its digits.
void TestSwapAround::onlyWhatChangesIsWritten()
{
    QFETCH(int, command);
    QFETCH(int, ticks);
    for (unsigned seed = 1; seed <= 8; ++seed) {
        PoseFixture f(kTestFigures[seed % 4]);
        Random random(seed);
        poseAtRandom(&random, f.figure);
        f.bone("hip")->setLocalPos(DzVec3(0, 0, 0));
        f.rig.scene.setTime(ticks);
        if (Command(command) < Command::WholeFigure)
            f.selectBones(QStringList() << boneName(random.below(kBoneCount)) << "lThighBend");
        for (bool& each : pluginSettings().partLocks)
            each = Command(command) == Command::MirrorWithLocks && random.below(2) == 0;
        const RawPose raw = rawPose(f.figure);
        const FigureState before = stateOf(f.figure);
        QVERIFY(run(f, Command(command)));
        const FigureState after = stateOf(f.figure);
        int written = 0;
        for (const auto& each : raw)
            written += each.first->getRawValue() != each.second;
        QVERIFY(written > 0);
        for (size_t i = 0; i < before.size(); ++i) {
            if (before[i].keys == after[i].keys)
                continue;
            const double was = double(before[i].keys.empty() ? 0.f : before[i].keys.front().second);
            QVERIFY2(!nearly(was, before[i].property->getRawValue(), 1e-5),
                qPrintable(before[i].path + QString(" was %1").arg(was, 0, 'g', 9)));
        }
    }
    pluginSettings() = PluginSettings();
}

// ---- undo, locks, time

void TestSwapAround::undoBringsBackEveryBitInOneStep_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<bool>("symmetrize");
    QTest::newRow("swap of the figure") << "" << false;
    QTest::newRow("swap of an arm") << "lShldrBend" << false;
    QTest::newRow("symmetrize of a leg") << "rThighBend" << true;
}

void TestSwapAround::undoBringsBackEveryBitInOneStep()
{
    QFETCH(QString, selected);
    QFETCH(bool, symmetrize);
    PoseFixture f;
    Random random(65);
    poseAtRandom(&random, f.figure);
    if (!selected.isEmpty())
        f.selectBones(QStringList() << selected);
    f.rig.undoStack.clearAll();
    const FigureState before = stateOf(f.figure);
    {
        DzUndoStackHold hold;
        swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), symmetrize);
        hold.accept("quillon_stack");
    }
    const FigureState after = stateOf(f.figure);
    QVERIFY(!firstDifference(before, after).isEmpty());
    QCOMPARE(f.rig.undoStack.getNumUndoItems(), 1);
    QVERIFY(f.rig.undoStack.undo());
    VERIFY_SAME_STATE(before, stateOf(f.figure));
    QVERIFY(f.rig.undoStack.redo());
    VERIFY_SAME_STATE(after, stateOf(f.figure));
}

void TestSwapAround::everyLockStaysAsItWas()
{
    PoseFixture f;
    Random random(66);
    poseAtRandom(&random, f.figure);
    lockAtRandom(&random, f.figure, 60);
    const FigureState before = stateOf(f.figure);
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
    f.selectBones(QStringList() << "lThighBend"
                                << "head");
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), true);
    const FigureState after = stateOf(f.figure);
    for (size_t i = 0; i < before.size(); ++i) {
        QVERIFY2(before[i].locked == after[i].locked, qPrintable(before[i].path));
        QVERIFY2(before[i].clamped == after[i].clamped, qPrintable(before[i].path));
        QVERIFY2(!before[i].locked || before[i].keys == after[i].keys, qPrintable(before[i].path));
    }
}

void TestSwapAround::valuesAreThoseOfTheScenesTime()
{
    PoseFixture f;
    DzFloatProperty *left = f.bone("lShldrBend")->getYRotControl(),
                    *right = f.bone("rShldrBend")->getYRotControl();
    left->setValue(0, 10);
    left->setValue(1600, 20);
    f.rig.scene.setTime(1600);
    swapOrSymmetrize(f.figure, BonesBelowToo, f.time(), false);
    QCOMPARE(right->getValue(1600), -20.f);
    QCOMPARE(left->getValue(1600), 0.f);
    QCOMPARE(left->getValue(0), 10.f);
}

QUILLON_TEST(TestSwapAround)
#include "test_swap_around.moc"
