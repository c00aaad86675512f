#!/usr/bin/env bash
# Fails when a source file is not as clang-format would write it, and names those files.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

clang-format --dump-config > /dev/null # without the program or with a broken .clang-format nothing is checked

# shellcheck disable=SC2016 # the inner shell is meant to expand these
wrong=$(find src sim tests bench \( -name '*.cpp' -o -name '*.h' \) -print0 |
  xargs -0 -r -P "$(nproc)" -n 16 bash -c '
    for file; do clang-format --dry-run -Werror "$file" > /dev/null 2>&1 || echo "$file"; done' check | sort)
[ -n "$wrong" ] || exit 0

echo "Not as clang-format writes it; to mend: clang-format -i with the names of" >&2
echo "$wrong" >&2
exit 1
