#!/usr/bin/env bash
# The study of the guide: everybody gets out, its figures belong together and come out the same again, and its files are there.
# usage: evacuation_study_test.sh PROGRAM
set -uo pipefail
program=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
    printf 'FAILED: %s\n' "$*"
    failures=$((failures + 1))
}

"$program" "$work/once" >"$work/report" 2>"$work/errors" || fail "the study ended with $?: $(cat "$work/errors")"
"$program" "$work/again" >"$work/report-again" 2>&1 || fail "the second study ended with $?"
cmp "$work/report" "$work/report-again" || fail "the second study differs"
cat "$work/report"

for study in both-doors side-door-shut; do
    for file in seed-{1,2,3,4,5}.pfdb library.json population.csv people.csv reading-room.png hall.png; do
        [ -s "$work/once/$study/$file" ] || fail "$study wrote no $file"
    done
    people=$(($(wc -l <"$work/once/$study/people.csv") - 1))
    [ "$people" = 200 ] || fail "$study lists $people people instead of 200"
    cmp "$work/once/$study/people.csv" "$work/again/$study/people.csv" || fail "$study lists other people the second time"
done
leftover=$(find "$work" -name '*.unfinished')
[ -z "$leftover" ] || fail "unfinished results: $leftover"

# Each floor is empty before the last one is out, the stair after the reading room, and one door less takes longer. Nobody
# can be out before the least delay of 10 s, and the stair alone passes 140 people at no more than 1.3 per metre and second.
awk '
    /: 200 people, 5 runs$/ { study++ }
    /last one out/ { fastest[study] = $4; slowest[study] = $7; median[study] = $10 }
    /clear after/ { sub(/s$/, ""); clear[study, $1] = $(NF) }
    /at most/ { densest[study, $1] = $(NF - 1) }
    /levels A to F:/ { split($0, at, ": "); split(at[2], level, " "); for (i in level) in_levels[study] += level[i] }
    function expect(holds, what) { if (!holds) { print "FAILED:", what; failures++ } }
    END {
        expect(study == 2, "two studies")
        for (i = 1; i <= 2; i++) {
            expect(fastest[i] <= median[i] && median[i] <= slowest[i], "times in order")
            expect(fastest[i] > 140 / (1.6 * 1.3) && slowest[i] < 600, "a likely time")
            expect(clear[i, "Reading"] > 0 && clear[i, "Reading"] < clear[i, "Stair"], "reading room before stair")
            expect(clear[i, "Stair"] <= slowest[i] + 0.5 && clear[i, "Hall"] <= slowest[i] + 0.5, "floors before the building, to the second")
            expect(densest[i, "Reading"] > 1 && densest[i, "Reading"] < 9, "a likely density")
            expect(in_levels[i] > 20 && in_levels[i] < slowest[i], "levels of service over the time inside")
        }
        expect(median[1] < median[2], "one door less takes longer")
        exit failures > 0
    }' "$work/report" || fail "the report's figures"

[ $failures = 0 ]
