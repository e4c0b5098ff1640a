#include "host/driver/utf8_locale.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>

namespace quillon {

void useUtf8Locale()
{
    setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0)
        return;
    setenv("LC_ALL", "C.UTF-8", 1);
    setlocale(LC_ALL, "");
}

} // namespace quillon
