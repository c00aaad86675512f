#!/usr/bin/env bash
# Sets one key of a settings file as the program itself does: every line of the key gets the value, a missing key
# comes at the end, all other lines stay as they are. Usage: scripts/set_ini_key.sh FILE KEY VALUE
set -euo pipefail
file=$1

fail() {
  echo "set_ini_key.sh: $file $*" >&2
  exit 1
}

[ -f "$file" ] || fail "is not there."
[ -w "$file" ] || fail "cannot be written."
value=$(iconv -f UTF-8 -t CP1252 <<< "$3") || fail "cannot hold \"$3\": the file knows Western European letters only."

beside=$file.new
trap 'rm -f "$beside"' EXIT
cp -p "$file" "$beside"
KEY=$2 VALUE=$value LC_ALL=C awk '
  BEGIN { line = ENVIRON["KEY"] "=" ENVIRON["VALUE"] }
  {
    at = index($0, "=")
    if (at && tolower(substr($0, 1, at - 1)) == tolower(ENVIRON["KEY"])) {
      $0 = line ($0 ~ /\r$/ ? "\r" : "")
      found = 1
    }
    print
  }
  END { if (!found) printf "%s\r\n", line }' "$file" > "$beside"
cmp -s "$file" "$beside" || mv "$beside" "$file"
