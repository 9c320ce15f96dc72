#!/usr/bin/env bash
# Installs what is missing to build, test and run. Does nothing, and says nothing, when all is there.
#   tools/setup.sh [--with-postgres]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source ./common.sh

lists=(packages.txt)
for argument in "$@"; do
  case "$argument" in
    --with-postgres) lists+=(packages-postgres.txt) ;;
    *) fail "usage: tools/setup.sh [--with-postgres]" ;;
  esac
done

missing=()
while read -r package; do
  installed "$package" || missing+=("$package")
done < <(sed -E '/^[[:space:]]*(#|$)/d' "${lists[@]}")

if [ ${#missing[@]} -gt 0 ]; then
  say "installing ${missing[*]}"
  quietly as_root apt-get update
  # A database server must not be started by its package: the tests run one of their own.
  quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
fi

# The comma locale under which the tests run a second time.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  say "making the locale de_DE.UTF-8"
  quietly as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi
