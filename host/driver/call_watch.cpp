#include "host/driver/call_watch.h"

#include "host/driver/call_table.h"

#include "dzhostcalls.h"

#include <QFileInfo>
#include <QSet>
#include <QThread>

#include <csignal>
#include <dlfcn.h>
#include <execinfo.h>
#include <map>
#include <unistd.h>

namespace quillon {
namespace {

// Never destroyed: files are closed, and so watched, after static objects are gone.
QList<CallOrder>& g_orders = *new QList<CallOrder>;
QSet<QString> g_pluginFiles; // canonical
std::map<const void*, bool> g_modules; // by load address: whether it is a plug-in
QThread* g_thread = nullptr;
bool g_armed = false; // read before anything else, also before main()
bool g_inside = false; // looking a caller up makes file calls of its own

// The addresses that the calls under way return to, innermost first.
struct CallStack {
    void* frames[128];
    int count;
};

// An address to return to may lie behind the end of its function; the call lies before it.
bool describe(const void* returnAddress, Dl_info* info)
{
    return dladdr(static_cast<const char*>(returnAddress) - 1, info) != 0;
}

const void* moduleAt(const void* returnAddress) // null: unknown
{
    Dl_info info;
    return describe(returnAddress, &info) ? info.dli_fbase : nullptr;
}

const void* thisProgram()
{
    Dl_info info;
    return dladdr(reinterpret_cast<const void*>(&moduleAt), &info) ? info.dli_fbase : nullptr;
}

bool isPlugin(const void* returnAddress)
{
    Dl_info info;
    if (!describe(returnAddress, &info) || !info.dli_fname)
        return false;
    const auto known = g_modules.find(info.dli_fbase);
    if (known != g_modules.end())
        return known->second;
    const QString file = QFileInfo(QString::fromLocal8Bit(info.dli_fname)).canonicalFilePath();
    return g_modules[info.dli_fbase] = g_pluginFiles.contains(file);
}

// Mangled names hold each identifier after its length. A function without a known name is private
// to the host and will do.
bool isInFunction(const void* returnAddress, const char* function)
{
    Dl_info info;
    if (!describe(returnAddress, &info) || !info.dli_sname)
        return true;
    const QByteArray symbol(info.dli_sname);
    const QByteArray part = QByteArray::number(qstrlen(function)) + function;
    const int at = symbol.indexOf(part);
    return at > 0 && (symbol.at(at - 1) < '0' || symbol.at(at - 1) > '9');
}

// Out of this program and the library that called the hook, whatever lies between: the next one is
// a plug-in, and the function of the host that it entered is the one in question. (The host calls
// some of its own public functions on the way through others.)
bool madeByPlugin(const CallStack& stack, const CallRow& call)
{
    const void* program = thisProgram();
    const void* library = nullptr;
    int i = 0;
    while (i < stack.count && moduleAt(stack.frames[i]) != program)
        ++i; // a sanitizer's own backtrace()
    for (; i < stack.count; ++i) {
        const void* module = moduleAt(stack.frames[i]);
        if (!library && module != program)
            library = module;
        if (module != program && module != library)
            break;
    }
    if (i == stack.count || !isPlugin(stack.frames[i]))
        return false;
    const void* entered = stack.frames[i - 1];
    return isInFunction(entered, call.name)
        || (call.function && isInFunction(entered, call.function));
}

bool hasPlugin(const CallStack& stack) // a plug-in is anywhere among the callers
{
    for (int i = 0; i < stack.count; ++i)
        if (isPlugin(stack.frames[i]))
            return true;
    return false;
}

// Counts the call; true when an order for it strikes now.
bool strikes(const CallRow* call)
{
    for (int i = 0; i < g_orders.size(); ++i) {
        if (g_orders.at(i).call != call || --g_orders[i].left > 0)
            continue;
        if (g_orders.at(i).die)
            kill(getpid(), SIGKILL); // as a crash: nothing is written any more
        g_orders.removeAt(i);
        g_armed = !g_orders.isEmpty();
        return true;
    }
    return false;
}

const CallRow* wanted(const char* name) // null: no order is for it
{
    for (const CallOrder& order : std::as_const(g_orders))
        if (qstrcmp(order.call->name, name) == 0)
            return order.call;
    return nullptr;
}

bool watch(const char* name)
{
    if (!g_armed || g_inside || QThread::currentThread() != g_thread)
        return false;
    const CallRow* call = wanted(name);
    if (!call)
        return false;
    g_inside = true;
    CallStack stack;
    stack.count = backtrace(stack.frames, int(std::size(stack.frames)));
    const bool counts
        = call->kind == CallKind::Host ? madeByPlugin(stack, *call) : hasPlugin(stack);
    const bool struck = counts && strikes(call);
    g_inside = false;
    return struck;
}

// The caller told is within dzcore wherever one public function leads to another, so the stack is
// asked instead.
bool watchHostCall(const char* name, const void*)
{
    return watch(name);
}

} // namespace

void startCallWatch(const QStringList& pluginFiles)
{
    for (const QString& file : pluginFiles)
        g_pluginFiles.insert(QFileInfo(file).canonicalFilePath());
    g_thread = QThread::currentThread();
    dzHostCallHook = watchHostCall;
}

void orderCall(const CallOrder& order)
{
    void* warmUp[1];
    backtrace(warmUp, 1); // loads what it needs now, not within a file call
    g_orders.append(order);
    g_armed = true;
}

QList<CallOrder> pendingCalls()
{
    return g_orders;
}

void dropCallOrders()
{
    g_orders.clear();
    g_armed = false;
}

bool callsAreWatched()
{
    return g_armed && !g_inside;
}

bool fileCallFails(const char* name)
{
    return watch(name);
}

} // namespace quillon
