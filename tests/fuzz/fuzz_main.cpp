// A libFuzzer program of the one target that is linked with it.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include <QApplication>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(argc, argv);
    std::atexit(fuzz::endWorld);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count)
{
    fuzz::targets()->run(fuzz::Input {reinterpret_cast<const char*>(bytes), int(count)});
    return 0;
}
