"""host_names.py - finds the uses of the host's interface in the plug-in, in the same reading of the
sources as qt48_uses.py, which calls note() for each cursor and keeps what it adds.

A use is a class, a function, a signal, a slot, a field, an enumerator, a global or a macro that one of
the host's headers declares; "Class::member" or a plain name. Functions count where they are called,
overridden, connected to, or taken by address.
"""
import os
import re

from clang.cindex import CursorKind as Kind

SCOPE = "host interface"
ROOMS = re.compile(r"(?:ground|figure|posefile|finder|services|pane|plugin)/")
CLASSES = (Kind.CLASS_DECL, Kind.STRUCT_DECL)
FUNCTIONS = (Kind.CXX_METHOD, Kind.FUNCTION_DECL, Kind.CONSTRUCTOR, Kind.CONVERSION_FUNCTION)
NAMED = (Kind.MEMBER_REF_EXPR, Kind.DECL_REF_EXPR, Kind.TYPE_REF, Kind.CALL_EXPR, Kind.MACRO_INSTANTIATION)
KINDS = {Kind.ENUM_CONSTANT_DECL: "enumerator", Kind.FIELD_DECL: "field", Kind.VAR_DECL: "global",
         Kind.ENUM_DECL: "type", Kind.TYPEDEF_DECL: "type", Kind.TYPE_ALIAS_DECL: "type",
         Kind.MACRO_DEFINITION: "macro"}


def is_host(cursor):
    """Whether the host's interface declares it; headers of the stand-in alone are told by checks.includes.
    A class that is only named goes by its name: whether another file of the same reading defines it is chance."""
    at = cursor.location.file
    if at is None:
        return False
    only_named = cursor.kind in CLASSES and cursor.get_definition() is None
    return "/host/dzcore/" in at.name or only_named and re.match(r"Dz(?!Quillon)", cursor.spelling) is not None


def class_of(cursor):
    parent = cursor.semantic_parent
    return parent.spelling if parent is not None and parent.kind in CLASSES else ""


def shown(cursor):
    """("Class::member", kind) of a declaration; None for what no source writes."""
    kind = cursor.kind
    owner = class_of(cursor)
    name = owner + "::" + cursor.spelling if owner else cursor.spelling
    if kind in CLASSES:
        return cursor.spelling, "class"
    if kind in FUNCTIONS:
        copies = kind == Kind.CONSTRUCTOR and (cursor.is_copy_constructor() or cursor.is_move_constructor())
        if copies or cursor.spelling == "operator=":
            return None
        return name, "constructor" if kind == Kind.CONSTRUCTOR else "function"
    return (name, KINDS[kind]) if kind in KINDS else None


def bases(cls):
    """The classes above, nearest first."""
    found = []
    definition = cls.get_definition()
    for child in definition.get_children() if definition else ():
        if child.kind == Kind.CXX_BASE_SPECIFIER:
            base = child.type.get_canonical().get_declaration()
            found += [base] + bases(base)
    return found


def overridden(method):
    """The host's function that a method of ours overrides."""
    if not any(child.kind == Kind.CXX_OVERRIDE_ATTR for child in method.get_children()):
        return None
    for base in bases(method.semantic_parent):
        for each in base.get_children():
            if each.kind == Kind.CXX_METHOD and each.spelling == method.spelling and is_host(base):
                return each
    return None


def connected(call):
    """(class, name, kind) of the host's signals and slots that a call of connect() names."""
    arguments = [each for each in call.get_arguments() if each is not None]
    for sender, member in zip(arguments, arguments[1:]):
        text = next((t.spelling for t in literals(member)), "")
        code = re.match(r'"([12])(\w+)\(', text)
        while code and sender.kind == Kind.UNEXPOSED_EXPR:  # the conversion to QObject*
            sender = next(sender.get_children())
        if code:
            cls = sender.type.get_pointee().get_canonical().get_declaration()
            for each in [cls] + bases(cls):
                names = [m for m in each.get_children() if m.spelling == code.group(2)]
                if names and is_host(each):
                    yield f"{each.spelling}::{code.group(2)}", "signal" if code.group(1) == "2" else "slot"


def literals(cursor):
    if cursor.kind == Kind.STRING_LITERAL:
        yield cursor
    for child in cursor.get_children():
        yield from literals(child)


def note(unit, cursor):
    kind = cursor.kind
    if kind not in NAMED and kind != Kind.CXX_METHOD:
        return
    file = unit.file_of(cursor)
    if file is None or not ROOMS.match(file):
        return
    if kind == Kind.CXX_METHOD:
        named = overridden(cursor)
        if named is not None:
            unit.add(cursor, SCOPE, shown(named)[0], "override")
        return
    if kind == Kind.CALL_EXPR and cursor.spelling in ("connect", "disconnect"):
        for name, how in connected(cursor):
            unit.add(cursor, SCOPE, name, how)
    named = cursor.referenced
    if named is not None and named != cursor and is_host(named):
        use = shown(named)
        if use and use[0]:
            unit.add(cursor, SCOPE, *use)


def headers(source):
    """(file, line, header) of every include of a host's header."""
    found = []
    for room in ("ground", "figure", "posefile", "finder", "services", "pane", "plugin"):
        folder = os.path.join(source, room)
        for name in sorted(os.listdir(folder)) if os.path.isdir(folder) else ():
            if name.endswith((".h", ".cpp")):
                with open(os.path.join(source, room, name)) as text:
                    for number, line in enumerate(text, 1):
                        included = re.match(r'#include "(dz\w+\.h)"', line)
                        if included and not included.group(1).startswith("dzquillon"):
                            found.append((f"{room}/{name}", number, included.group(1)))
    return found
