#include "figure_files.h"
#include "room_tests.h"

#include "host/figures/figure_loader.h"
#include "host/figures/prop_maker.h"

#include "dzbone.h"
#include "dzerclink.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QDir>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <utility>

using namespace quillon;

static const float kPlaceCm = 1e-4f; // single precision at body size
static const char* const kAxes[] = {"X", "Y", "Z"};

class TestFigureLoader : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void allFiguresLoad_data();
    void allFiguresLoad();
    void bonesStandInTheOrderOfTheFile();
    void bonesHavePointsAndRotationOrderOfTheFile();
    void channelsHaveLimitsAndFlagsOfTheFile();
    void controlsArePropertiesOrMorphs_data();
    void controlsArePropertiesOrMorphs();
    void controlsHaveRangeAndPlaceOfTheFile();
    void everyLinkMovesItsBone_data();
    void everyLinkMovesItsBone();
    void everyLinkIsOneController();
    void restPoseIsSymmetric();
    void restPoseStandsAtTheOriginsUnturned();
    void malesAreLargerByOneFactor();
    void onlyTheHipTakesTheFiguresScale();
    void boxHoldsTheBody();
    void secondLoadKeepsTheNameAndNumbersTheLabel();
    void loadingRecordsNothingAndAddingIsOneStep();
    void unknownNameIsRefused();
    void absentFolderIsRefused();
    void damagedFilesAreRefused_data();
    void damagedFilesAreRefused();
    void propHasItsBox();

private:
    DzFigure* load(const char* name);

    std::unique_ptr<DzUndoStack> m_undo;
    std::unique_ptr<DzScene> m_scene;
    QVariantList m_bones;
    QString m_why;
};

static DzFloatProperty* channel(const DzNode* node, const QString& name)
{
    return qobject_cast<DzFloatProperty*>(node->findProperty(name));
}

static DzVec3 pointOf(const QVariant& value)
{
    const QVariantList v = value.toList();
    return DzVec3(v.at(0).toFloat(), v.at(1).toFloat(), v.at(2).toFloat());
}

static bool nearly(const DzVec3& a, const DzVec3& b, float tolerance)
{
    return (a - b).length() <= tolerance;
}

void TestFigureLoader::initTestCase()
{
    m_bones = figureRows("skeleton.json", "bones");
    QCOMPARE(m_bones.size(), 170);
}

void TestFigureLoader::init()
{
    setFigureFolder(QString());
    m_undo.reset(new DzUndoStack);
    m_scene.reset(new DzScene);
}

void TestFigureLoader::cleanup()
{
    m_scene.reset();
    m_undo.reset();
}

DzFigure* TestFigureLoader::load(const char* name)
{
    DzFigure* figure = loadFigure(name, &m_why);
    if (figure)
        m_scene->addNode(figure);
    return figure;
}

void TestFigureLoader::allFiguresLoad_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("Genesis8Female") << "Genesis 8 Female";
    QTest::newRow("Genesis8Male") << "Genesis 8 Male";
    QTest::newRow("Genesis8_1Female") << "Genesis 8.1 Female";
    QTest::newRow("Genesis8_1Male") << "Genesis 8.1 Male";
}

void TestFigureLoader::allFiguresLoad()
{
    QFETCH(QString, label);
    const DzFigure* figure = load(QTest::currentDataTag());
    QVERIFY2(figure, qPrintable(m_why));
    QCOMPARE(figure->getName(), QString(QTest::currentDataTag()));
    QCOMPARE(figure->getLabel(), label);
    QCOMPARE(figure->getAllBones().size(), 170);
    QVERIFY(figureNames().contains(figure->getName()));
}

// Depth first, children in the order of the file.
static void listBelow(const QVariantList& bones, const QString& parent, QStringList* names)
{
    for (const QVariant& bone : bones) {
        const QVariantMap row = bone.toMap();
        if (row.value("parent").toString() != parent)
            continue;
        *names << row.value("name").toString();
        listBelow(bones, names->last(), names);
    }
}

