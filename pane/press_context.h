// press_context.h - what one press finds: the click, the selection, the scene's time.
#pragma once

#include "pane/command_dispatch.h"

#include "dztime.h"

class DzNode;
class DzSkeleton;

namespace quillon {

struct PressContext {
    ClickKind kind;
    int button; // number, see page_layout.h
    DzNode* node; // primary selection, may be null
    DzSkeleton* figure; // of the selection: a root node of a supported generation, else null
    DzTime time;
    bool overlayBefore; // the reference overlay flag as the press found it
};

} // namespace quillon
