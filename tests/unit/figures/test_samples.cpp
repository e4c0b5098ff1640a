#include "samples_model.h"
#include "room_tests.h"

#include <QCoreApplication>
#include <QMap>
#include <QRegExp>
#include <QSet>
#include <QtTest>

using namespace samples;

namespace {

const double kMaleScale = 1.06; // of the male stand-in figures
const int kLeastPresets = 150;
const int kLeastPerCategory = 8;
const int kMostBytes = 3 << 20; // of the whole folder
const double kUnderFloorCm = 1.0; // flesh gives, and no bone is the body's surface

// What is no pose of a whole body, and what it is instead.
struct OtherRow {
    const char* path;
    const char* word; // found in its text; null: the text is cut off or missing
};
// clang-format off
const OtherRow kOthers[] = {
    {"People/Genesis 2 Female/Poses/Brannoc/Old Times/At Ease.duf",                   "abdomen2"},
    {"People/Genesis 3 Female/Poses/Brannoc/Newer Times/At Ease.duf",                 "rHeel"},
    {"People/Genesis 8 Female/Expressions/Brannoc/Big Smile.duf",                     "eCTRLMouthSmile"},
    {"People/Genesis 8 Female/Materials/Brannoc/Dance Floor/Suit Red.duf",            "\"preset_material\""},
    {"People/Genesis 8 Female/Poses/Brannoc/Dance Floor/Broken download.duf",         0},
    {"People/Genesis 8 Female/Poses/Brannoc/Dance Floor/Suit Red.duf",                "\"preset_material\""},
    {"People/Genesis 8 Female/Poses/Brannoc/Dojo/Hands only, fists.duf",              "lIndex1"},
    {"People/Genesis 8 Female/Poses/Brannoc/First Dance/FD01 001/Couple.duf",         "\"preset_hierarchical_pose\""},
    {"People/Genesis 8 Female/Poses/Brannoc/First Dance/FD01 002/Couple.duf",         "\"preset_hierarchical_pose\""},
    {"People/Genesis 8 Male/Poses/Brannoc/First Dance/FD01 001/Couple.duf",           "\"preset_hierarchical_pose\""},
    {"People/Genesis 8 Male/Poses/Brannoc/First Dance/FD01 002/Couple.duf",           "\"preset_hierarchical_pose\""},
    {"People/Genesis 8 Male/Poses/Brannoc/Night Out/Half a file.duf",                 0},
    {"People/Genesis 8 Male/Poses/Brannoc/Night Out/Nothing.duf",                     0},
    {"Scenes/Brannoc/Empty Studio.duf",                                               "\"scene\""},
};
// clang-format on

const OtherRow* otherRow(const Preset& preset)
{
    for (const OtherRow& row : kOthers)
        if (preset.path == QLatin1String(row.path))
            return &row;
    return 0;
}

std::vector<const Preset*> wholeBodies()
{
    std::vector<const Preset*> found;
    for (const Preset& preset : presets())
        if (isWholeBody(preset))
            found.push_back(&preset);
    return found;
}

const Preset* findPreset(const QString& product, const QString& title)
{
    for (const Preset& preset : presets())
        if (preset.product() == product && preset.title() == title)
            return &preset;
    return 0;
}

bool isMale(const Preset& preset)
{
    return preset.isOf("Genesis 8 Male")
        || (preset.isOf("data/Brannoc/poses") && preset.title().at(3) == QLatin1Char('m'));
}

// A pose that a scan would compare.
struct Candidate {
    const Preset* preset;
    Signature signature;
};

// Of the presets in this order, those that a scan keeps.
std::vector<Candidate> scanned(const std::vector<const Preset*>& found)
{
    std::vector<Candidate> kept;
    QSet<QByteArray> seen;
    for (const Preset* preset : found) {
        if (seen.contains(preset->text) || preset->isOf(" mirror.") || preset->isOf("noexpression"))
            continue;
        seen.insert(preset->text);
        kept.push_back({preset, signatureOf(*preset)});
    }
    for (int pass = 0; pass < 2; ++pass) {
        std::vector<Candidate> left;
        for (const Candidate& b : kept) {
            const auto same = [&](const Candidate& a) {
                return pass == 0
                    ? isMirror(a.signature, b.signature)
                    : isMale(*a.preset) == isMale(*b.preset) && isSimilar(a.signature, b.signature);
            };
            if (std::none_of(left.begin(), left.end(), same))
                left.push_back(b);
        }
        kept.swap(left);
    }
    return kept;
}

// The nine categories; where the bodies' axes are, told in the world. Up, front: of the hip.
struct CategoryRow {
    const char* name;
    V up, front; // at a yaw of 0
    std::vector<int> likeRest; // slots that have to be near rest
    bool seated; // thighs to the front
    bool all;
};

const std::vector<CategoryRow>& categories()
{
    static const std::vector<CategoryRow> rows = {
        {"all", {0, 1, 0}, {0, 0, 1}, {}, false, true},
        {"sitting", {0, 1, 0}, {0, 0, 1}, {}, true, false},
        {"standing", {0, 1, 0}, {0, 0, 1}, {LeftThigh, RightThigh}, false, false},
        {"on the back", {0, 0, 1}, {0, 1, 0}, {Torso}, false, false},
        {"on the belly", {0, 0, 1}, {0, -1, 0}, {Torso}, false, false},
        {"on the left side", {0, 0, 1}, {-1, 0, 0}, {}, false, false},
        {"on the right side", {0, 0, 1}, {1, 0, 0}, {}, false, false},
        {"upside down", {0, -1, 0}, {0, 0, 1}, {}, false, false},
        {"like a figure at rest", {0, 1, 0}, {0, 0, 1}, {Torso, LeftThigh, RightThigh}, false,
            false},
    };
    return rows;
}

bool hipFits(Q hip, const CategoryRow& row)
{
    const V up = turned(hip, V {0, 1, 0}), front = turned(hip, V {0, 0, 1});
    for (int yaw = 0; yaw < 360; ++yaw) {
        const Q turn = axisTurn(1, yaw);
        const double off
            = std::max(length(up - turned(turn, row.up)), length(front - turned(turn, row.front)));
        if (1 - off / 0.75 > 0.001)
            return true;
    }
    return false;
}

bool isIn(const Signature& signature, const CategoryRow& row)
{
    if (row.all)
        return true;
    if (!hipFits(signature[Hip], row))
        return false;
    for (int slot : row.likeRest)
        if (!passes(signature[size_t(slot)], Q {0, 0, 0, 1}, 0.75))
            return false;
    const Q left = conjugate(Q {0.698, 0.036, -0.122, 0.704});
    const Q right = conjugate(Q {0.698, -0.036, 0.122, 0.704});
    return !row.seated
        || (passes(signature[LeftThigh], left, 0.75) && passes(signature[RightThigh], right, 0.75));
}

QByteArray otherSide(const QByteArray& bone)
{
    const bool sided = bone.size() > 1 && QChar::fromLatin1(bone.at(1)).isUpper();
    if (!sided || (bone.at(0) != 'l' && bone.at(0) != 'r'))
        return bone;
    return (bone.at(0) == 'l' ? "r" : "l") + bone.mid(1);
}

} // namespace

