"""Which changes are made of a source, in which order a seed tries them, and which are known to make
no difference."""

import hashlib
import math
import pathlib
import re

from cpp_text import CONTROL, parts_between, statements_of, tokens_of

# The product's folders; one that is not there yet has no mutants. Headers are not changed: every
# program that includes them would have to be built anew.
ROOMS = ("plugin", "pane", "services", "finder", "posefile", "figure", "ground")

# What share of a room's mutants each kind gets, whatever the number of places for it. Tables are
# long and all their rows are alike, so they get a small one.
SHARES = {"condition": 0.33, "statement": 0.24, "constant": 0.18, "arguments": 0.10, "call": 0.06,
          "table": 0.09}

MOVED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
NEGATED = {"==": "!=", "!=": "==", "&&": "||", "||": "&&"}
ASSIGNS = {"=", "+=", "-=", "*=", "/=", "|=", "&=", "^=", "<<", ">>", "++", "--"}
# Casts and wrappers of literals: without them the program is mostly the same, or none.
NO_CALLS = CONTROL | {"int", "float", "double", "bool", "char", "uint", "qint64", "quint64", "size_t",
                      "QString", "QLatin1String", "QByteArray", "SIGNAL", "SLOT", "return", "tr"}
# What is the same in either order.
SYMMETRIC = {"min", "max", "qMin", "qMax", "swap", "qSwap"}


class Mutant:
    """text[start:end] of file becomes new. kind: a key of SHARES. before and after: the whole lines
    with blanks squeezed; with file and function they name the mutant wherever it has moved to."""

    def __init__(self, text, file, kind, owner, start, end, new):
        old = text[start:end]
        if kind != "table" or "\n" in old:  # lines keep their numbers
            new += "\n" * (old.count("\n") - new.count("\n"))
        self.file, self.kind, self.function, self.new = file, kind, owner, new
        self.start, self.end = start, end
        first, last = text.rfind("\n", 0, start) + 1, text.find("\n", end)
        last = len(text) if last < 0 else last
        self.line = text.count("\n", 0, start) + 1
        self.last_line = self.line + old.count("\n")
        self.before = squeezed(text[first:last])
        self.after = squeezed(text[first:start] + new + text[end:last])
        self.id = ""  # set by mutants_of: unique in the project, free of line numbers

    def apply(self, text):
        return text[: self.start] + self.new + text[self.end :]


def squeezed(text):
    return " ".join(text.split())


def mutants_of(file, text):
    """Every mutant of a file, in the order of its lines. file: below the root, as "finder/a.cpp"."""
    tokens = tokens_of(text)
    found = []

    def add(kind, at, start, end, new):
        token = tokens[at]
        if token.scope and not token.spoken:
            kind = "table" if token.scope == "table" else kind
            found.append(Mutant(text, file, kind, token.owner, start, end, new))

    for i, token in enumerate(tokens):
        changed_sign(tokens, text, i, add)
        changed_literal(tokens, i, add)
        changed_brackets(tokens, text, i, add)
    for first, last in statements_of(tokens):
        if can_be_left_out(tokens, first, last):
            add("statement", first, tokens[first].start, tokens[last].end, ";")
    found = [m for m in found if m.before != m.after]
    found.sort(key=lambda m: (m.start, m.end, m.new))
    times = {}
    for mutant in found:
        name = "\0".join((file, mutant.function, mutant.kind, mutant.before, mutant.after))
        times[name] = times.get(name, 0) + 1
        mutant.id = hashlib.sha1(f"{name}\0{times[name]}".encode()).hexdigest()[:12]
    return found


def changed_sign(tokens, text, i, add):
    token = tokens[i]
    if token.kind != "sign":
        return
    spaced = text[token.start - 1 : token.start].isspace() and text[token.end : token.end + 1].isspace()
    other = MOVED.get(token.text) or NEGATED.get(token.text)
    if other and spaced:
        add("condition", i, token.start, token.end, other)
    if token.text == "!" and not spaced:
        add("condition", i, token.start, token.end, "")


