#include "host/posebench/call_watch.h"

#include "dzhostcalls.h"

#include <QFileInfo>
#include <QList>
#include <QSet>
#include <QThread>

#include <csignal>
#include <dlfcn.h>
#include <execinfo.h>
#include <map>
#include <unistd.h>

namespace quillon {
namespace {

struct Order {
    QByteArray name;
    int left; // calls until it strikes; 1: the next one
    bool die;
};

QList<Order> g_orders;
QSet<QString> g_pluginFiles; // canonical
std::map<const void*, bool> g_modules; // by load address: whether it is a plug-in
QThread* g_thread = nullptr;
bool g_armed = false; // read before anything else, also before main()
bool g_inside = false; // looking a caller up makes file calls of its own

bool isPlugin(const void* address)
{
    Dl_info info;
    if (!dladdr(address, &info) || !info.dli_fname)
        return false;
    const auto known = g_modules.find(info.dli_fbase);
    if (known != g_modules.end())
        return known->second;
    const QString file = QFileInfo(QString::fromLocal8Bit(info.dli_fname)).canonicalFilePath();
    return g_modules[info.dli_fbase] = g_pluginFiles.contains(file);
}

bool calledByPlugin()
{
    void* frames[128];
    const int count = backtrace(frames, 128);
    for (int i = 0; i < count; ++i)
        if (isPlugin(frames[i]))
            return true;
    return false;
}

// Counts the call; true when an order for it strikes now.
bool strikes(const char* name)
{
    for (int i = 0; i < g_orders.size(); ++i) {
        if (g_orders.at(i).name != name || --g_orders[i].left > 0)
            continue;
        if (g_orders.at(i).die)
            kill(getpid(), SIGKILL); // as a crash: nothing is written any more
        g_orders.removeAt(i);
        g_armed = !g_orders.isEmpty();
        return true;
    }
    return false;
}

bool wanted(const char* name)
{
    for (const Order& order : std::as_const(g_orders))
        if (order.name == name)
            return true;
    return false;
}

bool watchHostCall(const char* name, const void* caller)
{
    if (!g_armed || g_inside || QThread::currentThread() != g_thread || !wanted(name))
        return false;
    g_inside = true;
    const bool struck = isPlugin(caller) && strikes(name);
    g_inside = false;
    return struck;
}

void addOrder(const QString& name, int n, bool die)
{
    void* warmUp[1];
    backtrace(warmUp, 1); // loads what it needs now, not within a file call
    g_orders.append({name.toLatin1(), n, die});
    g_armed = true;
}

} // namespace

void startCallWatch(const QStringList& pluginFiles)
{
    for (const QString& file : pluginFiles)
        g_pluginFiles.insert(QFileInfo(file).canonicalFilePath());
    g_thread = QThread::currentThread();
    dzHostCallHook = watchHostCall;
}

void failCallOnce(const QString& name, int n)
{
    addOrder(name, n, false);
}

void dieAtCall(const QString& name)
{
    addOrder(name, 1, true);
}

QStringList fileCallNames()
{
    return {"open", "read", "write", "close", "sync", "truncate", "rename", "unlink", "mkdir",
        "rmdir", "stat", "opendir"};
}

bool callsAreWatched()
{
    return g_armed && !g_inside;
}

bool fileCallFails(const char* name)
{
    if (!g_armed || g_inside || QThread::currentThread() != g_thread || !wanted(name))
        return false;
    g_inside = true;
    const bool struck = calledByPlugin() && strikes(name);
    g_inside = false;
    return struck;
}

} // namespace quillon