class TestSamples : public QObject {
    Q_OBJECT
private slots:
    void haveManyPosesForBothFigures();
    void everyFileIsAPoseOrNamedAsSomethingElse();
    void posesAreInTheHostsLayout();
    void posesTellTheControls();
    void filesAreSmallAndMostlyGzip();
    void titlesAreUniqueWithinAProduct();
    void anglesAreWithinTheLimits();
    void nobodyIsBelowTheFloor();
    void feetOfStandingPosesTouchTheFloor();
    void copiesAreThereByteByByte();
    void mirroredCopiesExchangeLeftAndRight();
    void variedCopiesAreSimilar();
    void pairProductsAreNamedAsSuch();
    void everyCategoryHasPoses_data();
    void everyCategoryHasPoses();
};

void TestSamples::haveManyPosesForBothFigures()
{
    int male = 0, female = 0;
    for (const Preset* preset : wholeBodies())
        ++(isMale(*preset) ? male : female);
    QVERIFY2(male + female >= kLeastPresets, qPrintable(QString::number(male + female)));
    QVERIFY(male >= kLeastPresets / 3);
    QVERIFY(female >= kLeastPresets / 3);
}

void TestSamples::everyFileIsAPoseOrNamedAsSomethingElse()
{
    int others = 0;
    for (const Preset& preset : presets()) {
        const OtherRow* row = otherRow(preset);
        others += row != 0;
        QVERIFY2(isWholeBody(preset) == !row, qPrintable(preset.path));
        if (row && row->word)
            QVERIFY2(preset.text.contains(row->word), qPrintable(preset.path));
        else if (row)
            QVERIFY2(!preset.isJson && !preset.text.endsWith('}'), qPrintable(preset.path));
    }
    QCOMPARE(others, int(std::end(kOthers) - std::begin(kOthers)));
    QVERIFY(QFile::exists(contentFolder()
        + QLatin1String("/People/Genesis 8 Female/Poses/Brannoc/Everyday Stands/readme.txt")));
}

