#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks with full optimisation and runs them one after the other.
#   tools/bench.sh [options for Google Benchmark…]      for example --benchmark_filter=Recordset
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

"$root/tools/setup.sh"
build release -DTD_BUILD_BENCH=ON --
export QT_QPA_PLATFORM=offscreen
for program in "$root"/build/release/bin/bench_*; do
  say "$(basename "$program")"
  "$program" "$@"
done
