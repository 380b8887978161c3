#!/usr/bin/env bash
# The first program of the README and the lines of the quick reference.
# usage: short_examples_test.sh EXAMPLES
set -euo pipefail
examples=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

"$examples/first-run" | tee report
grep -Eq '^Everyone was through after 00:00:[2-5][0-9]\.[0-9]' report
[ -s first-run.pfdb ]
"$examples/quick-reference"