def changed_literal(tokens, i, add):
    token = tokens[i]
    new = None
    if token.kind == "number":
        new = other_number(token.text)
    elif token.kind == "word" and token.text in ("true", "false"):
        new = "false" if token.text == "true" else "true"
    elif token.kind == "string":
        cut = re.sub(r"(\\.|[^\\])\"$", '"', token.text)
        new = cut if len(token.text) > 3 and cut != token.text else token.text[:-1] + 'x"'
    elif token.kind == "char" and re.fullmatch(r"'[ -&(-\[\]-}]'", token.text):
        new = "'%s'" % ("~" if token.text != "'~'" else "^")
    if new is not None:
        add("constant", i, token.start, token.end, new)


def other_number(text):
    """Whole numbers move by one; others become half as large again, or 1."""
    match = re.fullmatch(r"(0[xX][0-9a-fA-F]+|[0-9]+)([uUlL]*)", text)
    if match:
        base = 16 if text[:2] in ("0x", "0X") else 8 if re.fullmatch("0[0-7]+", match[1]) else 10
        value = int(match[1], base) + 1
        return (hex(value) if base == 16 else "0%o" % value if base == 8 else str(value)) + match[2]
    match = re.fullmatch(r"([0-9.]+(?:[eE][+-]?[0-9]+)?)([fFlL]?)", text)
    if not match:
        return None
    value = float(match[1])
    return repr(value * 1.5 if value else 1.0) + match[2]


def changed_brackets(tokens, text, i, add):
    token = tokens[i]
    if token.kind != "sign" or token.text not in "({" or token.mate < 0:
        return
    close = tokens[token.mate]
    before = tokens[i - 1] if i else None
    if token.text == "(" and token.block in ("if", "while"):
        inside = text[token.end : close.start]
        signs = [tokens[k].text for k in range(i + 1, token.mate) if tokens[k].kind == "sign"]
        if not {"&&", "||"} & set(signs) and (set(signs) & {"==", "!="} or signs[:1] == ["!"]):
            return  # turning its own sign round says the same
        add("condition", i + 1, token.end, close.start, f"!({inside})")
        return
    call = token.text == "(" and before and before.kind == "word" and before.text not in CONTROL
    if not call and not (token.text == "{" and token.scope == "table"):
        return
    if call and before.text == "return":
        return
    parts = parts_between(tokens, i)
    symmetric = len(parts) == 2 and before.text in SYMMETRIC
    for (a, b), (c, d) in zip(parts, () if symmetric else parts[1:]):
        one = text[tokens[a].start : tokens[b].end]
        two = text[tokens[c].start : tokens[d].end]
        if squeezed(one) != squeezed(two):
            gap = text[tokens[b].end : tokens[c].start]
            if token.scope == "table" and ("{" in one or "\n" in one + two):
                continue
            add("arguments", i, tokens[a].start, tokens[d].end, two + gap + one)
    if call and token.scope == "code":
        left_out_call(tokens, i, parts, text, add)


def left_out_call(tokens, i, parts, text, add):
    """f(x) becomes (x); x.f() becomes x."""
    name, close = tokens[i - 1], tokens[tokens[i].mate]
    first = i - 1
    while first >= 2 and tokens[first - 1].text == "::" and tokens[first - 2].kind == "word":
        first -= 2
    ahead = tokens[first - 1] if first else None
    if name.text in NO_CALLS or ahead is None or name.spoken:
        return
    if ahead.text in (".", "->") and not parts and first == i - 1:
        add("call", i, ahead.start, close.end, "")
    elif ahead.text not in (".", "->") and len(parts) == 1 and (
        ahead.kind == "sign" and ahead.text not in (";", "{", "}", ">") or ahead.text == "return"
    ):
        add("call", i, tokens[first].start, tokens[i].start, "")


