#include "room_tests.h"

#include <QApplication>
#include <QScopedPointer>
#include <QtTest>

#include <cstdio>
#include <cstring>

namespace room_tests {

static const TestClass* g_classes = nullptr;

bool enlist(TestClass* each)
{
    each->next = g_classes;
    g_classes = each;
    return true;
}

static const char* shortName(const TestClass& each)
{
    const size_t prefix = std::strlen("Test");
    return std::strncmp(each.name, "Test", prefix) == 0 ? each.name + prefix : each.name;
}

static const TestClass* classNamed(const char* name)
{
    for (const TestClass* each = g_classes; each; each = each->next)
        if (std::strcmp(shortName(*each), name) == 0)
            return each;
    return nullptr;
}

static int listClasses()
{
    std::fputs("Name one of these classes, then QtTest's own options:\n", stderr);
    for (const TestClass* each = g_classes; each; each = each->next)
        std::fprintf(stderr, "  %s\n", shortName(*each));
    return 2;
}

static int run(const TestClass& each, int argc, char** argv)
{
    const QScopedPointer<QObject> test(each.make());
    return QTest::qExec(test.data(), argc, argv);
}

} // namespace room_tests

int main(int argc, char** argv)
{
    using namespace room_tests;
    const TestClass* const chosen = argc > 1 ? classNamed(argv[1]) : nullptr;
    if (!chosen)
        return listClasses();
    argv[1] = argv[0];
    --argc, ++argv;
    if (chosen->process == Process::Bare)
        return run(*chosen, argc, argv);
    QApplication application(argc, argv);
    return run(*chosen, argc, argv);
}
