// accessible_buttons.h - tells assistive technology of the painted buttons: each is a child of the
// pane with a name, a state and a rectangle. Two sources, one for each generation of the
// toolkit's interface; the build takes the one that fits.
#pragma once

namespace quillon {

// From now on DzQuillonPane is described with its buttons. Any number of calls is one.
void installAccessibleButtons();
void removeAccessibleButtons(); // before the library goes

} // namespace quillon
