// The mirror rules and the file around them.
#include "full_pipe.h"
#include "rewrite_fixture.h"
#include "room_tests.h"

#include "ground/data_folder.h"
#include "posefile/pose_writer.h"

using namespace quillon;

class TestPoseRewriter : public QObject {
    Q_OBJECT
private slots:
    void mirrorRules_data();
    void mirrorRules();
    void mirrorTwiceIsIdentity_data();
    void mirrorTwiceIsIdentity();
    void aZeroIsNeverGivenASign_data();
    void aZeroIsNeverGivenASign();
    void otherKeysAreNotNegated_data();
    void otherKeysAreNotNegated();
    void facialRulesNeedTheFace();
    void knownNames_data();
    void knownNames();

    void theHeadIsCopiedAsItIs();
    void blocksOfFourLinesAreKept();
    void rewrittenTwiceIsTheSameFile();
    void anIncompleteBlockIsCopied();
    void lineEndsBecomeLineFeeds();
    void anUnreadableInputLeavesAnEmptyOutput();
    void anUnwritableOutputIsRefused();
    void aPipeIsNoFileToRewrite();
    void figureEntriesAreNeverMirrored();
};

static void setGeneration(bool genesis81)
{
    const DzFigure figure(QLatin1String(genesis81 ? "Genesis8_1Male" : "Genesis8Male"));
    QVERIFY(isSupportedFigure(&figure));
}

// ---- rules

void TestPoseRewriter::mirrorRules_data()
{
    QTest::addColumn<bool>("genesis81");
    QTest::addColumn<QByteArray>("url");
    QTest::addColumn<QByteArray>("mirroredUrl");
    QTest::addColumn<QByteArray>("mirroredValue"); // of 30
    const QByteArray same = "30", other = "-30";
    auto row = [](const char* name, const char* url, const char* mirrored, const QByteArray& value,
                   bool genesis81 = false) {
        QTest::newRow(name) << genesis81 << QByteArray(url) << QByteArray(mirrored) << value;
    };
    row("translation x", "/lHand:?translation/x", "/rHand:?translation/x", other);
    row("translation y", "/lHand:?translation/y", "/rHand:?translation/y", same);
    row("translation z", "/rHand:?translation/z", "/lHand:?translation/z", same);
    row("rotation x", "/lShldrBend:?rotation/x", "/rShldrBend:?rotation/x", same);
    row("rotation y", "/lShldrBend:?rotation/y", "/rShldrBend:?rotation/y", other);
    row("rotation z", "/rShldrBend:?rotation/z", "/lShldrBend:?rotation/z", other);
    row("unsided bone", "/chestUpper:?rotation/z", "/chestUpper:?rotation/z", other);
    row("the jaw becomes nothing", "/lowerJaw:?rotation/x", "/rowerJaw:?rotation/x", same);
    row("capital L is no side", "/LipBelow:?translation/x", "/LipBelow:?translation/x", other);
    row("left hand control", "#pCTRLlHandFist:?value", "#pCTRLrHandFist:?value", same);
    row("right foot control", "#pCTRLrFootRoll:?value", "#pCTRLlFootRoll:?value", same);
    row("left breast side to side", "#pCTRLlBreastSide-Side:?value",
        "#pCTRLrBreastSide-Side:?value", same);
    row("knees", "#pCTRLKneesUpLeft:?value", "#pCTRLKneesUpRight:?value", same);
    row("both knees", "#pCTRLKneesUp:?value", "#pCTRLKneesUp:?value", same);
    row("biceps", "#pCTRLFlexBiceps_twist_R:?value", "#pCTRLFlexBiceps_twist_L:?value", same);
    row("waist twist", "#pCTRLWaistTwist:?value", "#pCTRLWaistTwist:?value", other);
    row("neck", "#pCTRLNeckHeadSide-Side:?value", "#pCTRLNeckHeadSide-Side:?value", other);
    row("breasts", "#pCTRLBreastsSide-Side:?value", "#pCTRLBreastsSide-Side:?value", other);
    row("waist bend", "#pCTRLWaistBend:?value", "#pCTRLWaistBend:?value", same);
    row("Genesis 8 eyes", "#eCTRLEyesClosedR:?value", "#eCTRLEyesClosedL:?value", same);
    row("Genesis 8 brow", "#eCTRLBrowInnerUp-DownL:?value", "#eCTRLBrowInnerUp-DownR:?value", same);
    row("Genesis 8 eyes to the side", "#eCTRLEyesSideSide:?value", "#eCTRLEyesSideSide:?value",
        other);
    row("Genesis 8 mouth to the side, paired", "#eCTRLMouthSide-SideL:?value",
        "#eCTRLMouthSide-SideR:?value", same);
    row("Genesis 8 mouth to the side", "#eCTRLMouthSide-Side:?value", "#eCTRLMouthSide-Side:?value",
        other);
    row("Genesis 8 viseme", "#eCTRLvER:?value", "#eCTRLvER:?value", same);
    row("8.1 smile", "#facs_bs_MouthSmileLeft_div2:?value", "#facs_bs_MouthSmileRight_div2:?value",
        same, true);
    row("8.1 eyes to the side", "#facs_ctrl_EyeLookSide-Side:?value",
        "#facs_ctrl_EyeLookSide-Side:?value", other, true);
    row("8.1 one eye to the side: paired goes first", "#facs_ctrl_EyeLookSide-SideRight:?value",
        "#facs_ctrl_EyeLookSide-SideLeft:?value", same, true);
    row("8.1 jaw", "#facs_jnt_JawLeft:?value", "#facs_jnt_JawRight:?value", same, true);
    row("8.1 eyes closed", "#eCTRLEyesClosedR:?value", "#eCTRLEyesClosedR:?value", same, true);
    row("scale", "/lHand:?scale/x", "/lHand:?scale/x", same);
}

