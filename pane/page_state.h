// page_state.h - whether the Pose Finder's picker page shows in place of the main page. What is
// browsed, and with it the browsing page, is the Pose Finder's own (browse_session.h).
// Owns: the one record, set back to these defaults when the first pane is built.
#pragma once

namespace quillon {

struct PageState {
    bool picker = false;
};

PageState& pageState();

} // namespace quillon
