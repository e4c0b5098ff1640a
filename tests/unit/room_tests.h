// room_tests.h - one program holds the test classes of a room; it is told which one to run.
//   test_finder PoseRanks [QtTest's options]     without arguments it lists its classes
// A class registers itself at the end of its file:
//   QUILLON_TEST(TestPoseRanks)                       with a QApplication
//   QUILLON_TEST_WITHOUT_APPLICATION(TestPoseText)    in a bare process
#pragma once

class QObject;

namespace room_tests {

enum class Process { WithApplication, Bare };

struct TestClass {
    const char* name;
    Process process;
    QObject* (*make)();
    const TestClass* next;
};

// Static initialisation only; the class stays registered as long as the program runs.
bool enlist(TestClass* each);

template <typename T> QObject* make()
{
    return new T;
}

} // namespace room_tests

#define QUILLON_TEST_IN(Class, process)                                                            \
    static room_tests::TestClass g_test##Class                                                     \
        = {#Class, room_tests::Process::process, room_tests::make<Class>, nullptr};                \
    static const bool g_enlisted##Class = room_tests::enlist(&g_test##Class);

#define QUILLON_TEST(Class) QUILLON_TEST_IN(Class, WithApplication)
#define QUILLON_TEST_WITHOUT_APPLICATION(Class) QUILLON_TEST_IN(Class, Bare)
