// pose_identify.h - tells from a file's bytes and path whether it holds a whole-body pose, and of
// which figure. Words are looked for in the unpacked text without regard to case, wherever they
// stand; nothing is parsed. Owns: nothing; uses the read buffer.
#pragma once

#include <QString>

namespace quillon {

// Sets figure code and content hash of the entry from its file: both 0 unless the file is a
// whole-body pose of generation 8. The first kReadBufferBytes unpacked bytes are looked at and
// hashed, so a plain and a compressed copy of a pose have the same hash. False: not a
// byte could be read. told, if not null, is set to the file's figure code whatever it is.
bool identifyPose(int entry, quint32* told = nullptr);

// The same from the text that was just written to the file.
void identifyPoseText(int entry, const QByteArray& text);

// Generation (2, 3 or 8), plus 256 for a male figure; 0: not a pose of the whole body.
quint32 figureCodeOf(const char* bytes, int count, const QString& path);

// Whether the word (lower-case ASCII) stands in the bytes, without regard to case.
bool containsWord(const char* bytes, int count, const char* word);

} // namespace quillon
