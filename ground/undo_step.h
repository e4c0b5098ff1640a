// undo_step.h - the caption of the plug-in's undo steps, and a hold that becomes a step only when
// something in the scene was changed meanwhile.
#pragma once

#include "dzundostack.h"

#include <QString>

namespace quillon {

const char kUndoCaption[] = "quillon_stack";

// From where it stands to the end of its scope. Steps within it become part of it.
class UndoStep {
public:
    UndoStep()
        : m_changed(false)
    {
    }
    ~UndoStep()
    {
        if (m_changed)
            m_hold.accept(QLatin1String(kUndoCaption));
    }
    // changed: what an operation tells of itself; one that did is enough.
    void note(bool changed)
    {
        m_changed = m_changed || changed;
    }
    // Puts everything back as it was. The last call.
    void cancel()
    {
        m_changed = false;
        m_hold.cancel();
    }

private:
    UndoStep(const UndoStep&);
    UndoStep& operator=(const UndoStep&);

    DzUndoStackHold m_hold;
    bool m_changed;
};

} // namespace quillon
