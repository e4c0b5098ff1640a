#!/usr/bin/python3
"""qt48_uses.py SOURCE BUILD [--verify NAMES] [--add]

Every use of a Qt name in the plug-in, the stand-in's library and figures, and their unit tests must
stand in qt48_uses.tsv: the names that Qt 4.8 is known to have. Reads the sources as the compiler
does (libclang, the flags of BUILD/compile_commands.json), so it knows the class of each receiver.

qt48_uses.tsv has one row for each name, in order:
  class (or namespace, or nothing), name, the numbers of arguments that calls give it (or "-")
  "macro", name, "-"
Besides, what no list of names tells: contains() gives a QBool, which is no bool where its type is
deduced; QCOMPARE wants two of one type; lists are not made from braces; nothing is connected to a
function; and the plug-in does not compare the host's value types with == or !=.

--verify NAMES: holds each row against a list of Qt 4.8's names (rows "class name bases", "name scope
name kinds", "macro name parameters", separated by tabs). --add: adds new uses to the table, those
that NAMES has if it is given.
"""
import ctypes
import functools
import hashlib
import json
import multiprocessing
import os
import re
import shlex
import sys

import clang.cindex as ci
from clang.cindex import CursorKind as Kind

import host_names

HERE = os.path.dirname(os.path.abspath(__file__))
TABLE = os.path.join(HERE, "qt48_uses.tsv")
ROOMS = "ground|figure|posefile|finder|services|pane|plugin"
CHECKED = re.compile(rf"(?:{ROOMS}|art|host/dzcore|host/figures|tests/reference"
                     rf"|tests/unit/(?:{ROOMS}|dzcore|figures|modules))/|tests/unit/[a-z_]*\.|tests/[a-z_]*\.h")
# What only Qt 5 builds, and the files that ask for the version.
LEFT_OUT = re.compile(r"pane/accessible_buttons|tests/reference/(?:figure_renderer|raster|scene_mesh|index_tables)"
                      r"|tests/reference/(?:checksum_passes|compare_forms)|ground/qt_compat\.h|host/figures/json_text\.cpp"
                      r"|tests/qt_test_compat\.h|tests/unit/pane/test_(?:page_layout|accessible_qt5)\.cpp")
QT = "/qt5/"
PARSE = ci.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD
INSTANTIATE = "-fpch-instantiate-templates"  # once, not in each unit
# Where Qt 5 has moved a class's members.
FORMER = {"QFileDevice": "QFile", "QListSpecialMethods": "QStringList"}
# Types that Q_DECLARE_FLAGS declares: a list of names has the macro alone.
FLAGS = ("Alignment", "OpenMode", "Permissions", "ResolveFlags", "StandardButtons", "WindowFlags")
QBOOL_CLASSES = ("QString", "QByteArray", "QList", "QStringList", "QListSpecialMethods")
SCOPES = (Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.CLASS_TEMPLATE, Kind.NAMESPACE, Kind.UNION_DECL,
          Kind.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION)
TYPES = (Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.CLASS_TEMPLATE, Kind.TYPEDEF_DECL, Kind.ENUM_DECL)
REFERENCES = (Kind.MEMBER_REF_EXPR, Kind.DECL_REF_EXPR, Kind.TYPE_REF, Kind.TEMPLATE_REF, Kind.MEMBER_REF)
HOST_VALUES = ("DzVec3", "DzQuat", "DzMatrix3")

ci.conf.lib.clang_getFileLocation.argtypes = [ci.SourceLocation] + [ctypes.c_void_p] * 4


def place(location):
    """Line and column; of a macro's argument, where it is written; of its body, the macro's own."""
    handle, line, column, offset = ctypes.c_void_p(), ctypes.c_uint(), ctypes.c_uint(), ctypes.c_uint()
    ci.conf.lib.clang_getFileLocation(location, *(ctypes.byref(x) for x in (handle, line, column, offset)))
    return line.value, column.value


def is_qt(cursor):
    at = cursor.location.file
    return at is not None and QT in at.name


def scope_of(cursor):
    names = []
    parent = cursor.semantic_parent
    while parent is not None and parent.kind != Kind.TRANSLATION_UNIT:
        if parent.kind in SCOPES and parent.spelling:
            names.append(parent.spelling)
        parent = parent.semantic_parent
    return "::".join(reversed(names))


