// Which control drives which bone: the rows' form, and that they speak of the figures as they are.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/bone_control_links.h"
#include "figure/figure_lookup.h"

#include "dzerclink.h"

#include <QSet>
#include <QtTest>

using namespace quillon;

class TestBoneControlLinks : public QObject {
    Q_OBJECT
private slots:
    void rowsAreDotSeparatedNamesOfTheirGeneration_data();
    void rowsAreDotSeparatedNamesOfTheirGeneration();
    void bodyRowsOfBothGenerationsAgreeAsSets();
    void theRowOfTheRightPectoralIsEmptyIn81();
    void bonesWithoutControlsHaveADot_data();
    void bonesWithoutControlsHaveADot();
    void faceRowsHoldExpressionControlsOnly();
    void rowLengths_data();
    void rowLengths();
    void rowsNameWhatDrivesTheFigure_data();
    void rowsNameWhatDrivesTheFigure();
};

static const char* const* rowsOf(bool genesis81)
{
    return genesis81 ? kBoneControlLinksG81 : kBoneControlLinksG8;
}

static QStringList namesIn(const char* row)
{
    QStringList names = QString(QLatin1String(row)).split(QLatin1Char('.'));
    names.removeAll(QString());
    return names;
}

static QSet<QString> setOf(const QStringList& names)
{
    QSet<QString> set;
    for (const QString& name : names)
        set.insert(name);
    return set;
}

static void addGenerationRows()
{
    QTest::addColumn<bool>("genesis81");
    QTest::newRow("8") << false;
    QTest::newRow("8.1") << true;
}

void TestBoneControlLinks::rowsAreDotSeparatedNamesOfTheirGeneration_data()
{
    addGenerationRows();
}

void TestBoneControlLinks::rowsAreDotSeparatedNamesOfTheirGeneration()
{
    QFETCH(bool, genesis81);
    const DzFigure figure(QLatin1String(genesis81 ? "Genesis8_1Female" : "Genesis8Female"));
    QVERIFY(isSupportedFigure(&figure));
    for (int i = 0; i < kBoneCount - genesis81; ++i) {
        const QString row = QLatin1String(rowsOf(genesis81)[i]);
        QVERIFY2(row.startsWith(QLatin1Char('.')) && row.endsWith(QLatin1Char('.')), kBoneTable[i]);
        QVERIFY2(!row.contains(QLatin1String("..")), kBoneTable[i]);
        const QStringList names = namesIn(rowsOf(genesis81)[i]);
        QCOMPARE(setOf(names).size(), names.size());
        for (const QString& name : names)
            QVERIFY2(isBodyControl(name), qPrintable(name));
    }
}

void TestBoneControlLinks::bodyRowsOfBothGenerationsAgreeAsSets()
{
    for (int i = 0; i < kBoneCount; ++i) {
        if (isFaceBone(boneName(i)) || i == kBoneCount - 1)
            continue;
        QVERIFY2(setOf(namesIn(kBoneControlLinksG8[i])) == setOf(namesIn(kBoneControlLinksG81[i])),
            kBoneTable[i]);
    }
}

void TestBoneControlLinks::theRowOfTheRightPectoralIsEmptyIn81()
{
    QCOMPARE(namesIn(kBoneControlLinksG8[169]).size(), 8);
    QCOMPARE(QByteArray(kBoneControlLinksG81[169]), QByteArray());
}

void TestBoneControlLinks::bonesWithoutControlsHaveADot_data()
{
    QTest::addColumn<QString>("bone");
    for (const char* bone : {"lForearmBend", "lHand", "rForearmBend", "rHand", "upperTeeth",
             "lowerTeeth", "lowerFaceRig", "upperFaceRig", "lEar", "rEar"})
        QTest::newRow(bone) << QString(QLatin1String(bone));
}

void TestBoneControlLinks::bonesWithoutControlsHaveADot()
{
    QFETCH(QString, bone);
    QCOMPARE(QByteArray(kBoneControlLinksG8[boneIndex(bone)]), QByteArray("."));
    QCOMPARE(QByteArray(kBoneControlLinksG81[boneIndex(bone)]), QByteArray("."));
}

void TestBoneControlLinks::faceRowsHoldExpressionControlsOnly()
{
    for (const char* figureName : {"Genesis8Female", "Genesis8_1Female"}) {
        const DzFigure figure {QLatin1String(figureName)};
        QVERIFY(isSupportedFigure(&figure));
        for (int i = 0; i < kBoneCount; ++i) {
            for (const QString& name : namesIn(boneControlRow(i)))
                QCOMPARE(isExpressionControl(name), isFaceBone(boneName(i)));
        }
    }
}

void TestBoneControlLinks::rowLengths_data()
{
    QTest::addColumn<QString>("bone");
    QTest::addColumn<int>("g8");
    QTest::addColumn<int>("g81");
    QTest::newRow("hip") << "hip" << 3 << 3;
    QTest::newRow("foot") << "lFoot" << 9 << 9;
    QTest::newRow("index finger") << "rIndex1" << 10 << 10;
    QTest::newRow("neck") << "neckLower" << 4 << 4;
    QTest::newRow("jaw") << "lowerJaw" << 62 << 13;
    QTest::newRow("eye") << "lEye" << 3 << 10;
}

void TestBoneControlLinks::rowLengths()
{
    QFETCH(QString, bone);
    QFETCH(int, g8);
    QFETCH(int, g81);
    QCOMPARE(namesIn(kBoneControlLinksG8[boneIndex(bone)]).size(), g8);
    QCOMPARE(namesIn(kBoneControlLinksG81[boneIndex(bone)]).size(), g81);
}

void TestBoneControlLinks::rowsNameWhatDrivesTheFigure_data()
{
    addFigureRows();
}

void TestBoneControlLinks::rowsNameWhatDrivesTheFigure()
{
    QFETCH(QString, figure);
    const FigureFixture f(figure);
    for (const FigureBone& each : bonesOf(f.figure)) {
        QSet<QString> drivers;
        for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel) {
            for (int i = 0; i < channel->getNumControllers(); ++i) {
                const auto* link = qobject_cast<DzERCLink*>(channel->getController(i));
                QVERIFY(link);
                drivers.insert(controlNameOf(link->getProperty()));
            }
        }
        if (isGenesis81() && each.number == 169)
            QCOMPARE(drivers.size(), 8); // the figure has links that the table leaves out
        else
            QVERIFY2(
                drivers == setOf(namesIn(boneControlRow(each.number))), kBoneTable[each.number]);
    }
}

QUILLON_TEST(TestBoneControlLinks)
#include "test_bone_control_links.moc"
