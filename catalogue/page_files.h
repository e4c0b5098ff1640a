// page_files.h - the page itself, which is the same for every catalogue.
#pragma once

#include <QString>

namespace quillon {

// Writes index.htm with its scripts and its style into the folder. False with *why.
bool writePage(const QString& output, QString* why);

} // namespace quillon
