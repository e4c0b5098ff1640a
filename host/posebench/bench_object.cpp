#include "host/posebench/bench_object.h"

#include "host/posebench/bench_accessible.h"
#include "host/posebench/bench_files.h"
#include "host/posebench/bench_host.h"
#include "host/posebench/bench_input.h"
#include "host/posebench/bench_modal.h"
#include "host/posebench/bench_progress.h"
#include "host/posebench/bench_record.h"
#include "host/posebench/bench_state.h"
#include "host/posebench/bench_timers.h"

#include <QScriptEngine>

namespace quillon {

typedef void (*AddFunctions)(QScriptValue bench);

static const AddFunctions kSubjects[] = {
    addInputFunctions,
    addRecordFunctions,
    addAccessibleFunctions,
    addModalFunctions,
    addProgressFunctions,
    addTimerFunctions,
    addStateFunctions,
    addFileFunctions,
    addHostFunctions,
};

QScriptValue makeBenchObject(QScriptEngine* engine)
{
    const QScriptValue bench = engine->newObject();
    for (const AddFunctions add : kSubjects)
        add(bench);
    return bench;
}

} // namespace quillon
