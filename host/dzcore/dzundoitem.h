// dzundoitem.h - one recorded change. Not part of the interface that plug-ins see.
#pragma once

#include "dzcore_export.h"

#include <functional>

class DZCORE_EXPORT DzUndoItem {
public:
    virtual ~DzUndoItem();
    // Exchanges the remembered state with the present one: undo and redo are the same call.
    virtual void exchange() = 0;
    virtual int bytes() const; // memory held, roughly
};

class DzBase;

// Records a change of what as a function that exchanges states; call it before the change takes
// place. Does nothing while nothing is recorded, or when what is not in a scene.
void dzRecordExchange(const DzBase* what, const std::function<void()>& exchange);
void dzRecordExchange(const std::function<void()>& exchange); // of the scene itself

// Brackets what one call changes into one step when no hold is open; adds no step when nothing
// was recorded.
class DZCORE_EXPORT DzImplicitHold {
public:
    explicit DzImplicitHold(const char* caption);
    ~DzImplicitHold();

private:
    Q_DISABLE_COPY(DzImplicitHold)
    const char* m_caption; // null: a hold was open already
};
