#include "ground/version_text.h"

namespace quillon {

static QString g_versionText;

const QString& versionText()
{
    return g_versionText;
}

void buildVersionText()
{
    g_versionText = QString::fromLatin1("%1.%2")
                        .arg(kVersionMajor)
                        .arg(kVersionMinor, 2, 10, QLatin1Char('0'));
}

} // namespace quillon