void TestSamples::posesAreInTheHostsLayout()
{
    for (const Preset* preset : wholeBodies()) {
        const QByteArray& text = preset->text;
        QVERIFY2(!text.contains('\r') && text.endsWith("\n}"), qPrintable(preset->path));
        QVERIFY(text.left(1024).contains("\"preset_pose\""));
        const QList<QByteArray> lines = text.split('\n');
        const int first = lines.indexOf("\t\t\"animations\" : [") + 1;
        QVERIFY2(
            first > 0 && lines.size() == first + 4 * preset->entries + 3, qPrintable(preset->path));
        for (int i = 0; i < preset->entries; ++i) {
            const int at = first + 4 * i;
            QVERIFY(lines.at(at) == "\t\t\t{");
            QVERIFY(lines.at(at + 1).startsWith("\t\t\t\t\"url\" : \"name://@selection"));
            QVERIFY(lines.at(at + 2).startsWith("\t\t\t\t\"keys\" : [ [ 0, "));
            QVERIFY(lines.at(at + 3) == (i + 1 < preset->entries ? "\t\t\t}," : "\t\t\t}"));
        }
    }
}

void TestSamples::posesTellTheControls()
{
    QSet<QByteArray> all, male;
    for (const QVariant& row : figureControls("Genesis8Female")) {
        const QByteArray name = '#' + row.toMap().value("name").toByteArray();
        all << name;
        if (!name.toLower().contains("breast"))
            male << name;
    }
    QVERIFY(all.size() > male.size() && male.size() > 200);
    for (const Preset* preset : wholeBodies()) {
        QSet<QByteArray> told;
        for (Channels::const_iterator i = preset->channels.begin(); i != preset->channels.end();
             ++i)
            if (i.key().startsWith('#'))
                told << i.key();
        const bool leftOut = isMale(*preset) || preset->isOf("Old Favourites");
        QVERIFY2(told == (leftOut ? male : all), qPrintable(preset->path));
        QCOMPARE(bool(preset->text.toLower().contains("breast")), !leftOut);
        QVERIFY(!preset->text.toLower().contains("rheel"));
        QVERIFY(!preset->text.toLower().contains("abdomen2"));
    }
}

void TestSamples::filesAreSmallAndMostlyGzip()
{
    int plain = 0, gzip = 0, bytes = 0;
    for (const Preset& preset : presets()) {
        bytes += preset.packed.size();
        ++(preset.isGzip() ? gzip : plain);
        if (preset.isGzip())
            QVERIFY2(preset.packed.mid(4, 4) == QByteArray(4, '\0'), qPrintable(preset.path));
    }
    QVERIFY(plain >= 5);
    QVERIFY(gzip > 10 * plain);
    QVERIFY2(bytes < kMostBytes, qPrintable(QString::number(bytes)));
}

void TestSamples::titlesAreUniqueWithinAProduct()
{
    QSet<QString> seen;
    for (const Preset& preset : presets()) {
        const QString key = preset.product() + QLatin1Char('/') + preset.title().toLower();
        QVERIFY2(!seen.contains(key), qPrintable(preset.path));
        seen << key;
    }
}

void TestSamples::anglesAreWithinTheLimits()
{
    for (const Preset* preset : wholeBodies())
        for (const Bone& bone : rig().bones)
            for (int axis = 0; axis < 3; ++axis) {
                const QByteArray key = bone.name + ":?rotation/" + char('x' + axis);
                const double deg = preset->at(key);
                QVERIFY2(deg >= bone.low[axis] && deg <= bone.high[axis],
                    qPrintable(QString("%1: %2 = %3").arg(preset->path, QString(key)).arg(deg)));
            }
}

void TestSamples::nobodyIsBelowTheFloor()
{
    for (const Preset* preset : wholeBodies()) {
        const double lowest = lowestPoint(*preset, isMale(*preset) ? kMaleScale : 1);
        QVERIFY2(
            lowest > -kUnderFloorCm, qPrintable(QString("%1: %2").arg(preset->path).arg(lowest)));
    }
}

