// Pose files put onto a figure.
#include "pose_fixture.h"
#include "room_tests.h"

#include "posefile/pose_reader.h"

#include "dzgzio.h"

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using namespace quillon;

class TestPoseReader : public QObject {
    Q_OBJECT
private slots:
    void compressedAndPlainGiveTheSamePose();
    void theRootEntryMovesTheFigure();
    void theRootEntryTurnsTheFigureAndTakesNoControl();
    void hipTranslationIsIgnoredHipRotationIsNot();
    void aLockedChannelKeepsItsValueAndTakesItOnceUnlocked();
    void aDrivenChannelStoresTheFilesNumber();
    void noDrivenChannelIsSetBackwards();
    void aControlOutsideTheTableIsIgnored();
    void aMorphIsReachedByItsName();
    void aNonNumberSetsZero_data();
    void aNonNumberSetsZero();
    void scaleAndUnknownNamesAreIgnored();
    void valuesAreSetAtTheScenesTime();
    void entriesBehindTheBufferAreLost();
    void ofAFileOf5MbTheFirstHalfMegabyteIsApplied_data();
    void ofAFileOf5MbTheFirstHalfMegabyteIsApplied();
    void readsAtMost100000Entries();

    void applyNeedsAFigureWithAHip_data();
    void applyNeedsAFigureWithAHip();
    void aSelectedBoneStandsForItsFigure();
    void anUnreadableFileChangesNothing_data();
    void anUnreadableFileChangesNothing();
    void resetComesBeforeTheValues();
    void withoutResetOtherChannelsStay();
    void aFileWithoutEntriesIsRead();
    void aGzipBombAppliesNothing();

    void keyBonesNotMentionedGoToZero();
    void keyBonesAreSetInTheirOrder();
    void theFirstOfTwoKeysCounts();
    void aMissingKeyBoneIsSkipped();
    void unreadableKeyBonesChangeNothing();
};

static bool apply(const PoseFixture& f, const QByteArray& text, bool resetFirst = false)
{
    return applyPoseFile(f.fileWith("pose.duf", text), resetFirst);
}

void TestPoseReader::compressedAndPlainGiveTheSamePose()
{
    const QByteArray text = presetText(QList<QByteArray>()
        << valueEntry("/lShin:?rotation/x", "12.5") << valueEntry("#pCTRLHipBend:?value", "0.25"));
    RawPose poses[2];
    for (int i = 0; i < 2; ++i) {
        PoseFixture f;
        const QString path = f.file("pose.duf");
        if (i == 0)
            writeFile(path, text);
        else
            QVERIFY(writeGzip(path, text));
        QVERIFY(applyPoseFile(path, false));
        QCOMPARE(f.bone("lShin")->getXRotControl()->getRawValue(), 12.5f);
        QCOMPARE(f.control("pCTRLHipBend")->getValue(), 0.25f);
        poses[i] = rawPose(f.figure);
    }
    for (size_t i = 0; i < poses[0].size(); ++i)
        QCOMPARE(poses[0][i].second, poses[1][i].second);
}

void TestPoseReader::theRootEntryMovesTheFigure()
{
    PoseFixture f;
    QVERIFY(apply(f, presetOf(valueEntry(":?translation/y", "15"))));
    QCOMPARE(f.figure->getYPosControl()->getValue(), 15.f);
    QCOMPARE(f.figure->getWSPos().m_y, 15.f);
}

void TestPoseReader::theRootEntryTurnsTheFigureAndTakesNoControl()
{
    PoseFixture f;
    QVERIFY(apply(f,
        presetText(QList<QByteArray>()
            << valueEntry(":?rotation/z", "30") << valueEntry(":?scale/general", "2")
            << valueEntry(":?value", "7"))));
    QCOMPARE(f.figure->getZRotControl()->getValue(), 30.f);
    QCOMPARE(f.figure->getScaleControl()->getValue(), 1.f);
}

void TestPoseReader::hipTranslationIsIgnoredHipRotationIsNot()
{
    PoseFixture f;
    QVERIFY(apply(f,
        presetText(QList<QByteArray>()
            << valueEntry("/hip:?translation/y", "15") << valueEntry("/hip:?rotation/y", "20"))));
    QCOMPARE(f.bone("hip")->getYPosControl()->getValue(), 0.f);
    QCOMPARE(f.bone("hip")->getYRotControl()->getValue(), 20.f);
}

