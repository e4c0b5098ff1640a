#include "host/driver/bench_object.h"

#include "host/driver/bench_accessible.h"
#include "host/driver/bench_files.h"
#include "host/driver/bench_host.h"
#include "host/driver/bench_input.h"
#include "host/driver/bench_modal.h"
#include "host/driver/bench_progress.h"
#include "host/driver/bench_record.h"
#include "host/driver/bench_scene_state.h"
#include "host/driver/bench_state.h"
#include "host/driver/bench_timers.h"

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
    addSceneStateFunctions,
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
