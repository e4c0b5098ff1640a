// pose_rewriter_reference.h - which entries belong to the selection, in its literal form: every
// bone of the table and everything below it is walked through for each name asked about.
#pragma once

#include <QString>

class DzNode;

namespace quillon {
namespace reference {

// As quillon::selectionIndexFor(); mode 0: a bone's entry, 1: a control's.
int selectionIndexFor(const QString& name, DzNode* figure, bool withChildren, bool symmetrize,
    int mode, bool* noTouch);

} // namespace reference
} // namespace quillon
