// script_engine.h - runs the user's script: one engine, one run for each process.
// Globals: App, MainWindow, Scene, UndoStack, ContentMgr, Bench, print(...), quit(code), args, and
// include(file), which runs another file (looked for beside the one that includes it) in the same
// global scope.
// Errors: an uncaught one is written to stderr as "file:line: text", once, and makes the exit
// code 1; the script ends there.
#pragma once

#include <QString>
#include <QStringList>

class QScriptEngine;
class QScriptValue;

namespace quillon {

void makeScriptEngine(); // after the window and the plug-ins; equips it with everything
void dropScriptEngine(); // before the plug-ins go

// Runs the file to its end. While it runs, scriptEngine() is not null.
void runScript(const QString& file, const QStringList& args);

QScriptEngine* scriptEngine(); // null outside makeScriptEngine()..dropScriptEngine()
bool scriptIsEnding(); // quit() was called or something failed; nothing more is evaluated
bool scriptAskedToQuit(); // by quit(); the program ends, with a window as well

// What the process should end with: quit's code, 1 after a failure, else 0.
int scriptExitCode();

// Writes "posebench: message" to stderr and ends the script with exit code 1.
void failScript(const QString& message);

// Calls a function given by the script (the callback of a dialog, say) from outside its run.
// False: it threw, and the script has failed. A value that is no function is left alone (true).
bool callBack(QScriptValue function, const QScriptValue& argument);

} // namespace quillon