void TestPoseReader::aLockedChannelKeepsItsValueAndTakesItOnceUnlocked()
{
    PoseFixture f;
    const QByteArray text = presetOf(valueEntry("/lShin:?translation/y", "15"));
    DzFloatProperty* channel = f.bone("lShin")->getYPosControl();
    QVERIFY(channel->isLocked()); // the rig's own lock
    QVERIFY(apply(f, text));
    QCOMPARE(channel->getValue(), 0.f);
    channel->lock(false);
    QVERIFY(apply(f, text));
    QCOMPARE(channel->getValue(), 15.f);
}

// 12.5 in the file is the bone's own share, whether its control comes before or after it.
void TestPoseReader::aDrivenChannelStoresTheFilesNumber()
{
    const QByteArray bone = valueEntry("/lShin:?rotation/x", "12.5");
    const QByteArray control = valueEntry("#pCTRLKneesUpLeft:?value", "0.5");
    float finals[2];
    for (int i = 0; i < 2; ++i) {
        PoseFixture f;
        DzFloatProperty* channel = f.bone("lShin")->getXRotControl();
        QVERIFY(channel->hasControllers());
        QVERIFY(apply(f,
            presetText(i == 0 ? QList<QByteArray>() << bone << control
                              : QList<QByteArray>() << control << bone)));
        QCOMPARE(channel->getRawValue(), 12.5f);
        finals[i] = channel->getValue();
        QVERIFY(finals[i] > 13);
    }
    QCOMPARE(finals[0], finals[1]);
}

// So that it makes no difference how a host works its way through controllers.
void TestPoseReader::noDrivenChannelIsSetBackwards()
{
    PoseFixture f;
    const QString driven
        = f.fileWith("driven.duf", presetOf(valueEntry("/lShin:?rotation/x", "1")));
    const QString free = f.fileWith("free.duf", presetOf(valueEntry("/lHand:?rotation/x", "1")));
    const HostCallLog log;
    QVERIFY(applyPoseFile(driven, false));
    QVERIFY(!log.names().contains("setValue"));
    QVERIFY(applyPoseFile(free, false));
    QVERIFY(log.names().contains("setValue"));
}

void TestPoseReader::aControlOutsideTheTableIsIgnored()
{
    PoseFixture f; // Genesis 8: facs_ names are of the other generation
    DzFloatProperty* stranger = new DzFloatProperty(QLatin1String("facs_jnt_JawOpen"));
    f.figure->addProperty(stranger);
    QVERIFY(apply(f,
        presetText(QList<QByteArray>() << valueEntry("#facs_jnt_JawOpen:?value", "1")
                                       << valueEntry("#pCTRLArmsUpLeft:?value", "0.5"))));
    QCOMPARE(stranger->getValue(), 0.f);
    QCOMPARE(f.control("pCTRLArmsUpLeft")->getValue(), 0.5f);
}

void TestPoseReader::aMorphIsReachedByItsName()
{
    PoseFixture f(QLatin1String("Genesis8_1Female"));
    QVERIFY(apply(f, presetOf(valueEntry("#facs_bs_MouthSmileLeft_div2:?value", "0.75"))));
    QVERIFY(!f.figure->findProperty(QLatin1String("facs_bs_MouthSmileLeft_div2")));
    QCOMPARE(f.control("facs_bs_MouthSmileLeft_div2")->getValue(), 0.75f);
}

void TestPoseReader::aNonNumberSetsZero_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("word") << QByteArray("[ [ 0, true ] ]");
    QTest::newRow("string") << QByteArray("[ [ 0, \"12\" ] ]");
    QTest::newRow("interpolation") << QByteArray("[ [ 0, 12, [ \"LINEAR\" ] ] ]");
    QTest::newRow("no key at all") << QByteArray("[ ]");
    QTest::newRow("1e999") << QByteArray("[ [ 0, 1e999 ] ]");
    QTest::newRow("nan") << QByteArray("[ [ 0, nan ] ]");
    QTest::newRow("comma decimal") << QByteArray("[ [ 0, 12,5 ] ]");
}

