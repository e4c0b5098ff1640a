// accessible_buttons.h - tells assistive technology of the painted buttons and texts: each is a
// child of the pane with a name, a state and a rectangle; a button can be pressed there with any of
// the three mouse buttons that it knows. Counter, pose and message stand behind the buttons while
// they are shown. Two sources, one for each generation of the toolkit's interface; the build takes
// the one that fits.
#pragma once

class QWidget;

namespace quillon {

// From now on DzQuillonPane is described with its buttons. Any number of calls is one.
void installAccessibleButtons();
void removeAccessibleButtons(); // before the library goes

// Says which texts and switches differ from the last call. Nothing while nobody listens.
void announceChanges(QWidget* pane);

} // namespace quillon
