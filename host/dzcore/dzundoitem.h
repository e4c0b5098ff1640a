// dzundoitem.h - one recorded change. Not part of the interface that plug-ins see.
#pragma once

#include "dzcore_export.h"

class DZCORE_EXPORT DzUndoItem {
public:
    virtual ~DzUndoItem();
    // Exchanges the remembered state with the present one: undo and redo are the same call.
    virtual void exchange() = 0;
    virtual int bytes() const; // memory held, roughly
};