def qt_class(declaration):
    """The declaration's class, or the nearest of its bases that is Qt's; "" if none is."""
    if declaration.kind == Kind.NO_DECL_FOUND:
        return ""
    if is_qt(declaration):
        scope = scope_of(declaration)
        return (scope + "::" if scope else "") + declaration.spelling
    definition = declaration.get_definition()
    for child in definition.get_children() if definition else ():
        if child.kind == Kind.CXX_BASE_SPECIFIER:
            found = qt_class(child.type.get_canonical().get_declaration())
            if found:
                return found
    return ""


def receiver_of(member):
    """The Qt class that a member is asked of."""
    for base in member.get_children():
        kind = base.type.get_canonical()
        while kind.kind in (ci.TypeKind.POINTER, ci.TypeKind.LVALUEREFERENCE, ci.TypeKind.RVALUEREFERENCE):
            kind = kind.get_pointee().get_canonical()
        return qt_class(kind.get_declaration())
    return ""


def written_arguments(call):
    """How many there are besides the defaults."""
    count = 0
    for each in call.get_arguments():
        if each is not None and each.extent.start.file is not None \
                and each.extent.start.offset != each.extent.end.offset:
            count += 1
    return count


@functools.lru_cache(maxsize=None)
def checked_name(root, path):
    """The path below the root if the file is checked, otherwise None."""
    name = os.path.relpath(path, root)
    return name if CHECKED.match(name) and not LEFT_OUT.match(name) else None


class Unit:
    """The uses of one translation unit, by file."""

    def __init__(self, root, skipped):
        self.root = root
        self.skipped = skipped
        self.macros = set()
        self.uses = {}  # file -> set of (line, scope, name, arguments)

    def file_of(self, cursor):
        at = cursor.location.file
        return checked_name(self.root, at.name) if at is not None else None

    def add(self, cursor, scope, name, arguments):
        file = self.file_of(cursor)
        if file is None:
            return
        line, column = place(cursor.location)
        if scope in ("rule", host_names.SCOPE):
            pass
        elif scope == "macro":
            self.macros.add((file, line, column))
        elif (file, line, column) in self.macros:
            return
        self.uses.setdefault(file, set()).add((line, scope, name, arguments))

    def note_call(self, call, function):
        scope = scope_of(function)
        if function.spelling.startswith(("operator", "__builtin")) or scope == "QtPrivate":
            return
        first = next(call.get_children(), None)
        if first is not None and first.kind == Kind.MEMBER_REF_EXPR:
            scope = receiver_of(first) or scope
        self.add(call, scope, function.spelling.split("<")[0], str(written_arguments(call)))

    def note(self, cursor):
        kind = cursor.kind
        host_names.note(self, cursor)
        if kind == Kind.MACRO_INSTANTIATION:
            named = cursor.referenced
            if named is not None and is_qt(named):
                self.add(cursor, "macro", cursor.spelling, "-")
            return
        if kind != Kind.CALL_EXPR and kind not in REFERENCES:
            return
        named = cursor.referenced
        if named is None or named == cursor:
            return
        if kind == Kind.CALL_EXPR:
            if is_qt(named):
                self.note_call(cursor, named)
            elif named.spelling in ("operator==", "operator!=") and named.semantic_parent is not None \
                    and named.semantic_parent.spelling in HOST_VALUES:
                self.add(cursor, "host", named.semantic_parent.spelling, "-")
            self.note_rules(cursor, named)
        elif is_qt(named) and (named.kind in TYPES or named.kind in (Kind.ENUM_CONSTANT_DECL, Kind.FIELD_DECL,
                                                                     Kind.VAR_DECL)):
            self.add(cursor, scope_of(named), named.spelling, "-")

    def note_rules(self, call, function):
        if function.spelling == "qCompare":
            types = compared_types(call)
            if any(name in ("QCharRef", "QByteRef") or is_qbool(each) for each, name in types):
                self.add(call, "rule", "QCOMPARE of a QBool, QCharRef or QByteRef: make it a value first", "-")
            elif len(types) == 2 and types[0][1] != types[1][1] and types[0][1].endswith("*"):
                self.add(call, "rule", "QCOMPARE of pointers to two types: cast one", "-")
        elif function.spelling in ("connect", "disconnect", "singleShot") and is_qt(function) \
                and scope_of(function) in ("QObject", "QTimer") and "const char *" not in function.displayname:
            self.add(call, "rule", f"{function.spelling} to a function: use SIGNAL() and SLOT()", "-")
        elif function.kind == Kind.CONSTRUCTOR and is_qt(function) and "initializer_list" in function.displayname:
            self.add(call, "rule", f"{function.spelling} from braces: use operator<<", "-")

    def walk(self, cursor, above=(), in_lambda=False):
        self.note(cursor)
        kind = cursor.kind
        in_lambda = kind == Kind.LAMBDA_EXPR or in_lambda and kind != Kind.CLASS_DECL
        if is_qbool(cursor):
            user = next((each for each in reversed(above) if each != Kind.UNEXPOSED_EXPR), None)
            if user in (Kind.INIT_LIST_EXPR, Kind.CONDITIONAL_OPERATOR) or user == Kind.RETURN_STMT and in_lambda:
                self.add(cursor, "rule", "contains() gives a QBool: write bool(...)", "-")
        for i, child in enumerate(cursor.get_children()):
            is_condition = kind == Kind.CONDITIONAL_OPERATOR and i == 0
            self.walk(child, above[-3:] + (Kind.IF_STMT if is_condition else kind,), in_lambda)

    def read(self, unit):
        for cursor in unit.cursor.get_children():
            file = self.file_of(cursor)
            if file is None or file in self.skipped:
                continue
            self.uses.setdefault(file, set())
            self.walk(cursor)


