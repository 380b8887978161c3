#!/usr/bin/env bash
# The recorded runs come out the same again, and with another number of threads.
# usage: repeat_test.sh PROGRAM
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$1" "$work/once"
"$1" "$work/again"
"$1" "$work/threads" 2
diff -r "$work/once" "$work/again"
diff -r "$work/once" "$work/threads"

# Each scenario has a text, and a database unless it is refused.
texts=$(find "$work/once" -name '*.txt' | wc -l)
refused=$(find "$work/once" -name 'refused_*.txt' | wc -l)
databases=$(find "$work/once" -name '*.pfdb' -size +0 | wc -l)
echo "$texts scenarios, $refused of them refused, $databases databases"
[ "$texts" -ge 20 ] && [ "$databases" = $((texts - refused)) ]
