#!/usr/bin/env bash
# Builds the library and the tool, generates a sample platform and prints its JSON.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DZR_BUILD_TESTS=OFF >/dev/null
cmake --build build/release -j "$(nproc)"
./build/release/tools/zr-platform/zr-platform-demo "$PWD/build/release/sample"
