#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests.
#   tools/test.sh [--asan] [--with-postgres] [options for ctest…]
# --asan           under the address and undefined-behaviour sanitizers
# --with-postgres  installs a database server, so that its tests are not skipped; always so when CI is set
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=dev
setup=()
if [ -n "${CI:-}" ]; then
  setup+=(--with-postgres)
fi
ctest=()
for argument in "$@"; do
  case "$argument" in
    --asan) preset=asan ;;
    --with-postgres) setup+=(--with-postgres) ;;
    *) ctest+=("$argument") ;;
  esac
done

"$root/tools/setup.sh" "${setup[@]}"
build "$preset" --
exec ctest --preset "$preset" --parallel "$(nproc)" "${ctest[@]}"
