"""Reads a C++ source just far enough to change it: tokens, and what each of them stands in.

No compiler's tree is needed. The sources are formatted by clang-format, so a comparison has blanks
on both sides and a template's bracket has none; whatever else is guessed wrongly here does not
compile later and is replaced by another mutant.
"""

import re

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:[^\n\\]|\\\n|\\.)*)
      | (?P<raw>(?:u8|[uUL])?R"(?P<mark>[^\s()\\]{0,16})\(.*?\)(?P=mark)")
      | (?P<string>(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*")
      | (?P<char>(?:u8|[uUL])?'(?:[^'\\\n]|\\.)+')
      | (?P<number>\.?[0-9](?:[eEpP][+-]|[0-9A-Za-z_.]|'[0-9A-Fa-f])*)
      | (?P<word>[A-Za-z_][A-Za-z_0-9]*)
      | (?P<sign><<=|>>=|\.\.\.|->\*|::|->|\+\+|--|<<|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=
               |[][{}();,.:?~!<>=+*/%&|^-])
    """,
    re.X | re.S | re.M,
)

CONTROL = {"if", "for", "while", "switch", "catch"}
# What stands in the brackets of these is for the developer, not for the program.
SPOKEN = re.compile(r"^(Q_ASSERT\w*|Q_UNUSED|Q_STATIC_ASSERT\w*|static_assert|assert|qDebug|qWarning"
                    r"|qCritical|qFatal|sizeof|decltype|noexcept|Q_\w+)$")
OPENING = {"(": ")", "[": "]", "{": "}"}


class Token:
    """kind: string, char, number, word or sign. scope: "code" in a function's body, "table" in the
    value of a variable outside of functions, else "". owner: the function's or variable's name.
    inside: index of the innermost bracket that is open here, or -1. block: for "{", a block of
    statements; for "(" of a control statement likewise its keyword."""

    __slots__ = ("kind", "text", "start", "end", "line", "scope", "owner", "inside", "mate", "block",
                 "spoken")

    def __init__(self, kind, text, start, line):
        self.kind, self.text, self.start, self.line = kind, text, start, line
        self.end = start + len(text)
        self.scope = self.owner = self.block = ""
        self.inside = self.mate = -1
        self.spoken = False


def tokens_of(text):
    """The tokens without comments and directives, their surroundings filled in."""
    tokens = []
    line, at = 1, 0
    for match in TOKEN.finditer(text):
        line += text.count("\n", at, match.start())
        at = match.start()
        kind = match.lastgroup
        if match.group("raw") is not None:
            kind = "raw"
        if kind not in ("comment", "directive"):
            tokens.append(Token(kind, match.group(), match.start(), line))
    match_brackets(tokens)
    find_scopes(tokens)
    return tokens


def match_brackets(tokens):
    open_ones = []
    spoken = 0
    for i, token in enumerate(tokens):
        if token.text in (")", "]", "}") and token.kind == "sign":
            if open_ones:
                first = open_ones.pop()
                tokens[first].mate, token.mate = i, first
                spoken -= tokens[first].spoken
            token.inside = open_ones[-1] if open_ones else -1
            token.spoken = spoken > 0
            continue
        token.inside = open_ones[-1] if open_ones else -1
        token.spoken = spoken > 0
        if token.kind == "sign" and token.text in OPENING:
            begins = i > 0 and token.text == "(" and bool(SPOKEN.match(tokens[i - 1].text))
            token.spoken = begins
            spoken += begins
            open_ones.append(i)


def head_of(tokens, i):
    """Tokens of the declaration or statement that the bracket i belongs to, brackets left out."""
    head = []
    k = i - 1
    while k >= 0 and tokens[k].text not in (";", "{"):
        if tokens[k].text == "}" and tokens[k].kind == "sign":
            if k != i - 1 and tokens[k + 1].text not in (",", ")"):
                break
            if k == i - 1:
                break
        head.append(k)
        k = tokens[k].mate - 1 if tokens[k].mate >= 0 and tokens[k].text in (")", "]", "}") else k - 1
    return head[::-1]


def name_of(tokens, head):
    """Name of the function or variable that the head declares."""
    for place, k in enumerate(head):
        bracket = tokens[k].text == ")" or tokens[k].text == "]" or tokens[k].text == "="
        if not bracket or place == 0:
            continue
        first = tokens[k].mate if tokens[k].mate >= 0 else k
        name = ""
        k = first - 1
        while k >= 0 and (tokens[k].kind == "word" or tokens[k].text in ("::", "~")):
            if name and name[0] not in ":~" and tokens[k].kind == "word":
                break
            name = tokens[k].text + name
            k -= 1
        return name.lstrip(":") or "operator"
    words = [tokens[k].text for k in head if tokens[k].kind == "word"]
    return words[-1] if words else ""


def kind_of_brace(tokens, i, outer):
    """One of ns, type, enum, function, table, block, value."""
    before = tokens[i - 1] if i else None
    if outer in ("function", "block"):
        if before.text in (")", ";", "{", "}", ":", "else", "do", "try", "mutable", "]"):
            if before.text in ("{", "}", ";", ":") or before.kind == "word":
                return "block"
            return "block" if before.text == ")" or before.text == "]" else "value"
        return "block" if is_local_type(tokens, i) else "value"
    if outer in ("table", "value"):
        # the body of a lambda in a table
        return "block" if before.text in (")", "]") else "value"
    head = [tokens[k].text for k in head_of(tokens, i)]
    if "namespace" in head or (head[:1] == ["extern"] and len(head) == 2):
        return "ns"
    if "=" in head:
        return "table"
    if "enum" in head:
        return "enum"
    if ")" in head:
        return "function"
    if set(head) & {"struct", "class", "union"}:
        return "type"
    return "table"


def is_local_type(tokens, i):
    return any(tokens[k].text in ("struct", "enum", "class") for k in head_of(tokens, i))


def find_scopes(tokens):
    stack = [("ns", "", "")]  # kind, scope, owner
    value = ""  # name of the variable whose value is read outside of functions
    for i, token in enumerate(tokens):
        kind, scope, owner = stack[-1]
        if token.kind == "sign" and token.text == "{":
            inner = kind_of_brace(tokens, i, kind)
            token.block = "block" if inner in ("function", "block") else ""
            if inner == "function":
                scope, owner = "code", name_of(tokens, head_of(tokens, i))
            elif inner == "table":
                scope, owner = "table", name_of(tokens, head_of(tokens, i))
            elif inner == "block" and scope != "code":
                scope = "code"
            elif inner in ("ns", "type", "enum"):
                scope, owner = "", ""
            token.scope, token.owner = scope, owner
            stack.append((inner, scope, owner))
            continue
        if token.kind == "sign" and token.text == "}" and len(stack) > 1:
            stack.pop()
            token.scope, token.owner = stack[-1][1], stack[-1][2]
            continue
        if kind in ("ns", "type"):
            if token.text == ";":
                value = ""
            elif token.text == "=" and token.inside == enclosing_brace(tokens, i):
                value = name_of(tokens, head_of(tokens, i)) or "?"
                continue
            if value:
                scope, owner = "table", value
        token.scope, token.owner = scope, owner
        if token.text == "(" and i and tokens[i - 1].text in CONTROL:
            token.block = tokens[i - 1].text


def enclosing_brace(tokens, i):
    k = tokens[i].inside
    while k >= 0 and tokens[k].text != "{":
        k = tokens[k].inside
    return k


def parts_between(tokens, opening):
    """Index ranges (first, last) between the commas directly inside the bracket."""
    parts = []
    first = opening + 1
    for k in range(opening + 1, tokens[opening].mate):
        if tokens[k].text == "," and tokens[k].kind == "sign" and tokens[k].inside == opening:
            parts.append((first, k - 1))
            first = k + 1
    if first < tokens[opening].mate:
        parts.append((first, tokens[opening].mate - 1))
    return [p for p in parts if p[0] <= p[1]]


def statements_of(tokens):
    """Index ranges (first, last) of the statements that end in a semicolon, in bodies of functions."""
    for i in range(1, len(tokens)):
        token = tokens[i]
        if token.scope != "code" or token.inside < 0 or not tokens[token.inside].block:
            continue
        if tokens[token.inside].text != "{" or not begins_statement(tokens, i):
            continue
        k = i
        while k < len(tokens) and not (tokens[k].text == ";" and tokens[k].inside == token.inside):
            if k < tokens[k].mate:
                k = tokens[k].mate
            if tokens[k].text == "}" and tokens[k].inside != token.inside:
                break
            k += 1
        if k < len(tokens) and tokens[k].text == ";":
            yield i, k


def begins_statement(tokens, i):
    before = tokens[i - 1]
    if before.text in ("{", "}", ";", "else", "do"):
        return True
    if before.text == ")" and before.mate > 0:
        return tokens[before.mate - 1].text in CONTROL
    if before.text == ":":
        return any(tokens[k].text in ("case", "default") for k in (i - 2, i - 3, i - 4, i - 5) if k >= 0)
    return False
