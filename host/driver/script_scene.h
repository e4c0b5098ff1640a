// script_scene.h - the scene, nodes, properties and the undo stack as scripts see them.
// Times are in ticks; values in degrees, centimetres or plain fractions, as the property says.
#pragma once

class QScriptEngine;
class QScriptValue;

namespace quillon {

// Gives the wrapped objects of an engine (dzscriptglobals.h) the functions below.
void equipSceneScripting(QScriptEngine*);

// The parts of it, each in a file of its own.
void equipNodeScripting(QScriptEngine*); // script_node.cpp
void equipPropertyScripting(QScriptEngine*); // script_property.cpp

// A prototype for every wrapped object of a class and its derived ones; typeId: of the pointer.
QScriptValue newPrototype(QScriptEngine*, int typeId);

} // namespace quillon
