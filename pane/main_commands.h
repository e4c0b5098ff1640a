// main_commands.h - the operations behind the sixteen buttons of the main page, in the form that
// the button table wants: the result tells whether the row's status text is shown.
#pragma once

#include "pane/press_context.h"

namespace quillon {

bool memorizeReference(const PressContext& press);
bool showReference(const PressContext& press);
bool openPicker(const PressContext& press);
bool resetBody(const PressContext& press);
bool resetExtremities(const PressContext& press);
bool resetSelected(const PressContext& press);
bool optimizeForHip(const PressContext& press); // or, without a figure, the rotation-order dialog
bool optimizeForRoot(const PressContext& press); // likewise
bool optimizeNode(const PressContext& press); // the dialog only
bool swapPose(const PressContext& press); // a figure's pose, or any other node in place
bool swapSelected(const PressContext& press); // likewise
bool symmetrizePose(const PressContext& press);
bool symmetrizeSelected(const PressContext& press);
bool clampFaceLimits(const PressContext& press);
bool clampBodyLimits(const PressContext& press);
bool releaseLimits(const PressContext& press);
bool limitTranslations(const PressContext& press);
bool zeroTranslations(const PressContext& press);
bool bakeBody(const PressContext& press);
bool bakeFace(const PressContext& press);
bool patchInstalledProducts(const PressContext& press);
bool saveToCustomLibrary(const PressContext& press);
bool scanAfterQuestion(const PressContext& press);
bool openSettings(const PressContext& press);

} // namespace quillon