def bare(argument):
    """The expression below the conversions that nobody wrote."""
    while argument is not None and argument.kind == Kind.UNEXPOSED_EXPR:
        children = list(argument.get_children())
        if len(children) != 1:
            break
        argument = children[0]
    return argument


def is_qbool(cursor):
    """Whether Qt 4.8's type of the call is QBool."""
    if cursor is None or cursor.kind != Kind.CALL_EXPR or cursor.spelling != "contains":
        return False
    named = cursor.referenced
    return named is not None and is_qt(named) and scope_of(named) in QBOOL_CLASSES


def compared_types(call):
    return [(each, each.type.get_canonical().spelling.replace("const ", "").rstrip("const ").strip())
            for each in map(bare, list(call.get_arguments())[:2]) if each is not None]


def flags_of(command):
    words = shlex.split(command)[1:]
    flags = []
    for i, word in enumerate(words):
        if word.startswith(("-I", "-D", "-std")):
            flags.append(word)
        elif word == "-isystem":
            flags += [word, words[i + 1]]
    return flags


def units(source, build):
    """(file, flags) of each source file that is checked; merged sources one by one."""
    found = {}
    for entry in json.load(open(os.path.join(build, "compile_commands.json"))):
        files = [entry["file"]]
        if "/Unity/" in entry["file"]:
            files = re.findall(r'#include "([^"]+)"', open(entry["file"]).read())
        for file in files:
            name = os.path.relpath(file, source)
            if CHECKED.match(name) and not LEFT_OUT.match(name) and "bench/" not in entry["command"].split(" -o ")[1]:
                found.setdefault(name, flags_of(entry["command"]))
    return sorted(found.items())


def digest(files):
    total = hashlib.sha256()
    for file in files:
        try:
            total.update(open(file, "rb").read())
        except OSError:
            total.update(b"?")
    return total.hexdigest()


def make_header(cache, flags):
    """All of Qt's and the standard headers, read once: gives the file to include."""
    header = os.path.join(cache, "all.h")
    result = os.path.join(cache, "all.pch")
    modules = ["QtCore", "QtGui", "QtWidgets", "QtScript", "QtNetwork", "QtTest"]
    standard = "algorithm array cmath functional limits map memory optional random set string unordered_map vector"
    with open(header, "w") as out:
        out.writelines(f"#include <{name}>\n" for name in modules + standard.split())
    unit = ci.Index.create().parse(header, args=flags + ["-x", "c++-header", INSTANTIATE],
                                   options=PARSE | ci.TranslationUnit.PARSE_INCOMPLETE)
    unit.save(result)
    return result


def included(unit, source):
    """file -> the project's files that it includes, none of them generated."""
    found = {}
    for cursor in unit.cursor.get_children():
        if cursor.kind == Kind.INCLUSION_DIRECTIVE and cursor.location.file is not None:
            try:
                name = ci.conf.lib.clang_getIncludedFile(cursor)
            except AssertionError:  # a generated file that is not made yet
                continue
            if name and name.name.startswith(source + "/") \
                    and not os.path.relpath(name.name, source).startswith("build"):
                found.setdefault(cursor.location.file.name, set()).add(os.path.normpath(name.name))
    return found


def own_files(path, edges):
    """The project's files that the file reads, itself first."""
    found, left = [], [path]
    while left:
        each = left.pop()
        if each not in found:
            found.append(each)
            left += sorted(edges.get(each, ()))
    return found


g_skipped = set()  # headers that this process has read with another unit


