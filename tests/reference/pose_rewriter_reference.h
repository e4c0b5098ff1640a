// pose_rewriter_reference.h - rewriting a pose file in its literal form: which entries belong to
// the selection, for which every bone of the table and everything below it is walked through for
// each name asked about, and the text made anew line by line.
#pragma once

#include <QByteArray>
#include <QString>

#include <set>

class DzNode;

namespace quillon {
namespace reference {

// As quillon::selectionIndexFor(); mode 0: a bone's entry, 1: a control's.
int selectionIndexFor(const QString& name, DzNode* figure, bool withChildren, bool symmetrize,
    int mode, bool* noTouch);

struct RewriteRules {
    DzNode* figure; // of the generation that activeModel() is
    bool withChildren, symmetrize, includeFace, mirrorAll;
};

// What quillon::rewritePoseFile() makes of the text; the bones that it touches are put to the
// others. The rules by which one entry is mirrored are the product's own.
QByteArray rewritten(const QByteArray& text, const RewriteRules& rules, std::set<int>* touched);

} // namespace reference
} // namespace quillon
