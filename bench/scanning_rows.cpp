#include "bench/scanning_rows.h"

namespace quillon {
namespace scanning {

static bool g_isQuick;
static bool g_areSame = true;

bool isQuick()
{
    return g_isQuick;
}

void setQuick(bool quick)
{
    g_isQuick = quick;
}

bool areSame()
{
    return g_areSame;
}

void finish(CommonRow row, std::uint32_t referenceSum)
{
    const bool isSame = row.checksum == referenceSum;
    g_areSame = g_areSame && isSame;
    if (!isSame)
        row.note = "CHECKSUMS DIFFER";
    if (!g_isQuick || !isSame)
        printRow(row);
}

std::vector<int> counts()
{
    return g_isQuick ? std::vector<int> {64} : std::vector<int> {1024, 8192, 65536};
}

std::string eachUs(double ms, int count)
{
    return QByteArray::number(ms * 1000 / count, 'f', 2).toStdString() + " us each";
}

QString malePath()
{
    return QLatin1String("/content/People/Genesis 8 Male/Poses/sit.duf");
}

} // namespace scanning
} // namespace quillon
