#include "room_tests.h"

#include "host/posebench/pose_preset_io.h"

#include "host/figures/figure_loader.h"

#include "dzapp.h"
#include "dzbone.h"
#include "dzcontentmgr.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzgzio.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <random>

using namespace quillon;

class TestPosePresetIo : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void urlNamesAChannel_data();
    void urlNamesAChannel();
    void readsEveryLayout_data();
    void readsEveryLayout();
    void refusesWhatIsNoPose_data();
    void refusesWhatIsNoPose();
    void absentFileIsRefused();
    void applyingIsOneUndoStep();
    void lockedChannelsStay();
    void keysAreSetFromTheCurrentTimeOn();
    void savedTextHasTheHostsLayout();
    void savedEntriesStandInTheHostsOrder();
    void savedPoseComesBackBitForBit_data();
    void savedPoseComesBackBitForBit();
    void savedKeysComeBack();
    void idIsBelowTheContentDirectory();
    void unwritablePlaceIsReported();

private:
    DzFigure* addFigure(const char* name);
    QString write(const QByteArray& bytes);
    DzFloatProperty* channel(const char* bone, const char* property);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<DzUndoStack> m_undo;
    std::unique_ptr<DzScene> m_scene;
    DzFigure* m_figure;
    QString m_why;
};

void TestPosePresetIo::init()
{
    m_dir.reset(new QTemporaryDir);
    m_undo.reset(new DzUndoStack);
    m_scene.reset(new DzScene);
    m_figure = addFigure("Genesis8Female");
    m_why.clear();
}

void TestPosePresetIo::cleanup()
{
    m_scene.reset();
    m_undo.reset();
}

DzFigure* TestPosePresetIo::addFigure(const char* name)
{
    DzFigure* figure = loadFigure(name, &m_why);
    if (figure)
        m_scene->addNode(figure);
    return figure;
}

QString TestPosePresetIo::write(const QByteArray& bytes)
{
    QFile file(m_dir->filePath("pose.duf"));
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return file.fileName();
}

DzFloatProperty* TestPosePresetIo::channel(const char* bone, const char* property)
{
    return static_cast<DzFloatProperty*>(m_figure->findBone(bone)->findProperty(property));
}

static QByteArray preset(const QByteArray& animations, const QByteArray& type = "preset_pose")
{
    return "{ \"asset_info\" : { \"type\" : \"" + type + "\" }, \"scene\" : { \"animations\" : [ "
        + animations + " ] } }";
}

static const char kShinEntry[]
    = "{ \"url\" : \"name://@selection/lShin:?rotation/x/value\", \"keys\" : [ [ 0, 12.5 ] ] }";

static QByteArray gzipped(const QByteArray& plain)
{
    QBuffer out;
    DzGzIO gzip(&out);
    gzip.open(QIODevice::WriteOnly);
    gzip.write(plain);
    gzip.close();
    return out.data();
}

// ---- addresses -----------------------------------------------------------------------------

void TestPosePresetIo::urlNamesAChannel_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("found"); // node|control|property; empty: no channel
    QTest::newRow("bone") << "name://@selection/lShin:?rotation/x/value"
                          << "lShin||XRotate";
    QTest::newRow("figure") << "name://@selection:?translation/y/value"
                            << "||YTranslate";
    QTest::newRow("general scale") << "name://@selection/hip:?scale/general/value"
                                   << "hip||Scale";
    QTest::newRow("control") << "name://@selection#pCTRLWaistBend:?value/value"
                             << "|pCTRLWaistBend|Value";
    QTest::newRow("percent code") << "name://@selection#eCTRL%20Up-Down:?value/value"
                                  << "|eCTRL Up-Down|Value";
    QTest::newRow("other channel") << "name://@selection/hip:?visible/value"
                                   << "";
    QTest::newRow("other scheme") << "id://@selection/hip:?rotation/x/value"
                                  << "";
    QTest::newRow("figure named") << "name://Genesis8Female/hip:?rotation/x/value"
                                  << "";
    QTest::newRow("no value") << "name://@selection/hip:?rotation/x"
                              << "";
    QTest::newRow("empty control") << "name://@selection#:?value/value"
                                   << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TestPosePresetIo::urlNamesAChannel()
{
    QFETCH(QString, url);
    QFETCH(QString, found);
    PresetChannel channel;
    QCOMPARE(parseChannelUrl(url, &channel), !found.isEmpty());
    if (!found.isEmpty())
        QCOMPARE(channel.node + "|" + channel.control + "|" + channel.property, found);
}

