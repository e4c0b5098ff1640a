// bench_home.h - where the program keeps its things, and what plug-ins are told of it:
//     HOME/data  data folder        HOME/docs          documentation
//     HOME/temp  temporary folder   HOME/settings.ini  settings
#pragma once

#include "dzappsetup.h"

#include <QString>
#include <QStringList>

namespace quillon {

struct CommandLine;

DzAppSetup appSetup(const CommandLine&); // paths only; nothing is created

// Creates the folders that are missing. What cannot be created is left out without a word, as the
// program works without it; only a home that cannot be had is an error.
bool createHome(const CommandLine&, QString* why);

// Plug-in files to load: those asked for, else those of the tree that the program runs from.
QStringList pluginFiles(const CommandLine&);

} // namespace quillon
