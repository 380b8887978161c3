#!/usr/bin/env bash
# Says whether two builds of the engine simulate the same: runs the recorded scenarios and the Java examples with each and
# compares what they wrote, byte for byte. A line for each; the status is 1 when one differs.
#
# The examples' objects have new random identifiers in every run, so of their databases and projects the text is compared,
# with the identifiers numbered in the order in which they come. Nothing else is left out. The scenarios' identifiers are
# fixed.
#
# usage: compare.sh FIRST_LIBRARY_DIR SECOND_LIBRARY_DIR [PROGRAM]
#        compare.sh --revision REVISION    builds the engine of a revision and compares it with that in build/release
# BUILD is the build whose program and examples are run, build/release unless set.
set -euo pipefail
root=$(realpath "$(dirname "$0")/../..")
build=$(realpath "${BUILD:-$root/build/release}")
work=$(mktemp -d)
finish() {
    [ ! -d "$work/tree" ] || git -C "$root" worktree remove --force "$work/tree"
    rm -rf "$work"
}
trap finish EXIT
fail() {
    printf '%s\n' "$*" >&2
    exit 2
}

if [ "${1:-}" = --revision ] && [ $# = 2 ]; then
    git -C "$root" worktree add --quiet --detach "$work/tree" "$2"
    (cd "$work/tree" && cmake --preset release -DPEDFLUX_TESTS=OFF -DPEDFLUX_BENCHMARKS=OFF &&
        cmake --build --preset release --target pfsdk_11_8) >"$work/log" 2>&1 || fail "$(tail -n 20 "$work/log")"
    set -- "$work/tree/build/release/engine" "$build/engine"
fi
[ $# = 2 ] || [ $# = 3 ] || fail "usage: compare.sh FIRST_LIBRARY_DIR SECOND_LIBRARY_DIR [PROGRAM] | --revision REVISION"
program=$(realpath "${3:-$build/tests/recorded_runs/pedflux_recorded_runs}")
command -v sqlite3 >/dev/null || fail "sqlite3 is needed to look into databases"

# example NAME COMMAND...: runs a command in a directory of its own and keeps what it says.
example() {
    mkdir -p "$1"
    (cd "$1" && "${@:2}" >report)
}

# Replaces identifiers by the order of their first appearance.
number_identifiers() {
    perl -pe 's/[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}/"identifier " . ($number{$&} \/\/= ++$count)/ge'
}

# Writes out what has random identifiers.
to_texts() {
    local file
    for file in $(find . -name '*.pfdb'); do
        sqlite3 -readonly "$file" .dump | number_identifiers >"$file.sql"
        rm "$file"
    done
    for file in $(find . -name '*.json'); do
        number_identifiers <"$file" >"$file.text"
        rm "$file"
    done
}

# run LIBRARY_DIR OUTPUT
run() {
    local directory bridge=$build/bindings/libpedfluxJNI.so
    directory=$(realpath "$1")
    # A program that is bound to an engine of its own would compare that one with itself.
    LD_LIBRARY_PATH=$directory ldd "$program" | grep -F "$directory/libpfsdk_11_8.so" >/dev/null ||
        fail "$program does not take the library of $directory"
    LD_LIBRARY_PATH=$directory "$program" "$2/scenarios" || {
        printf 'the scenarios did not run through with %s\n' "$directory"
        status=1
    }
    [ -f "$bridge" ] && [ -x "$build/examples/first-run" ] || { echo "examples: left out, they are not built" && return; }
    mkdir -p "$2/examples" "$work/libraries"
    ln -sf "$directory/libpfsdk_11_8.so" "$bridge" "$work/libraries"
    (
        cd "$2/examples"
        export JAVA_TOOL_OPTIONS="-Dpedflux.library.path=$work/libraries"
        example first-run "$build/examples/first-run"
        example quick-reference "$build/examples/quick-reference"
        example evacuation-study "$build/examples/evacuation-study" .
        example journey "$build/examples/walk-a-building" "$root/examples/concourse.plan" --people 120 --output .
        example evacuation "$build/examples/walk-a-building" "$root/examples/concourse.plan" --people 200 --evacuate \
            --output .
        to_texts
    ) 2> >(grep -v '^Picked up' >&2)
}

# difference FILE: says in what a file differs between the two; nothing when it does not.
difference() {
    local first=$work/first/$1 second=$work/second/$1 table line
    [ -f "$first" ] && [ -f "$second" ] || { printf ' %s is missing in one;' "$1" && return; }
    ! cmp -s "$first" "$second" || return 0
    printf ' %s' "$1"
    if [[ $1 = *.pfdb ]]; then
        for table in $(sqlite3 -readonly "$first" "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY rowid"); do
            cmp -s <(sqlite3 "$first" ".dump $table") <(sqlite3 "$second" ".dump $table") && continue
            printf ' from table %s on;' "$table"
            return
        done
        printf ' in no table;'
    else
        line=$(cmp "$first" "$second" 2>&1 | sed 's/.* line //; s/[^0-9].*//') || true
        printf ' from line %s on: %s;' "$line" "$(sed -n "${line}p" "$first" | cut -c -60)"
    fi
}

status=0
run "$1" "$work/first"
run "$2" "$work/second"
declare -A found
while read -r file; do
    name=${file#scenarios/}
    if [[ $file = examples/* ]]; then name=$(cut -d / -f 1,2 <<<"$file"); fi
    found[${name%.*}]+=$(difference "$file")
done < <(cd "$work" && find first second -type f -printf '%P\n' | sort -u)
[ ${#found[@]} -gt 0 ] || fail "nothing was recorded"
while read -r name; do
    if [ -z "${found[$name]}" ]; then
        printf '%s: same\n' "$name"
    else
        printf '%s: DIFFERENT:%s\n' "$name" "${found[$name]%;}"
        status=1
    fi
done < <(printf '%s\n' "${!found[@]}" | sort)
exit $status
