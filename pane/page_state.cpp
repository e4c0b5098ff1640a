#include "pane/page_state.h"

namespace quillon {

static PageState g_pageState;

PageState& pageState()
{
    return g_pageState;
}

} // namespace quillon
