// bench_files.h - files for scripts, as base64, and calls that fail:
//   readFile(path)           null when it cannot be read
//   writeFile(path, base64)  with the folders above; false when it cannot be written
//   removeFile(path)         a file or an empty folder; false when it could not be removed
//   files(folder)            paths of all files below it, relative to it and sorted
//   failCall(name, n)        the n-th call of a plug-in from now on (call_watch.h) fails once; an
//                            unknown name is an error
//   dieAtCall(name, n)       the process ends there, as a crash would
//   callNames()              {host, files}: the names that there are
//   pendingCalls()           [{name, n}] of those that have not failed yet; n counts down
//   dropCalls()              forgets them; how many there were
#pragma once

class QScriptValue;

namespace quillon {

void addFileFunctions(QScriptValue bench);

} // namespace quillon
