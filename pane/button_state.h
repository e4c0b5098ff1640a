// button_state.h - what a button shows beside its picture: on or off, the rank, the kind of page.
// Owns: nothing. Read only.
#pragma once

#include "pane/page_layout.h"

#include <QSize>
#include <QString>

#include <vector>

namespace quillon {

// The state of the button's artwork, see AtlasCell.
int buttonState(const ButtonRow& row);
// Whether the button is a switch: its state 1 means on.
bool isSwitch(const ButtonRow& row);

// ---- the states that rows of the table name

int alwaysOne(int which);
int areaState(int area);
int femaleState(int which);
int maleState(int which);
int mirroredState(int which);
int rankState(int which);
int partLockState(int part);
int folderState(int which);
int referenceState(int which);
int rankFilterState(int rank);

// ---- for those who do not see the picture

struct ButtonDescription {
    const ButtonRow* row; // null: no button
    QString name; // the tip's lines in one
    QRect rect; // pixels of the pane
    bool checkable;
    bool checked;
    bool disabled; // a press would do nothing now
};

// Everything that can be pressed on the current page, in the order of dispatch.
std::vector<ButtonDescription> describeButtons(const QSize& pane);

} // namespace quillon
