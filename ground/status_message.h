// status_message.h - the short text by which an operation reports success, and the pane's refresh.
// Texts bring their own blank lines ("\r\n") and stand in the pane's text area for 3 seconds.
// Owns: the message with its shown flag, and the busy flag. GUI thread only.
#pragma once

#include <QString>

namespace quillon {

const int kStatusMessageMs = 3000;

// Shows the text instead of the tool tip. A text that follows within 3 seconds replaces it but
// does not get 3 seconds of its own.
void showStatusMessage(const QString& text);
// Empties the text and lets tool tips show again. A timer that runs goes on running.
void clearStatusMessage();
void hideStatusMessage(); // the timer's end: the text is kept but no longer shown

const QString& statusMessage();
bool isStatusMessageShown();

// True while the scanner or the patcher runs. Presses are ignored then, and so are refreshes.
bool isBusy();
void setBusy(bool busy);

void enableAboutAction(); // nothing when the host does not know the action
// Unless busy: enables the About action and repaints. Called after anything that ran a dialog.
void refreshPane();

} // namespace quillon
