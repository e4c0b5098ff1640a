// Which figure a pose file is for, told from its bytes and path.
#include "finder_fixture.h"
#include "room_tests.h"

#include "finder/pose_identify.h"
#include "reference/finder_reference.h"
#include "reference/text_differential.h"

using namespace quillon;

class TestPoseIdentify : public QObject {
    Q_OBJECT
private slots:
    void pathsAndTextsDecideTheFigure_data();
    void pathsAndTextsDecideTheFigure();
    void aPoseOfTheWholeBodyIsNeeded_data();
    void aPoseOfTheWholeBodyIsNeeded();
    void wordsAreFoundWhereverTheyStand_data();
    void wordsAreFoundWhereverTheyStand();
    void codesEqualTheLiteralForm();
    void madeTextsAgreeWithTheLiteralForms();

    void theHashIsOfAllBytes();
    void plainAndCompressedTwinsHaveOneHash();
    void bytesBeyondTheBufferDoNotCount();
    void otherGenerationsGetNoHash();
    void anUnreadableFileIsNotIdentified();
    void anEntryOutsideTheIndexIsLeftAlone();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

static const char kBody[] = "lBigToe lPinky1 head ";

void TestPoseIdentify::pathsAndTextsDecideTheFigure_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("more"); // than the marks of a whole body
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* path, const char* more, int code) {
        QTest::newRow(name) << s(path) << QByteArray(more) << code;
    };
    row("no mark", "/c/Poses/sit.duf", "", 8);
    row("female folder", "/c/People/Genesis 8 Female/Poses/sit.duf", "", 8);
    row("male folder", "/c/People/Genesis 8 Male/Poses/sit.duf", "", 264);
    row("female wins over male", "/c/Male and Female/sit.duf", "", 8);
    row("g8f", "/c/G8F sit.duf", "", 8);
    row("g8m", "/c/G8M sit.duf", "", 264);
    row("g8f wins over g8m", "/c/g8m/g8f.duf", "", 8);
    row("case does not matter", "/c/MALE/sit.duf", "", 264);
    row("in the content directory", "/home/male user/content/sit.duf", "", 264);
    row("part of a word", "/c/tamales.duf", "", 264);
    row("breast in the text of a male folder", "/c/Genesis 8 Male/sit.duf", "pCTRLBreastsUp", 8);
    row("abdomen2", "/c/sit.duf", "Abdomen2", 2);
    row("rHeel", "/c/sit.duf", "rHeel", 3);
    row("abdomen2 wins over rHeel", "/c/sit.duf", "rheel abdomen2", 2);
    row("abdomen2 in a male folder", "/c/male/sit.duf", "abdomen2", 258);
    row("rHeel in a male folder", "/c/male/sit.duf", "rheel", 259);
    row("title f of the maker", "/c/data/Brannoc/poses/001/012f0.duf", "", 8);
    row("title m of the maker", "/c/data/Brannoc/poses/001/012m0.duf", "", 264);
    row("title f wins over m", "/c/data/Brannoc/poses/001/012mf.duf", "", 8);
    row("title without f or m", "/c/data/Brannoc/poses/001/0120.duf", "", 8);
    row("maker's folder in any case", "/c/DATA/brannoc/Poses/001/012M.duf", "", 264);
    row("title outside the maker's folder", "/c/data/other/poses/001/012m.duf", "", 8);
    row("the ending is no title", "/c/data/Brannoc/poses/001/x.duf", "", 8);
    row("maker's male folder", "/c/male/data/Brannoc/poses/001/x.duf", "", 264);
}

void TestPoseIdentify::pathsAndTextsDecideTheFigure()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, more);
    QFETCH(int, code);
    const QByteArray bytes = kBody + more;
    QCOMPARE(figureCodeOf(bytes.constData(), bytes.size(), path), quint32(code));
    QCOMPARE(reference::figureCodeOf(bytes, path), quint32(code));
}

