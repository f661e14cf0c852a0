#!/usr/bin/env bash
# Sets up, builds and runs the main job: the halvane tool on the bundled
# example documents (convert between the three forms, validate, dump, plot), then
# the demo program.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DHALVANE_BUILD_TESTS=OFF -DHALVANE_BUILD_BENCH=OFF >/dev/null
cmake --build build --parallel
halvane=./build/tools/halvane
out=build/examples
rm -rf "$out" && mkdir -p "$out"
for xml in examples/*.xml; do
  name=$(basename "$xml" .xml)
  "$halvane" convert "$xml" "$out/$name.hvb"
  "$halvane" convert "$out/$name.hvb" "$out/$name.hvr"
  "$halvane" convert "$out/$name.hvr" "$out/$name.xml"
  cmp "$xml" "$out/$name.xml" && echo "$name: xml -> hvb -> hvr -> xml gives the same text"
done
"$halvane" validate examples/*.xml examples/*.hvb examples/*.hvr
"$halvane" dump examples/Administration.hvb
"$halvane" dump examples/MeasurementList.hvr
"$halvane" plot examples/AntennaPatterns.xml "$out/AntennaPatterns.svg"
echo "AntennaPatterns: plotted to $out/AntennaPatterns.svg"
./build/tools/halvane-demo
