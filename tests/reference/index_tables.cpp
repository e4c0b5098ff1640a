#include "reference/index_tables.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"

#include <cmath>
#include <limits>

namespace quillon {
namespace reference {

static const double kLimit = 0.75 * 0.999; // distance of two images that are just rejected
static const double kRadPerDeg = 3.14159265358979323846 / 180;

IndexModels modelsFor(const DzSkeleton* figure, DzTime time)
{
    IndexModels models;
    for (int type = 0; type < kCategoryCount; ++type) {
        models.of.push_back(BrowseTables());
        makeYawTable(&models.of.back(), type, figure, time);
        setPartReferences(&models.of.back(), type, figure, time);
    }
    return models;
}

// ---- signatures

static DzVec3 randomAxis(Dice* dice)
{
    return DzVec3(float(dice->normal()), float(dice->normal()), float(dice->normal()));
}

static DzQuat randomTurn(Dice* dice)
{
    return DzQuat(dice->normal(), dice->normal(), dice->normal(), dice->normal());
}

static const DzQuat& modelOf(const BrowseTables& tables, int slot, Dice* dice)
{
    return slot == HipSlot ? tables.yaw[dice->below(kYawCount)] : tables.references[slot];
}

static void turnFrom(const BrowseTables& tables, double mostDeg, PoseIndexEntry* e, Dice* dice)
{
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        const DzQuat turn(randomAxis(dice), dice->unit() * mostDeg * kRadPerDeg);
        e->signature[slot] = modelOf(tables, slot, dice) * turn;
    }
}

// One slot that is rejected, or nearly: the chord of its turn about an axis is the limit.
static void moveToLimit(const BrowseTables& tables, PoseIndexEntry* e, Dice* dice)
{
    const int slot = int(dice->below(kSignatureSlots));
    const double steps = (double(dice->below(9)) - 4) * 3e-8;
    const DzVec3 axes[] = {DzVec3(1, 0, 0), DzVec3(0, 1, 0), DzVec3(0, 0, 1)};
    const DzQuat turn(axes[dice->below(3)], 2 * std::asin(kLimit / 2) * (1 + steps));
    const DzQuat& model = modelOf(tables, slot, dice);
    e->signature[slot] = dice->below(2) ? turn * model : model * turn;
}

static void putOddNumber(PoseIndexEntry* e, Dice* dice)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double odd[] = {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, 1e30,
        -1e30, 1e-42, 0, 3, -1.5};
    DzQuat& q = e->signature[dice->below(kSignatureSlots)];
    double* const numbers[] = {&q.m_x, &q.m_y, &q.m_z, &q.m_w};
    *numbers[dice->below(4)] = odd[dice->below(9)];
}

static void putSignature(
    IndexKind kind, const IndexModels& models, int like, PoseIndexEntry* e, Dice* dice)
{
    const int type = dice->below(4) ? like : int(dice->below(kCategoryCount));
    const BrowseTables& tables
        = models.of[std::size_t(kind == IndexKind::Clustered ? int(dice->below(kCategoryCount))
                : kind == IndexKind::Alike                   ? like
                                                             : type)];
    if (kind == IndexKind::Random) {
        for (DzQuat& q : e->signature)
            q = randomTurn(dice);
        return;
    }
    turnFrom(tables, kind == IndexKind::Alike ? 20 : 60, e, dice);
    if (kind != IndexKind::Adversarial)
        return;
    for (std::uint32_t n = dice->below(4); n > 0; --n)
        moveToLimit(tables, e, dice);
    if (dice->below(6) == 0)
        putOddNumber(e, dice);
}

// ---- paths

static const char* const kFolders[] = {
    "/home/user/Documents/3D/My Library/People/Genesis 8 Female/Poses/Maker %1/Evening Set/",
    "/home/user/Documents/3D/My Library/People/Genesis 8 Male/Poses/Maker %1/Walks and Runs/",
    "/home/user/Documents/3D/My Library/People/Genesis 8 Female/Poses/data/brannoc/poses of %1/",
    "/home/user/Documents/3D/My Library/data/Brannoc/poses/%1/",
    "/home/user/Documents/3D/data/Brannoc/Quillon/custom/%1/",
    // from here on for adversaries only
    "/home/user/3D/DATA/brannoc/POSES/%1/",
    ("/home/user/3D/data/Brannoc/po\xc5\xbf"
     "es/%1/"), // a long s
    "/home/user/3D/data/brannoc/quillon/CUSTOM/%1/",
    "data/Brannoc/Quillon/custom%1",
    "/b\xc3\xa4ume/\xf0\x9f\x8c\xb2/data/Brannoc/Quillon/custo%1/",
    "",
};
static const int kUsualFolders = 5;

static QString madePath(bool odd, int number, Dice* dice)
{
    static const char* const kEnds[] = {"f0.duf", "m0.duf", "fa.duf", "fb.duf", "f.duf", "0.DUF"};
    const int folders = odd ? int(std::size(kFolders)) : kUsualFolders;
    const char* folder
        = kFolders[dice->below(8) ? dice->below(2) : dice->below(std::uint32_t(folders))];
    const QString maker = QString::number(1000 + dice->below(400)).mid(1);
    return QString::fromUtf8(folder).replace(QLatin1String("%1"), maker) + QString::number(number)
        + QLatin1String(kEnds[dice->below(6)]);
}

// ---- entries

int addMadeEntry(IndexKind kind, const IndexModels& models, int like, Dice* dice)
{
    const bool odd = kind == IndexKind::Adversarial;
    const int entry = appendPose(madePath(odd, poseCount(), dice));
    if (entry < 0)
        return entry;
    PoseIndexEntry& e = *entryToChange(entry);
    e.contentHash = odd && dice->below(3) == 0 ? dice->below(9) : dice->below(~0u);
    e.figureCode = dice->below(3) ? kFemaleCode : kMaleCode;
    if (odd && dice->below(9) == 0)
        e.figureCode = dice->below(2) ? dice->below(600) : kFigureNotIdentified;
    e.hasSignature = !odd || dice->below(9) != 0;
    putSignature(kind, models, like, &e, dice);
    return entry;
}

void makeIndex(IndexKind kind, int count, const IndexModels& models, int like, Dice* dice)
{
    resetPoseIndex();
    for (int n = 0; n < count; ++n)
        addMadeEntry(kind, models, like, dice);
}

// ---- ranks

std::vector<RankRecord> madeRanks(int share, Dice* dice)
{
    std::vector<RankRecord> records;
    for (int entry = 0; entry < poseCount() && int(records.size()) < kRankCapacity; ++entry) {
        if (dice->below(std::uint32_t(share)) != 0)
            continue;
        const bool strange = share > 1 && dice->below(5) == 0;
        RankRecord record;
        record.key = strange ? dice->below(~0u) : poseEntry(entry)->contentHash;
        record.rank = dice->below(2) ? Favorite : Hidden;
        records.push_back(record);
    }
    return records;
}

void putRanks(const std::vector<RankRecord>& records)
{
    DatWriter file;
    file.writeField(qint32(1));
    file.writeField(qint32(records.size()));
    for (const RankRecord& record : records) {
        file.writeField(record.rank);
        file.writeField(record.key);
    }
    if (!ensureDataFolder() || !file.save(dataFiles().ranks))
        qFatal("the ranks cannot be written");
    readRanks();
}

} // namespace reference
} // namespace quillon
