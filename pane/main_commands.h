// main_commands.h - the operations behind the sixteen buttons of the main page, in the form that
// the dispatcher's table wants: the result tells whether the row's status text is shown.
#pragma once

#include "pane/press_context.h"

namespace quillon {

bool memorizeReference(const PressContext& press);
bool showReference(const PressContext& press);
bool openPicker(const PressContext& press);
bool resetPoseCommand(const PressContext& press);
bool optimizeEditingCommand(const PressContext& press);
bool swapCommand(const PressContext& press); // a figure's pose, or any other node in place
bool symmetrizeCommand(const PressContext& press);
bool clampFaceLimits(const PressContext& press);
bool clampBodyLimits(const PressContext& press);
bool releaseLimits(const PressContext& press);
bool limitTranslations(const PressContext& press);
bool zeroTranslations(const PressContext& press);
bool bakeCommand(const PressContext& press);
bool patchProductsCommand(const PressContext& press);
bool saveCustomPoseCommand(const PressContext& press);
bool scanCommand(const PressContext& press);
bool settingsCommand(const PressContext& press);

} // namespace quillon
