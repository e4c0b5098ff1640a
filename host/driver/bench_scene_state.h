// bench_scene_state.h - everything that a command may change in the scene, for scripts that
// compare:
//   sceneState()   {text, locked, notFinite}
// text has a line for each channel of each node, in the scene's order, controls, morphs and hidden
// channels included: its default, every key, its limits and flags, bit for bit; and one for each
// node's rotation order. locked and notFinite: the names of such channels ("lHand/XRotate"),
// the latter with a default, key, limit or value now that is no finite number.
#pragma once

class QScriptValue;

namespace quillon {

void addSceneStateFunctions(QScriptValue bench);

} // namespace quillon
