#!/usr/bin/python3
"""test_qt48_uses.py SOURCE BUILD WORK - shows that qt48_uses.py refuses each of the lines below that
Qt 4.8 would, and no other, with the real table; also where two files that are read together give a
name to two things; likewise host_calls.py. WORK: a folder for a small tree, removed at the end.
"""
import json
import os
import re
import shutil
import subprocess
import sys

import test_host_calls

HERE = os.path.dirname(os.path.abspath(__file__))
BEFORE = """#include "dzquat.h"
#include <QtTest>
#include <QtGui>
#include <QProcess>
#include <QRegularExpression>
#include <algorithm>
#include <vector>
struct Pair { bool is; int kind; };
QString s; QString path; QByteArray bytes; QStringList list; QSize size; QObject* object; QTimer* timer;
std::vector<const char*> words; bool exact; DzVec3 a; DzQuat q; DzMatrix3 m; QProcess process;
void f()
{
"""
REFUSED = """size = size.scaled(size, Qt::KeepAspectRatio);
QTest::qWaitForWindowExposed(static_cast<QWidget*>(nullptr));
for (const QString& each : qAsConst(list)) exact = each.isEmpty();
process.processId();
QObject::connect(timer, &QTimer::timeout, [] { });
QRegularExpression expression("x");
list = QStringList({"a", "b"});
Pair pair = {path.contains("x"), 0};
exact = exact ? true : bytes.contains("x");
std::any_of(words.begin(), words.end(), [](const char* w) { return path.contains(QLatin1String(w)); });
QCOMPARE(path.contains("x"), exact);
QCOMPARE(s[0], QChar('x'));
QCOMPARE(object, timer);
s = QString::asprintf("%d", 1);
s = s.chopped(1);
s = QStringLiteral("x");
exact = a == a;
exact = q != q;
exact = m == m;
"""
ACCEPTED = """size.scale(size, Qt::KeepAspectRatio);
QObject::connect(timer, SIGNAL(timeout()), object, SLOT(deleteLater()));
list = QStringList() << "a" << "b";
Pair right = {bool(path.contains("x")), 0};
exact = exact ? true : bool(bytes.contains("x"));
exact = path.contains("x") ? true : false;
if (path.contains("x") && !bytes.contains("y")) exact = path.contains("z");
std::any_of(words.begin(), words.end(), [](const char* w) { return bool(path.contains(QLatin1String(w))); });
QCOMPARE(bool(path.contains("x")), exact);
QCOMPARE(s.at(0), QChar('x'));
QCOMPARE(object, static_cast<QObject*>(timer));
s = QString("%1").arg(1);
"""


def flags_of_a_test(build):
    for entry in json.load(open(os.path.join(build, "compile_commands.json"))):
        if entry["file"].endswith("/test_scan_figure.cpp"):
            return entry["command"]
    sys.exit("no such test is built")


def is_header_kept(work, command, flags):
    """Files include a header that is refused; then all but the last one of them drop it."""
    folder = os.path.join(work, "ground")
    names = [f"z{n}.cpp" for n in range(8)]
    told = []
    for others in ('#include "z.h"\n', "// nothing\n"):
        texts = dict.fromkeys(names, others)
        texts[names[-1]] = '#include "z.h"\n'
        texts["z.h"] = "#pragma once\n#include <QString>\ninline QString z(const QString& s) { return s.chopped(1); }\n"
        for name, text in texts.items():
            with open(os.path.join(folder, name), "w") as out:
                out.write(text)
        with open(os.path.join(work, "build", "compile_commands.json"), "w") as out:
            json.dump([{"file": os.path.join(folder, name), "command": flags} for name in names], out)
        told.append(subprocess.run(command, stderr=subprocess.PIPE, stdout=subprocess.PIPE, text=True).stderr)
    return all("ground/z.h:3:" in each for each in told)


def main():
    build, work = os.path.abspath(sys.argv[2]), os.path.abspath(sys.argv[3])
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(os.path.join(work, "ground"))
    os.makedirs(os.path.join(work, "build"))
    texts = {"w.cpp": "static int path; // which the others have, too\n"}
    texts["x.cpp"] = texts["y.cpp"] = BEFORE + REFUSED + ACCEPTED + "}\n"
    files = [os.path.join(work, "ground", name) for name in texts]
    for file, text in zip(files, texts.values()):
        with open(file, "w") as out:
            out.write(text)
    flags = flags_of_a_test(build)
    with open(os.path.join(work, "build", "compile_commands.json"), "w") as out:
        json.dump([{"file": file, "command": flags}
                   for file in files + [test_host_calls.write(work)]], out)
    command = [os.path.join(HERE, "qt48_uses.py"), work, os.path.join(work, "build")]
    told = subprocess.run(command, stderr=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    first = BEFORE.count("\n") + 1
    wanted = {(name, line) for name in ("x.cpp", "y.cpp")
              for line in range(first, first + REFUSED.count("\n"))}
    found = {(name, int(line)) for name, line in re.findall(r"^ground/(.*?):(\d+):", told.stderr, re.M)}
    for name, line in sorted(wanted ^ found):
        what = "accepted" if (name, line) in wanted else "refused"
        print(f"{what}: {name}: {texts[name].splitlines()[line - 1]}", file=sys.stderr)
    if wanted != found or told.returncode != 1:
        print(told.stderr, file=sys.stderr)
        return 1
    flaws = test_host_calls.flaws(work)
    if flaws:
        print("\n".join(flaws), file=sys.stderr)
        return 1
    if not is_header_kept(work, command, flags):
        print("accepted: a header's use, once the file that was read with it has dropped it", file=sys.stderr)
        return 1
    shutil.rmtree(work)
    print(f"{len(wanted)} lines refused, {ACCEPTED.count(chr(10))} accepted")
    return 0


if __name__ == "__main__":
    sys.exit(main())
