// bench_modal.h - modal windows for scripts:
//   expect({title, text, button, file, fields, run})   dialogs()   pendingExpects()
//   dropExpects()   forgets the answers that were not needed; how many there were
#pragma once

class QScriptValue;

namespace quillon {

void addModalFunctions(QScriptValue bench);

} // namespace quillon
