#include "catalogue/page_data.h"

#include "finder/pose_ranks.h"

#include <QDateTime>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <vector>

namespace quillon {
namespace {

// Folders are told once and then by number.
class Folders {
public:
    int numberOf(const QString& folder)
    {
        const auto known = m_numbers.constFind(folder);
        if (known != m_numbers.constEnd())
            return *known;
        m_list.append(folder);
        return m_numbers[folder] = m_list.size() - 1;
    }
    QJsonArray list() const
    {
        return m_list;
    }

private:
    QHash<QString, int> m_numbers;
    QJsonArray m_list;
};

struct FileColumns {
    QJsonArray path, directory, folder, name, picture;

    void add(const CatalogueFile& file, const QStringList& directories, Folders* folders)
    {
        // the path below its directory
        const int start = file.directory < 0 ? 0 : directories.at(file.directory).size() + 1;
        path.append(file.path.mid(start));
        directory.append(file.directory);
        folder.append(folders->numberOf(file.folder));
        name.append(file.name);
        picture.append(file.picture);
    }
    QJsonObject object() const
    {
        return {{"path", path}, {"directory", directory}, {"folder", folder}, {"name", name},
            {"picture", picture}};
    }
};

// 40 floats a pose, little-endian, x y z w of each slot; all 0 without a signature.
QByteArray signatureBytes(const std::vector<CataloguePose>& poses)
{
    std::vector<float> numbers;
    numbers.reserve(poses.size() * kSignatureSlots * 4);
    for (const CataloguePose& pose : poses) {
        const PoseIndexEntry& entry = *poseEntry(pose.entry);
        for (const DzQuat& q : entry.signature)
            for (const double number : {q.m_x, q.m_y, q.m_z, q.m_w})
                numbers.push_back(entry.hasSignature ? float(number) : 0.f);
    }
    return QByteArray(
        reinterpret_cast<const char*>(numbers.data()), int(numbers.size() * sizeof(float)));
}

QJsonObject posesObject(const CatalogueContents& contents, Folders* folders)
{
    FileColumns files;
    QJsonArray male, rank, categories;
    for (const CataloguePose& pose : contents.poses) {
        files.add(pose.file, contents.directories, folders);
        male.append(int(poseEntry(pose.entry)->figureCode == kMaleCode));
        rank.append(pose.rank);
        categories.append(int(pose.categories));
    }
    QJsonObject object = files.object();
    object["male"] = male;
    object["rank"] = rank;
    object["categories"] = categories;
    object["signatures"] = QString::fromLatin1(signatureBytes(contents.poses).toBase64());
    return object;
}

// A partner is a number: of a pose, or, below 0, of a file that is left out itself (-2 is the
// first); -1: none.
QHash<QString, int> partnerNumbers(const CatalogueContents& contents)
{
    QHash<QString, int> numbers;
    for (size_t i = 0; i < contents.leftOut.size(); ++i)
        numbers[contents.leftOut[i].file.path] = -2 - int(i);
    for (size_t i = 0; i < contents.poses.size(); ++i)
        numbers[contents.poses[i].file.path] = int(i);
    return numbers;
}

QJsonObject leftOutObject(const CatalogueContents& contents, Folders* folders)
{
    const QHash<QString, int> numbers = partnerNumbers(contents);
    FileColumns files;
    QJsonArray reason, partner;
    for (const LeftOutFile& each : contents.leftOut) {
        files.add(each.file, contents.directories, folders);
        reason.append(verdictWord(each.verdict));
        partner.append(numbers.value(each.partner, -1));
    }
    QJsonObject object = files.object();
    object["reason"] = reason;
    object["partner"] = partner;
    return object;
}

} // namespace

QByteArray pageData(const CatalogueContents& contents, bool isComplete)
{
    Folders folders;
    QJsonObject data {{"made", QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
        {"complete", isComplete}, {"directories", QJsonArray::fromStringList(contents.directories)},
        {"missedFolders", QJsonArray::fromStringList(contents.missedFolders)},
        {"poses", posesObject(contents, &folders)}, {"leftOut", leftOutObject(contents, &folders)}};
    data["folders"] = folders.list();
    QByteArray json = QJsonDocument(data).toJson(QJsonDocument::Compact);
    json.replace('<', "\\u003c");
    json.replace("\xe2\x80\xa8", "\\u2028"); // ends a line of a script
    json.replace("\xe2\x80\xa9", "\\u2029");
    return "\"use strict\";\nconst catalogueData = " + json + ";\n";
}

} // namespace quillon
