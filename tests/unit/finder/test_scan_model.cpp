// A scan against a model of its own: what every file's signature has to be, which files each phase
// has to drop and for which earlier one, and which poses match each type. On the samples, on poses
// and odd files made here, and on real ones where they lie beside the project; the rows' names say
// which.
#include "pose_corpora.h"
#include "room_tests.h"
#include "scan_fixture.h"
#include "scan_model.h"

#include "finder/pose_signature.h"
#include "finder/pose_similarity.h"

using namespace quillon;

namespace {

// One file on its way through the model's scan.
struct ModelFile {
    QString path;
    quint32 hash = 0;
    quint32 code = 0;
    model::Signature signature;
    bool isCustom = false;
    bool isDropped = false;
};

// The index when a phase began.
struct PhaseStart {
    QStringList kept; // paths in order
    QSet<QString> dropped; // paths whose hash was 0
};
typedef QMap<QString, PhaseStart> PhaseStarts; // by info text

} // namespace

class TestScanModel : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void theModelKnowsTheRig();
    void scansEqualTheModel_data();
    void scansEqualTheModel();
    void matchesOfTheReferencePoseEqualTheModel();

private:
    std::vector<ModelFile> modelFiles(const QStringList& paths) const;
    void replayDuplicates(std::vector<ModelFile>* files, const QSet<QString>& dropped);
    void replayPass(std::vector<ModelFile>* files, const QSet<QString>& dropped,
        double (*margin)(const model::Signature&, const model::Signature&));
    void checkIndexFile(const std::vector<ModelFile>& files) const;
    void checkMatches(const std::vector<ModelFile>& files, const model::TypeModel& type);

    model::Skeleton m_skeleton;
    int m_verdicts = 0, m_exempt = 0;
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

void TestScanModel::initTestCase()
{
    m_skeleton = model::readSkeleton(s(QUILLON_SOURCE_DIR "/host/figures/skeleton.json"));
}

// Facts that the verdicts rest on: which channels are locked, and which way a turn goes.
void TestScanModel::theModelKnowsTheRig()
{
    QCOMPARE(m_skeleton.size(), 170);
    QVERIFY(m_skeleton[s("lForearmBend")].locked[0]);
    QVERIFY(!m_skeleton[s("lForearmBend")].locked[1]);
    model::Angles angles;
    angles[s("hip/y")] = 90;
    const model::Quat hip = model::localTurn(m_skeleton, angles, "hip");
    const model::Vec forward = model::rotate(hip, model::Vec {0, 0, 1});
    QVERIFY(nearly(forward.x, 1, 1e-12)); // turned to its left
}

// ---- content

static QByteArray unpacked(const QString& path)
{
    QFile file(path);
    DzGzIO gzip(&file);
    QByteArray bytes = gzip.open(QIODevice::ReadOnly) ? gzip.readAll() : QByteArray();
    gzip.close();
    if (bytes.isEmpty())
        bytes = fileBytes(path);
    return bytes.left(524288);
}

static quint32 hashOf(const QByteArray& bytes)
{
    quint32 hash = 5381;
    for (const char each : bytes)
        hash = (hash << 5) + hash + quint32(qint32(qint8(each)));
    return hash;
}

static bool has(const QString& text, const char* word)
{
    return text.contains(s(word), Qt::CaseInsensitive);
}

static bool isMakers(const QString& path)
{
    return has(path, "data/Brannoc/poses");
}

static quint32 codeOf(const QString& text, const QString& path)
{
    if (!has(text, "bigtoe") || !has(text, "pinky") || !has(text, "head"))
        return 0;
    if (has(text, "abdomen2") || has(text, "rheel"))
        return 0;
    const QString title
        = isMakers(path) ? path.section(QLatin1Char('/'), -1).section('.', 0, -2) : QString();
    const bool female
        = has(text, "breast") || has(path, "g8f") || has(path, "female") || has(title, "f");
    return !female && (has(path, "g8m") || has(path, "male") || has(title, "m")) ? 264 : 8;
}

std::vector<ModelFile> TestScanModel::modelFiles(const QStringList& paths) const
{
    std::vector<ModelFile> files;
    for (const QString& path : paths) {
        const QByteArray bytes = unpacked(path);
        if (!has(QString::fromLatin1(bytes.left(1024)), "preset_pose"))
            continue;
        ModelFile file;
        file.path = path;
        file.code = codeOf(QString::fromLatin1(bytes), path);
        if (file.code == 0)
            continue;
        if (isMakers(path) && (has(path, "mirror") || has(path, "noexpression")))
            continue;
        file.hash = hashOf(bytes);
        file.isCustom = path.contains(s("data/Brannoc/Quillon/custom"));
        bool ok = false;
        file.signature = model::signatureOf(m_skeleton, model::anglesOf(bytes, &ok));
        if (!ok && !path.contains(s("cut")))
            qFatal("no JSON: %s", qPrintable(path));
        files.push_back(file);
    }
    return files;
}

