// Writing the selected figure's pose, and reading it back.
#include "pose_fixture.h"
#include "room_tests.h"

#include "figure/reset_pose.h"
#include "ground/host_gzip.h"
#include "posefile/gzip_file.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_writer.h"
#include "posefile/swap_symmetrize.h"
#include "preset_json.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace quillon;

class TestPoseWriter : public QObject {
    Q_OBJECT
private slots:
    void theLinesAroundTheEntriesAreAsGiven_data();
    void theLinesAroundTheEntriesAreAsGiven();
    void withoutAFigureTheListIsEmpty();
    void everyEntryHasFourLines();
    void entriesStandInTableOrder_data();
    void entriesStandInTableOrder();
    void numbersAreWrittenInGeneralForm_data();
    void numbersAreWrittenInGeneralForm();
    void channelPaths_data();
    void channelPaths();
    void propertiesThatAreNoChannelsAreLeftOut();
    void missingBonesAndControlsAreLeftOut();
    void storedValuesAreWritten();
    void valuesAreThoseOfTheScenesTime();
    void theDecimalPointIsNoMatterOfLocale();
    void compressedHoldsTheSameText();
    void anUnwritablePathLeavesNothing_data();
    void anUnwritablePathLeavesNothing();
    void aFullDiskLeavesTheOldFile();
    void aPassingPoseIsThePlainText();
    void whatCannotBeOpenedIsNotPacked();
    void theFileIsJson();
    void writtenResetAndReadIsTheSamePose_data();
    void writtenResetAndReadIsTheSamePose();
    void theOrderOfEntriesDoesNotMatter_data();
    void theOrderOfEntriesDoesNotMatter();
};

static QByteArray writtenText(const PoseFixture& f, bool male = false)
{
    const QString path = f.file("written.duf");
    return writePoseFile(path, male, false) ? fileBytes(path) : QByteArray();
}

static const char kHead[] = "{\n"
                            "   \"file_version\" : \"0.6.0.0\",\n"
                            "   \"asset_info\" : {\n"
                            "      \"id\" : \"%1\",\n"
                            "      \"type\" : \"preset_pose\",\n"
                            "      \"contributor\" : {\n"
                            "         \"author\" : \"Unknown\",\n"
                            "         \"email\" : \"\",\n"
                            "         \"website\" : \"\"\n"
                            "      },\n"
                            "      \"revision\" : \"1.0\",\n"
                            "      \"modified\" : \"\"\n"
                            "   },\n"
                            "   \"scene\" : {\n"
                            "      \"animations\" : [\n";
static const char kTail[] = "      ]\n   }\n}\n";

static QByteArray head(bool male)
{
    return QString(QLatin1String(kHead)).arg(QLatin1String(male ? "G8M" : "G8F")).toLatin1();
}

void TestPoseWriter::theLinesAroundTheEntriesAreAsGiven_data()
{
    QTest::addColumn<bool>("male");
    QTest::newRow("female") << false;
    QTest::newRow("male") << true;
}

void TestPoseWriter::theLinesAroundTheEntriesAreAsGiven()
{
    QFETCH(bool, male);
    PoseFixture f;
    const QByteArray text = writtenText(f, male);
    const QByteArray first
        = "         {\n"
          "            \"url\" : \"name://@selection/hip:?translation/x/value\",\n"
          "            \"keys\" : [ [ 0, 0 ] ]\n"
          "         },\n";
    const QByteArray last = "         },\n"
                            "         {\n"
                            "            \"url\" : "
                            "\"name://@selection#pPBMrBreastsHangForward:?value/value\",\n"
                            "            \"keys\" : [ [ 0, 0 ] ]\n"
                            "         }\n";
    QVERIFY2(text.startsWith(head(male) + first), text.left(900));
    QVERIFY2(text.endsWith(last + kTail), text.right(400));
}

void TestPoseWriter::withoutAFigureTheListIsEmpty()
{
    PoseFixture f;
    f.rig.scene.selectAllNodes(false);
    QCOMPARE(writtenText(f), head(false) + kTail);
    DzNode* prop = new DzNode(QLatin1String("prop"));
    f.rig.scene.addNode(prop);
    prop->select(true);
    f.rig.scene.setPrimarySelection(prop);
    QCOMPARE(writtenText(f), head(false) + kTail);
}

static QList<QByteArray> entryLines(const QByteArray& text)
{
    return text.mid(head(false).size(), text.size() - head(false).size() - int(sizeof kTail) + 1)
        .split('\n');
}

