// gzip_file.h - the one place that uses the host's gzip device.
#pragma once

class QByteArray;
class QIODevice;
class QString;

namespace quillon {

// Reads from the device until the buffer is full or nothing more comes; a device may deliver less
// than it was asked for before its end. Returns the number of bytes.
int readAsMuchAs(QIODevice* device, char* buffer, int maxBytes);

// The unpacked bytes of a gzip file, as many as fit and, of a damaged one, as could be unpacked; of
// a file that the gzip device gives nothing of, its bytes as they are. 0 when it cannot be read or
// is no plain file. The file is opened once.
int readUnpackedOrAsIs(const QString& path, char* buffer, int maxBytes);

// The unpacked bytes of a gzip that is all there, appended. False when they are damaged or no gzip,
// or when there is more than maxBytes of them, which is then not unpacked.
[[nodiscard]] bool unpackBytes(const QByteArray& packed, int maxBytes, QByteArray* bytes);

// Packs the bytes into a device that is open for writing. False when not all were taken.
[[nodiscard]] bool writePacked(QIODevice* device, const QByteArray& bytes);

} // namespace quillon