// Many poses around a few, so that every phase has work: copies, mirrors, neighbours, turned hips.
static model::Angles randomAngles(Random* random)
{
    model::Angles angles;
    static const char* const bones[] = {"lShin", "rShin", "lThighBend", "rThighBend", "pelvis",
        "lForearmBend", "rForearmBend", "lShldrBend", "rShldrBend", "lCollar", "rCollar",
        "chestUpper", "chestLower", "abdomenUpper", "abdomenLower", "hip"};
    for (const char* bone : bones) {
        const double reach = qstrcmp(bone, "hip") == 0 ? 350 : 60;
        for (const char* axis : {"/x", "/y", "/z"})
            angles[s(bone) + s(axis)] = random->between(-reach, reach); // locked ones, too
    }
    return angles;
}

static model::Angles neighbourOf(const model::Angles& angles, Random* random)
{
    model::Angles result = angles;
    for (double& each : result)
        each += random->between(-14, 14);
    return result;
}

static model::Angles mirrorOf(const model::Angles& angles)
{
    model::Angles result;
    for (auto each = angles.constBegin(); each != angles.constEnd(); ++each) {
        QString key = each.key();
        if (key.startsWith(QLatin1Char('l')))
            key[0] = QLatin1Char('r');
        else if (key.startsWith(QLatin1Char('r')))
            key[0] = QLatin1Char('l');
        result[key] = key.endsWith(s("/x")) ? each.value() : -each.value();
    }
    return result;
}

static void writePoses(ScanFixture* f, int count)
{
    Random random(2024);
    std::vector<model::Angles> poses;
    for (int n = 0; n < count; ++n) {
        const int kind = n == 0 ? 0 : random.below(6);
        const model::Angles other
            = n == 0 ? model::Angles() : poses[size_t(random.below(int(poses.size())))];
        const model::Angles angles = kind == 0 || kind == 1 ? randomAngles(&random)
            : kind == 2                                     ? mirrorOf(other)
            : kind == 3                                     ? other
                                                            : neighbourOf(other, &random);
        poses.push_back(angles);
        PoseValues values;
        for (auto each = angles.constBegin(); each != angles.constEnd(); ++each)
            values[each.key().toLatin1()] = each.value();
        const char* const folders[] = {"Female", "Male", "data/Brannoc/Quillon/custom", "any"};
        const QByteArray name = QByteArray(folders[random.below(4)]) + "/" + QByteArray::number(n);
        f->add((name + ".duf").constData(), values);
    }
}

// Whole bodies in odd layouts, among them one pose in all; some that the first look misses, and
// whatever else is no whole body.
static void writeOddFiles(ScanFixture* f)
{
    oddWholeBodies(f->content("another in each"));
    wildWholeBodies(f->content("wild"));
    const QByteArray host = unpackedFile(wholeBodySamples().first());
    for (const OddLayout& each : kOddLayouts)
        f->addText(
            (QByteArray("one in all/") + each.name + ".duf").constData(), inLayout(each, host));
    f->addText("any/cut.duf", host.left(host.size() - 2000)); // among the controls
    f->addText("any/16 bits a letter.duf", utf16(host));
    f->addText("any/late type.duf", QByteArray(1024, ' ') + host);
    for (const OddPreset& each : oddPresets())
        f->addText((QByteArray("small/") + each.name + ".duf").constData(), each.bytes);
}

// ---- replaying the phases

void TestScanModel::replayDuplicates(std::vector<ModelFile>* files, const QSet<QString>& dropped)
{
    for (size_t j = 0; j < files->size(); ++j) {
        ModelFile& later = (*files)[j];
        for (size_t i = 0; i < j && !later.isCustom; ++i) {
            const ModelFile& earlier = (*files)[i];
            if (!earlier.isCustom && !earlier.isDropped && earlier.hash == later.hash)
                later.isDropped = true;
        }
        QVERIFY2(dropped.contains(later.path) == later.isDropped, qPrintable(later.path));
    }
}

