#!/usr/bin/env bash
# Guards two habits: the core knows no Qt, and offsets into the tune stand in settings/image_map.h alone.
set -euo pipefail
shopt -s nullglob
export LC_ALL=C  # or [a-z] would match capitals too
cd "$(dirname "${BASH_SOURCE[0]}")/.."

status=0
# Prints the lines of the given files that match the pattern, under a heading, and makes the script fail.
forbid() {
  local heading=$1 pattern=$2
  shift 2
  local found
  found=$(grep -nHE "$pattern" "$@" || true)
  [ -n "$found" ] || return 0
  echo "$heading" >&2
  echo "$found" >&2
  status=1
}

# The core files of a subsystem are those in its own folder whose names begin in lower case.
core=()
for subsystem in settings sensors workspace boxlink cards logging; do
  core+=(src/"$subsystem"/[a-z]*.cpp src/"$subsystem"/[a-z]*.h)
done
mapfile -t all < <(find src \( -name '*.cpp' -o -name '*.h' \) ! -path src/settings/image_map.h | sort)

forbid "Qt in the core:" '^ *# *include *[<"](Q[A-Za-z]|q[a-z]+\.h|platform/qt/|widgets/)' "${core[@]}"
forbid "A literal offset outside src/settings/image_map.h:" 'CardByte *\[ *[0-9]' "${all[@]}"
exit "$status"
