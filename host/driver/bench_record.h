// bench_record.h - what a widget paints, for scripts:
//   texts(widget)  strings of a repaint, one for each drawn line, in order
//   draws(widget)  every draw call as {kind, rect, colour, text, pen}; colours as "#rrggbb", as
//                  "#aarrggbb" when not opaque, "" without one
//   paintCount(widget), grab(widget, file), grabViewport(file)
#pragma once

class QScriptValue;

namespace quillon {

void addRecordFunctions(QScriptValue bench);

} // namespace quillon