def parsed(source, header, paths, flags):
    """One unit of several files, which takes a third of the time that it takes one by one."""
    batch = os.path.join(source, "qt48_uses_batch.cpp")  # nothing on the disk
    text = "".join(f'#include "{path}"\n' for path in paths)
    return ci.Index.create(excludeDecls=True).parse(
        batch, args=flags + ["-include-pch", header, "-Wno-everything", INSTANTIATE],
        unsaved_files=[(batch, text)], options=PARSE)


def errors_in(unit, paths):
    """{file of the paths: messages}; of a header they are the first file's."""
    wrong = {}
    for d in unit.diagnostics:
        if d.severity < ci.Diagnostic.Error or len(paths) == 1 and d.spelling.endswith(".moc' file not found"):
            continue
        at = d.location.file.name if d.location.file else ""
        wrong.setdefault(at if at in paths else paths[0], []).append(f"{at}:{d.location.line}: {d.spelling}")
    return wrong


def read_units(job):
    """Reads files as one unit: gives {file: (files it reads, uses by file)} of those before the first
    with an error, the messages by file, and the files after it that have none. In a batch the error
    may be a name that two files give to different things, which spoils what follows, too."""
    source, header, names, flags = job
    paths = [os.path.join(source, name) for name in names]
    unit = parsed(source, header, paths, flags)
    wrong = errors_in(unit, paths)
    good = next((i for i, path in enumerate(paths) if path in wrong), len(paths))
    reader = Unit(source, g_skipped)
    edges = included(unit, source) if good else {}
    if good:
        reader.read(unit)
    result, given = {}, set()
    for name, path in list(zip(names, paths))[:good]:
        files = own_files(path, edges)
        here = {os.path.relpath(each, source) for each in files} & set(reader.uses) - given
        result[name] = (files, {file: sorted(reader.uses[file]) for file in sorted(here)})
        given |= here
    g_skipped.update(file for file in given if file.endswith(".h"))
    told = {os.path.relpath(path, source): messages for path, messages in wrong.items()}
    return result, told, [name for name in names[good:] if name not in told]


def batches(jobs, most):
    """Jobs of one folder with the same flags, at most so many at a time."""
    groups = {}
    for name, flags in jobs:
        groups.setdefault((os.path.dirname(name), tuple(flags)), []).append(name)
    return [(names[i:i + most], list(flags)) for (_, flags), names in groups.items()
            for i in range(0, len(names), most)]


def read_all(source, header, jobs, flags_of_all):
    """{file: (files, uses)}, and messages. What has an error in a batch is read alone at the end."""
    result, errors, alone, size = {}, [], [], 12
    given = dict(jobs)
    with multiprocessing.Pool(os.cpu_count()) as pool:
        while jobs:
            work = [(source, header, names, flags_of_all + [f for f in flags if f not in flags_of_all])
                    for names, flags in batches(jobs, size)]
            jobs = []
            for read, wrong, rest in pool.imap_unordered(read_units, work):
                result.update(read)
                jobs += [(name, given[name]) for name in rest]
                if size == 1:
                    errors += [told for each in wrong.values() for told in each[:3]]
                else:
                    alone += [(name, given[name]) for name in wrong]
            if not jobs and size > 1:
                jobs, size = alone, 1
    return result, errors


def files_with_uses(entries):
    return {file for each in entries.values() for file in each["uses"]}


def gather(source, build):
    """file -> uses; reads only what has changed since the last time. A header's uses stand with the first file
    that was read with it: when that file goes, or drops it, everything is read anew."""
    cache = os.path.join(build, "tests", "checks", "qt48_uses")
    os.makedirs(cache, exist_ok=True)
    kept_file = os.path.join(cache, "uses.json")
    kept = json.load(open(kept_file)) if os.path.exists(kept_file) else {}
    own = digest([os.path.abspath(__file__), host_names.__file__])
    jobs, result = [], {}
    for name, flags in units(source, build):
        old = kept.get(name)
        if old and old["key"] == own + digest(old["files"]) and old["flags"] == flags:
            result[name] = old
        else:
            jobs.append((name, flags))
    errors = []
    if jobs:
        most = max((flags for _, flags in units(source, build)), key=len)
        header = make_header(cache, most)
        given = dict(jobs)
        read, errors = read_all(source, header, jobs, most)
        for name, (files, uses) in read.items():
            result[name] = {"key": own + digest(files), "flags": given[name], "files": files, "uses": uses}
        os.remove(header)
        with open(kept_file + ".new", "w") as out:
            json.dump(result, out)
        os.replace(kept_file + ".new", kept_file)
    lost = files_with_uses(kept) - files_with_uses(result)
    if any(os.path.exists(os.path.join(source, file)) for file in lost):
        os.remove(kept_file)
        return gather(source, build)
    by_file = {}
    for each in result.values():
        for file, rows in each["uses"].items():
            by_file.setdefault(file, set()).update(tuple(row) for row in rows)
    return by_file, errors, len(result), len(jobs)


