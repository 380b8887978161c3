#!/usr/bin/env bash
# Checks the formatting and runs the linter over every C++ source. `lint.sh format` only checks the formatting.
set -euo pipefail
cd "$(dirname "$0")/.."

git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format-14 --dry-run --Werror
scripts/check_rooms.sh
[ "${1:-}" = format ] && exit

# The linter reads sources as they stand, without precompiled headers.
cmake --preset clang -B build/lint -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
git ls-files -z '*.cpp' ':!benchmarks' | xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 -p build/lint --quiet
