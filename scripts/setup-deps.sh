#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the demo need.
# Only packages that are missing are installed, so a warm machine starts at once.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config make
  libboost-dev libboost-filesystem-dev libboost-iostreams-dev
  libxml2-dev libzip-dev libssl-dev tcl-dev
  libcli11-dev googletest libgtest-dev libgmock-dev libbenchmark-dev
  swig openjdk-17-jdk-headless
  clang libclang-rt-14-dev clang-format
  zip unzip
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done

if ((${#missing[@]})); then
  echo "setup: installing ${missing[*]}"
  SUDO=""
  [[ $(id -u) -eq 0 ]] || SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