def can_be_left_out(tokens, first, last):
    """Calls, assignments, jumps; no declarations, no results, nothing that is for the developer."""
    if first == last or any(tokens[k].spoken for k in range(first, min(first + 3, last))):
        return False
    text = tokens[first].text
    if text in ("break", "continue", "return"):
        return last == first + 1
    if text in ("++", "--", "*", "(", "delete", "emit"):
        return True
    if tokens[first].kind != "word" or text in CONTROL | {"case", "default", "else", "do", "using", "goto"}:
        return False
    k = first
    while tokens[k + 1].text == "::" and tokens[k + 2].kind == "word":
        k += 2
    following = tokens[k + 1].text
    return following in ASSIGNS or following in ("(", ".", "->", "[")


# ---- the order a seed tries them in ------------------------------------------------------------


def room_mutants(root, room):
    """All mutants of a room's sources."""
    found = []
    for path in sorted((root / room).glob("*.cpp")):
        found += mutants_of(f"{room}/{path.name}", path.read_text())
    return found


def seeded_order(mutants, seed):
    """All of them, those to be tried first at the front; each kind has its share at every length.
    A place's rank depends on the seed and its own text, hardly on the rest of the project."""
    sizes = {}
    for mutant in mutants:
        sizes[mutant.kind] = sizes.get(mutant.kind, 0) + 1

    def rank(mutant):
        digest = hashlib.sha256(f"{seed}\0{mutant.id}".encode()).digest()
        luck = (int.from_bytes(digest[:7], "big") + 1) / 2.0**56
        return -math.log(luck) * sizes[mutant.kind] / SHARES[mutant.kind]

    return sorted(mutants, key=lambda m: (rank(m), m.id))


def quotas(rooms, count):
    """How many of count mutants each room gets: by the root of its places outside of tables, so
    that small rooms are looked at, too. rooms: {room: list of mutants}."""
    weights = {}
    for room, found in rooms.items():
        code = sum(mutant.kind != "table" for mutant in found)
        if code:
            weights[room] = math.sqrt(code)
    total = sum(weights.values())
    exact = {room: count * weight / total for room, weight in weights.items()}
    shares = {room: int(value) for room, value in exact.items()}
    for room in sorted(exact, key=lambda r: (shares[r] - exact[r], r))[: count - sum(shares.values())]:
        shares[room] += 1
    return shares


# ---- those that make no difference -------------------------------------------------------------


class BadList(Exception):
    pass


def read_equivalents(path):
    """{(file, function, before, after): reason} of a list as equivalent.txt describes it."""
    known = {}
    text = path.read_text() if path.exists() else ""
    lines = [line for line in text.split("\n") if not line.startswith("#")]
    for entry in re.split(r"\n\s*\n", "\n".join(lines).strip()):
        if not entry.strip():
            continue
        fields = {}
        for line in entry.strip().split("\n"):
            match = re.match(r"(file:|function:|reason:|-|\+)\s?(.*)", line.strip())
            if match:
                fields[match[1]] = match[2].strip()
                last = match[1]
            elif fields:
                fields[last] += " " + line.strip()
        missing = [key for key in ("file:", "function:", "-", "+", "reason:") if key not in fields]
        if missing or not fields["reason:"]:
            raise BadList(f"{path}: an entry lacks {' '.join(missing) or 'its reason'}:\n{entry}")
        key = tuple(squeezed(fields[k]) for k in ("file:", "function:", "-", "+"))
        known[key] = fields["reason:"]
    return known


def key_of(mutant):
    return mutant.file, mutant.function, mutant.before, mutant.after


def stanza(mutant, reason):
    """An entry of the list."""
    return (f"file: {mutant.file}\nfunction: {mutant.function}\n- {mutant.before}\n+ {mutant.after}\n"
            f"reason: {reason}\n")


def root_folder():
    return pathlib.Path(__file__).resolve().parent.parent.parent
