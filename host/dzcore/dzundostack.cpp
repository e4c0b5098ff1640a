#include "dzundostack.h"

#include "dzfloatproperty.h"
#include "dzhostcalls.h"
#include "dzundoitem.h"

#include <deque>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

DzUndoStack* dzUndoStack = nullptr;

namespace {

const qint64 kDefaultMemory = qint64(256) << 20;
const int kEntryOverhead = 160; // an entry, its share of the vector, bookkeeping

// A change of a property (by far the most frequent one) or anything else.
struct Entry {
    DzFloatProperty* property = nullptr;
    DzFloatProperty::State before;
    std::unique_ptr<DzUndoItem> item;
};

typedef std::vector<Entry> Entries;

qint64 bytesOf(const Entries& entries)
{
    qint64 sum = kEntryOverhead;
    for (const Entry& e : entries)
        sum += kEntryOverhead + qint64(e.before.keys.capacity() * sizeof(DzFloatProperty::Key))
            + (e.item ? e.item->bytes() : 0);
    return sum;
}

struct Hold {
    unsigned serial; // marks the properties whose state before is already kept
    Entries entries;
};

} // namespace

struct DzUndoStack::Step {
    QString caption;
    Entries entries;
    qint64 bytes = 0;
};

struct DzUndoStack::Private {
    std::deque<Step> undo; // newest last
    std::deque<Step> redo; // next one last
    std::vector<Hold> holds;
    qint64 memory = 0;
    qint64 limit = kDefaultMemory;
    unsigned serial = 0;
    int locks = 0;
    bool busy = false; // inside undo, redo or cancel

    static void exchange(Entry& e)
    {
        if (e.property)
            DzUndoStack::exchangeProperty(e.property, &e.before);
        else
            e.item->exchange();
    }

    void exchangeBackwards(Entries& entries)
    {
        busy = true;
        for (auto e = entries.rbegin(); e != entries.rend(); ++e)
            exchange(*e);
        busy = false;
    }

    void exchangeForwards(Entries& entries)
    {
        busy = true;
        for (Entry& e : entries)
            exchange(e);
        busy = false;
    }

    void dropRedo()
    {
        for (const Step& step : redo)
            memory -= step.bytes;
        redo.clear();
    }

    void push(Step&& step)
    {
        dropRedo();
        step.bytes = bytesOf(step.entries);
        memory += step.bytes;
        undo.push_back(std::move(step));
        while (memory > limit && undo.size() > 1) {
            memory -= undo.front().bytes;
            undo.pop_front();
        }
    }
};

DzUndoItem::~DzUndoItem()
{
}

int DzUndoItem::bytes() const
{
    return 64;
}

namespace {

class FunctionItem : public DzUndoItem {
public:
    explicit FunctionItem(const std::function<void()>& f)
        : m_f(f)
    {
    }
    void exchange() override
    {
        m_f();
    }

private:
    std::function<void()> m_f;
};

} // namespace

void dzRecordExchange(const std::function<void()>& exchange)
{
    if (dzUndoStack && dzUndoStack->isRecording())
        dzUndoStack->record(new FunctionItem(exchange));
}

void dzRecordExchange(const DzBase* what, const std::function<void()>& exchange)
{
    if (what->isInScene())
        dzRecordExchange(exchange);
}

DzImplicitHold::DzImplicitHold(const char* caption)
    : m_caption(dzUndoStack && dzUndoStack->getHoldDepth() == 0 && dzUndoStack->isRecording()
            ? caption
            : nullptr)
{
    if (m_caption)
        dzUndoStack->beginHold();
}

DzImplicitHold::~DzImplicitHold()
{
    if (m_caption)
        dzUndoStack->acceptOrForget(QLatin1String(m_caption));
}

DzUndoStack::DzUndoStack()
    : d(new Private)
{
    dzUndoStack = this;
}

DzUndoStack::~DzUndoStack()
{
    if (dzUndoStack == this)
        dzUndoStack = nullptr;
    delete d;
}

void DzUndoStack::exchangeProperty(DzFloatProperty* property, void* state)
{
    property->exchangeState(static_cast<DzFloatProperty::State*>(state));
}

void DzUndoStack::beginHold()
{
    DZ_HOST_SEEN("beginHold");
    Hold hold;
    hold.serial = ++d->serial;
    d->holds.push_back(std::move(hold));
}

// Entries of the innermost hold go to the hold around it, which then need not keep the states of
// those properties again.
void DzUndoStack::foldInnermost()
{
    Hold inner = std::move(d->holds.back());
    d->holds.pop_back();
    Hold& outer = d->holds.back();
    for (Entry& e : inner.entries)
        if (e.property)
            e.property->m_undoSerial = outer.serial;
    outer.entries.insert(outer.entries.end(), std::make_move_iterator(inner.entries.begin()),
        std::make_move_iterator(inner.entries.end()));
}

void DzUndoStack::accept(const QString& caption)
{
    if (d->holds.empty())
        return;
    if (DZ_HOST_CALL("accept")) { // a failure loses the step, not the bracket
        drop();
        return;
    }
    if (d->holds.size() > 1) {
        foldInnermost();
        return;
    }
    Step step;
    step.caption = caption;
    step.entries = std::move(d->holds.back().entries);
    d->holds.pop_back();
    if (d->locks > 0 && step.entries.empty())
        return;
    d->push(std::move(step));
    announce();
}

