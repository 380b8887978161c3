#!/usr/bin/env bash
# Checks that every source of the engine includes only rooms that engine/rooms.txt lets its own room know.
# `check_rooms.sh draw` prints instead which room includes which, with the number of includes.
set -euo pipefail
cd "$(dirname "$0")/.."

git grep -o '^#include "engine/[^"]*"' -- 'engine/*.h' 'engine/*.cpp' | awk -v mode="${1:-check}" '
    # The room of a path: its folders below engine/.
    function room(path) { sub(/^engine\//, "", path); return sub(/\/[^\/]*$/, "", path) ? path : "" }
    FILENAME == "engine/rooms.txt" {
        if ($0 ~ /^(#|$)/) next
        split($0, line, ":")
        known[line[1]] = 1
        count = split(line[2], names, " ")
        for (i = 1; i <= count; ++i) {
            if (!(names[i] in known)) { print "engine/rooms.txt: " line[1] " knows " names[i] ", which must stand above it"; bad = 1 }
            allowed[line[1], names[i]] = 1
        }
        next
    }
    {
        split($0, parts, ":#include ")
        gsub(/"/, "", parts[2])
        from = room(parts[1]); to = room(parts[2])
        if (from == to || to == "") next
        ++arrows[from " -> " to]
        if (mode == "draw") next
        if (!(from in known)) { print parts[1] ": the room " from " is not in engine/rooms.txt"; bad = 1 }
        else if (!((from, to) in allowed)) { print parts[1] ": " from " does not know " to " (" parts[2] ")"; bad = 1 }
    }
    END {
        if (mode == "draw") for (arrow in arrows) print arrow " " arrows[arrow] | "sort"
        exit bad
    }' engine/rooms.txt -
