// press_context.h - what one press finds, asked once and handed down: which button of its kind, the
// selection, the scene's time.
#pragma once

#include "ground/host_types.h"

#include "dznode.h"
#include "dzskeleton.h"

#include <QPointer>

namespace quillon {

struct PressContext {
    int which; // see ButtonRow
    QPointer<DzNode> node; // primary selection, may be null
    QPointer<DzSkeleton> figure; // of the selection: a root node of a supported generation, or null
    DzTime time;
    bool overlayBefore; // the reference overlay flag as the press found it
};

} // namespace quillon