void TestPoseWriter::everyEntryHasFourLines()
{
    PoseFixture f;
    const QList<QByteArray> lines = entryLines(writtenText(f));
    const int entries = kBoneCount * kPoseChannelCount + kControlCountG8;
    QCOMPARE(lines.size(), 4 * entries + 1); // and what is behind the last line feed: nothing
    for (int i = 0; i + 1 < lines.size(); i += 4) {
        QCOMPARE(lines.at(i), QByteArray("         {"));
        QVERIFY(lines.at(i + 1).startsWith("            \"url\" : \"name://@selection"));
        QVERIFY(lines.at(i + 1).endsWith("/value\","));
        QVERIFY(lines.at(i + 2).startsWith("            \"keys\" : [ [ 0, "));
        QVERIFY(lines.at(i + 2).endsWith(" ] ]"));
        const bool isLast = i + 5 == lines.size();
        QCOMPARE(lines.at(i + 3), QByteArray(isLast ? "         }" : "         },"));
    }
}

void TestPoseWriter::entriesStandInTableOrder_data()
{
    addFigureRows();
}

// Bones by number, their channels in the bone's own order, then controls by number.
void TestPoseWriter::entriesStandInTableOrder()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    static const char* const kChannels[] = {"translation/x", "translation/y", "translation/z",
        "rotation/x", "rotation/y", "rotation/z"};
    const QList<QByteArray> lines = entryLines(writtenText(f));
    int at = 1;
    for (int bone = 0; bone < kBoneCount; ++bone) {
        for (const char* channel : kChannels) {
            const QByteArray url = "/" + boneName(bone).toLatin1() + ":?" + channel + "/value\",";
            QVERIFY2(lines.at(at).endsWith("@selection" + url), lines.at(at));
            at += 4;
        }
    }
    for (int control = 0; control < controlCount(); ++control, at += 4) {
        const QByteArray url = "#" + controlName(control).toLatin1() + ":?value/value\",";
        QVERIFY2(lines.at(at).endsWith("@selection" + url), lines.at(at));
    }
    QCOMPARE(at, lines.size());
}

void TestPoseWriter::numbersAreWrittenInGeneralForm_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("zero") << 0.f << QByteArray("0");
    QTest::newRow("minus zero") << -0.f << QByteArray("0");
    QTest::newRow("twelve and a half") << 12.5f << QByteArray("12.5");
    QTest::newRow("minus one third") << -1.f / 3 << QByteArray("-0.3333333");
    QTest::newRow("one ten-millionth") << 1e-7f << QByteArray("1e-07");
    QTest::newRow("one hundred-millionth") << 1e-8f << QByteArray("1e-08");
    QTest::newRow("one tenth") << 0.1f << QByteArray("0.1");
    QTest::newRow("minus 45") << -45.f << QByteArray("-45");
    QTest::newRow("small but no exponent") << 0.0001f << QByteArray("0.0001");
    QTest::newRow("seven digits") << 123.45678f << QByteArray("123.4568");
    QTest::newRow("large") << 1e7f << QByteArray("1e+07");
    QTest::newRow("below that") << 9999999.f << QByteArray("9999999");
}

void TestPoseWriter::numbersAreWrittenInGeneralForm()
{
    QFETCH(float, value);
    QFETCH(QByteArray, text);
    PoseFixture f;
    DzFloatProperty* channel = f.bone("hip")->getXPosControl();
    channel->setIsClamped(false);
    channel->setRawValue(1);
    channel->setRawValue(value);
    const QList<QByteArray> lines = entryLines(writtenText(f));
    QCOMPARE(lines.at(2), QByteArray("            \"keys\" : [ [ 0, " + text + " ] ]"));
}

void TestPoseWriter::channelPaths_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("notTransform");
    QTest::newRow("Scale") << "Scale"
                           << "scale/general" << false;
    QTest::newRow("XScale") << "XScale"
                            << "scale/x" << false;
    QTest::newRow("YScale") << "YScale"
                            << "scale/y" << false;
    QTest::newRow("ZScale") << "ZScale"
                            << "scale/z" << false;
    QTest::newRow("XRotate") << "XRotate"
                             << "rotation/x" << false;
    QTest::newRow("YRotate") << "YRotate"
                             << "rotation/y" << false;
    QTest::newRow("ZRotate") << "ZRotate"
                             << "rotation/z" << false;
    QTest::newRow("XTranslate") << "XTranslate"
                                << "translation/x" << false;
    QTest::newRow("YTranslate") << "YTranslate"
                                << "translation/y" << false;
    QTest::newRow("ZTranslate") << "ZTranslate"
                                << "translation/z" << false;
    QTest::newRow("another case") << "xrotate"
                                  << "xrotate" << true;
    QTest::newRow("a control") << "pCTRLHipBend"
                               << "pCTRLHipBend" << true;
}

void TestPoseWriter::channelPaths()
{
    QFETCH(QString, property);
    bool notTransform = false;
    QTEST(channelPathOf(property, &notTransform), "path");
    QTEST(notTransform, "notTransform");
}

