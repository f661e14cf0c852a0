#!/usr/bin/env bash
# Builds and runs every test: the suite in a normal build, the suite again
# under AddressSanitizer and UndefinedBehaviorSanitizer, and an outside
# project built against the installed package.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
jobs=$(nproc)

echo "== Build and test"
cmake -S . -B build-test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-test --parallel "$jobs"
(cd build-test && ctest --output-on-failure)

echo "== Benchmark, once with a tiny minimum time (it must run; timings are not checked)"
./build-test/bench/halvane_bench --quick --benchmark_min_time=0.001 >/dev/null

echo "== Sanitizers (address, undefined)"
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DHALVANE_SANITIZE=ON >/dev/null
cmake --build build-asan --parallel "$jobs"
(cd build-asan && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure)

echo "== Installed package used by an outside project"
rm -rf build-test/_install build-consumer
cmake --install build-test --prefix build-test/_install >/dev/null
cmake -S tests/consumer -B build-consumer -G Ninja -DCMAKE_PREFIX_PATH="$PWD/build-test/_install" >/dev/null
cmake --build build-consumer --parallel "$jobs"
./build-consumer/consumer