void TestPoseReader::aNonNumberSetsZero()
{
    QFETCH(QByteArray, keys);
    PoseFixture f;
    DzFloatProperty* channel = f.bone("lShin")->getXRotControl();
    channel->setRawValue(40);
    QVERIFY(apply(f, presetOf(entryText("/lShin:?rotation/x", keys))));
    QCOMPARE(channel->getRawValue(), 0.f);
}

void TestPoseReader::scaleAndUnknownNamesAreIgnored()
{
    PoseFixture f;
    const FigureState before = stateOf(f.figure);
    QVERIFY(apply(f,
        presetText(QList<QByteArray>()
            << valueEntry("/lShin:?scale/x", "2") << valueEntry("/lshin:?rotation/x", "2")
            << valueEntry("/rowerJaw:?rotation/x", "2") << valueEntry("/lShin:?rotation", "2")
            << valueEntry("/pCTRLHipBend:?rotation/x", "2") << valueEntry("#lShin:?value", "2")
            << valueEntry("#pCTRL%20HipBend:?value", "1"))));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestPoseReader::valuesAreSetAtTheScenesTime()
{
    PoseFixture f;
    f.rig.scene.setTime(1600);
    QVERIFY(apply(f, presetOf(valueEntry("/lShin:?rotation/x", "12.5"))));
    const DzFloatProperty* channel = f.bone("lShin")->getXRotControl();
    QCOMPARE(channel->getNumKeys(), 1);
    QCOMPARE(channel->getKeyTime(0), DzTime(1600));
}

void TestPoseReader::entriesBehindTheBufferAreLost()
{
    PoseFixture f;
    const QByteArray first = valueEntry("/lShin:?rotation/x", "1") + ",\n";
    const QByteArray last = valueEntry("/rShin:?rotation/x", "2");
    const int bracket = last.indexOf(']') + 1; // where the entry ends
    const QByteArray full = first + QByteArray(524287 - first.size() - bracket, ' ');
    const QByteArray rest(5000000, ' ');
    QVERIFY(apply(f, full + last + rest)); // the bracket is byte 524,287
    QCOMPARE(f.bone("rShin")->getXRotControl()->getValue(), 2.f);
    QVERIFY(apply(f, full + " " + last + rest, true));
    QCOMPARE(f.bone("lShin")->getXRotControl()->getValue(), 1.f);
    QCOMPARE(f.bone("rShin")->getXRotControl()->getValue(), 0.f);
}

void TestPoseReader::ofAFileOf5MbTheFirstHalfMegabyteIsApplied_data()
{
    QTest::addColumn<bool>("packed");
    QTest::newRow("plain") << false;
    QTest::newRow("gzip") << true;
}

// The same channel again and again: the last entry that counts is seen in its value.
void TestPoseReader::ofAFileOf5MbTheFirstHalfMegabyteIsApplied()
{
    QFETCH(bool, packed);
    static const int kAppliedBytes = 524287;
    QByteArray text = "{\n\t\"scene\" : {\n\t\t\"animations\" : [\n";
    int number = 0, lastApplied = 0;
    for (; text.size() < 5000000; ++number) {
        const QByteArray entry = valueEntry("/lShin:?rotation/x", QByteArray::number(number));
        if (text.size() + entry.indexOf(']') + 1 <= kAppliedBytes)
            lastApplied = number;
        text += entry + ",\n";
    }
    text += valueEntry("/rShin:?rotation/x", "2") + "\n\t\t]\n\t}\n}\n";
    QVERIFY(lastApplied > 1000 && lastApplied < number / 9);

    PoseFixture f;
    const QString path = f.file("pose.duf");
    if (packed)
        QVERIFY(writeGzip(path, text));
    else
        writeFile(path, text);
    QVERIFY(applyPoseFile(path, true));
    QCOMPARE(f.bone("lShin")->getXRotControl()->getRawValue(), float(lastApplied));
    QCOMPARE(f.bone("rShin")->getXRotControl()->getRawValue(), 0.f);
}

static int g_calls = 0;
static void countCall(DzFloatProperty*, DzTime, float)
{
    ++g_calls;
}

void TestPoseReader::readsAtMost100000Entries()
{
    PoseFixture f;
    const QByteArray entry = "\"url\" selection/lShin:?rotation/x/value,0,1]";
    const QByteArray text = entry.repeated(kMaxEntries + 5); // longer than a file can be read
    setPoseText(text.constData(), text.size());
    g_calls = 0;
    applyPoseText(f.figure, 0, countCall);
    QCOMPARE(g_calls, kMaxEntries);
}

// ---- refusals

void TestPoseReader::applyNeedsAFigureWithAHip_data()
{
    QTest::addColumn<QString>("selected");
    QTest::newRow("nothing") << "nothing";
    QTest::newRow("prop") << "prop";
    QTest::newRow("figure without hip") << "hipless";
}

void TestPoseReader::applyNeedsAFigureWithAHip()
{
    QFETCH(QString, selected);
    PoseFixture f;
    f.rig.scene.selectAllNodes(false);
    if (selected == "prop") {
        DzNode* prop = new DzNode(QLatin1String("prop"));
        f.rig.scene.addNode(prop);
        prop->select(true);
        f.rig.scene.setPrimarySelection(prop);
    } else if (selected == "hipless") {
        f.figure->removeBone(f.bone("hip"));
        f.selectFigure();
    } else {
        f.rig.scene.setPrimarySelection(nullptr);
    }
    const FigureState before = stateOf(f.figure);
    QVERIFY(!apply(f, presetOf(valueEntry("/lShin:?rotation/x", "1")), true));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestPoseReader::aSelectedBoneStandsForItsFigure()
{
    PoseFixture f;
    f.selectBones(QStringList() << "lHand");
    QVERIFY(apply(f, presetOf(valueEntry("/rShin:?rotation/x", "7"))));
    QCOMPARE(f.bone("rShin")->getXRotControl()->getValue(), 7.f);
}

void TestPoseReader::anUnreadableFileChangesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "missing.duf";
    QTest::newRow("folder") << ".";
    QTest::newRow("empty file") << "empty.duf";
}

// Neither the values nor the reset.
void TestPoseReader::anUnreadableFileChangesNothing()
{
    QFETCH(QString, name);
    PoseFixture f;
    f.fileWith("empty.duf", QByteArray());
    Random random(5);
    poseAtRandom(&random, f.figure);
    const FigureState before = stateOf(f.figure);
    QVERIFY(!applyPoseFile(f.home.path(name), true));
    QVERIFY(!applyPoseFile(f.home.path(name), false));
    QVERIFY(!readAndApplyPoseFile(f.home.path(name), f.figure, 0));
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

void TestPoseReader::resetComesBeforeTheValues()
{
    PoseFixture f;
    Random random(6);
    poseAtRandom(&random, f.figure);
    QVERIFY(apply(f, presetOf(valueEntry("/lShin:?rotation/x", "12.5")), true));
    for (const auto& each : finalPose(f.figure)) {
        const bool set = each.first == f.bone("lShin")->getXRotControl();
        QVERIFY2(nearly(each.second, set ? 12.5 : 0, 1e-6), qPrintable(channelPath(each.first)));
    }
}

void TestPoseReader::withoutResetOtherChannelsStay()
{
    PoseFixture f;
    f.bone("rShin")->getXRotControl()->setValue(33);
    QVERIFY(apply(f, presetOf(valueEntry("/lShin:?rotation/x", "12.5"))));
    QCOMPARE(f.bone("rShin")->getXRotControl()->getValue(), 33.f);
}

void TestPoseReader::aFileWithoutEntriesIsRead()
{
    PoseFixture f;
    f.bone("rShin")->getXRotControl()->setValue(33);
    QVERIFY(apply(f, "{ }\n"));
    QCOMPARE(f.bone("rShin")->getXRotControl()->getValue(), 33.f);
    QVERIFY(apply(f, "x", true)); // one byte, which the terminator replaces: still read
    QCOMPARE(f.bone("rShin")->getXRotControl()->getValue(), 0.f);
}

// 1 GB of zero bytes in 1 MB, one gzip stream, and an entry behind them.
static bool writeBomb(const QString& path)
{
    static const int kPieceBytes = 1 << 20, kPieces = 1024;
    QFile file(path);
    DzGzIO gzip(&file);
    if (!gzip.open(QIODevice::WriteOnly))
        return false;
    const QByteArray zeros(kPieceBytes, '\0');
    bool written = true;
    for (int i = 0; i < kPieces && written; ++i)
        written = gzip.write(zeros) == kPieceBytes;
    gzip.write(presetOf(valueEntry("/lShin:?rotation/x", "1")));
    gzip.close();
    return written;
}

#ifdef Q_OS_UNIX
static long peakMemoryKb()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}
#else
static long peakMemoryKb()
{
    return 0;
}
#endif

void TestPoseReader::aGzipBombAppliesNothing()
{
    PoseFixture f;
    const QString path = f.file("bomb.duf");
    QVERIFY(writeBomb(path));
    QVERIFY(QFileInfo(path).size() < 2 << 20);
    const FigureState before = stateOf(f.figure);
    const long memoryBefore = peakMemoryKb();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(applyPoseFile(path, false));
    QVERIFY2(clock.elapsed() < 2000, "only what fits the buffer is unpacked");
    QVERIFY(peakMemoryKb() - memoryBefore < 8 << 10);
    VERIFY_SAME_STATE(before, stateOf(f.figure));
}

// ---- key bones

void TestPoseReader::keyBonesNotMentionedGoToZero()
{
    PoseFixture f;
    clearAllLocks(f.figure);
    for (const char* name : kKeyBones) {
        for (DzFloatProperty* channel : poseChannelsOf(f.bone(name)).channel)
            channel->setRawValue(3);
    }
    f.bone("head")->getXRotControl()->setRawValue(3);
    const QString path = f.fileWith("pose.duf", presetOf(valueEntry("/lShin:?rotation/x", "12.5")));
    QVERIFY(readKeyBoneRotations(path, f.figure, 0));
    for (const char* name : kKeyBones) {
        const PoseChannels channels = poseChannelsOf(f.bone(name));
        for (int i = 0; i < kPoseChannelCount; ++i) {
            const bool mentioned = i == 0 && qstrcmp(name, "lShin") == 0;
            const float expected = i >= 3 ? 3.f : mentioned ? 12.5f : 0.f;
            QVERIFY2(channels.channel[i]->getRawValue() == expected, name);
        }
    }
    QCOMPARE(f.bone("head")->getXRotControl()->getRawValue(), 3.f); // no key bone
}

void TestPoseReader::keyBonesAreSetInTheirOrder()
{
    PoseFixture f;
    const QByteArray text = presetOf(valueEntry("/hip:?rotation/y", "9"));
    setPoseText(text.constData(), text.size());
    setCalls().clear();
    applyKeyBoneText(f.figure, 320, recordCall);
    QCOMPARE(setCalls().size(), size_t(3 * kKeyBoneCount));
    QCOMPARE(callText(setCalls(), 0), QString("lShin/XRotate = 0 at 320"));
    QCOMPARE(callText(setCalls(), 46), QString("hip/YRotate = 9 at 320"));
}

void TestPoseReader::theFirstOfTwoKeysCounts()
{
    PoseFixture f;
    const QString path = f.fileWith("pose.duf",
        presetText(QList<QByteArray>()
            << valueEntry("/lShin:?rotation/x", "1") << valueEntry("/lShin:?rotation/x", "2")));
    QVERIFY(readKeyBoneRotations(path, f.figure, 0));
    QCOMPARE(f.bone("lShin")->getXRotControl()->getValue(), 1.f);
    QVERIFY(readAndApplyPoseFile(path, f.figure, 0)); // here the last one does
    QCOMPARE(f.bone("lShin")->getXRotControl()->getValue(), 2.f);
}

void TestPoseReader::aMissingKeyBoneIsSkipped()
{
    PoseFixture f;
    f.figure->removeBone(f.bone("lCollar"));
    const QString path = f.fileWith("pose.duf", presetOf(valueEntry("/hip:?rotation/x", "4")));
    QVERIFY(readKeyBoneRotations(path, f.figure, 0));
    QCOMPARE(f.bone("hip")->getXRotControl()->getValue(), 4.f);
}

void TestPoseReader::unreadableKeyBonesChangeNothing()
{
    PoseFixture f;
    f.bone("lShin")->getXRotControl()->setValue(33);
    QVERIFY(!readKeyBoneRotations(f.file("missing.duf"), f.figure, 0));
    QCOMPARE(f.bone("lShin")->getXRotControl()->getValue(), 33.f);
}

QUILLON_TEST(TestPoseReader)
#include "test_pose_reader.moc"