void TestScanModel::replayPass(std::vector<ModelFile>* files, const QSet<QString>& dropped,
    double (*margin)(const model::Signature&, const model::Signature&))
{
    for (size_t j = 0; j < files->size(); ++j) {
        ModelFile& later = (*files)[j];
        if (later.isCustom || later.isDropped)
            continue;
        double best = -10;
        QString why;
        for (size_t i = 0; i < j; ++i) {
            const ModelFile& earlier = (*files)[i];
            if (earlier.isCustom || earlier.isDropped
                || (margin == model::similarMargin && earlier.code != later.code))
                continue;
            const double m = margin(earlier.signature, later.signature);
            if (m > best) {
                best = m;
                why = QString("%1 against %2, margin %3").arg(later.path, earlier.path).arg(m);
            }
        }
        ++m_verdicts;
        const bool isDropped = dropped.contains(later.path);
        if (std::fabs(best) < model::kMargin)
            ++m_exempt;
        else
            QVERIFY2(isDropped == (best > 0), qPrintable(why));
        later.isDropped = isDropped;
    }
}

// ---- the index file

static bool isConjugate(const float* stored, const model::Quat& q)
{
    return nearly(stored[0], -q.x, 1e-4) && nearly(stored[1], -q.y, 1e-4)
        && nearly(stored[2], -q.z, 1e-4) && nearly(stored[3], q.w, 1e-4);
}

template <typename T> static T take(const QByteArray& bytes, int* at)
{
    T value = T();
    if (*at + int(sizeof value) <= bytes.size())
        std::memcpy(&value, bytes.constData() + *at, sizeof value);
    *at += int(sizeof value);
    return value;
}

void TestScanModel::checkIndexFile(const std::vector<ModelFile>& files) const
{
    const QByteArray bytes = fileBytes(dataFiles().poseIndex);
    int at = 0, count = 0;
    for (const ModelFile& each : files)
        count += !each.isDropped;
    QCOMPARE(take<qint32>(bytes, &at), 1);
    QCOMPARE(take<qint32>(bytes, &at), count);
    for (const ModelFile& each : files) {
        if (each.isDropped)
            continue;
        const QByteArray path = each.path.toUtf8();
        QCOMPARE(take<qint32>(bytes, &at), path.size());
        QCOMPARE(bytes.mid(at, path.size()), path);
        at += path.size();
        QCOMPARE(take<quint32>(bytes, &at), each.hash);
        QCOMPARE(take<quint32>(bytes, &at), each.code);
        for (const model::Quat& q : each.signature) {
            float stored[4];
            for (float& number : stored)
                number = take<float>(bytes, &at);
            QVERIFY2(isConjugate(stored, q), qPrintable(each.path));
        }
        QCOMPARE(int(take<quint8>(bytes, &at)), 1);
    }
    QCOMPARE(at, bytes.size());
}

void TestScanModel::checkMatches(const std::vector<ModelFile>& files, const model::TypeModel& type)
{
    int entry = 0;
    for (const ModelFile& each : files) {
        if (each.isDropped)
            continue;
        const double margin = model::typeMargin(type, each.signature);
        ++m_verdicts;
        if (std::fabs(margin) < model::kMargin)
            ++m_exempt;
        else
            QCOMPARE(browseScore(entry) > 0, margin > 0);
        ++entry;
    }
}

// ---- the scans

void TestScanModel::scansEqualTheModel_data()
{
    QTest::addColumn<QString>("content"); // empty: poses made here; "odd": odd files
    QTest::addColumn<QString>("figure");
    QTest::addColumn<int>("least"); // files that the first look takes for whole bodies
    QTest::newRow("made here, 8 female") << QString() << s("Genesis8Female") << 400;
    QTest::newRow("made here, 8.1 male") << QString() << s("Genesis8_1Male") << 400;
    QTest::newRow("odd files made here") << s("odd") << s("Genesis8Female") << 3 * kOddLayoutCount;
    QTest::newRow("samples") << s(QUILLON_SOURCE_DIR "/samples/content") << s("Genesis8Female")
                             << 250;
    if (QDir(sharedPoses()).exists())
        QTest::newRow("motion capture") << sharedPoses() + s("/mocap") << s("Genesis8Male") << 600;
    else
        qDebug("poses: only the project's own, for there is no %s", qPrintable(sharedPoses()));
}

