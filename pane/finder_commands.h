// finder_commands.h - the operations behind the buttons of the picker and browsing pages.
// The results mean nothing: these commands have no status text of their own.
#pragma once

#include "pane/press_context.h"

namespace quillon {

bool browseCategory(const PressContext& press);
bool backToMain(const PressContext& press);
bool backToPicker(const PressContext& press);

bool previousPose(const PressContext& press);
bool previousProduct(const PressContext& press);
bool firstPose(const PressContext& press);
bool nextPose(const PressContext& press);
bool nextProduct(const PressContext& press);
bool lastPose(const PressContext& press);

bool toggleArea(const PressContext& press);
bool toggleFemale(const PressContext& press);
bool toggleMale(const PressContext& press);
bool toggleMirrored(const PressContext& press);
bool advanceRank(const PressContext& press);
bool togglePartLock(const PressContext& press);
bool openFolderOrDelete(const PressContext& press);
bool toggleReference(const PressContext& press);
bool toggleRankFilter(const PressContext& press);

} // namespace quillon
