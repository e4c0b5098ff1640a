// output_folder.h - the folder that a catalogue is written to.
// It is new, empty, or that of a catalogue: one with a file catalogue.json that says so. In any
// other nothing is written.
#pragma once

#include <QByteArray>
#include <QString>

namespace quillon {

extern const char kCatalogueFormat[]; // the value of "format" in catalogue.json
const int kCatalogueVersion = 1;

// False with *why; nothing was created then.
bool canTakeCatalogue(const QString& folder, QString* why);

// Writes the file whole or not at all, with the folders above it. False with *why as "file: text".
bool writeOutput(const QString& file, const QByteArray& bytes, QString* why);

} // namespace quillon
