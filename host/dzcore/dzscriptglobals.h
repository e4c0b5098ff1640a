// dzscriptglobals.h - makes the host visible to a script engine. Not part of the interface that
// plug-ins see.
#pragma once

#include "dzcore_export.h"

class QScriptEngine;

// Sets MainWindow, App, Scene, UndoStack, ContentMgr (null for what does not exist), print(...)
// which writes to the host's log, conversions for the pointer types of this library (nodes,
// properties, panes, groups, managers, actions: wrapped objects that the engine does not own), and
// every class of dzApp's factories. Call it once for an engine, before anything is evaluated;
// an embedding application may replace globals afterwards.
DZCORE_EXPORT void dzEquipScriptEngine(QScriptEngine*);
