// guide_address.h - where the documentation of plug-ins stands: the documentation path, a folder
// named as the plug-in, index.htm.
#pragma once

#include <QString>

namespace quillon {

QString guideFile(); // of the first plug-in that has one, absolute; empty: none has

// Opens an address or a file as a link of a plug-in's description names it. False with *why when it
// names a file that is not there.
bool openAddress(const QString& address, QString* why);

} // namespace quillon
