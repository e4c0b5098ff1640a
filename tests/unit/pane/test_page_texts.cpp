// Counter and label of the browsing page.
#include "room_tests.h"

#include "finder/browse_session.h"
#include "finder/pose_index.h"
#include "ground/plugin_settings.h"
#include "pane/page_texts.h"

#include <QtTest>

using namespace quillon;

class TestPageTexts : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void mirrorWordsGoWhateverTheirCase_data();
    void mirrorWordsGoWhateverTheirCase();
    void counterChoosesItsTextInOrder();
    void labelIsTheFileTitleWithoutMirrorWords();
    void labelOfAPosePairFileIsItsProductAndNumber();
    void labelOfAnotherMakerFileEndsInItsProductLine();
    void aPosePairFileWithoutAProductFolderHasItsTitle();
    void withoutACurrentPoseThereIsNoLabel();
};

static void addEntry(const char* path, quint32 code = 8)
{
    PoseIndexEntry* entry = entryToChange(appendPose(QLatin1String(path)));
    entry->figureCode = code;
    entry->hasSignature = true;
}

void TestPageTexts::init()
{
    createPoseIndex();
    pluginSettings() = PluginSettings();
    browseSession() = BrowseSession();
}

void TestPageTexts::cleanup()
{
    freePoseIndex();
}

void TestPageTexts::mirrorWordsGoWhateverTheirCase_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Sit (mirrored pose)") << "Sit";
    QTest::newRow("Sit (Mirror Pose)") << "Sit";
    QTest::newRow("Sit (mirrored)") << "Sit";
    QTest::newRow("Sit (MIRROR)") << "Sit";
    QTest::newRow("Sit mirrored pose") << "Sit";
    QTest::newRow("Sit mirror pose") << "Sit";
    QTest::newRow("Sit mirrored") << "Sit";
    QTest::newRow("Sit mirror") << "Sit";
    QTest::newRow("Sit (mir pose)") << "Sit";
    QTest::newRow("Sit (mir)") << "Sit";
    QTest::newRow("Sit mir pose") << "Sit";
    QTest::newRow("x mir") << "x";
    QTest::newRow("a mir b mir") << "a b"; // one at the end takes them all along
    QTest::newRow("a mir b") << "a mir b";
    QTest::newRow("Sit M Pose") << "Sit";
    QTest::newRow("Admiral") << "Admiral";
    QTest::newRow("") << "";
}

void TestPageTexts::mirrorWordsGoWhateverTheirCase()
{
    QFETCH(QString, name);
    QCOMPARE(withoutMirrorWords(QString(QTest::currentDataTag())), name);
}

void TestPageTexts::counterChoosesItsTextInOrder()
{
    QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND")); // no pose at all
    for (int i = 0; i < 5; ++i)
        addEntry("/c/pose.duf");
    pluginSettings().currentPose = 2;
    QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND")); // none matches
    browseSession().matchCount = 3;
    browseSession().matchOrdinal = 2;
    QCOMPARE(counterText(), QString("MATCHING POSES FOUND: 3")); // none taken yet
    browseSession().tablesState = Applied;
    browseSession().type = 1;
    QCOMPARE(counterText(), QString("MATCHING POSE 2 of 3"));
    browseSession().type = 0;
    QCOMPARE(counterText(), QString("POSE 3 of 5"));
    browseSession().matchOrdinal = kOrdinalUnknown;
    QCOMPARE(counterText(), QString("MATCHING POSES FOUND: 3"));
    pluginSettings().currentPose = -1;
    QCOMPARE(counterText(), QString("NO MATCHING POSES FOUND"));
}

void TestPageTexts::labelIsTheFileTitleWithoutMirrorWords()
{
    addEntry("/c/People/Genesis 8 Female/Poses/P/x mir.duf");
    pluginSettings().currentPose = 0;
    QCOMPARE(poseLabelLines(), QStringList("x"));
}

void TestPageTexts::labelOfAPosePairFileIsItsProductAndNumber()
{
    addEntry("/c/data/Brannoc/poses/001/003f mirror0.duf");
    pluginSettings().currentPose = 0;
    const QStringList lines = poseLabelLines();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.at(0).endsWith(" 003"), qPrintable(lines.at(0)));
    QCOMPARE(lines.at(1), QString("This is a pose PAIR product (F+M)"));
}

void TestPageTexts::labelOfAnotherMakerFileEndsInItsProductLine()
{
    addEntry("/c/data/Brannoc/poses/001/solo mirrored.duf", 264);
    pluginSettings().currentPose = 0;
    QCOMPARE(poseLabelLines(),
        QStringList() << "solo"
                      << "This is a G8 MALE product");
}

void TestPageTexts::aPosePairFileWithoutAProductFolderHasItsTitle()
{
    addEntry("/c/data/Brannoc/poses/999/003f mirror0.duf"); // a product to come
    pluginSettings().currentPose = 0;
    QCOMPARE(poseLabelLines(),
        QStringList() << "003f mirror0"
                      << "This is a pose PAIR product (F+M)");
}

void TestPageTexts::withoutACurrentPoseThereIsNoLabel()
{
    addEntry("/c/a.duf");
    QCOMPARE(poseLabelLines(), QStringList());
}

QUILLON_TEST(TestPageTexts)
#include "test_page_texts.moc"
