#include "finder/pose_pair_products.h"

#include "finder/pose_index.h"

#include <QStringMatcher>

#include <iterator>

namespace quillon {

namespace {

const char kMakerFolder[] = "data/Brannoc/poses";
const int kNumberLetters = 3; // of a product, of a pose
const int kExtensionLetters = 4;

struct ProductRow {
    const char* number;
    const char* path; // below the content folder of a figure's poses; a pose's number follows
};

// clang-format off
const ProductRow kProducts[] = {
    {"001", "Brannoc/First Dance/FD01 "},
    {"002", "Brannoc/Bench for Two/BT02 "},
    {"003", "Brannoc/Sunday Morning/SM03 "},
    {"004", "Brannoc/Carried Away/CA04 "},
    {"005", "Brannoc/Sparring Partners/SP05 "},
    {"006", "Brannoc/Campfire Stories/CS06 "},
    {"007", "Brannoc/Tango Night/TN07 "},
    {"008", "Brannoc/Picnic Hours/PH08 "},
    {"009", "Brannoc/Welcome Home/WH09 "},
    {"010", "Brannoc/Acrobat Duo/AD10 "},
    {"011", "Brannoc/Side by Side/SS11 "},
    {"012", "Brannoc/Sofa Evenings/SE12 "},
    {"013", "Brannoc/Rescue Team/RT13 "},
    {"014", "Brannoc/Two on Stage/TS14 "},
};
// clang-format on
static_assert(std::size(kProducts) == 14, "the products that there are");

} // namespace

PosePairKind posePairKind(const QString& path)
{
    static const QStringMatcher folder(QLatin1String(kMakerFolder), Qt::CaseInsensitive);
    PosePairKind pair = {folder.indexIn(path) >= 0, 0};
    if (!pair.isMakerFile)
        return pair;
    if (path.contains(QLatin1String("0.duf")))
        pair.kind = 1;
    else if (path.contains(QLatin1String("a.duf")) || path.contains(QLatin1String("b.duf")))
        pair.kind = 2;
    return pair;
}

static const char* pairLabel(int kind, bool female)
{
    if (female)
        return kind == 1 ? "This is a pose PAIR product (F+M)"
                         : "This is a pose PAIR product (F+F)";
    return kind == 1 ? "This is a pose PAIR product (M+F)" : "This is a pose PAIR product (M+M)";
}

QString productLabel(int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    const bool female = e && e->figureCode == kFemaleCode;
    if (!e || (!female && e->figureCode != kMaleCode))
        return QString();
    const PosePairKind pair = posePairKind(e->path);
    if (!pair.isMakerFile)
        return QString();
    if (pair.kind != 0)
        return QLatin1String(pairLabel(pair.kind, female));
    return QLatin1String(female ? "This is a G8 FEMALE product" : "This is a G8 MALE product");
}

QString productPath(const QString& number)
{
    for (const ProductRow& row : kProducts) {
        if (number == QLatin1String(row.number))
            return QLatin1String(row.path);
    }
    return QString();
}

QString productFolder(const QString& path)
{
    const int at = path.lastIndexOf(QLatin1String(kMakerFolder), -1, Qt::CaseInsensitive);
    if (at < 0)
        return QString();
    const int numberAt = at + int(std::size(kMakerFolder)); // behind the slash
    const QString product = productPath(path.mid(numberAt, kNumberLetters));
    if (product.isEmpty())
        return QString();
    const QString title = poseFileTitle(path, true);
    const bool female = title.mid(kNumberLetters, 1) == QLatin1String("f");
    return path.left(at) + QLatin1String("People/")
        + QLatin1String(female ? "Genesis 8 Female" : "Genesis 8 Male") + QLatin1String("/Poses/")
        + product + title.left(kNumberLetters);
}

QString productKey(const QString& path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString poseFileTitle(const QString& path, bool keepExtension)
{
    QString title = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    if (!keepExtension)
        title.chop(kExtensionLetters);
    return title;
}

} // namespace quillon