void TestFigureLoader::bonesStandInTheOrderOfTheFile()
{
    const DzFigure* figure = load("Genesis8Female");
    QStringList expected, found;
    listBelow(m_bones, QString(), &expected);
    const QObjectList bones = figure->getAllBones();
    for (QObject* bone : bones)
        found << static_cast<DzBone*>(bone)->getName();
    QCOMPARE(found, expected);
}

void TestFigureLoader::bonesHavePointsAndRotationOrderOfTheFile()
{
    const DzFigure* figure = load("Genesis8Female");
    for (const QVariant& value : std::as_const(m_bones)) {
        const QVariantMap row = value.toMap();
        const DzBone* bone = figure->findBone(row.value("name").toString());
        QVERIFY2(bone, qPrintable(row.value("name").toString()));
        QCOMPARE(bone->getLabel(), row.value("label").toString());
        QCOMPARE(bone->getRotationOrder().toString(), row.value("rotation_order").toString());
        QVERIFY(nearly(bone->getOrigin(), pointOf(row.value("center")), kPlaceCm));
        QVERIFY(nearly(bone->getEndPoint(), pointOf(row.value("end")), kPlaceCm));
    }
}

void TestFigureLoader::channelsHaveLimitsAndFlagsOfTheFile()
{
    const DzFigure* figure = load("Genesis8Male");
    for (const QVariant& value : std::as_const(m_bones)) {
        const QVariantMap row = value.toMap();
        const DzBone* bone = figure->findBone(row.value("name").toString());
        for (const char* kind : {"rotation", "translation"})
            for (const char* axis : kAxes) {
                const QVariantMap file = row.value(kind).toMap().value(axis).toMap();
                const DzFloatProperty* property
                    = channel(bone, QString(axis) + (*kind == 'r' ? "Rotate" : "Translate"));
                QVERIFY(property);
                QCOMPARE(property->getMin(), file.value("min").toFloat());
                QCOMPARE(property->getMax(), file.value("max").toFloat());
                QCOMPARE(property->isLocked(), file.value("locked").toBool());
                QCOMPARE(property->isClamped(), file.value("clamped").toBool());
                if (*kind == 'r')
                    QCOMPARE(property->getLabel(), file.value("label").toString());
                QVERIFY(property->getSensitivity() > 0);
            }
    }
}

// ---- controls ------------------------------------------------------------------------------

void TestFigureLoader::controlsArePropertiesOrMorphs_data()
{
    QTest::addColumn<int>("properties");
    QTest::addColumn<int>("morphs");
    QTest::newRow("Genesis8Female") << 229 << 21; // 250
    QTest::newRow("Genesis8Male") << 229 << 21;
    QTest::newRow("Genesis8_1Female") << 150 << 98; // 248
    QTest::newRow("Genesis8_1Male") << 150 << 98;
}

void TestFigureLoader::controlsArePropertiesOrMorphs()
{
    QFETCH(int, properties);
    QFETCH(int, morphs);
    const DzFigure* figure = load(QTest::currentDataTag());
    int foundProperties = 0;
    int foundMorphs = 0;
    for (const QVariant& value : figureControls(QTest::currentDataTag())) {
        const QVariantMap control = value.toMap();
        const QString name = control.value("name").toString();
        const bool drives = !control.value("links").toList().isEmpty();
        const DzProperty* property = figure->findProperty(name);
        DzModifier* modifier = figure->getObject()->findModifier(name);
        QVERIFY2((property != 0) == drives, qPrintable(name));
        QVERIFY2((modifier != 0) == !drives, qPrintable(name));
        QVERIFY2(!modifier || modifier->className() == "DzMorph", qPrintable(name));
        ++(drives ? foundProperties : foundMorphs);
    }
    QCOMPARE(foundProperties, properties);
    QCOMPARE(foundMorphs, morphs);
    QCOMPARE(figure->getObject()->getNumModifiers(), morphs);
}

