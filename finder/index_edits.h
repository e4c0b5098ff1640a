// index_edits.h - changes to single entries of an index file, by path, in its bytes.
//
// All other entries keep their bytes and their order. What counts as an entry of the file is what
// readPoseIndex() reads of it; what lies behind the last one is cut off by an edit. Owns: nothing.
#pragma once

#include <QByteArray>

#include <vector>

namespace quillon {

struct IndexEdit {
    QByteArray path; // UTF-8, as in the file
    QByteArray record; // the whole entry as in the file, with its path; empty: the entry goes
};
typedef std::vector<IndexEdit> IndexEdits;

// Of the version that is read and written.
bool isIndexFile(const QByteArray& bytes);

// Each edit in turn: the record takes the place of the first entry of that path, else comes at the
// end if the index is not full. Of something that is no index file nothing is changed.
void applyEdits(const IndexEdits& edits, QByteArray* bytes);

// Which entry of the file is the first of that path, counted from 0; -1: none.
int entryOfPath(const QByteArray& bytes, const QByteArray& path);

} // namespace quillon
