#!/usr/bin/env bash
# Runs the unit tests that scripts/windows_core.sh has built under Wine, with a Windows of their own in build/wine.
# Options go to the test program, such as --gtest_filter=Serial_Ports.*
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

fail() {
  echo "wine_tests.sh: $*" >&2
  exit 1
}

tests=build/windows-core/bin/unit_tests.exe
[ -f "$tests" ] || fail "build the tests first: scripts/windows_core.sh"
command -v wine > /dev/null || fail "nothing was tested, because Wine is missing (Debian package wine)."

export WINEPREFIX=$PWD/build/wine
export WINEDEBUG=${WINEDEBUG:--all}
exec wine "$tests" --gtest_brief=1 "$@"