void TestPoseRewriter::mirrorRules()
{
    QFETCH(bool, genesis81);
    QFETCH(QByteArray, url);
    QFETCH(QByteArray, mirroredUrl);
    QFETCH(QByteArray, mirroredValue);
    setGeneration(genesis81);
    QByteArray u = urlLine(url), k = keysLine("30");
    mirrorEntry(&u, &k, true);
    QCOMPARE(u, urlLine(mirroredUrl));
    QCOMPARE(k, keysLine(mirroredValue));
}

void TestPoseRewriter::mirrorTwiceIsIdentity_data()
{
    mirrorRules_data();
}

void TestPoseRewriter::mirrorTwiceIsIdentity()
{
    QFETCH(bool, genesis81);
    QFETCH(QByteArray, url);
    setGeneration(genesis81);
    for (const char* value : {"30", "-30", "-0.0", "0.0", "-1e-07"}) {
        QByteArray u = urlLine(url), k = keysLine(value);
        mirrorEntry(&u, &k, true);
        if (url.startsWith("/lowerJaw"))
            QCOMPARE(u, urlLine("/rowerJaw:?rotation/x"));
        mirrorEntry(&u, &k, true);
        QCOMPARE(u, urlLine(url));
        QCOMPARE(k, keysLine(value));
    }
}

void TestPoseRewriter::aZeroIsNeverGivenASign_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QByteArray>("mirrored");
    QTest::newRow("0") << keysLine("0") << keysLine("0");
    QTest::newRow("0.0 is text like any other") << keysLine("0.0") << keysLine("-0.0");
    QTest::newRow("-0.0") << keysLine("-0.0") << keysLine("0.0");
    QTest::newRow("-0") << keysLine("-0") << keysLine("0");
}

void TestPoseRewriter::aZeroIsNeverGivenASign()
{
    QFETCH(QByteArray, keys);
    QByteArray url = urlLine("/lHand:?rotation/y");
    mirrorEntry(&url, &keys, true);
    QTEST(keys, "mirrored");
}

void TestPoseRewriter::otherKeysAreNotNegated_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("other blanks") << QByteArray("\"keys\": [[0, 30]]");
    QTest::newRow("another time") << QByteArray("\"keys\" : [ [ 1, 30 ] ]");
    QTest::newRow("no keys") << QByteArray("\"notes\" : [ [ 0, 30 ] ]");
    QTest::newRow("empty") << QByteArray();
}

void TestPoseRewriter::otherKeysAreNotNegated()
{
    QFETCH(QByteArray, keys);
    QByteArray url = urlLine("/lHand:?rotation/y"), k = keys;
    mirrorEntry(&url, &k, true);
    QCOMPARE(k, keys);
    QCOMPARE(url, urlLine("/rHand:?rotation/y"));
}

void TestPoseRewriter::facialRulesNeedTheFace()
{
    for (bool genesis81 : {false, true}) {
        setGeneration(genesis81);
        for (const char* url : {"#eCTRLEyesClosedR:?value", "#eCTRLJawSide-Side:?value",
                 "#facs_jnt_JawLeft:?value", "#facs_ctrl_EyeLookSide-Side:?value"}) {
            QByteArray u = urlLine(url), k = keysLine("30");
            mirrorEntry(&u, &k, false);
            QCOMPARE(u, urlLine(url));
            QCOMPARE(k, keysLine("30"));
        }
        QByteArray u = urlLine("#pCTRLArmsUpLeft:?value"), k = keysLine("30");
        mirrorEntry(&u, &k, false);
        QCOMPARE(u, urlLine("#pCTRLArmsUpRight:?value"));
    }
}

void TestPoseRewriter::knownNames_data()
{
    QTest::addColumn<bool>("genesis81");
    QTest::addColumn<QByteArray>("url");
    QTest::addColumn<QString>("name");
    QTest::newRow("bone") << false << QByteArray("/lHand:?rotation/x") << "lHand";
    QTest::newRow("control") << false << QByteArray("#eCTRLvAA:?value") << "eCTRLvAA";
    QTest::newRow("of the other generation") << true << QByteArray("#eCTRLvAA:?value") << "";
    QTest::newRow("scale") << false << QByteArray("/lHand:?scale/x") << "";
    QTest::newRow("figure node") << false << QByteArray(":?rotation/x") << "";
    QTest::newRow("unknown bone") << false << QByteArray("/rowerJaw:?rotation/x") << "";
}

