// button_state.h - what a button shows beside its picture: on or off, the rank, the kind of page.
// Owns: nothing. Read only.
#pragma once

#include "pane/page_layout.h"

#include <QSize>
#include <QString>

#include <vector>

namespace quillon {

// The state of the button's artwork, see AtlasCell.
int buttonState(int button);
// Whether the button is a switch: its state 1 means on.
bool isSwitch(int button);

// A button as those see it who do not see the picture.
struct ButtonDescription {
    int button;
    QString name; // the tip's lines in one
    QRect rect; // pixels of the pane
    bool checkable;
    bool checked;
};

// Everything that can be pressed on the current page, in the order of dispatch.
std::vector<ButtonDescription> describeButtons(const QSize& pane);

} // namespace quillon