// ---- reading -------------------------------------------------------------------------------

void TestPosePresetIo::readsEveryLayout_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray plain = preset(kShinEntry);
    QTest::newRow("plain") << plain;
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF") + plain;
    QTest::newRow("gzip") << gzipped(plain);
    QTest::newRow("mark inside gzip") << gzipped(QByteArray("\xEF\xBB\xBF") + plain);
    QTest::newRow("carriage returns") << QByteArray(plain).replace(" ", "\r\n");
    QTest::newRow("one key has an interpolation")
        << QByteArray(plain).replace("12.5 ]", "12.5, [ \"LINEAR\" ] ]");
    QTest::newRow("entries of other kinds between")
        << preset(QByteArray("{ \"url\" : \"name://@selection:?visible/value\", \"keys\" : "
                             "[ [ 0, true ] ] }, ")
               + kShinEntry
               + ", { \"url\" : \"name://@selection/hip:?rotation/x/value\", \"keys\" : "
                 "[ [ 0, \"text\" ] ] }, { \"url\" : "
                 "\"name://@selection/hip:?rotation/y/value\" }");
}

void TestPosePresetIo::readsEveryLayout()
{
    QFETCH(QByteArray, bytes);
    PosePreset read;
    QVERIFY2(readPosePreset(write(bytes), &read, &m_why), qPrintable(m_why));
    QCOMPARE(read.name, QString("pose"));
    QCOMPARE(int(read.channels.size()), 1);
    QCOMPARE(read.channels[0].node, QString("lShin"));
    QCOMPARE(read.channels[0].keys[0].value, 12.5f);
    QCOMPARE(applyPosePreset(read, m_figure, 0), 1);
    QCOMPARE(channel("lShin", "XRotate")->getRawValue(), 12.5f);
}

void TestPosePresetIo::refusesWhatIsNoPose_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("message"); // after the file's name
    QTest::newRow("empty") << QByteArray() << "the file is empty";
    QTest::newRow("hierarchical") << preset(kShinEntry, "preset_hierarchical_pose")
                                  << "holds 'preset_hierarchical_pose', not a pose of one figure";
    QTest::newRow("material") << preset(kShinEntry, "preset_material")
                              << "holds 'preset_material', not a pose of one figure";
    QTest::newRow("other JSON") << QByteArray("{}") << "holds '', not a pose of one figure";
    QTest::newRow("cut text") << preset(kShinEntry).left(120) << "line 1: unterminated string";
    QTest::newRow("cut gzip") << gzipped(preset(kShinEntry)).left(40) << "damaged gzip data";
}

void TestPosePresetIo::refusesWhatIsNoPose()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, message);
    PosePreset read;
    const QString file = write(bytes);
    QVERIFY(!readPosePreset(file, &read, &m_why));
    QCOMPARE(m_why, file + ": " + message);
}

void TestPosePresetIo::absentFileIsRefused()
{
    PosePreset read;
    QVERIFY(!readPosePreset("/nowhere/pose.duf", &read, &m_why));
    QVERIFY2(m_why.startsWith("/nowhere/pose.duf: "), qPrintable(m_why));
    QVERIFY(m_why.size() > int(sizeof "/nowhere/pose.duf: "));
}

// ---- applying ------------------------------------------------------------------------------

void TestPosePresetIo::applyingIsOneUndoStep()
{
    PosePreset read;
    const QByteArray two = QByteArray(kShinEntry) + ", "
        + QByteArray(kShinEntry).replace("lShin", "rShin") + ", "
        + QByteArray(kShinEntry).replace("lShin", "tail");
    QVERIFY(readPosePreset(write(preset(two)), &read, &m_why));
    const int steps = m_undo->getNumUndoItems();
    QCOMPARE(applyPosePreset(read, m_figure, 0), 2); // the figure has no tail
    QCOMPARE(m_undo->getNumUndoItems(), steps + 1);
    QCOMPARE(m_undo->getUndoCaption(), QString("Apply Pose pose"));
    m_undo->undo();
    QCOMPARE(channel("lShin", "XRotate")->getRawValue(), 0.f);
    QCOMPARE(channel("rShin", "XRotate")->getRawValue(), 0.f);
    QVERIFY(!channel("rShin", "XRotate")->hasKeys());
}

