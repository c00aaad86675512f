#!/usr/bin/env bash
# Runs the fuzz target of the log file reader under the address and undefined behaviour sanitizers, from the corpus in
# the tree. Needs the Debian package clang, which brings libFuzzer. What it finds lies in build/fuzz/found; what it
# learns stays in build/fuzz/corpus. Usage: scripts/fuzz_log_reader.sh [SECONDS, else 60]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

sanitizers="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined"
cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS="-O1 -g $sanitizers" \
  -DKXBENCH_CORE_ONLY=ON -DKXBENCH_FUZZ=ON > /dev/null
cmake --build build/fuzz --target log_reader_fuzz

mkdir -p build/fuzz/corpus build/fuzz/found
build/fuzz/bin/log_reader_fuzz -max_total_time="${1:-60}" -max_len=20000 -dict=tests/fuzz/log_file.dict \
  -artifact_prefix=build/fuzz/found/ -print_final_stats=1 build/fuzz/corpus tests/fuzz/corpus
