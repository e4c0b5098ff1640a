#include "host/driver/quiet_platform.h"

#include <QString>

#include <cstdio>
#include <cstdlib>

namespace quillon {

static const char* const kRemarks[] = {
    "This plugin does not support", // raise(), size hints and the like
    "QStandardPaths: XDG_RUNTIME_DIR not set",
    "QStandardPaths: wrong permissions on runtime directory",
    "QStandardPaths: runtime directory",
};

static void passMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    for (const char* remark : kRemarks)
        if (text.startsWith(QLatin1String(remark)))
            return;
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    if (type == QtFatalMsg)
        std::abort();
}

void useQuietPlatform()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(passMessage);
}

} // namespace quillon
