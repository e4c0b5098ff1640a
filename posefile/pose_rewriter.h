// pose_rewriter.h - copies a pose file with the selection's entries mirrored.
// Mirroring is textual: names change sides, a sign is put before a number or taken away. Input: the
// layout of pose_writer.h, four lines an entry; other lines pass through.
// Owns: which bones were touched, that is, had an entry mirrored.
#pragma once

#include "figure/figure_kind.h"

#include <QByteArray>
#include <QString>

class DzNode;

namespace quillon {

// ---- the file

// Entries of bones and controls outside the selection, or without includeFace of the face, are
// copied as they are; mirrorAll takes all. withChildren: what hangs below a selected bone belongs
// to the selection. symmetrize: only sided bones do, and a bone whose partner is selected does
// not count as touched. False when a file cannot be opened; an input that cannot leaves an empty
// output.
[[nodiscard]] bool rewritePoseFile(const QString& inPath, const QString& outPath, DzNode* figure,
    bool withChildren, bool symmetrize, bool includeFace, bool mirrorAll);

// By bone number; false for a number outside 0..169. rewritePoseFile() only ever adds bones.
bool isBoneTouched(int boneNumber);
void clearTouchedBones();

// ---- the selection

enum EntryMode { BoneEntry, ControlEntry };

// Whether an entry of this bone or control belongs to what is selected. Bone number; 0 for a
// control; -1: it does not belong, *kind and *noTouch mean nothing then. *kind: the mode.
// *noTouch: a symmetrize gives this side's values to the selected partner and leaves this one
// alone.
int selectionIndexFor(const QString& name, DzNode* figure, bool withChildren, bool symmetrize,
    int mode, int* kind, bool* noTouch);

// The name in a url line if the entry is one that can be mirrored: a channel of a bone, or a
// control of the model. Empty otherwise, so for the figure node.
QString knownNodeNameOf(const QString& urlLine, const FigureModel& model = activeModel());

// ---- the mirror rules, for the url line and the keys line of one entry

// Neither is null; a line that no rule fits stays as it is. url: the whole line, as the writer lays
// it out; its names change sides. keys: the whole line of keys; the sign of its first value changes
// where the rule says so, but never that of a bare "0". includeFace: the facial controls of the
// model have rules, too.
// The sides are told by the first letter: "lowerJaw" becomes "rowerJaw", which no figure has.
void mirrorEntry(
    QByteArray* url, QByteArray* keys, bool includeFace, const FigureModel& model = activeModel());

} // namespace quillon