void TestPoseWriter::propertiesThatAreNoChannelsAreLeftOut()
{
    PoseFixture f;
    const QByteArray before = writtenText(f);
    f.bone("hip")->addProperty(new DzFloatProperty(QLatin1String("Rotate Speed")));
    f.bone("hip")->addProperty(new DzFloatProperty(QLatin1String("Glow")));
    QCOMPARE(writtenText(f), before);
}

void TestPoseWriter::missingBonesAndControlsAreLeftOut()
{
    PoseFixture f;
    QVERIFY(writtenText(f).contains("/lEar:"));
    QVERIFY(writtenText(f).contains("#pCTRLHipBend:"));
    f.figure->removeBone(f.bone("lEar"));
    f.figure->removeProperty(f.control("pCTRLHipBend"));
    QVERIFY(!writtenText(f).contains("/lEar:"));
    QVERIFY(!writtenText(f).contains("#pCTRLHipBend:"));
}

static QByteArray writtenValue(const QByteArray& text, const QByteArray& url)
{
    const int keys = text.indexOf("[ [ 0, ", text.indexOf("@selection" + url)) + 7;
    return text.mid(keys, text.indexOf(' ', keys) - keys);
}

void TestPoseWriter::storedValuesAreWritten()
{
    PoseFixture f;
    DzFloatProperty* channel = f.bone("lShin")->getXRotControl();
    channel->setRawValue(10);
    f.control("pCTRLKneesUpLeft")->setValue(0.5);
    QVERIFY(channel->getValue() > 11);
    QCOMPARE(writtenValue(writtenText(f), "/lShin:?rotation/x"), QByteArray("10"));
    channel->setRawValue(200); // beyond the limit
    QVERIFY(channel->getValue() < 200);
    QCOMPARE(writtenValue(writtenText(f), "/lShin:?rotation/x"), QByteArray("200"));
}

void TestPoseWriter::valuesAreThoseOfTheScenesTime()
{
    PoseFixture f;
    DzFloatProperty* channel = f.bone("hip")->getXRotControl();
    channel->setValue(0, 10);
    channel->setValue(1600, 20);
    f.rig.scene.setTime(1600);
    QCOMPARE(writtenValue(writtenText(f), "/hip:?rotation/x"), QByteArray("20"));
    f.rig.scene.setTime(0);
    QCOMPARE(writtenValue(writtenText(f), "/hip:?rotation/x"), QByteArray("10"));
}

void TestPoseWriter::theDecimalPointIsNoMatterOfLocale()
{
    PoseFixture f;
    f.bone("hip")->getXRotControl()->setValue(12.5);
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    const QByteArray text = writtenText(f);
    f.bone("hip")->getXRotControl()->setValue(0);
    const bool read = applyPoseFile(f.file("written.duf"), false);
    QLocale::setDefault(before);
    QCOMPARE(writtenValue(text, "/hip:?rotation/x"), QByteArray("12.5"));
    QVERIFY(read);
    QCOMPARE(f.bone("hip")->getXRotControl()->getValue(), 12.5f);
}

void TestPoseWriter::compressedHoldsTheSameText()
{
    PoseFixture f;
    Random random(11);
    poseAtRandom(&random, f.figure);
    const QByteArray plain = writtenText(f);
    QVERIFY(writePoseFile(f.file("packed.duf"), false, true));
    const QByteArray packed = fileBytes(f.file("packed.duf"));
    QVERIFY(packed.startsWith("\x1f\x8b\x08"));
    QVERIFY(packed.size() * 4 < plain.size());
    QFile file(f.file("packed.duf"));
    DzGzIO gzip(&file);
    QVERIFY(gzip.open(QIODevice::ReadOnly));
    QCOMPARE(gzip.readAll(), plain);
}

void TestPoseWriter::anUnwritablePathLeavesNothing_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("compressed");
    for (bool compressed : {false, true}) {
        const QString how = compressed ? ", compressed" : "";
        QTest::newRow(qPrintable("missing folder" + how)) << "none/x.duf" << compressed;
        QTest::newRow(qPrintable("a folder" + how)) << "temp" << compressed;
        QTest::newRow(qPrintable("below a file" + how)) << "file/x.duf" << compressed;
    }
}

void TestPoseWriter::anUnwritablePathLeavesNothing()
{
    QFETCH(QString, path);
    QFETCH(bool, compressed);
    PoseFixture f;
    f.fileWith("file", "x");
    QVERIFY(!writePoseFile(f.home.path(path), false, compressed));
    QVERIFY(!QFileInfo(f.home.path(path)).isFile());
    QCOMPARE(fileBytes(f.file("file")), QByteArray("x"));
}