void TestPoseIdentify::aPoseOfTheWholeBodyIsNeeded_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("whole");
    QTest::newRow("all three") << QByteArray("lBigToe lPinky1 head") << true;
    QTest::newRow("in any case") << QByteArray("BIGTOE PINKY HEAD") << true;
    QTest::newRow("touching") << QByteArray("bigtoepinkyhead") << true;
    QTest::newRow("no toes") << QByteArray("lPinky1 head") << false;
    QTest::newRow("no fingers") << QByteArray("lBigToe head") << false;
    QTest::newRow("no head") << QByteArray("lBigToe lPinky1") << false;
    QTest::newRow("cut word") << QByteArray("bigtoe pinky hea") << false;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("with zero bytes") << QByteArray("bigtoe\0pinky\0head", 17) << true;
    QTest::newRow("two bytes a letter") << QByteArray("b\0i\0g\0t\0o\0e\0 pinky head", 23) << false;
}

void TestPoseIdentify::aPoseOfTheWholeBodyIsNeeded()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, whole);
    QCOMPARE(figureCodeOf(text.constData(), text.size(), s("/a.duf")), whole ? 8u : 0u);
    QCOMPARE(reference::figureCodeOf(text, s("/a.duf")), whole ? 8u : 0u);
}

void TestPoseIdentify::wordsAreFoundWhereverTheyStand_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("found");
    QTest::newRow("alone") << QByteArray("pinky") << true;
    QTest::newRow("at the start") << QByteArray("pinky...") << true;
    QTest::newRow("at the end") << QByteArray("...pinky") << true;
    QTest::newRow("capitals") << QByteArray("..PiNKy.") << true;
    QTest::newRow("after a false start") << QByteArray("pinpinky") << true;
    QTest::newRow("one letter short") << QByteArray("...pink") << false;
    QTest::newRow("shorter than the word") << QByteArray("pin") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("letters with a set high bit") << QByteArray("\xf0inky") << false;
    QTest::newRow("at sign is no small letter") << QByteArray("p\x09nky") << false;
}

void TestPoseIdentify::wordsAreFoundWhereverTheyStand()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, found);
    QCOMPARE(containsWord(text.constData(), text.size(), "pinky"), found);
}

void TestPoseIdentify::codesEqualTheLiteralForm()
{
    static const char* const pieces[] = {"bigtoe", "pinky", "head", "breast", "abdomen2", "rheel",
        "BigToe", "PINKY", "big", "toe", "pin", "he", "ad", "abdomen", "r", "heel", "b", " ", "\n",
        "\xe4", "\xff", "data/Brannoc/poses", "g8", "m", "f", "male", "fe"};
    Random random(17);
    int browsable = 0;
    for (int n = 0; n < 20000; ++n) {
        QByteArray text = random.below(3) ? QByteArray(kBody) : QByteArray();
        QString path = s("/");
        for (int i = random.below(12); i > 0; --i)
            text += pieces[random.below(int(std::size(pieces)))];
        for (int i = random.below(6); i > 0; --i)
            path += s(pieces[random.below(int(std::size(pieces)))]);
        path += s(".duf");
        const quint32 code = figureCodeOf(text.constData(), text.size(), path);
        QCOMPARE(code, reference::figureCodeOf(text, path));
        browsable += code == kFemaleCode || code == kMaleCode;
    }
    QVERIFY(browsable > 1000);
}

// compare_forms does the same with a thousand longer ones.
void TestPoseIdentify::madeTextsAgreeWithTheLiteralForms()
{
    static const int kTexts = 2000, kMostBytes = 4000;
    long bodies = 0;
    for (quint64 seed = 1; seed <= kTexts; ++seed) {
        std::string why;
        QVERIFY2(reference::textsAgree(seed, kMostBytes, &bodies, &why), why.c_str());
    }
    QVERIFY(bodies > 100);
}

// ---- files

