# sources.sh - what the checks share. Sourced with the folder to check as the current one.
# shellcheck shell=bash

# list_files [folder...]: the project's files below these folders (default: all), one a line:
# those that git knows or would add, or, without git, all but build trees.
list_files() {
    local folders=()
    for folder in "${@:-.}"; do
        if [ -e "$folder" ]; then
            folders+=("$folder")
        fi
    done
    [ ${#folders[@]} -gt 0 ] || return 0
    if [ -e .git ] && git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files --cached --others --exclude-standard --deduplicate -- "${folders[@]}" |
            while read -r file; do if [ -f "$file" ]; then echo "$file"; fi; done
    else
        find "${folders[@]}" \( -name .git -o -name .cache -o -path ./build \) -prune -o -type f -print |
            sed 's|^\./||'
    fi | LC_ALL=C sort
}

list_sources() { # [folder...]: C++ files only
    list_files "$@" | grep -E '\.(h|cpp)$' || true
}

# verdict FINDINGS WHAT: prints the findings and fails when there are any.
verdict() {
    if [ -n "$1" ]; then
        printf '%s\n' "$1" >&2
        printf '%d finding(s): %s\n' "$(wc -l <<<"$1")" "$2" >&2
        exit 1
    fi
    printf 'no findings: %s\n' "$2"
}
