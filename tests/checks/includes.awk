# includes.awk - who may include whom. Rooms: plugin > pane > services > finder > posefile > figure
# > ground > host SDK, each may include itself and what stands right of it. Tables of art/ are the
# pane's. Nothing but host/, tests/ and bench/ includes host/ by path; host/ includes no plug-in
# file. Its wings: driver > posebench > body > figures > dzcore, in full paths but for dzcore's
# headers. The catalogue stands above finder and host/body: it includes nothing of services, pane and
# plugin, of the host's window (posebench) nothing and of driver only how a program starts; nobody
# includes it.
# Variable sdk: the names of the SDK's headers, separated by blanks.
BEGIN {
    count = split("ground figure posefile finder services pane plugin", rooms)
    for (i = 1; i <= count; i++)
        rank[rooms[i]] = i
    count = split("dzcore figures body posebench driver", wings)
    for (i = 1; i <= count; i++)
        wing_rank[wings[i]] = i
    count = split(sdk, names)
    for (i = 1; i <= count; i++)
        host_header[names[i]] = 1
    host_header["dzcore_export.h"] = 0 # reached through the others
}

function finding(text) {
    print FILENAME ":" FNR ": " text
}

function file_name(path) {
    sub(/^.*\//, "", path)
    return path
}

function wing_of(path) {
    sub(/^host\//, "", path)
    sub(/\/.*/, "", path)
    return path
}

function check_wing(wing, path, to) {
    if (to in rank || to == "art" || to == "tests" || to == "bench" || to == "catalogue")
        finding("host/ includes nothing of the plug-in: " path)
    else if (wing == "dzcore" && to != "")
        finding("dzcore includes only its own headers: " path)
    else if (to == "host" && wing_rank[wing_of(path)] > wing_rank[wing])
        finding("host/" wing "/ includes upwards: " path)
    else if (to == "" && path !~ /\.moc$/ && path !~ /^dz/)
        finding("headers of host/ are included with their folder: " path)
}

function check_catalogue(path, to) {
    if (to == "services" || to == "pane" || to == "plugin" || to == "art" || to == "tests" || to == "bench")
        finding("catalogue/ includes upwards: " path)
    else if (to == "host" && path !~ /^host\/(dzcore|figures|body)\// \
        && path !~ /^host\/driver\/(quiet_platform|utf8_locale)\.h$/)
        finding("catalogue/ includes of the host what needs no window: " path)
    else if (to == "" && path !~ /\.moc$/ && path !~ /^dz/)
        finding("project headers are included with their folder: " path)
}

function check_room(room, path, to) {
    if (to == "catalogue")
        finding("nobody includes catalogue/: " path)
    else if (to == "host")
        finding(path " is reached by its SDK name, \"" file_name(path) "\"")
    else if (to == "tests" || to == "bench")
        finding("the plug-in includes nothing of " to "/")
    else if (to == "art" && room != "pane" && room != "art")
        finding("only pane/ includes art/")
    else if ((to in rank) && rank[to] > rank[room])
        finding(room "/ includes upwards: " path)
}

FNR == 1 {
    room = FILENAME
    sub(/\/.*/, "", room)
}

/^[ \t]*#[ \t]*include[ \t]*"/ {
    path = $0
    sub(/^[^"]*"/, "", path)
    sub(/".*/, "", path)
    to = path
    if (!sub(/\/.*/, "", to))
        to = ""
    if (path ~ /(^|\/)\.\.?\//)
        finding("no relative paths: " path)
    else if (room in rank || room == "art") {
        if (to != "")
            check_room(room, path, to)
        else if (path !~ /\.moc$/ && !host_header[path])
            finding("\"" path "\" is no header of the SDK; project headers are included with their folder")
    } else if (room == "catalogue") {
        check_catalogue(path, to)
    } else if (room == "host") {
        check_wing(wing_of(FILENAME), path, to)
    }
}
