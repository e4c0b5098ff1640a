// bench_files.h - files for scripts, as base64, and calls that fail:
//   readFile(path)           null when it cannot be read
//   writeFile(path, base64)  with the folders above; false when it cannot be written
//   removeFile(path)         a file or an empty folder; false when it could not be removed
//   failCall(name, n)        the n-th call of a plug-in from now on (call_watch.h) fails once; an
//                            unknown name is an error
//   pendingCalls()           [{name, n}] of those that have not failed yet; n counts down
//   dropCalls()              forgets them; how many there were
#pragma once

class QScriptValue;

namespace quillon {

void addFileFunctions(QScriptValue bench);

} // namespace quillon