# ---- the table, and Qt 4.8's names


def read_table():
    rows = {}
    if os.path.exists(TABLE):
        for line in open(TABLE):
            if not line.startswith("#"):
                scope, name, counts = line.rstrip("\n").split("\t")
                rows[scope, name] = set(counts.split())
    return rows


def write_table(rows):
    with open(TABLE, "w") as out:
        out.write("# The Qt names that plug-in, stand-in and unit tests use, all of which Qt 4.8 has; see"
                  " qt48_uses.py.\n# class, name, numbers of arguments\n")
        for (scope, name), counts in sorted(rows.items()):
            out.write(f"{scope}\t{name}\t{' '.join(sorted(counts))}\n")


class Names:
    """Qt 4.8's names, from a file."""

    def __init__(self, path):
        self.bases, self.members, self.macros = {}, {}, set()
        for line in open(path):
            parts = line.rstrip("\n").split("\t")
            if parts[0] == "class":
                self.bases[parts[1]] = [base.split("<")[0] for base in parts[2].split(",") if base]
            elif parts[0] == "name":
                self.members.setdefault(parts[1], {})[parts[2]] = parts[3]
            elif parts[0] == "macro":
                self.macros.add(parts[1])

    def family(self, scope):
        found, left = [], [scope]
        while left:
            each = left.pop()
            if each not in found:
                found.append(each)
                left += self.bases.get(each, [])
                left += [FORMER[each]] if each in FORMER else []
        return found

    def has(self, scope, name, count):
        if scope == "macro":
            return name in self.macros or name.startswith(("Q_OS_", "Q_ASSERT")) or name == "qFatal"
        if name in FLAGS:
            return self.has(scope, name + "Flag", "-") or any(
                "Q_DECLARE_FLAGS" in self.members.get(each, {}) for each in self.family(scope))
        if count in "-01" and (name in self.bases or f"{scope}::{name}" in self.bases):
            return True  # a type, or its copy
        for each in self.family(scope):
            kinds = self.members.get(each, {}).get(name)
            if kinds is None:
                continue
            spans = [span.split("-") for span in kinds.split() if span[0].isdigit()]
            if count in "-0" or not spans or any(int(a) <= int(count) <= int(b) for a, b in spans):
                return True
        return False


def main():
    options = sys.argv[1:]
    source, build = (os.path.abspath(each) for each in options[:2])
    names = Names(options[options.index("--verify") + 1]) if "--verify" in options else None
    by_file, findings, total, read = gather(source, build)
    table = read_table()
    for file, rows in sorted(by_file.items()):
        for line, scope, name, count in sorted(rows):
            shown = f"{scope}::{name}" if scope not in ("", "macro", "host") else name
            if scope == host_names.SCOPE:
                continue
            if scope == "rule":
                findings.append(f"{file}:{line}: {name}")
                continue
            if scope == "host":
                if re.match(rf"(?:{ROOMS})/", file):
                    findings.append(f"{file}:{line}: the host is not known to compare {name}: use figure/same_place.h")
                continue
            if count in table.get((scope, name), ()):
                continue
            if "--add" in options and (names is None or names.has(scope, name, count)):
                table.setdefault((scope, name), set()).add(count)
            else:
                findings.append(f"{file}:{line}: {shown}, {count} argument(s), is not known of Qt 4.8")
    if "--add" in options:
        table = {row: counts for row, counts in table.items() if row[0] not in ("rule", "host")}
        used = {(scope, name, count) for rows in by_file.values() for _, scope, name, count in rows}
        table = {(s, n): {c for c in counts if (s, n, c) in used} for (s, n), counts in table.items()}
        write_table({row: counts for row, counts in table.items() if counts})
    if names:
        for (scope, name), counts in sorted(table.items()):
            findings += [f"qt48_uses.tsv: Qt 4.8 has no {scope} {name} with {count} argument(s)"
                         for count in sorted(counts) if not names.has(scope, name, count)]
    if total == 0:
        findings.append(f"no source files in {build}/compile_commands.json")
    for each in findings:
        print(each, file=sys.stderr)
    print(f"{len(findings)} finding(s): uses of Qt names in {total} units, {read} of them read anew")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
