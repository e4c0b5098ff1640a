// dzundostack.h - undo and redo of scene changes.
//
// A hold brackets changes into one step. Holds nest: an inner accept folds into the outer hold,
// an inner cancel takes back only its own changes. Accepting the outermost hold adds a step even
// when nothing changed. A change outside any hold is a step of its own. While the stack is locked
// nothing is recorded. Undo and redo restore bit for bit; a new step drops what could be redone.
// Memory is bounded: the oldest steps fall off.
#pragma once

#include "dzcore_export.h"

#include <QObject>
#include <QString>
#include <QStringList>

class DzFloatProperty;
class DzUndoItem;

class DZCORE_EXPORT DzUndoStack : public QObject {
    Q_OBJECT
public:
    DzUndoStack(); // becomes dzUndoStack
    ~DzUndoStack() override;

    Q_INVOKABLE void beginHold();
    Q_INVOKABLE void accept(const QString& caption);
    Q_INVOKABLE void cancel(); // takes back what the innermost hold recorded
    Q_INVOKABLE void drop(); // ends the innermost hold; its changes stay, in the outer hold if
                             // there is one, otherwise forgotten
    Q_INVOKABLE int getHoldDepth() const;

    Q_INVOKABLE void lock(); // nests
    Q_INVOKABLE void unlock();
    Q_INVOKABLE bool isLocked() const;

    Q_INVOKABLE bool undo(); // false: nothing to undo, or a hold is open
    Q_INVOKABLE bool redo();
    Q_INVOKABLE bool canUndo() const;
    Q_INVOKABLE bool canRedo() const;
    Q_INVOKABLE bool isInUndoRedo() const;
    Q_INVOKABLE int getNumUndoItems() const;
    Q_INVOKABLE QString getUndoCaption() const; // empty: nothing to undo
    Q_INVOKABLE QString getRedoCaption() const;
    QStringList getUndoCaptions() const; // oldest first
    Q_INVOKABLE void clearAll();

    void setMemoryLimit(qint64 bytes); // default 256 MiB; at least the newest step is kept
    qint64 getMemoryUse() const;

    // For dzcore and hosts. Takes ownership; call before the change takes place. The item is
    // deleted at once when nothing is recorded now.
    void record(DzUndoItem*);
    bool isRecording() const; // not locked, not inside undo or redo

signals:
    void undoAvailable(bool);
    void redoAvailable(bool);
    void undoCaptionChanged(const QString&);
    void redoCaptionChanged(const QString&);
    void stackChanged();

private:
    friend class DzFloatProperty;
    friend class DzImplicitHold;
    void recordProperty(DzFloatProperty*); // once a hold; keeps the state before
    static void exchangeProperty(DzFloatProperty*, void* state);
    void foldInnermost();
    void acceptOrForget(const QString& caption); // an outermost hold; no step when empty
    void announce();
    struct Step;
    struct Private;
    Private* d;
};

// Opens a hold; ends it by drop() when it dies without accept, cancel or drop.
class DZCORE_EXPORT DzUndoStackHold {
public:
    DzUndoStackHold();
    ~DzUndoStackHold();
    void accept(const QString& caption);
    void cancel();
    void drop();

private:
    Q_DISABLE_COPY(DzUndoStackHold)
    bool m_open;
};

// Locks the stack for its lifetime.
class DZCORE_EXPORT DzUndoStackLock {
public:
    DzUndoStackLock();
    ~DzUndoStackLock();

private:
    Q_DISABLE_COPY(DzUndoStackLock)
};

extern DZCORE_EXPORT DzUndoStack* dzUndoStack; // null before the stack exists
