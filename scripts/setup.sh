#!/usr/bin/env bash
# Installs the Debian packages of scripts/packages.txt that this machine lacks, and nothing else.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

fail() {
  echo "setup.sh: $*" >&2
  exit 1
}

command -v dpkg-query > /dev/null ||
  fail "this is no Debian system; install by its own means what scripts/packages.txt names for Debian 12."

mapfile -t wanted < <(grep -v '^#' packages.txt | grep .)
# dpkg-query fails when it does not know one of the names; what it prints about the others still counts.
installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2> /dev/null || true)
missing=()
for package in "${wanted[@]}"; do
  grep -qx "installed $package" <<< "$installed" || missing+=("$package")
done
[ "${#missing[@]}" -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo > /dev/null ||
    fail "root or sudo is needed for: apt-get install --no-install-recommends ${missing[*]}"
  as_root=(sudo)
fi

echo "Installing the missing packages${as_root:+ with sudo}: ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
quietly() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" > "$log" 2>&1 || {
    cat "$log" >&2
    fail "this went wrong: $*"
  }
}
quietly apt-get update
quietly apt-get install --yes --no-install-recommends "${missing[@]}"
