#!/usr/bin/env bash
# Builds the library and runs the example host on the shipped default model.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
BUILD_DIR=${BUILD_DIR:-build}
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$BUILD_DIR" -j"$(nproc)"
"$BUILD_DIR/examples/vorelin_example_host"
