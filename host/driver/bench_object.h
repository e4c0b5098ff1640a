// bench_object.h - the global "Bench" of scripts: everything that drives the program from outside.
#pragma once

class QScriptEngine;
class QScriptValue;

namespace quillon {

QScriptValue makeBenchObject(QScriptEngine*);

} // namespace quillon
