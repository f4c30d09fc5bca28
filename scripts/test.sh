#!/usr/bin/env bash
# Builds everything out of tree and runs the whole test suite. Uses the same
# folder and build type as scripts/demo.sh, so the second of the two reuses
# the first one's build.
# Environment: BUILD_DIR (default build), CMAKE_ARGS (extra cmake arguments).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
BUILD_DIR=${BUILD_DIR:-build}
JOBS=${JOBS:-$(nproc)}
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} ${CMAKE_ARGS:-} >/dev/null
cmake --build "$BUILD_DIR" -j"$JOBS"
ctest --test-dir "$BUILD_DIR" --output-on-failure -j"$JOBS" --timeout 300
