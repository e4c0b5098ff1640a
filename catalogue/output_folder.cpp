#include "catalogue/output_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace quillon {

const char kCatalogueFormat[] = "quillon-catalogue";

static bool isCatalogue(const QString& folder)
{
    QFile file(folder + "/catalogue.json");
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    return root.value("format").toString() == kCatalogueFormat;
}

static bool isEmptyFolder(const QString& folder)
{
    return QDir(folder).isEmpty(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

bool canTakeCatalogue(const QString& folder, QString* why)
{
    const QFileInfo info(folder);
    if (!info.exists() && !info.isSymLink())
        return true;
    if (!info.isDir())
        *why = QString("'%1' is no folder").arg(folder);
    else if (!isEmptyFolder(folder) && !isCatalogue(folder))
        *why = QString("'%1' is neither empty nor a catalogue; nothing was written").arg(folder);
    return why->isEmpty();
}

bool writeOutput(const QString& file, const QByteArray& bytes, QString* why)
{
    QDir().mkpath(QFileInfo(file).absolutePath());
    QSaveFile out(file);
    // What is written when it closes, and finds the disk full, it would not notice.
    if (out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.flush()
        && out.commit())
        return true;
    *why = QString("%1: %2").arg(file, out.errorString());
    return false;
}

} // namespace quillon
