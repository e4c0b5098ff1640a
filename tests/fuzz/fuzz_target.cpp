#include "fuzz/fuzz_target.h"

#include <algorithm>

namespace fuzz {

static const Target* g_targets = nullptr;

bool enlist(Target* each)
{
    each->next = g_targets;
    g_targets = each;
    return true;
}

const Target* targets()
{
    return g_targets;
}

QByteArray Input::takeLine()
{
    const char* end = std::find(bytes, bytes + count, '\n');
    const QByteArray line(bytes, int(end - bytes));
    const int taken = std::min(line.size() + 1, count);
    bytes += taken;
    count -= taken;
    return line;
}

} // namespace fuzz
