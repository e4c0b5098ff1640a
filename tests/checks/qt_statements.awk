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

# Whether the header declares a class for moc; moc reads the whole file, so the question comes first.
function has_q_object(path,    line, found) {
    found = 0
    while (!found && (getline line < path) > 0)
        found = line ~ /^[ \t]*Q_OBJECT/
    close(path)
    return found
}

FNR == 1 {
    statement = ""
    for (name in kind)
        delete kind[name]
    moc = FILENAME ~ /\.h$/ && has_q_object(FILENAME)
    may_ask = FILENAME ~ /(^|\/)(ground\/qt_compat\.h|host\/figures\/json_text\.(h|cpp))$/
}

{
    text = code($0)
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
