// plain_file.h - the one decision which files are opened.
//
// Whoever opens a pipe waits until somebody opens its other end, for ever if nobody does, and a
// device may do anything. So only plain files are opened, and links to them.
// Owns: nothing. What lies at the path may change after it was looked at.
#pragma once

#include <QIODevice>

class QFile;
class QString;

namespace quillon {

// A plain file, a link to one, or nothing yet.
bool mayBeOpened(const QString& path);

// QFile::open() for such a file; false for anything else, which is not touched then.
bool openPlainFile(QFile* file, QIODevice::OpenMode mode);

} // namespace quillon