void TestSamples::feetOfStandingPosesTouchTheFloor()
{
    int standing = 0;
    for (const Preset* preset : wholeBodies()) {
        if (!preset->isOf("Everyday Stands") && !preset->isOf("Standing Around"))
            continue;
        const double lowest = lowestPoint(*preset, isMale(*preset) ? kMaleScale : 1);
        QVERIFY2(std::fabs(lowest) < 2, // toes end one centimetre above their soles
            qPrintable(QString("%1: %2").arg(preset->path).arg(lowest)));
        ++standing;
    }
    QVERIFY(standing >= 30);
}

void TestSamples::copiesAreThereByteByByte()
{
    QMap<QByteArray, const Preset*> seen;
    int copies = 0, twins = 0;
    for (const Preset* preset : wholeBodies()) {
        const Preset* first = seen.value(preset->text);
        copies += first != 0;
        twins += first && first->isGzip() != preset->isGzip();
        seen.insert(preset->text, preset);
    }
    QVERIFY(copies >= 8);
    QVERIFY(twins >= 1);
}

void TestSamples::mirroredCopiesExchangeLeftAndRight()
{
    int copies = 0;
    const QString mark = QLatin1String(" (mirrored)");
    for (const Preset* preset : wholeBodies()) {
        if (!preset->title().endsWith(mark))
            continue;
        const Preset* other = findPreset(preset->product(), preset->title().remove(mark));
        QVERIFY2(other, qPrintable(preset->path));
        for (const Bone& bone : rig().bones)
            for (char axis = 'x'; axis <= 'z'; ++axis) {
                const double deg = preset->at(bone.name + ":?rotation/" + axis);
                const double there = other->at(otherSide(bone.name) + ":?rotation/" + axis);
                QCOMPARE(deg, axis == 'x' ? there : -there);
            }
        QVERIFY2(isMirror(signatureOf(*preset), signatureOf(*other)), qPrintable(preset->path));
        ++copies;
    }
    QVERIFY(copies >= 12);
}

void TestSamples::variedCopiesAreSimilar()
{
    int copies = 0;
    for (const Preset* preset : wholeBodies()) {
        if (!preset->title().endsWith(QLatin1String(" B")))
            continue;
        QString title = preset->title();
        title.chop(2);
        const Preset* other = findPreset(preset->product(), title);
        QVERIFY2(other, qPrintable(preset->path));
        QVERIFY2(isSimilar(signatureOf(*preset), signatureOf(*other)), qPrintable(preset->path));
        QVERIFY(preset->text != other->text);
        ++copies;
    }
    QVERIFY(copies >= 10);
}

void TestSamples::pairProductsAreNamedAsSuch()
{
    const QRegExp name(
        "data/Brannoc/poses/0(0[1-9]|1[0-4])/\\d{3}[fm][0ab1]( mirror| noexpression)?"
        "\\.duf");
    QSet<QChar> kinds;
    int mirrored = 0, bare = 0;
    for (const Preset& preset : presets()) {
        if (!preset.isOf("data/"))
            continue;
        QVERIFY2(name.exactMatch(preset.path), qPrintable(preset.path));
        kinds << preset.title().at(4);
        mirrored += preset.isOf(" mirror.");
        bare += preset.isOf(" noexpression.");
    }
    QCOMPARE(kinds.size(), 4); // a woman and a man, first and second of two alike, and no pair
    QVERIFY(mirrored >= 2 && bare >= 2);
}

void TestSamples::everyCategoryHasPoses_data()
{
    QTest::addColumn<bool>("backwards");
    QTest::newRow("files found in the order of their names") << false;
    QTest::newRow("the other way round") << true;
}

void TestSamples::everyCategoryHasPoses()
{
    QFETCH(bool, backwards);
    std::vector<const Preset*> found = wholeBodies();
    if (backwards)
        std::reverse(found.begin(), found.end());
    const std::vector<Candidate> kept = scanned(found);
    QVERIFY(int(kept.size()) >= kLeastPresets);
    for (const CategoryRow& row : categories()) {
        const long count = std::count_if(kept.begin(), kept.end(),
            [&](const Candidate& each) { return isIn(each.signature, row); });
        QVERIFY2(
            count >= kLeastPerCategory, qPrintable(QString("%1: %2").arg(row.name).arg(count)));
    }
}

QUILLON_TEST(TestSamples)
#include "test_samples.moc"