void TestPoseWriter::aFullDiskLeavesTheOldFile()
{
#ifdef Q_OS_UNIX
    PoseFixture f;
    f.fileWith("written.duf", "old");
    const QString path = f.file("written.duf");
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small = {2000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool plain = writePoseFile(path, false, false);
    const bool packed = writePoseFile(path, false, true);
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(!plain && !packed);
    QCOMPARE(fileBytes(path), QByteArray("old"));
    QCOMPARE(QDir(QFileInfo(path).path()).entryList(QStringList("written.duf*")),
        QStringList("written.duf"));
#endif
}

void TestPoseWriter::aPassingPoseIsThePlainText()
{
    PoseFixture f;
    Random random(13);
    poseAtRandom(&random, f.figure);
    const QString path = f.file("passing.duf");
    QVERIFY(writePassingPose(f.figure, dzScene->getTime(), path));
    QCOMPARE(fileBytes(path), writtenText(f));
    QVERIFY(!writePassingPose(f.figure, dzScene->getTime(), f.file("none/x.duf")));
}

void TestPoseWriter::whatCannotBeOpenedIsNotPacked()
{
    TempFolder folder;
    QFile file(folder.path("missing/file"));
    QVERIFY(!writePacked(&file, "text"));
    QFile readOnly(QLatin1String(QUILLON_SOURCE_DIR "/CMakeLists.txt"));
    QVERIFY(readOnly.open(QIODevice::ReadOnly) && !writePacked(&readOnly, "text"));
}

void TestPoseWriter::theFileIsJson()
{
    PoseFixture f;
    Random random(12);
    poseAtRandom(&random, f.figure);
    bool ok = false;
    const auto entries = PresetJson::animations(writtenText(f), &ok);
    QVERIFY(ok);
    QCOMPARE(entries.size(), kBoneCount * kPoseChannelCount + kControlCountG8);
}

// ---- there and back

void TestPoseWriter::writtenResetAndReadIsTheSamePose_data()
{
    addFigureRows();
}

// Seven digits: half a unit of the last one at values up to 1,000 is 5e-5.
static const double kSevenDigits = 5e-5;

void TestPoseWriter::writtenResetAndReadIsTheSamePose()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    for (unsigned seed = 1; seed <= 5; ++seed) {
        Random random(seed);
        resetPose(f.figure, ResetWholeFigure);
        poseAtRandom(&random, f.figure);
        const RawPose raw = rawPose(f.figure), final = finalPose(f.figure);
        const QString path = f.file("pose.duf");
        QVERIFY(writePoseFile(path, false, seed % 2 == 0));
        QVERIFY(applyPoseFile(path, true));
        VERIFY_NONE(firstOtherValue(raw, rawPose(f.figure), kSevenDigits));
        VERIFY_NONE(firstOtherValue(final, finalPose(f.figure), 2 * kSevenDigits));
    }
}

void TestPoseWriter::theOrderOfEntriesDoesNotMatter_data()
{
    addFigureRows();
}

// The four-line blocks of a written file, shuffled.
static QByteArray shuffled(const QByteArray& text, Random* random)
{
    QList<QByteArray> lines = entryLines(text);
    const int count = lines.size() / 4;
    for (int i = count - 1; i > 0; --i) {
        const int other = random->below(i + 1);
        for (int line = 1; line <= 2; ++line)
            std::swap(lines[4 * i + line], lines[4 * other + line]);
    }
    QByteArray out = head(false);
    for (int i = 0; i < 4 * count; ++i)
        out += lines.at(i) + "\n";
    return out + kTail;
}

void TestPoseWriter::theOrderOfEntriesDoesNotMatter()
{
    QFETCH(QString, figure);
    PoseFixture f(figure);
    Random random(21);
    poseAtRandom(&random, f.figure);
    const RawPose raw = rawPose(f.figure), final = finalPose(f.figure);
    const QByteArray text = writtenText(f);
    for (int i = 0; i < 5; ++i) {
        const QByteArray other = shuffled(text, &random);
        QVERIFY(other != text && other.size() == text.size());
        QVERIFY(applyPoseFile(f.fileWith("shuffled.duf", other), true));
        VERIFY_NONE(firstOtherValue(raw, rawPose(f.figure), kSevenDigits));
        VERIFY_NONE(firstOtherValue(final, finalPose(f.figure), 2 * kSevenDigits));
    }
    swapOrSymmetrize(f.figure, 1, f.time(), false);
    swapOrSymmetrize(f.figure, 1, f.time(), false);
    VERIFY_NONE(firstOtherValue(raw, rawPose(f.figure), kSevenDigits));
}

QUILLON_TEST(TestPoseWriter)
#include "test_pose_writer.moc"