static void watchPhases(PhaseStarts* starts)
{
    ProgressLog::atChange() = [starts](const QString& info) {
        const QString phase = info.section(s("..."), 0, 0);
        if (starts->contains(phase))
            return;
        PhaseStart& start = (*starts)[phase];
        for (int entry = 0; entry < poseCount(); ++entry) {
            if (poseEntry(entry)->contentHash == 0)
                start.dropped.insert(poseEntry(entry)->path);
            else
                start.kept << poseEntry(entry)->path;
        }
    };
}

// What the walk below a directory gives, in the order of the file system.
static QStringList walked(const QString& directory)
{
    QStringList paths;
    QDirIterator walk(
        directory, QStringList(s("*.duf")), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        paths << walk.next();
    return paths;
}

static QStringList pathsOf(const std::vector<ModelFile>& files)
{
    QStringList paths;
    for (const ModelFile& each : files)
        paths << each.path;
    return paths;
}

void TestScanModel::scansEqualTheModel()
{
    QFETCH(QString, content);
    QFETCH(QString, figure);
    QFETCH(int, least);
    ScanFixture f(figure);
    if (content.isEmpty())
        writePoses(&f, 400);
    else if (content == s("odd"))
        writeOddFiles(&f);
    else
        f.setContent(QStringList() << QDir::cleanPath(content));
    f.figure->getYRotControl()->setValue(90);
    f.figure->getXPosControl()->setValue(70);

    std::vector<ModelFile> files
        = modelFiles(walked(f.app.getContentMgr()->getContentDirectoryPath(0)));
    QVERIFY(int(files.size()) >= least);
    PhaseStarts starts;
    ProgressLog log;
    watchPhases(&starts);
    scanPoses();

    m_verdicts = m_exempt = 0;
    QCOMPARE(starts[s("Ignoring duplicate poses")].kept, pathsOf(files));
    replayDuplicates(&files, starts[s("Indexing poses")].dropped);
    replayPass(&files, starts[s("Skipping similar poses")].dropped, model::mirrorMargin);
    replayPass(&files, starts[s("Cleaning up")].dropped, model::similarMargin);
    checkIndexFile(files);
    for (int type = AllPoses; type <= UpsideDown; ++type) {
        buildYawTable(type, f.figure, f.time());
        setPartReferences(&browseSession().tables, type, f.figure, f.time());
        setSimilarityFilters(&browseSession().tables, type);
        checkMatches(files, model::typeModel(type));
    }
    QVERIFY2(m_exempt * 100 <= m_verdicts, qPrintable(QString::number(m_exempt)));
    qDebug("%d files, %d indexed, %d verdicts, %d exempt", int(files.size()), poseCount(),
        m_verdicts, m_exempt);
}

void TestScanModel::matchesOfTheReferencePoseEqualTheModel()
{
    ScanFixture f;
    writePoses(&f, 200);
    std::vector<ModelFile> files = modelFiles(walked(f.content()));
    scanPoses();
    for (ModelFile& each : files)
        each.isDropped = !indexedPaths().contains(each.path);

    // the figure takes one of the poses, somewhere else in the world
    Random random(5);
    for (int n = 0; n < 20; ++n) {
        const ModelFile& chosen = files[size_t(random.below(int(files.size())))];
        bool ok = false;
        const model::Angles angles = model::anglesOf(unpacked(chosen.path), &ok);
        QVERIFY(ok);
        for (auto each = angles.constBegin(); each != angles.constEnd(); ++each) {
            const DzNode* bone = f.figure->findBone(each.key().section(QLatin1Char('/'), 0, 0));
            const QString channel = each.key().right(1).toUpper() + s("Rotate");
            auto* property = qobject_cast<DzFloatProperty*>(bone->findProperty(channel));
            property->setIsClamped(false);
            property->setValue(float(each.value()));
        }
        const double yawDeg = random.between(-180, 180);
        f.figure->getYRotControl()->setValue(float(yawDeg));
        for (bool& flag : pluginSettings().similarity)
            flag = random.below(3) == 0;
        buildYawTable(ReferencePose, f.figure, f.time());
        setPartReferences(&browseSession().tables, ReferencePose, f.figure, f.time());
        setSimilarityFilters(&browseSession().tables, ReferencePose);
        model::TypeModel type;
        type.base = model::mul(model::turnAbout('Y', double(float(yawDeg))), chosen.signature[0]);
        type.parts = chosen.signature;
        const bool* user = pluginSettings().similarity; // torso, shins, thighs, arms, forearms, hip
        type.filter[0] = user[9];
        std::copy(user, user + 9, type.filter.begin() + 1);
        checkMatches(files, type);
    }
}

QUILLON_TEST(TestScanModel)
#include "test_scan_model.moc"
