// gzip_file.h - files that may be packed.
#pragma once

class QString;

namespace quillon {

// The unpacked bytes of a gzip file, as many as fit and, of a damaged one, as could be unpacked; of
// a file that is no gzip, its bytes as they are. 0 when it cannot be read or
// is no plain file. The file is opened once.
int readUnpackedOrAsIs(const QString& path, char* buffer, int maxBytes);

} // namespace quillon
