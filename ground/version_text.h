// version_text.h - the plug-in's version as numbers and as the text that users read.
// Owns: the text. It is empty until the first pane is built, and so is the About box's number.
#pragma once

#include <QString>

namespace quillon {

const int kVersionMajor = 0;
const int kVersionMinor = 93;

const QString& versionText(); // "0.93"
void buildVersionText();

} // namespace quillon