static DzFloatProperty* controlOf(const DzFigure* figure, const QString& name)
{
    if (DzFloatProperty* property = channel(figure, name))
        return property;
    return static_cast<DzMorph*>(figure->getObject()->findModifier(name))->getValueChannel();
}

void TestFigureLoader::controlsHaveRangeAndPlaceOfTheFile()
{
    const DzFigure* figure = load("Genesis8_1Female");
    for (const QVariant& value : figureControls("Genesis8_1Female")) {
        const QVariantMap row = value.toMap();
        const DzFloatProperty* control = controlOf(figure, row.value("name").toString());
        QCOMPARE(control->getMin(), row.value("min").toFloat());
        QCOMPARE(control->getMax(), row.value("max").toFloat());
        QVERIFY(control->isClamped());
        QVERIFY(!control->isLocked());
        QCOMPARE(control->getValue(), 0.f);
        QCOMPARE(control->getPath(), row.value("path").toString());
        QVERIFY(control->getPath().startsWith("Pose Controls/"));
    }
}

void TestFigureLoader::everyLinkMovesItsBone_data()
{
    QTest::addColumn<int>("links");
    QTest::newRow("Genesis8Female") << 483 + 4820;
    QTest::newRow("Genesis8_1Male") << 483 + 2040;
}

void TestFigureLoader::everyLinkMovesItsBone()
{
    QFETCH(int, links);
    const DzFigure* figure = load(QTest::currentDataTag());
    int seen = 0;
    for (const QVariant& value : figureControls(QTest::currentDataTag())) {
        const QVariantMap row = value.toMap();
        DzFloatProperty* control = controlOf(figure, row.value("name").toString());
        control->setValue(1);
        for (const QVariant& linkValue : row.value("links").toList()) {
            const QVariantList link = linkValue.toList();
            DzFloatProperty* moved
                = channel(figure->findBone(link.at(0).toString()), link.at(1).toString());
            QVERIFY(!moved->isLocked());
            float expected = link.at(2).toFloat();
            if (moved->isClamped())
                expected = std::min(moved->getMax(), std::max(moved->getMin(), expected));
            QVERIFY2(std::fabs(moved->getValue() - expected) < 1e-4f,
                qPrintable(control->getName() + " " + link.at(0).toString()));
            QCOMPARE(moved->getRawValue(), 0.f);
            ++seen;
        }
        control->setValue(0);
    }
    QCOMPARE(seen, links);
}

void TestFigureLoader::everyLinkIsOneController()
{
    const DzFigure* figure = load("Genesis8Female");
    int controllers = 0;
    for (QObject* object : figure->getAllBones()) {
        const DzBone* bone = static_cast<DzBone*>(object);
        for (int i = 0; i < bone->getNumProperties(); ++i)
            for (int c = 0; c < bone->getProperty(i)->getNumControllers(); ++c) {
                const DzERCLink* link
                    = qobject_cast<DzERCLink*>(bone->getProperty(i)->getController(c));
                QVERIFY(link);
                QCOMPARE(link->getType(), DzERCLink::ERCDeltaAdd0);
                QVERIFY(link->getProperty()->getOwner() == figure);
                ++controllers;
            }
    }
    QCOMPARE(controllers, 483 + 4820);
}

// ---- the body ------------------------------------------------------------------------------

