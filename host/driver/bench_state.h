// bench_state.h - a figure's pose as one object, for scripts:
//   poseState(node)   final values     rawState(node)   stored values     flagState(node)
// Keys: "lHand/XRotate" for a bone, "figure/XTranslate" for the figure node itself (its own name in
// place of "figure" works, too, but is not enumerated), a control's or morph's name alone. Channels
// are the ten of a transform; whatever else a node has and does not hide is a control.
#pragma once

class QScriptValue;

namespace quillon {

void addStateFunctions(QScriptValue bench);

} // namespace quillon
