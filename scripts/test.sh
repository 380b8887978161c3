#!/usr/bin/env bash
# Builds everything in release mode and runs every test. An argument names another preset: debug, clang or sanitize.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}

source scripts/dependencies.sh
cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset"
