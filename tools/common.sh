# What the scripts of this folder share. Sourced, not run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s: %s\n' "$(basename "$0")" "$*"; }

fail() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 2
}

# Whether a Debian package is installed.
installed() { dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed; }

# Runs a command as root: as it is, or through sudo.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    fail "this needs root or sudo: $*"
  fi
}

# Runs a command and shows what it printed only when it fails.
quietly() {
  local log
  log=$(mktemp)
  if "$@" >"$log" 2>&1; then
    rm -f "$log"
  else
    local code=$?
    cat "$log" >&2
    rm -f "$log"
    fail "failed ($code): $*"
  fi
}

# Whether the compiler cache holds anything that a build could use.
has_compiler_cache() {
  local folder
  folder=$(ccache --get-config cache_dir 2>/dev/null) && [ -d "$folder" ]
}

# Configures and builds, in the repository's folder: build <preset> [options for the configure step… --] <targets…>
build() {
  local preset=$1 options=() targets=()
  shift
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do
    options+=("$1")
    shift
  done
  [ $# -gt 0 ] && shift
  for target in "$@"; do targets+=(--target "$target"); done
  say "building ($preset)"
  cd "$root"
  # A folder keeps what it began with.
  if [ ! -f "build/$preset/CMakeCache.txt" ] && { [ -n "${CI:-}" ] || ! has_compiler_cache; }; then
    options+=(-DTD_PRECOMPILE=ON)
  fi
  quietly cmake --preset "$preset" "${options[@]}"
  # Somebody who looks on sees how far it is; a log keeps what went wrong only.
  if [ -t 1 ]; then
    cmake --build --preset "$preset" "${targets[@]}"
  else
    quietly cmake --build --preset "$preset" "${targets[@]}"
  fi
}
