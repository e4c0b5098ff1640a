// plain_file.h - the one decision which files are opened, and reading that does not stop early.
//
// Whoever opens a pipe waits until somebody opens its other end, for ever if nobody does, and a
// device may do anything. So only plain files are opened, and links to them.
// Owns: nothing. What lies at the path may change after it was looked at.
#pragma once

#include <QIODevice>

class QByteArray;
class QFile;
class QString;

namespace quillon {

// A plain file, a link to one, or nothing yet.
bool mayBeOpened(const QString& path);

// QFile::open() for such a file; false for anything else, which is not touched then.
bool openPlainFile(QFile* file, QIODevice::OpenMode mode);

// Reads from the device until the buffer is full or nothing more comes; a device may deliver less
// than it was asked for before its end. Returns the number of bytes.
int readAsMuchAs(QIODevice* device, char* buffer, int maxBytes);

// All that an open file holds, of a longer one the first maxBytes. False: not all of it came. Does
// not take a file whose size the system does not tell for an empty one.
bool readAllOf(QFile* file, qint64 maxBytes, QByteArray* bytes);

} // namespace quillon
