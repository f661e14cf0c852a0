#!/usr/bin/env bash
# Installs what the build needs from Debian's packages (run as root). Packages
# already present are not fetched again.
set -euo pipefail
packages=(cmake ninja-build g++ qtbase5-dev qt6-base-dev libqt5svg5-dev qt6-svg-dev libgtest-dev libbenchmark-dev
  libprotobuf-dev protobuf-compiler
  libxml2-utils doxygen graphviz dpkg-dev file pkg-config "$@")
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