void TestFigureLoader::restPoseIsSymmetric()
{
    const DzFigure* figure = load("Genesis8Female");
    int pairs = 0;
    for (QObject* object : figure->getAllBones()) {
        const DzBone* left = static_cast<DzBone*>(object);
        if (!left->getName().startsWith('l') || !left->getName().at(1).isUpper())
            continue;
        const DzBone* right = figure->findBone("r" + left->getName().mid(1));
        QVERIFY2(right, qPrintable(left->getName()));
        const DzVec3 at = left->getWSPos();
        QVERIFY(nearly(right->getWSPos(), DzVec3(-at.m_x, at.m_y, at.m_z), kPlaceCm));
        QVERIFY2(at.m_x > 0, "the figure's left is at +X");
        ++pairs;
    }
    QVERIFY2(pairs > 60, qPrintable(QString::number(pairs)));
}

void TestFigureLoader::restPoseStandsAtTheOriginsUnturned()
{
    const DzFigure* figure = load("Genesis8_1Male");
    for (QObject* object : figure->getAllBones()) {
        const DzBone* bone = static_cast<DzBone*>(object);
        QVERIFY(nearly(bone->getWSPos(), bone->getOrigin(), kPlaceCm));
        const DzQuat turn = bone->getWSRot();
        QVERIFY2(std::fabs(std::fabs(turn.m_w) - 1) < 1e-6, qPrintable(bone->getName()));
        QVERIFY(nearly(bone->getLocalPos(), DzVec3(), 0));
    }
}

void TestFigureLoader::malesAreLargerByOneFactor()
{
    const float scale = figureFile("Genesis8Male.json").value("scale").toFloat();
    QVERIFY(scale > 1);
    const DzFigure* female = load("Genesis8Female");
    const DzFigure* male = load("Genesis8Male");
    for (QObject* object : female->getAllBones()) {
        const DzBone* bone = static_cast<DzBone*>(object);
        const DzBone* other = male->findBone(bone->getName());
        QVERIFY(nearly(other->getOrigin(), bone->getOrigin() * scale, kPlaceCm));
    }
}

void TestFigureLoader::onlyTheHipTakesTheFiguresScale()
{
    DzFigure* figure = load("Genesis8Female");
    for (QObject* object : figure->getAllBones()) {
        const DzBone* bone = static_cast<DzBone*>(object);
        QCOMPARE(bone->inheritsScale(), bone->getName() == "hip");
    }
    figure->getScaleControl()->setValue(2);
    DzBone* hand = figure->findBone("lHand");
    QVERIFY(nearly(hand->getWSPos(), hand->getOrigin() * 2, 1e-3f));
    figure->getScaleControl()->setValue(1);
    figure->findBone("lForearmTwist")->getScaleControl()->setValue(3);
    QVERIFY(nearly(hand->getWSScale().row(0), DzVec3(1, 0, 0), 1e-5f));
}

void TestFigureLoader::boxHoldsTheBody()
{
    const DzFigure* figure = load("Genesis8Female");
    const DzBox3 box = figure->getLocalBoundingBox();
    QVERIFY(box.isValid());
    QCOMPARE(box.getMin().m_y, 0.f);
    for (QObject* object : figure->getAllBones()) {
        const DzVec3 at = static_cast<DzBone*>(object)->getOrigin();
        for (int i = 0; i < 3; ++i)
            QVERIFY(box.getMin()[i] <= at[i] && at[i] <= box.getMax()[i]);
    }
    QVERIFY(box.getMax().m_y > 165 && box.getMax().m_y < 185);
}

// ---- loading -------------------------------------------------------------------------------

void TestFigureLoader::secondLoadKeepsTheNameAndNumbersTheLabel()
{
    const DzFigure* first = load("Genesis8Female");
    const DzFigure* second = load("Genesis8Female");
    const DzFigure* third = load("Genesis8Female");
    const DzFigure* other = load("Genesis8Male");
    QCOMPARE(first->getName(), second->getName());
    QCOMPARE(first->getLabel(), QString("Genesis 8 Female"));
    QCOMPARE(second->getLabel(), QString("Genesis 8 Female (2)"));
    QCOMPARE(third->getLabel(), QString("Genesis 8 Female (3)"));
    QCOMPARE(other->getLabel(), QString("Genesis 8 Male"));
}

