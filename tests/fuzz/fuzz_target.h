// fuzz_target.h - what a fuzz target is: a function of any bytes that aborts where the product does
// not what it says it does. A target is one source file, fuzz_<name>.cpp:
//   QUILLON_FUZZ_TARGET(pose_text)
//   {
//       FUZZ_CHECK(... input ...);
//   }
// It is linked into a libFuzzer program of its own (fuzz_main.cpp) and, together with all others,
// into replay_fuzz, which runs each target over its corpus.
#pragma once

#include <QByteArray>

namespace fuzz {

// Bytes of someone else's. Those behind the last one belong to nobody: a sanitizer sees them read.
struct Input {
    const char* bytes;
    int count;

    // The first byte, which is then no longer part of the input; 0 of none.
    int takeByte()
    {
        return count > 0 ? (--count, int(uchar(*bytes++))) : 0;
    }
    // What stands before the first line feed; that goes as well. All, where there is none.
    QByteArray takeLine();
    QByteArray copy() const
    {
        return QByteArray(bytes, count);
    }
};

struct Target {
    const char* name;
    void (*run)(Input);
    const Target* next;
};

// Static initialisation only.
bool enlist(Target*);
const Target* targets(); // in no order

} // namespace fuzz

#define QUILLON_FUZZ_TARGET(name)                                                                  \
    static void runTarget(fuzz::Input);                                                            \
    static fuzz::Target g_target = {#name, runTarget, nullptr};                                    \
    static const bool g_enlisted = fuzz::enlist(&g_target);                                        \
    static void runTarget(fuzz::Input input)

// Ends the process where the condition does not hold, and says where.
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition))                                                                          \
            qFatal("%s:%d: not so: %s", __FILE__, __LINE__, #condition);                           \
    } while (false)