void TestPoseRewriter::knownNames()
{
    QFETCH(bool, genesis81);
    QFETCH(QByteArray, url);
    setGeneration(genesis81);
    QTEST(knownNodeNameOf(QString::fromLatin1(urlLine(url))), "name");
}

// ---- files

void TestPoseRewriter::theHeadIsCopiedAsItIs()
{
    PoseFixture f;
    QCOMPARE(rewritten(f, kHead, all()), QByteArray(kHead));
    const QByteArray noAnimations = "{\n" + urlLine("/lHand:?rotation/y") + "\n}\n";
    QCOMPARE(rewritten(f, noAnimations, all()), noAnimations);
}

void TestPoseRewriter::blocksOfFourLinesAreKept()
{
    PoseFixture f;
    Random random(3);
    poseAtRandom(&random, f.figure);
    QVERIFY(writePoseFile(f.file("written.duf"), false, false));
    const QByteArray text = fileBytes(f.file("written.duf"));
    const QList<QByteArray> before = text.split('\n');
    const QList<QByteArray> after = rewritten(f, text, all()).split('\n');
    QCOMPARE(after.size(), before.size());
    const int head = 15;
    int changed = 0;
    for (int i = 0; i < before.size(); ++i) {
        const int line = (i - head) % 4;
        const bool mayChange = i >= head && (line == 1 || line == 2);
        QVERIFY2(mayChange || after.at(i) == before.at(i), before.at(i));
        changed += after.at(i) != before.at(i);
    }
    QVERIFY(changed > 1000);
}

// But for the names that the first mirroring made unknown.
void TestPoseRewriter::rewrittenTwiceIsTheSameFile()
{
    PoseFixture f;
    Random random(4);
    poseAtRandom(&random, f.figure);
    QVERIFY(writePoseFile(f.file("written.duf"), false, false));
    const QByteArray text = fileBytes(f.file("written.duf"));
    const QStringList before = entriesOf(text);
    const QStringList after = entriesOf(rewritten(f, rewritten(f, text, all()), all()));
    QCOMPARE(after.size(), before.size());
    int lost = 0;
    for (int i = 0; i < before.size(); ++i) {
        if (before.at(i).startsWith("/lower")) {
            QVERIFY(after.at(i).startsWith("/rower"));
            ++lost;
        } else {
            QCOMPARE(after.at(i), before.at(i));
        }
    }
    QCOMPARE(lost, 3 * kPoseChannelCount); // jaw, teeth and face rig
}

void TestPoseRewriter::anIncompleteBlockIsCopied()
{
    PoseFixture f;
    const QByteArray whole = kHead + block("/lHand:?rotation/y", "30");
    const QByteArray rest = "         {\n" + urlLine("/lHand:?rotation/y") + "\n" + keysLine("30");
    QCOMPARE(rewritten(f, whole + rest, all()),
        kHead + block("/rHand:?rotation/y", "-30") + rest + "\n");
}

void TestPoseRewriter::lineEndsBecomeLineFeeds()
{
    PoseFixture f;
    QByteArray text = kHead + block("/lHand:?rotation/y", "30");
    const QByteArray expected = kHead + block("/rHand:?rotation/y", "-30");
    QCOMPARE(rewritten(f, text.replace("\n", "\r\n"), all()), expected);
}

void TestPoseRewriter::anUnreadableInputLeavesAnEmptyOutput()
{
    PoseFixture f;
    const QString out = f.fileWith("out.duf", "old");
    QVERIFY(!rewritePoseFile(f.file("missing"), out, f.figure, true, false, true, true));
    QVERIFY(QFile::exists(out));
    QCOMPARE(fileBytes(out), QByteArray());
}

void TestPoseRewriter::anUnwritableOutputIsRefused()
{
    PoseFixture f;
    const QString in = f.fileWith("in.duf", kHead);
    QVERIFY(!rewritePoseFile(in, f.file("none/out.duf"), f.figure, true, false, true, true));
    QVERIFY(!rewritePoseFile(in, f.file("temp"), f.figure, true, false, true, true));
}

void TestPoseRewriter::aPipeIsNoFileToRewrite()
{
    PoseFixture f;
    const FullPipe pipe(f.file("pipe.duf"), kHead);
    const QString pipeName = f.file("pipe.duf"), other = f.fileWith("other.duf", kHead);
    QVERIFY(!rewritePoseFile(pipeName, f.file("out.duf"), f.figure, true, false, true, true));
    QVERIFY(!rewritePoseFile(other, pipeName, f.figure, true, false, true, true));
    QVERIFY(pipe.isUntouched());
}

void TestPoseRewriter::figureEntriesAreNeverMirrored()
{
    PoseFixture f;
    const QByteArray text = kHead + block(":?rotation/y", "30") + block(":?translation/x", "5");
    QCOMPARE(rewritten(f, text, all()), text);
}

QUILLON_TEST(TestPoseRewriter)
#include "test_pose_rewriter.moc"
