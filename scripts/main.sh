#!/usr/bin/env bash
# Sets up, builds and runs the main job: the demo program that builds a
# MeasurementResultList and an Administration, writes them in all three forms
# and reads them back.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DHALVANE_BUILD_TESTS=OFF >/dev/null
cmake --build build --parallel
./build/tools/halvane-demo
