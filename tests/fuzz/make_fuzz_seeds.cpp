// make_fuzz_seeds FOLDER: writes the files that the corpora begin with, FOLDER/<target>/<name>. The
// same files each time: what is kept from fuzzing lies beside them under names of its own.
#include "unit/finder_fixture.h"
#include "unit/odd_presets.h"
#include "unit/rewrite_fixture.h"

#include <QApplication>

using namespace quillon;

static const int kLargestSeed = 4096; // bytes; larger files fuzz slowly

static struct SeedFolder {
    QString path;

    void put(const char* target, QString name, const QByteArray& bytes) const
    {
        name.replace(QLatin1Char(' '), QLatin1Char('_'));
        writeFile(path + QLatin1Char('/') + QLatin1String(target) + QLatin1Char('/') + name, bytes);
    }
} g_seeds;

static QByteArray number(quint32 value)
{
    return QByteArray(reinterpret_cast<const char*>(&value), 4);
}

// Few entries in every layout, and whatever else is small enough.
static void putPoses()
{
    static const char* const kOddOnes[] = {"host", "number per line", "returns", "keys before url",
        "a zero", "broken words", "interpolation", "other channels", "cut in a number", "empty",
        "a smile", "two figures", "a page"};
    QList<QByteArray> oddOnes;
    for (const char* name : kOddOnes)
        oddOnes << name;
    g_seeds.put("pose_text", QLatin1String("a broken number"),
        presetOf(valueEntry("/lShin:?rotation/x", "4\n1.5")));
    g_seeds.put("pose_text", QLatin1String("cut in a key"), "{ \"animations\" : [ ] } \"ur");
    for (const OddPreset& each : oddPresets()) {
        if (each.bytes.size() > kLargestSeed || !oddOnes.contains(each.name))
            continue;
        g_seeds.put("pose_text", each.name, each.bytes);
        g_seeds.put("pose_apply", each.name, '\2' + each.bytes);
        g_seeds.put("pose_identify", each.name,
            "/c/People/" + QByteArray(each.name) + ".duf\n" + each.bytes.left(200)
                + "lBigToe RPINKY1 head");
    }
    const QByteArray keys = presetWith({valueEntry("/lShin:?rotation/x", "41.5"),
        valueEntry("/pelvis:?rotation/y", "-3e1"), valueEntry("/lShin:?rotation/x", "7")});
    g_seeds.put("pose_apply", QLatin1String("key bones"), '\0' + keys);
    g_seeds.put("pose_apply", QLatin1String("generation 8.1"),
        '\3' + presetOf(valueEntry("#facs_ctrl_EyeBlink:?value", "0.5")));
}

static void putIdentified()
{
    const struct {
        const char *name, *text;
    } kRows[] = {{"a woman", "/People/Genesis 8 Female/a.duf\nlBigToe lPinky1 head"},
        {"a man", "/People/g8m/a.duf\nlBIGTOE pinky HeaD"},
        {"by the title", "/c/data/Brannoc/poses/001/012f0.duf\nbigtoe pinky head"},
        {"a man by the title", "/c/data/Brannoc/poses/001/012m0.duf\nbigtoe pinky head"},
        {"by the bones", "/a.duf\nbigtoe pinky head lBreast"},
        {"the second", "/male.duf\nbigtoe pinky head abdomen2 rheel"},
        {"the third", "/male.duf\nbigtoe pinky head rHeel"}, {"no toe", "/a.duf\nbigto pinky head"},
        {"cut in a word", "/a.duf\nhead pinky bigto"},
        {"nested words", "/a.duf\nheaheadbigbigtoepinpinkyabdomenabdomen2rhrheel"}};
    for (const auto& row : kRows)
        g_seeds.put("pose_identify", QLatin1String(row.name), row.text);
}

// Mode and two bones, then a text in the writer's layout.
static void putRewritten()
{
    const QByteArray text = kHead + block("/lShldrBend:?rotation/y", "-1")
        + block("/rHand:?rotation/x", "2") + block("/hip:?translation/x", "0")
        + block("#pCTRLArmsUpLeft:?value", "5") + block("#pCTRLlHandFist:?value", "6")
        + block("/lEye:?rotation/z", "0.0") + block("#eCTRLEyesClosedL:?value", "0.5", true);
    for (const int mode : {0, 1, 3, 5, 8, 12, 21}) {
        const QByteArray head = QByteArray(1, char(mode)) + char(boneIndex("lShldrBend"))
            + char(boneIndex(mode & 4 ? "head" : "hip"));
        g_seeds.put("pose_rewriter", QString("mode %1").arg(mode), head + text);
    }
    const QByteArray returns = QByteArray(text).replace('\n', "\r\n");
    g_seeds.put("pose_rewriter", QLatin1String("returns"), "\x0c\2\5" + returns);
    g_seeds.put("pose_rewriter", QLatin1String("cut"), "\x0c\2\5" + text.left(text.size() - 60));
    g_seeds.put("pose_rewriter", QLatin1String("no animations"), "\x0c\2\5{\n}\n");
}