void DzUndoStack::acceptOrForget(const QString& caption)
{
    if (d->holds.back().entries.empty())
        d->holds.pop_back();
    else
        accept(caption);
}

void DzUndoStack::cancel()
{
    if (d->holds.empty())
        return;
    Hold hold = std::move(d->holds.back());
    d->holds.pop_back();
    d->exchangeBackwards(hold.entries);
    // what this hold restored is again as the outer hold knows or does not know it
    for (Entry& e : hold.entries)
        if (e.property)
            e.property->m_undoSerial = 0;
}

void DzUndoStack::drop()
{
    if (d->holds.empty())
        return;
    if (d->holds.size() > 1)
        foldInnermost();
    else
        d->holds.pop_back();
}

int DzUndoStack::getHoldDepth() const
{
    return int(d->holds.size());
}

void DzUndoStack::lock()
{
    ++d->locks;
}

void DzUndoStack::unlock()
{
    if (d->locks > 0)
        --d->locks;
}

bool DzUndoStack::isLocked() const
{
    return d->locks > 0;
}

bool DzUndoStack::undo()
{
    if (!canUndo() || !d->holds.empty() || d->busy)
        return false;
    Step step = std::move(d->undo.back());
    d->undo.pop_back();
    d->exchangeBackwards(step.entries);
    d->redo.push_back(std::move(step));
    announce();
    return true;
}

bool DzUndoStack::redo()
{
    if (!canRedo() || !d->holds.empty() || d->busy)
        return false;
    Step step = std::move(d->redo.back());
    d->redo.pop_back();
    d->exchangeForwards(step.entries);
    d->undo.push_back(std::move(step));
    announce();
    return true;
}

bool DzUndoStack::canUndo() const
{
    return !d->undo.empty();
}

bool DzUndoStack::canRedo() const
{
    return !d->redo.empty();
}

bool DzUndoStack::isInUndoRedo() const
{
    return d->busy;
}

int DzUndoStack::getNumUndoItems() const
{
    return int(d->undo.size());
}

QString DzUndoStack::getUndoCaption() const
{
    return d->undo.empty() ? QString() : d->undo.back().caption;
}

QString DzUndoStack::getRedoCaption() const
{
    return d->redo.empty() ? QString() : d->redo.back().caption;
}

QStringList DzUndoStack::getUndoCaptions() const
{
    QStringList captions;
    for (const Step& step : d->undo)
        captions.append(step.caption);
    return captions;
}

void DzUndoStack::clearAll()
{
    d->redo.clear();
    d->undo.clear();
    for (Hold& hold : d->holds)
        hold.entries.clear();
    d->memory = 0;
    announce();
}

void DzUndoStack::setMemoryLimit(qint64 bytes)
{
    d->limit = bytes;
}

qint64 DzUndoStack::getMemoryUse() const
{
    return d->memory;
}

bool DzUndoStack::isRecording() const
{
    return d->locks == 0 && !d->busy;
}

void DzUndoStack::record(DzUndoItem* item)
{
    Entry e;
    e.item.reset(item);
    if (!isRecording())
        return;
    if (!d->holds.empty()) {
        d->holds.back().entries.push_back(std::move(e));
        return;
    }
    Step step;
    step.caption = tr("Edit");
    step.entries.push_back(std::move(e));
    d->push(std::move(step));
    announce();
}

void DzUndoStack::recordProperty(DzFloatProperty* property)
{
    if (!isRecording())
        return;
    if (!d->holds.empty()) {
        Hold& hold = d->holds.back();
        if (property->m_undoSerial == hold.serial)
            return;
        property->m_undoSerial = hold.serial;
        hold.entries.emplace_back();
        hold.entries.back().property = property;
        hold.entries.back().before = property->m_state;
        return;
    }
    Step step;
    step.caption = property->getLabel();
    step.entries.emplace_back();
    step.entries.back().property = property;
    step.entries.back().before = property->m_state;
    d->push(std::move(step));
    announce();
}

void DzUndoStack::announce()
{
    emit undoAvailable(canUndo());
    emit redoAvailable(canRedo());
    emit undoCaptionChanged(getUndoCaption());
    emit redoCaptionChanged(getRedoCaption());
    emit stackChanged();
}

DzUndoStackHold::DzUndoStackHold()
    : m_open(dzUndoStack != nullptr)
{
    if (m_open)
        dzUndoStack->beginHold();
}

DzUndoStackHold::~DzUndoStackHold()
{
    drop();
}

void DzUndoStackHold::accept(const QString& caption)
{
    if (m_open && dzUndoStack)
        dzUndoStack->accept(caption);
    m_open = false;
}

void DzUndoStackHold::cancel()
{
    if (m_open && dzUndoStack)
        dzUndoStack->cancel();
    m_open = false;
}

void DzUndoStackHold::drop()
{
    if (m_open && dzUndoStack)
        dzUndoStack->drop();
    m_open = false;
}

DzUndoStackLock::DzUndoStackLock()
{
    if (dzUndoStack)
        dzUndoStack->lock();
}

DzUndoStackLock::~DzUndoStackLock()
{
    if (dzUndoStack)
        dzUndoStack->unlock();
}
