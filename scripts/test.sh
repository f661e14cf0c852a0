#!/usr/bin/env bash
# Builds and runs every test: the suite in a normal build, the suite again
# under AddressSanitizer and UndefinedBehaviorSanitizer, the thread tests
# under ThreadSanitizer, a short run of each fuzz target with the corpus and
# findings replayed, the suite against Qt 6, documents exchanged between the
# Qt 5 and Qt 6 builds, the API reference, and the Debian packages of both
# builds installed side by side and used by an outside project with CMake and
# with pkg-config.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh clang libclang-rt-14-dev
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

echo "== ThreadSanitizer: the thread tests"
cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DHALVANE_TSAN=ON \
  -DHALVANE_BUILD_BENCH=OFF -DHALVANE_BUILD_TOOLS=OFF >/dev/null
cmake --build build-tsan --parallel "$jobs"
(cd build-tsan && TSAN_OPTIONS=halt_on_error=1 ctest --output-on-failure -R '^Threads\.')

echo "== Fuzz targets: a short run of each, then the corpus and saved findings replayed"
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DHALVANE_FUZZ=ON \
  -DHALVANE_BUILD_TESTS=OFF -DHALVANE_BUILD_BENCH=OFF -DHALVANE_BUILD_TOOLS=OFF >/dev/null
cmake --build build-fuzz --parallel "$jobs"
for form in xml tagged raw; do
  work=build-fuzz/corpus-$form
  rm -rf "$work" && cp -r "fuzz/corpus/$form" "$work"
  ./build-fuzz/fuzz/fuzz_$form -max_total_time="${HALVANE_FUZZ_SECONDS:-15}" -dict=fuzz/halvane.dict \
    -malloc_limit_mb=512 -rss_limit_mb=2048 -timeout=10 -artifact_prefix=build-fuzz/ "$work" 2>&1 | tail -1
  ./build-fuzz/fuzz/fuzz_$form -runs=0 "fuzz/corpus/$form" "fuzz/findings/$form" 2>&1 | tail -1
done

echo "== Build and test against Qt 6"
cmake -S . -B build-qt6 -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DHALVANE_QT_VERSION=6 -DHALVANE_BUILD_BENCH=OFF >/dev/null
cmake --build build-qt6 --parallel "$jobs"
(cd build-qt6 && ctest --output-on-failure)

echo "== Documents written with Qt 5 read with Qt 6, and the other way round"
rm -rf build-test/cross-qt5 build-qt6/cross-qt6
./build-test/tools/halvane-crossversion write build-test/cross-qt5
./build-qt6/tools/halvane-crossversion write build-qt6/cross-qt6
./build-qt6/tools/halvane-crossversion check build-test/cross-qt5
./build-test/tools/halvane-crossversion check build-qt6/cross-qt6

echo "== API reference (Doxygen; a warning fails it)"
cmake --build build-test --target docs

echo "== Debian packages of the Qt 5 and Qt 6 builds, installed side by side and used by an outside project"
packages=()
for build in build-test build-qt6; do
  rm -rf "$build/packages"
  (cd "$build" && cpack -G DEB >/dev/null)
  for deb in "$build"/packages/*.deb; do
    packages+=("$(dpkg-deb -f "$deb" Package)")
  done
done
remove_packages() { apt-get remove -y -qq --purge "${packages[@]}" >/dev/null; }
trap remove_packages EXIT
apt-get install -y -qq --no-install-recommends ./build-test/packages/*.deb ./build-qt6/packages/*.deb >/dev/null
for variant in Halvane:halvane HalvaneQt6:halvane-qt6; do
  package=${variant%%:*} module=${variant##*:}
  rm -rf "build-consumer-$module"
  cmake -S tests/consumer -B "build-consumer-$module" -G Ninja -DHALVANE_PACKAGE="$package" >/dev/null
  cmake --build "build-consumer-$module" --parallel "$jobs"
  "./build-consumer-$module/consumer"
  # The same program built with nothing but pkg-config's flags.
  g++ -std=c++17 tests/consumer/main.cpp $(pkg-config --cflags --libs "$module") -o "build-consumer-$module/consumer-pkg-config"
  "./build-consumer-$module/consumer-pkg-config"
done
"$(command -v halvane)" --version
"$(command -v halvane-qt6)" --version
remove_packages
trap - EXIT

echo "== Sources added by an outside project: no tests, tools or benchmark, so no GoogleTest or Google Benchmark"
rm -rf build-consumer-subdirectory
cmake -S tests/consumer -B build-consumer-subdirectory -G Ninja -DHALVANE_SOURCE_DIR="$PWD" >/dev/null
