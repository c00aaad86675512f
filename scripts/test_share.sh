#!/usr/bin/env bash
# Prints how large a part of all code lines the tests are; lines without anything on them do not count.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

lines() {
  find "$@" \( -name '*.cpp' -o -name '*.h' \) -exec cat {} + | grep -c '[^[:space:]]' || true
}
program=$(lines src sim bench)
tests=$(lines tests)
all=$((program + tests))
echo "Test lines: $tests of $all code lines, $((all ? 100 * tests / all : 0)) %"