static void turnDifferently(int entry)
{
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        poseEntry(entry)->signature[slot] = DzQuat(slot, entry - 1, 0.5, 2, true);
}

static void putIndexes()
{
    for (const int count : {0, 1, 3}) {
        truncatePoseIndex(0);
        for (int i = 0; i < count; ++i)
            turnDifferently(addEntry(QString("/c/%1.duf").arg(i), quint32(i + 7) * 0x01020304u));
        if (!writePoseIndex())
            qFatal("no index");
        const QByteArray bytes = fileBytes(dataFiles().poseIndex);
        g_seeds.put("pose_index", QString("%1 poses").arg(count), bytes);
        g_seeds.put("pose_index", QString("%1 cut").arg(count), bytes.left(bytes.size() - 3));
    }
    const QByteArray record = number(7) + number(8) + QByteArray(160, '\0') + '\2';
    g_seeds.put("pose_index", QLatin1String("no directions"),
        number(1) + number(2) + number(2) + "/a" + record + number(1) + "\xff" + record);
    g_seeds.put(
        "pose_index", QLatin1String("a length beyond"), number(1) + number(1) + number(3) + record);
    truncatePoseIndex(0);
    addEntry(QChar(0xfeff) + QString("/a.duf"), 1);
    if (!writePoseIndex())
        qFatal("no index");
    g_seeds.put("pose_index", QLatin1String("a byte order mark"), fileBytes(dataFiles().poseIndex));
    g_seeds.put("pose_index", QLatin1String("version 2"), number(2) + number(1));
}

static void putRanks()
{
    const QByteArray two = number(1) + number(11) + number(2) + number(12);
    g_seeds.put("pose_ranks", QLatin1String("two"), number(1) + number(2) + two);
    g_seeds.put("pose_ranks", QLatin1String("a key twice"),
        number(1) + number(3) + two + number(2) + number(11));
    g_seeds.put("pose_ranks", QLatin1String("other ranks"),
        number(1) + number(3) + number(3) + number(5) + number(0) + number(6) + two);
    g_seeds.put("pose_ranks", QLatin1String("cut"), number(1) + number(0x7fffffff) + two.left(13));
    g_seeds.put("pose_ranks", QLatin1String("version 2"), number(2) + number(1) + two);
}

static void putSettings()
{
    if (!saveSettings())
        qFatal("no settings");
    const QByteArray bytes = fileBytes(dataFiles().settings);
    for (const quint32 version : {0u, 1u, 2u, 3u, 4u, 0xffffffffu})
        g_seeds.put("plugin_settings", QString("version %1").arg(int(version)),
            QByteArray(bytes).replace(0, 4, number(version)));
    g_seeds.put("plugin_settings", QLatin1String("flags"), number(3) + QByteArray(54, '\x80'));
    g_seeds.put("plugin_settings", QLatin1String("cut"), bytes.left(19));
}

// Mode and how much is read, then the file.
static void putPacked()
{
    const QByteArray text = presetOf(valueEntry("/lShin:?rotation/x", "41.5"));
    const QByteArray gzip = packedBytes(text);
    const auto put = [](const char* name, const QByteArray& head, const QByteArray& file) {
        g_seeds.put("gzip_file", QLatin1String(name), head + file);
    };
    const QByteArray asItIs("\0\x08\0", 3), little("\0\0\x14", 3);
    put("plain", asItIs, text);
    put("packed", asItIs, gzip);
    put("little room", little, gzip);
    put("two members", asItIs, gzip + packedBytes("more"));
    put("rubbish behind", asItIs, gzip + "rubbish");
    put("cut", asItIs, gzip.left(gzip.size() / 2));
    put("stored and cut", asItIs, storedGzip(text).left(60));
    put("no room", QByteArray(3, '\0'), gzip);
    put("empty", asItIs, QByteArray());
    put("round", QByteArray("\1\x1f\0", 3), text);
    put("damaged", QByteArray("\2\x1f\0\1\0\x20\3", 7), text);
}

static void putPaths()
{
    const char* const kPaths[] = {"/c/data/Brannoc/poses/001/012f0.duf",
        "/c/DATA/brannoc/poses/014/007ma.duf", "/c/data/Brannoc/poses/002/b.duf",
        "/data/Brannoc/poses/x/data/Brannoc/poses/003/012f.duf", "/c/data/Brannoc/poses",
        "/c/data/Brannoc/poses/099/1.duf", "/c/People/\xc3\xa9.duf", "", "a/"};
    int n = 0;
    for (const char* path : kPaths) {
        g_seeds.put("product_paths", QString("path %1").arg(n), QByteArray(1, char(n % 4)) + path);
        ++n;
    }
}

int main(int argc, char** argv)
{
    if (argc != 2)
        qFatal("usage: make_fuzz_seeds FOLDER");
    QApplication application(argc, argv);
    g_seeds.path = QFile::decodeName(argv[1]);
    const FinderFixture fixture;
    putPoses();
    putIdentified();
    putRewritten();
    putIndexes();
    putRanks();
    putSettings();
    putPacked();
    putPaths();
    return 0;
}
