# strip.awk - code(line): the line without comments and without the contents of strings and
# characters. Line numbers stay as they are. Knows /* */ and raw strings over several lines.
FNR == 1 { strip_until = "" }

function code(line,    out, c, rest, at, raw) {
    out = ""
    while (line != "") {
        if (strip_until != "") { # inside a block comment or a raw string
            at = index(line, strip_until)
            if (!at)
                return out
            line = substr(line, at + length(strip_until))
            strip_until = ""
            continue
        }
        if (!match(line, /["'\/]/))
            return out line
        out = out substr(line, 1, RSTART - 1)
        c = substr(line, RSTART, 1)
        rest = substr(line, RSTART + 1)
        if (c == "/") {
            if (rest ~ /^\//)
                return out
            if (rest ~ /^\*/) {
                strip_until = "*/"
                line = substr(rest, 2)
            } else {
                out = out "/"
                line = rest
            }
        } else if (c == "\"" && out ~ /(^|[^A-Za-z0-9_])(u8|u|U|L)?R$/) {
            at = index(rest, "(")
            strip_until = ")" substr(rest, 1, at - 1) "\""
            out = out "\"\""
            line = substr(rest, at + 1)
        } else if (c == "\"") {
            if (!match(rest, /^([^"\\]|\\.)*"/))
                return out
            out = out "\"\""
            line = substr(rest, RLENGTH + 1)
        } else if (out ~ /[0-9A-Fa-f]$/ && rest ~ /^[0-9A-Fa-f]/) {
            out = out "'" # digit separator
            line = rest
        } else {
            if (!match(rest, /^([^'\\]|\\.)[^']*'/))
                return out
            out = out "''"
            line = substr(rest, RLENGTH + 1)
        }
    }
    return out
}
