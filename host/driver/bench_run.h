// bench_run.h - one run of the program, from the command line to the exit code.
#pragma once

class QString;

namespace quillon {

struct CommandLine;

int refuse(const QString& why); // one line on stderr; returns 2

// Needs a QApplication. Everything that can be refused is refused before anything is written.
int runBench(const CommandLine&);

} // namespace quillon
