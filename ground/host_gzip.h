// host_gzip.h - gzip to plain bytes and back, by the host's device or by zlib.
// Known of the host: its scripts have a class DzGZFile, and a device DzGzIO is likely beside it: a
// QIODevice over another one, made from (device, level, size of its buffer). No public source shows
// its header. So configuring chooses: host_gzip_device.cpp where the SDK has dzgzio.h, else
// host_gzip_zlib.cpp (QUILLON_GZIP overrides). Both are held to what is told here by the same
// tests; of a device that a real host brings the first scan of a packed pose tells.
#pragma once

class QByteArray;
class QIODevice;

namespace quillon {

// The unpacked bytes of the gzip that the device holds, as many as fit; of a damaged or cut one as
// many as could be unpacked. Several members in a row are one. 0 when it is no gzip. The
// device is open for reading; it may have been closed afterwards, and stands anywhere.
int readPacked(QIODevice* device, char* buffer, int maxBytes);

// The unpacked bytes of a gzip that is all there, appended. False when they are damaged or no gzip,
// or when there is more than maxBytes of them, which is then not unpacked.
[[nodiscard]] bool unpackBytes(const QByteArray& packed, int maxBytes, QByteArray* bytes);

// Packs the bytes into a device that is open for writing. False when not all were taken.
[[nodiscard]] bool writePacked(QIODevice* device, const QByteArray& bytes);

} // namespace quillon
