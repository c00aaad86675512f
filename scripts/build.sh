#!/usr/bin/env bash
# Configures and builds one preset with all cores; tells only what goes wrong. Usage: scripts/build.sh PRESET
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1

if command -v ccache > /dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! cmake --preset "$preset" > "$log" 2>&1; then
  cat "$log" >&2
  echo "build.sh: the $preset build could not be configured." >&2
  exit 1
fi

# On a terminal the builder's own line of progress; elsewhere only warnings and errors.
quiet=()
[ -t 1 ] || quiet=(-- --quiet)
if ! cmake --build --preset "$preset" --parallel "$(nproc)" "${quiet[@]}"; then
  echo "build.sh: the $preset build failed." >&2
  exit 1
fi
