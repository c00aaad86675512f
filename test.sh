#!/usr/bin/env bash
# Installs what is missing, builds the dev preset and runs all tests.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/setup.sh
scripts/build.sh dev
scripts/test_share.sh
ctest --preset dev --parallel "$(nproc)"
