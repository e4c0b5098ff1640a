// button_numbers.h - the buttons by the names that tests read best by, and rows as their numbers.
#pragma once

#include "pane/button_table.h"
#include "pane/tool_tips.h"

namespace quillon {

enum TestedButton {
    PreviousButton = 200,
    NextButton = 201,
    IncludeFemaleButton = 210,
    IncludeMaleButton = 211,
    MirrorButton = 212,
    FirstLockButton = 214,
    ReferenceButton = 223,
    FirstRankFilterButton = 224
};

inline int numberOf(const ButtonRow* row)
{
    return row ? row->number : int(kNoButton);
}

// Empty also for a number that the page does not have.
inline QString tipOf(Page page, int number)
{
    return toolTip(buttonOf(page, number));
}

} // namespace quillon
