// What paths tell of the maker's own poses, against the rules taken one by one. The first byte
// chooses the figure of the pose.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include "finder/pose_pair_products.h"

using namespace quillon;

static const QLatin1String kFolder("data/Brannoc/poses");
static const quint32 kCodes[] = {kFemaleCode, kMaleCode, 2, kFigureNotIdentified};

static int kindOf(const QString& path)
{
    if (!path.contains(kFolder, Qt::CaseInsensitive))
        return 0;
    if (path.indexOf(QLatin1String("0.duf")) >= 0)
        return 1;
    const bool sameSex
        = path.indexOf(QLatin1String("a.duf")) >= 0 || path.indexOf(QLatin1String("b.duf")) >= 0;
    return sameSex ? 2 : 0;
}

static QString labelOf(const QString& path, quint32 code)
{
    if ((code != 8 && code != 264) || !path.contains(kFolder, Qt::CaseInsensitive))
        return QString();
    static const char* const kLabels[2][3]
        = {{"This is a G8 FEMALE product", "This is a pose PAIR product (F+M)",
               "This is a pose PAIR product (F+F)"},
            {"This is a G8 MALE product", "This is a pose PAIR product (M+F)",
                "This is a pose PAIR product (M+M)"}};
    return QLatin1String(kLabels[code == 8 ? 0 : 1][kindOf(path)]);
}

static QString folderOf(const QString& path)
{
    int at = -1;
    for (int next = 0; (next = path.indexOf(kFolder, next, Qt::CaseInsensitive)) >= 0; ++next)
        at = next;
    if (at < 0)
        return QString();
    const QString product = productPath(path.mid(at + kFolder.size() + 1, 3));
    if (product.isEmpty())
        return QString();
    const QString name = path.split(QLatin1Char('/')).last();
    const bool female = name.size() > 3 && name.at(3) == QLatin1Char('f');
    return path.left(at) + QLatin1String("People/Genesis 8 ")
        + QLatin1String(female ? "Female" : "Male") + QLatin1String("/Poses/") + product
        + name.left(3);
}

QUILLON_FUZZ_TARGET(product_paths)
{
    fuzz::world();
    const quint32 code = kCodes[input.takeByte() % 4];
    const QString path = QString::fromUtf8(input.bytes, input.count);
    const QString name = path.split(QLatin1Char('/')).last();
    FUZZ_CHECK(posePairKind(path).isMakerFile == path.contains(kFolder, Qt::CaseInsensitive));
    FUZZ_CHECK(posePairKind(path).kind == kindOf(path));
    FUZZ_CHECK(poseFileTitle(path, true) == name);
    FUZZ_CHECK(poseFileTitle(path, false) == name.left(std::max(0, name.size() - 4)));
    FUZZ_CHECK(productKey(path) == path.left(path.size() - name.size()));
    FUZZ_CHECK(productFolder(path) == folderOf(path));
    truncatePoseIndex(0);
    FUZZ_CHECK(productLabel(addEntry(path, 1, code)) == labelOf(path, code));
}
