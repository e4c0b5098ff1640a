// page_state.h - which page the pane shows, and the flags that the Pose Finder keeps beside it.
// Owns: the one record, set back to these defaults when the first pane is built.
#pragma once

namespace quillon {

const int kNotBrowsing = -1;

struct PageState {
    bool picker = false; // the Pose Finder's picker page instead of the main page
    int browsingCategory = kNotBrowsing; // 0 to 8: the browsing page, whatever picker says
    bool mirrored = false; // the applied pose is shown mirrored
    bool referenceOverlay = false; // the reference pose is shown in the found pose's stead
    bool tablesValid = false; // the Pose Finder's tables fit the pose type and figure
};

PageState& pageState();

} // namespace quillon
