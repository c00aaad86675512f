#!/usr/bin/env bash
# Builds the core and its unit tests for Windows on this Linux machine, into build/windows-core. Installs the cross
# compiler and the sources of the test library when they are missing; nothing else of the program needs them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if ! command -v x86_64-w64-mingw32-g++-posix > /dev/null || [ ! -d /usr/src/googletest ]; then
  as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update
  "${as_root[@]}" apt-get install --yes --no-install-recommends \
    cmake ninja-build g++-mingw-w64-x86-64-posix libgtest-dev
fi
scripts/build.sh windows-core
