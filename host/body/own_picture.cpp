#include "host/body/own_picture.h"

#include <QFileInfo>

namespace quillon {

QString ownPicture(const QString& preset)
{
    const QFileInfo info(preset);
    const QString stem = info.path() + '/' + info.completeBaseName();
    for (const QString& picture : {preset + ".png", stem + ".png", stem + ".tip.png"})
        if (QFileInfo(picture).isFile())
            return picture;
    return QString();
}

} // namespace quillon
