# qt_statements.awk - what a list of names cannot tell; follows strip.awk. Finds
# connects by member pointer or lambda, methods that only Qt 5's QVector and QAtomicInt have,
# questions for the Qt version outside the two files that may ask, and what moc 4.8 cannot read.
function finding(line, text) {
    print FILENAME ":" line ": " text
}

# The identifier that a text following a type declares, or "".
function declared(text) {
    sub(/^[ &*]+/, "", text)
    if (!match(text, /^[A-Za-z_][A-Za-z0-9_]*/))
        return ""
    return substr(text, 1, RLENGTH)
}

# Remembers in kind[name] which of the watched types this line declares a name of.
function note_declarations(text,    type, name) {
    if (match(text, /const QScriptValue /)) {
        name = declared(substr(text, RSTART + RLENGTH))
        if (name != "")
            kind[name] = "const QScriptValue"
    }
    while (match(text, /(QVector|QAtomicPointer|QList|QQueue|QStack)<[^;(){}]*>|QAtomicInt|QStringList/)) {
        type = substr(text, RSTART, RLENGTH)
        text = substr(text, RSTART + RLENGTH)
        sub(/<.*/, "", type)
        name = declared(text)
        if (name != "")
            kind[name] = type
    }
}

function check_methods(text,    rest, call, name, method) {
    rest = text
    while (match(rest, /[A-Za-z_][A-Za-z0-9_]*(\.|->)[A-Za-z]+\(/)) {
        call = substr(rest, RSTART, RLENGTH - 1)
        rest = substr(rest, RSTART + RLENGTH)
        name = call
        sub(/(\.|->).*/, "", name)
        method = call
        sub(/^[^.>]*(\.|->)/, "", method)
        if (kind[name] == "QVector" && method ~ /^(take(At|First|Last)|remove(All|At|First|Last|One)|length|move|swapItemsAt|shrink_to_fit)$/)
            finding(FNR, "QVector::" method " is absent in Qt 4.8: use remove, resize, size")
        if (kind[name] == "const QScriptValue" && method ~ /^(call|construct)$/)
            finding(FNR, "QScriptValue::" method " is not const in Qt 4.8")
        if (kind[name] ~ /^QAtomic/ && method ~ /^(load|store)/)
            finding(FNR, "QAtomicInt::" method " is absent in Qt 4.8: use fetchAndAddOrdered(0), fetchAndStoreOrdered")
    }
}

function check_connect(text, line) {
    if (text ~ /(^|[^&])&[ ]*[A-Za-z_][A-Za-z0-9_:]*::[A-Za-z_~]/)
        finding(line, "connect by member pointer is absent in Qt 4.8: use SIGNAL() and SLOT()")
    else if (text ~ /\[[^]]*\][ ]*[({]/)
        finding(line, "connect to a lambda is absent in Qt 4.8: use SIGNAL() and SLOT()")
    else if (text ~ /singleShot/ && text !~ /SLOT[ ]*\(/)
        finding(line, "singleShot to a function is absent in Qt 4.8: use SLOT()")
}

function check_moc_header(text) {
    if (text ~ /namespace[ ]+[A-Za-z_0-9]+::/)
        finding(FNR, "moc 4.8 cannot read nested namespaces; nest them by hand")
    if (text ~ /^[ \t]+enum[ ]+(class|struct)/)
        finding(FNR, "moc 4.8 cannot read enum class inside a class")
    if (text ~ /\[\[/)
        finding(FNR, "moc 4.8 cannot read attributes")
    if (text ~ /[0-9]'[0-9]/)
        finding(FNR, "moc 4.8 cannot read digit separators")
    if (text ~ /(^|[^A-Za-z0-9_])R""/)
        finding(FNR, "moc 4.8 cannot read raw strings")
}

# A row function of a test cannot be skipped; and std::as_const comes with <utility> alone, which
# Qt 5's headers happen to bring and Qt 4.8's do not.
function check_test(text,    type) {
    if (text ~ /^}|void .*\(\)[ ]*$/) # the end of a function, or another's first line
        in_data = text ~ /_data\(\)/
    if (in_data && text ~ /(^|[^A-Za-z0-9_])QSKIP[ ]*\(/)
        finding(FNR, "Qt 4.8 cannot skip in a _data function: skip in the test itself")
    if (match(text, /(value|fromValue|addColumn|qRegisterMetaType|qvariant_cast)<(Dz|Q)[A-Za-z]+\*>/)) {
        type = substr(text, RSTART, RLENGTH)
        gsub(/^[^<]*<|\*>$/, "", type)
        if (!has_line(FILENAME, "^Q_DECLARE_METATYPE\\(" type "\\*\\)"))
            finding(FNR, "Q_DECLARE_METATYPE(" type "*) is missing; Qt 4.8 declares no pointers by itself")
    }
    if (!has_utility && text ~ /std::as_const/)
        finding(FNR, "std::as_const without #include <utility>")
}

# Whether the file has such a line; moc, for one, reads the whole file, so the question comes first.
function has_line(path, pattern,    line, found) {
    found = 0
    while (!found && (getline line < path) > 0)
        found = line ~ pattern
    close(path)
    return found
}

FNR == 1 {
    in_data = 0
    has_utility = has_line(FILENAME, "^#include <utility>")
    statement = ""
    for (name in kind)
        delete kind[name]
    moc = FILENAME ~ /\.h$/ && has_line(FILENAME, "^[ \t]*Q_OBJECT")
    may_ask = FILENAME ~ /(^|\/)(ground\/qt_compat\.h|host\/figures\/json_text\.(h|cpp)|tests\/qt_test_compat\.h)$/
}

{
    text = code($0)
    check_test(text)
    if (!may_ask && text ~ /(^|[^A-Za-z0-9_])QT_VERSION/)
        finding(FNR, "only ground/qt_compat.h asks for the Qt version")
    if (moc)
        check_moc_header(text)
    note_declarations(text)
    check_methods(text)
    if (statement == "" && text ~ /(^|[^A-Za-z0-9_])(connect|disconnect|singleShot)[ ]*\(/)
        start = FNR
    else if (statement == "")
        next
    statement = statement " " text
    if (text ~ /;|\{[ ]*$/) {
        check_connect(statement, start)
        statement = ""
    }
}
