#!/usr/bin/env bash
# Builds in release mode and walks a crowd through the concourse that ships with the project. Arguments go to the example.
set -euo pipefail
cd "$(dirname "$0")/.."

source scripts/dependencies.sh
cmake --preset release -DPEDFLUX_TESTS=OFF -DPEDFLUX_BENCHMARKS=OFF -B build/example
cmake --build build/example
exec build/example/examples/walk-a-building "$@"
