#include "host/driver/thumbnail_helper.h"

#include "host/posebench/preset_thumbnail.h"
#include "host/posebench/thumbnail_files.h"

#include "dzapp.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QFile>
#include <QImage>
#include <QSaveFile>

#include <iostream>
#include <string>

namespace quillon {

static QImage pictureFor(const QString& file)
{
    const QSize size(kThumbnailPx, kThumbnailPx);
    QString why;
    if (file.endsWith(".duf", Qt::CaseInsensitive))
        return presetThumbnail(file, size, &why);
    const QImage picture(file);
    return picture.isNull() ? picture
                            : picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

// Whole or not at all: another process may look meanwhile.
static void write(const QImage& picture, const QString& file)
{
    QSaveFile out(file);
    if (!picture.isNull() && out.open(QIODevice::WriteOnly) && picture.save(&out, "PNG"))
        out.commit();
}

int runThumbnailHelper()
{
    DzUndoStack undoStack;
    DzScene scene;
    DzApp app((DzAppSetup()));
    std::string line;
    while (std::getline(std::cin, line)) {
        const QString order = QString::fromUtf8(line.c_str());
        const QString file = order.section('\t', -1);
        write(pictureFor(order.section('\t', 0, -2)), file);
        std::cout << file.toStdString() << std::endl;
    }
    return 0;
}

} // namespace quillon
