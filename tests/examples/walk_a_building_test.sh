#!/usr/bin/env bash
# The example on the plan that ships, and on plans that must end in one sentence and status 2.
# usage: walk_a_building_test.sh PROGRAM PLAN
set -uo pipefail
program=$1 plan=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
    printf 'FAILED: %s\n' "$*"
    failures=$((failures + 1))
}

# results NAME PEOPLE ARGUMENTS...: everyone gets out, and every file is written.
results() {
    local name=$1 people=$2
    shift 2
    "$program" "$@" --output "$work/$name" >"$work/log" 2>&1 || fail "$name ended with $?: $(cat "$work/log")"
    for file in run.pfdb density.png population.csv population.svg summary.csv; do
        [ -s "$work/$name/$file" ] || fail "$name wrote no $file"
    done
    grep -q " 0 people inside" "$work/log" || fail "$name left people inside: $(cat "$work/log")"
    grep -q "^$people," "$work/$name/summary.csv" || fail "$name did not count $people: $(cat "$work/$name/summary.csv")"
}

# refused SENTENCE PLAN-TEXT [ARGUMENTS...]
refused() {
    local sentence=$1
    printf '%s\n' "$2" >"$work/bad.plan"
    shift 2
    "$program" "$work/bad.plan" --output "$work/bad" "$@" >"$work/log" 2>&1
    local status=$?
    [ $status = 2 ] || fail "status $status instead of 2 for \"$sentence\""
    grep -qF "$sentence" "$work/log" || fail "\"$(cat "$work/log")\" instead of \"$sentence\""
    [ "$(wc -l <"$work/log")" = 1 ] || fail "more than one line for \"$sentence\": $(cat "$work/log")"
}

square='POLYGON ((0 0, 10 0, 10 10, 0 10, 0 0))'
exit_west='exit "West" on "A" LINESTRING (0 1, 0 3)'

results journey 120 "$plan" --people 120 --arrival 20
results evacuation 200 "$plan" --people 200 --evacuate

refused 'Level "A" has an open ring: its last point must be its first.' \
    "level \"A\" at 0 POLYGON ((0 0, 10 0, 10 10, 0 10)) $exit_west"
refused 'Level "A" is not a proper shape: self-intersection at (5.0 5.0).' \
    "level \"A\" at 0 POLYGON ((0 0, 10 10, 10 0, 0 10, 0 0)) $exit_west"
refused 'Exit "West" lies outside level "A".' \
    "level \"A\" at 0 $square exit \"West\" on \"A\" LINESTRING (30 1, 30 3)"
refused "No way leads from Portal 'East' to Portal 'West'" \
    "level \"A\" at 0 MULTIPOLYGON (((0 0, 10 0, 10 10, 0 10, 0 0)), ((20 0, 30 0, 30 10, 20 10, 20 0))) $exit_west
     entrance \"East\" on \"A\" LINESTRING (30 1, 30 3)"
refused "No way leads from Portal 'Up' to Portal 'West'" \
    "level \"A\" at 0 $square level \"B\" at 4 $square $exit_west entrance \"Up\" on \"B\" LINESTRING (0 1, 0 3)"
refused 'The plan has no exit; give one in the file or with --exit.' "level \"A\" at 0 $square"
refused 'The plan ends in the middle of "level "A" at 0 POLYGON ((0 0, 10 0".' 'level "A" at 0 POLYGON ((0 0, 10 0'

[ $failures = 0 ]
