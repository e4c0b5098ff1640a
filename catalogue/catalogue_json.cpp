#include "catalogue/catalogue_json.h"

#include "catalogue/output_folder.h"
#include "finder/category_table.h"
#include "finder/pose_ranks.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace quillon {
namespace {

const char* const kRanks[] = {"unranked", "favourite", "hidden", "custom"};
const char* const kCategories[] = {"all", "sitting", "standing", "lying-on-back", "lying-on-belly",
    "lying-on-left-side", "lying-on-right-side", "upside-down"};

QJsonArray categoriesOf(const CataloguePose& pose)
{
    QJsonArray list;
    for (int type = Sitting; type <= UpsideDown; ++type)
        if (pose.categories >> type & 1u)
            list.append(categoryWord(type));
    return list;
}

// In single precision, as the index file has it.
QJsonValue signatureOf(const PoseIndexEntry& entry)
{
    if (!entry.hasSignature)
        return QJsonValue();
    QJsonArray slots_;
    for (const DzQuat& q : entry.signature)
        slots_.append(QJsonArray {float(q.m_x), float(q.m_y), float(q.m_z), float(q.m_w)});
    return slots_;
}

QJsonObject fileObject(const CatalogueFile& file)
{
    return {{"file", file.path}, {"name", file.name}, {"folder", file.folder},
        {"contentDirectory", file.directory},
        {"picture", file.picture.isEmpty() ? QJsonValue() : QJsonValue(file.picture)}};
}

QJsonObject poseObject(const CataloguePose& pose)
{
    const PoseIndexEntry& entry = *poseEntry(pose.entry);
    QJsonObject object = fileObject(pose.file);
    object["figure"] = figureWord(entry.figureCode);
    object["rank"] = rankWord(pose.rank);
    object["categories"] = categoriesOf(pose);
    object["contentHash"] = double(entry.contentHash);
    object["signature"] = signatureOf(entry);
    return object;
}

QJsonObject leftOutObject(const LeftOutFile& each)
{
    QJsonObject object = fileObject(each.file);
    object["reason"] = verdictWord(each.verdict);
    object["partner"] = each.partner.isEmpty() ? QJsonValue() : QJsonValue(each.partner);
    return object;
}

template <typename Row>
void appendRows(const std::vector<Row>& rows, QJsonObject (*objectOf)(const Row&), QByteArray* out)
{
    for (size_t i = 0; i < rows.size(); ++i) {
        *out += i ? ",\n" : "\n";
        *out += QJsonDocument(objectOf(rows[i])).toJson(QJsonDocument::Compact);
    }
}

} // namespace

const char* figureWord(quint32 figureCode)
{
    return figureCode == kMaleCode ? "male" : "female";
}

const char* rankWord(int rank)
{
    return kRanks[rank];
}

const char* categoryWord(int type)
{
    return kCategories[type];
}

QByteArray catalogueJson(const CatalogueContents& contents, bool isComplete)
{
    const QJsonObject head {{"format", kCatalogueFormat}, {"version", kCatalogueVersion},
        {"made", QDateTime::currentDateTimeUtc().toString(Qt::ISODate)}, {"complete", isComplete},
        {"contentDirectories", QJsonArray::fromStringList(contents.directories)},
        {"missedFolders", QJsonArray::fromStringList(contents.missedFolders)}};
    QByteArray out = QJsonDocument(head).toJson(QJsonDocument::Compact);
    out.chop(1);
    out += ",\n\"poses\":[";
    appendRows(contents.poses, poseObject, &out);
    out += "],\n\"leftOut\":[";
    appendRows(contents.leftOut, leftOutObject, &out);
    return out + "]}\n";
}

} // namespace quillon