struct FileFixture : StoreFixture {
    TempFolder home;
    int add(const char* name, const QByteArray& bytes)
    {
        const QString path = home.path(s(name));
        writeFile(path, bytes);
        return appendPose(path);
    }
    PoseIndexEntry identified(const char* name, const QByteArray& bytes)
    {
        const int entry = add(name, bytes);
        identifyPose(entry);
        return *poseEntry(entry);
    }
};

void TestPoseIdentify::theHashIsOfAllBytes()
{
    FileFixture f;
    const QByteArray text = QByteArray(kBody) + "\xe4\x80 end";
    quint32 hash = 5381;
    for (const char byte : text)
        hash = hash * 33 + quint32(int(static_cast<signed char>(byte)));
    const PoseIndexEntry e = f.identified("a.duf", text);
    QCOMPARE(e.figureCode, kFemaleCode);
    QCOMPARE(e.contentHash, hash);
    QVERIFY(f.identified("b.duf", text + " ").contentHash != hash);
}

void TestPoseIdentify::plainAndCompressedTwinsHaveOneHash()
{
    FileFixture f;
    const QByteArray text = poseFileText(PoseValues());
    const PoseIndexEntry plain = f.identified("plain.duf", text);
    QVERIFY(writeGzip(f.home.path(s("packed.duf")), text));
    const int packed = appendPose(f.home.path(s("packed.duf")));
    identifyPose(packed);
    QCOMPARE(poseEntry(packed)->figureCode, kFemaleCode);
    QCOMPARE(poseEntry(packed)->contentHash, plain.contentHash);
    QVERIFY(plain.contentHash != 0);
}

void TestPoseIdentify::bytesBeyondTheBufferDoNotCount()
{
    FileFixture f;
    QByteArray text = QByteArray(kBody) + QByteArray(kReadBufferBytes, ' ');
    text.truncate(kReadBufferBytes);
    const quint32 hash = f.identified("a.duf", text).contentHash;
    QVERIFY(hash != 0);
    QCOMPARE(f.identified("b.duf", text + "abdomen2").contentHash, hash);
    QCOMPARE(f.identified("b.duf", text + "abdomen2").figureCode, kFemaleCode);
    text[kReadBufferBytes - 1] = 'x';
    QVERIFY(f.identified("c.duf", text).contentHash != hash);
    QByteArray late = QByteArray(kReadBufferBytes - 3, ' ') + kBody; // cut in the first word
    QCOMPARE(f.identified("d.duf", late).figureCode, 0u);
}

void TestPoseIdentify::otherGenerationsGetNoHash()
{
    FileFixture f;
    for (const char* word : {"abdomen2", "rheel"}) {
        const PoseIndexEntry e = f.identified("a.duf", QByteArray(kBody) + word);
        QCOMPARE(e.figureCode, 0u);
        QCOMPARE(e.contentHash, 0u);
    }
    QCOMPARE(f.identified("male.duf", QByteArray(kBody)).figureCode, kMaleCode);
}

void TestPoseIdentify::anUnreadableFileIsNotIdentified()
{
    FileFixture f;
    const int entry = addEntry(f.home.path(s("missing.duf")), 77);
    identifyPose(entry);
    QCOMPARE(poseEntry(entry)->figureCode, 0u);
    QCOMPARE(poseEntry(entry)->contentHash, 0u);
    QCOMPARE(f.identified("empty.duf", QByteArray()).figureCode, 0u);
    freeReadBuffer(); // as before the pane is there
    const int whole = f.add("whole.duf", QByteArray(kBody));
    identifyPose(whole);
    QCOMPARE(poseEntry(whole)->figureCode, 0u);
}

void TestPoseIdentify::anEntryOutsideTheIndexIsLeftAlone()
{
    FileFixture f;
    identifyPose(-1);
    identifyPose(0);
    QCOMPARE(poseCount(), 0);
}

QUILLON_TEST(TestPoseIdentify)
#include "test_pose_identify.moc"
