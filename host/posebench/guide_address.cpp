#include "host/posebench/guide_address.h"

#include "dzapp.h"
#include "dzplugin.h"

#include <QFileInfo>
#include <QUrl>

namespace quillon {

QString guideFile()
{
    for (int i = 0; dzApp && i < dzApp->getNumPlugins(); ++i) {
        const QString file
            = QString("%1/%2/index.htm")
                  .arg(dzApp->getDocumentationPath(), dzApp->getPlugin(i)->getName());
        if (QFileInfo(file).isFile())
            return QFileInfo(file).absoluteFilePath();
    }
    return QString();
}

bool openAddress(const QString& address, QString* why)
{
    const QFileInfo file(address);
    if (!file.isAbsolute()) {
        dzApp->showURL(address);
        return true;
    }
    if (!file.isFile()) {
        *why = QString("There is no file %1.").arg(address);
        return false;
    }
    dzApp->showURL(QUrl::fromLocalFile(address).toString(QUrl::FullyEncoded));
    return true;
}

} // namespace quillon
