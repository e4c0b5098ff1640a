// pane_buttons.h - presses buttons that a pane of a plug-in draws itself, by what it tells
// assistive technology: nothing else is known of them. Names may be given by their beginnings.
// Owns: nothing. GUI thread only.
#pragma once

#include <QString>

namespace quillon {

enum class PaneClick { Left, Right, Middle };

// The whole name of the first such button that a pane shows; empty: none does.
QString paneButtonName(const QString& beginning);

// Has it pressed as soon as the application has nothing else to do. False: no pane shows it, or it
// has no such press.
bool clickPaneButton(const QString& beginning, PaneClick click = PaneClick::Left);

} // namespace quillon