void TestFigureLoader::loadingRecordsNothingAndAddingIsOneStep()
{
    DzFigure* figure = loadFigure("Genesis8Female", &m_why);
    QCOMPARE(m_undo->getNumUndoItems(), 0);
    m_scene->addNode(figure);
    QCOMPARE(m_undo->getNumUndoItems(), 1);
    QVERIFY(m_undo->undo());
    QCOMPARE(m_scene->getNumNodes(), 0);
    QVERIFY(m_undo->redo());
    QCOMPARE(m_scene->getNumNodes(), 171);
    QCOMPARE(m_scene->findSkeleton("Genesis8Female"), static_cast<DzSkeleton*>(figure));
}

void TestFigureLoader::unknownNameIsRefused()
{
    QVERIFY(!loadFigure("Genesis9", &m_why));
    QCOMPARE(m_why,
        QString("Genesis9: no such figure; there are Genesis8Female, Genesis8Male, "
                "Genesis8_1Female, Genesis8_1Male"));
}

void TestFigureLoader::absentFolderIsRefused()
{
    setFigureFolder("/nowhere/at/all");
    QVERIFY(!loadFigure("Genesis8Female", &m_why));
    QVERIFY2(m_why.startsWith("/nowhere/at/all/Genesis8Female.json: "), qPrintable(m_why));
}

void TestFigureLoader::damagedFilesAreRefused_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("message");
    QTest::newRow("figure is no JSON")
        << "Genesis8Female.json" << QByteArray("{ \"name\" ") << "Genesis8Female.json: line 1: ";
    QTest::newRow("bone before its parent")
        << "skeleton.json"
        << QByteArray("{\"bones\":[{\"name\":\"head\",\"parent\":\"neck\","
                      "\"rotation_order\":\"YZX\"}]}")
        << "skeleton.json: bone 'head': unknown parent or rotation order";
    QTest::newRow("unknown rotation order")
        << "skeleton.json"
        << QByteArray("{\"bones\":[{\"name\":\"hip\",\"parent\":null,\"rotation_order\":\"YZY\"}]}")
        << "skeleton.json: bone 'hip': unknown parent or rotation order";
    QTest::newRow("link to nothing")
        << "body_links.json"
        << QByteArray("{\"controls\":[{\"name\":\"c\",\"links\":[[\"tail\",\"XRotate\",1]]}]}")
        << "body_links.json: control 'c': a link names no bone or channel";
}

void TestFigureLoader::damagedFilesAreRefused()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, text);
    QFETCH(QString, message);
    const QString folder = QDir::tempPath() + "/quillon_test_figure_loader";
    QDir().mkpath(folder);
    const QDir source(QUILLON_SOURCE_DIR "/host/figures");
    for (const QString& name : source.entryList(QStringList("*.json"))) {
        QFile::remove(folder + "/" + name);
        QFile::copy(source.filePath(name), folder + "/" + name);
    }
    QFile::remove(folder + "/" + file);
    QFile damaged(folder + "/" + file);
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.write(text);
    damaged.close();
    setFigureFolder(folder);
    QVERIFY(!loadFigure("Genesis8Female", &m_why));
    QVERIFY2(m_why.contains(message), qPrintable(m_why));
}

void TestFigureLoader::propHasItsBox()
{
    DzNode* prop = makeProp("Box", DzVec3(10, 20, 30), DzVec3(-10, 0, 5));
    m_scene->addNode(prop);
    QCOMPARE(prop->getName(), QString("Box"));
    QVERIFY(!prop->getSkeleton());
    QVERIFY(prop->getLocalBoundingBox().getMin() == DzVec3(-10, 0, 5));
    QVERIFY(prop->getLocalBoundingBox().getMax() == DzVec3(10, 20, 30));
}

QUILLON_TEST(TestFigureLoader)
#include "test_figure_loader.moc"
