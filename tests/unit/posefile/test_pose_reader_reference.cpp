// The reader that goes over the text once, held against the literal searches.
#include "pose_corpora.h"
#include "room_tests.h"

#include "posefile/pose_reader.h"
#include "posefile/pose_targets.h"
#include "reference/pose_reader_reference.h"

using namespace quillon;

class TestPoseReaderReference : public QObject {
    Q_OBJECT
private slots:
    void byteIdsAreThoseOfTheNameIndex();
    void shippedEqualsReferenceOnMutatedTexts_data();
    void shippedEqualsReferenceOnMutatedTexts();
    void shippedEqualsReferenceOnWholeFiles();
};

void TestPoseReaderReference::byteIdsAreThoseOfTheNameIndex()
{
    for (int id = 0; id < kNameCount; ++id) {
        const QByteArray name = nameText(id).toLatin1();
        for (const QByteArray& text : {name, name + 'x', name.left(name.size() - 1)}) {
            const TextSpan span = {text.constData(), text.constData() + text.size()};
            QCOMPARE(nameIdOf(span), nameId(QString::fromLatin1(text)));
        }
    }
}

// Empty when shipped and literal reading set the same values in the same order.
static QString differenceOn(const QByteArray& text, DzSkeleton* figure)
{
    static const DzTime kTime = 160;
    reference::setPoseText(text);
    std::vector<SetCall> literal;
    setCalls().clear();
    reference::applyPoseText(figure, kTime, recordCall);
    reference::applyKeyBoneText(figure, kTime, recordCall);
    literal.swap(setCalls());
    setPoseText(text.constData(), text.size());
    applyPoseText(figure, kTime, recordCall);
    applyKeyBoneText(figure, kTime, recordCall);
    return firstOtherCall(setCalls(), literal);
}

// What damaged files are made of: pieces of the grammar, and characters that it turns on.
static const char* const kPieces[] = {"\"url\"", "\"url\" : \"name://@selection", "selection",
    "selection/", "selection#", "selection:?", "?rotation/", "?rotation/x/value",
    "?translation/y/value", "?value/value", ":?rotation/z/value", "/x/value", "/y/value",
    "/z/value", "/lShin", "/hip:", "/root:", "/lowerJaw:", "#pCTRLHipBend:", "#facs_jnt_JawOpen:",
    "#eCTRLvAA:", "rShldrBend", "chestUpper", "pelvis", "[ [ 0, 1 ] ]",
    "[ [ 0, -12.5 ], [ 1, 3 ] ]", "[ 0, 1e", "e999", "1e-07", "nan", "inf", "+", "-", ".", ",", "]",
    "[", "\n", "\r\n", "\t", " ", ":", "?", "/", "#", "\"", "}", "0", "7", "x", "s", "\xe9"};

static QByteArray randomPiece(Random* random)
{
    return kPieces[random->below(int(sizeof kPieces / sizeof *kPieces))];
}

static QByteArray randomEntry(Random* random)
{
    static const char* const kUrls[]
        = {"/lShin:?rotation/x", "/hip:?rotation/y", "/hip:?translation/y", ":?translation/z",
            "/rShldrBend:?rotation/z", "#pCTRLKneesUpLeft:?value", "#facs_ctrl_EyeBlink:?value",
            "/pelvis:?rotation/x", "/abdomenUpper:?rotation/x", "/lFoot:?translation/x",
            "/lFoot:?scale/general", "#eCTRLEyesClosedL:?value", "/chestUpper:?rotation/y"};
    const char* url = kUrls[random->below(int(sizeof kUrls / sizeof *kUrls))];
    const QByteArray value = QByteArray::number(random->between(-180, 180), 'g', 7);
    return valueEntry(url, value);
}

static void mutate(Random* random, QByteArray* text)
{
    const int at = random->below(text->size() + 1);
    const int count = random->below(12);
    switch (random->below(6)) {
    case 0:
        text->remove(at, count);
        break;
    case 1:
    case 2:
        text->insert(at, randomPiece(random));
        break;
    case 3:
        text->replace(at, count, randomPiece(random));
        break;
    case 4: // a stretch comes again elsewhere
        text->insert(random->below(text->size() + 1), text->mid(at, count * 20));
        break;
    default:
        if (random->below(20) == 0)
            text->truncate(at);
        else if (random->below(20) == 0)
            text->insert(at, '\0');
        else
            text->insert(at, random->below(2) ? "\n" : " ");
    }
}

static const int kTextCount = 20000;
static const int kTextsPerRow = 2500;

void TestPoseReaderReference::shippedEqualsReferenceOnMutatedTexts_data()
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<int>("seed");
    for (int row = 0; row < kTextCount / kTextsPerRow; ++row) {
        const char* figure = kTestFigures[row % 4];
        QTest::newRow(qPrintable(QString("%1, seed %2").arg(figure).arg(row)))
            << QString(figure) << row;
    }
}

void TestPoseReaderReference::shippedEqualsReferenceOnMutatedTexts()
{
    QFETCH(QString, figure);
    QFETCH(int, seed);
    PoseFixture f(figure);
    Random random(unsigned(seed) + 71);
    size_t values = 0;
    for (int i = 0; i < kTextsPerRow; ++i) {
        QList<QByteArray> entries;
        for (int n = random.below(10); n >= 0; --n)
            entries << randomEntry(&random);
        QByteArray text = presetText(entries);
        for (int n = random.below(30); n >= 0; --n)
            mutate(&random, &text);
        const QString difference = differenceOn(text, f.figure);
        QVERIFY2(difference.isEmpty(), qPrintable(difference + "\n" + text));
        values += setCalls().size() - 3 * kKeyBoneCount;
    }
    QVERIFY2(values > kTextsPerRow, "most entries were damaged beyond reading");
}

void TestPoseReaderReference::shippedEqualsReferenceOnWholeFiles()
{
    PoseFixture f;
    for (const OddPreset& each : oddPresets())
        writeFile(f.file("odd/") + each.name + ".duf", each.bytes);
    const QStringList made = presetsIn(f.file("odd")) + oddWholeBodies(f.file("bodies"))
        + wildWholeBodies(f.file("wild"));
    const QStringList samples = presetsIn(QLatin1String(QUILLON_SOURCE_DIR "/samples"));
    const QStringList real = presetsIn(sharedPoses());
    QVERIFY(made.size() >= 3 * kOddLayoutCount && samples.size() > 250);
    qDebug("%d files made here, %d samples, %d beside the project", int(made.size()),
        int(samples.size()), int(real.size()));
    std::vector<char> buffer(kReadBufferBytes);
    for (const QString& path : made + samples + real) {
        const int count = readPoseFileText(path, buffer.data(), kReadBufferBytes, true);
        const QByteArray text(buffer.data(), count);
        const QString difference = differenceOn(text, f.figure);
        QVERIFY2(difference.isEmpty(), qPrintable(path + ": " + difference));
    }
}

QUILLON_TEST(TestPoseReaderReference)
#include "test_pose_reader_reference.moc"
