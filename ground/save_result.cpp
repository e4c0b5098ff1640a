#include "ground/save_result.h"

#include "ground/data_folder.h"
#include "ground/status_message.h"

#include "dzapp.h"

namespace quillon {

static const char kNotSaved[] = "ERROR\r\nThis could not be saved.\r\nIs the disk full, or a\r\n"
                                "file in use?";

void logLine(const QString& text)
{
    if (dzApp)
        dzApp->log(QLatin1String("Quillon: ") + text);
}

void logSaveResult(bool saved)
{
    if (!saved)
        logLine(QLatin1String("a file could not be written in ") + dataFiles().folder);
}

void noteSaveResult(bool saved)
{
    logSaveResult(saved);
    if (!saved)
        showStatusMessage(QLatin1String(kNotSaved));
}

} // namespace quillon