void TestPosePresetIo::lockedChannelsStay()
{
    channel("lShin", "XRotate")->lock();
    PosePreset read;
    QVERIFY(readPosePreset(write(preset(kShinEntry)), &read, &m_why));
    applyPosePreset(read, m_figure, 0);
    QCOMPARE(channel("lShin", "XRotate")->getRawValue(), 0.f);
}

void TestPosePresetIo::keysAreSetFromTheCurrentTimeOn()
{
    const QByteArray keys
        = QByteArray(kShinEntry).replace("[ 0, 12.5 ]", "[ 0, 1 ], [ 0.03333333, 2 ], [ 1, 3 ]");
    PosePreset read;
    QVERIFY(readPosePreset(write(preset(keys)), &read, &m_why));
    applyPosePreset(read, m_figure, 320);
    const DzFloatProperty* shin = channel("lShin", "XRotate");
    QCOMPARE(shin->getRawValue(320), 1.f);
    QCOMPARE(shin->getRawValue(480), 2.f);
    QCOMPARE(shin->getRawValue(320 + DZ_TICKS_PER_SECOND), 3.f);
}

// ---- saving --------------------------------------------------------------------------------

static QByteArray savedText(const QString& file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

void TestPosePresetIo::savedTextHasTheHostsLayout()
{
    channel("lShin", "XRotate")->setValue(12.5f);
    const QString file = m_dir->filePath("saved.duf");
    QVERIFY(savePosePreset(file, m_figure, PresetSaveOptions(), &m_why));
    const QByteArray text = savedText(file);
    QVERIFY(text.startsWith("{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n"));
    QVERIFY(text.contains("\t\t\"type\" : \"preset_pose\",\n"));
    QVERIFY(text.contains("\t\t\t{\n\t\t\t\t\"url\" : "
                          "\"name://@selection/lShin:?rotation/x/value\",\n"
                          "\t\t\t\t\"keys\" : [ [ 0, 12.5 ] ]\n\t\t\t},\n"));
    QVERIFY(text.endsWith("\t\t\t}\n\t\t]\n\t}\n}"));
    QVERIFY(!text.contains('\r'));
    QVERIFY(!text.contains("-0 "));
}

void TestPosePresetIo::savedEntriesStandInTheHostsOrder()
{
    const QString file = m_dir->filePath("saved.duf");
    QVERIFY(savePosePreset(file, m_figure, PresetSaveOptions(), &m_why));
    PosePreset read;
    QVERIFY(readPosePreset(file, &read, &m_why));
    QCOMPARE(int(read.channels.size()), 170 * 10 + 10 + 250);
    QStringList nodes;
    for (const PresetChannel& entry : read.channels)
        if (!entry.node.isEmpty() && !nodes.contains(entry.node))
            nodes << entry.node;
    QCOMPARE(nodes.size(), 170);
    QCOMPARE(nodes.last(), QString("hip"));
    for (const QString& name : std::as_const(nodes)) { // leaf first
        const DzNode* parent = m_figure->findBone(name)->getNodeParent();
        if (parent != m_figure)
            QVERIFY2(nodes.indexOf(name) < nodes.indexOf(parent->getName()), qPrintable(name));
    }
    QCOMPARE(read.channels[1699].node, QString("hip"));
    QVERIFY(read.channels[1700].node.isEmpty() && read.channels[1700].control.isEmpty());
    QVERIFY(!read.channels[1710].control.isEmpty());
    const QStringList ten = {"XTranslate", "YTranslate", "ZTranslate", "XRotate", "YRotate",
        "ZRotate", "Scale", "XScale", "YScale", "ZScale"};
    for (int i = 0; i < 1710; ++i)
        QCOMPARE(read.channels[i].property, ten[i % 10]);
}

static QVector<DzFloatProperty*> allChannels(const DzFigure* figure)
{
    QVector<DzFloatProperty*> all;
    QObjectList nodes = figure->getAllBones();
    nodes << const_cast<DzFigure*>(figure);
    for (QObject* object : std::as_const(nodes)) {
        const DzNode* node = static_cast<DzNode*>(object);
        for (int i = 0; i < node->getNumProperties(); ++i) {
            auto* property = qobject_cast<DzFloatProperty*>(node->getProperty(i));
            if (property && !property->isHidden())
                all << property;
        }
    }
    for (int i = 0; i < figure->getObject()->getNumModifiers(); ++i)
        all << static_cast<DzMorph*>(figure->getObject()->getModifier(i))->getValueChannel();
    return all;
}

void TestPosePresetIo::savedPoseComesBackBitForBit_data()
{
    QTest::addColumn<bool>("compress");
    QTest::newRow("plain") << false;
    QTest::newRow("gzip") << true;
}

// With pose controls active: files hold raw values, so the controls are not counted twice.
void TestPosePresetIo::savedPoseComesBackBitForBit()
{
    QFETCH(bool, compress);
    std::mt19937 random(5);
    for (DzFloatProperty* property : allChannels(m_figure)) {
        std::uniform_int_distribution<int> part(0, 1000);
        const float low = std::max(property->getMin(), -100.f);
        const float high = std::min(property->getMax(), 100.f);
        const QByteArray seven
            = QByteArray::number(low + (high - low) * part(random) / 1000.0, 'g', 7);
        property->setRawValue(seven.toFloat()); // files carry seven digits
    }
    PresetSaveOptions options;
    options.compress = compress;
    const QString file = m_dir->filePath("saved.duf");
    QVERIFY2(savePosePreset(file, m_figure, options, &m_why), qPrintable(m_why));
    QCOMPARE(savedText(file).startsWith("\x1f\x8b"), compress);
    const DzFigure* other = addFigure("Genesis8Female");
    PosePreset read;
    QVERIFY2(readPosePreset(file, &read, &m_why), qPrintable(m_why));
    QCOMPARE(applyPosePreset(read, const_cast<DzFigure*>(other), 0), 1960);
    const QVector<DzFloatProperty*> before = allChannels(m_figure);
    const QVector<DzFloatProperty*> after = allChannels(other);
    QCOMPARE(after.size(), before.size());
    for (int i = 0; i < before.size(); ++i) {
        QCOMPARE(after[i]->getName(), before[i]->getName());
        QVERIFY2(
            after[i]->getRawValue() == before[i]->getRawValue(), qPrintable(before[i]->getName()));
        QVERIFY2(after[i]->getValue() == before[i]->getValue(), qPrintable(before[i]->getName()));
    }
}

void TestPosePresetIo::savedKeysComeBack()
{
    DzFloatProperty* shin = channel("lShin", "XRotate");
    shin->setValue(160, 10.f);
    shin->setValue(320, 20.f);
    shin->setValue(9600, 30.f); // outside the range
    PresetSaveOptions options;
    options.range = DzTimeRange(160, 4800);
    const QString file = m_dir->filePath("saved.duf");
    QVERIFY(savePosePreset(file, m_figure, options, &m_why));
    QVERIFY(savedText(file).contains("\"keys\" : [ [ 0, 10 ], [ 0.03333333, 20 ] ]\n"));
}

void TestPosePresetIo::idIsBelowTheContentDirectory()
{
    DzAppSetup setup;
    setup.contentDirectories << m_dir->path();
    DzApp app(setup);
    QVERIFY(QDir(m_dir->path()).mkpath("My Poses"));
    const QString inside = m_dir->filePath("My Poses/A b.duf");
    QVERIFY(savePosePreset(inside, m_figure, PresetSaveOptions(), &m_why));
    QVERIFY(savedText(inside).contains("\"id\" : \"/My%20Poses/A%20b.duf\""));
}

void TestPosePresetIo::unwritablePlaceIsReported()
{
    const QString file = m_dir->filePath("absent/saved.duf");
    QVERIFY(!savePosePreset(file, m_figure, PresetSaveOptions(), &m_why));
    QVERIFY2(m_why.startsWith(file + ": "), qPrintable(m_why));
}

QUILLON_TEST(TestPosePresetIo)
#include "test_pose_preset_io.moc"
