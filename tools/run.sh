#!/usr/bin/env bash
# Installs what is missing, builds the desktop and opens the named files in it, the sample workspace when none is named.
#   tools/run.sh [FILES…]
# Without a display it prints the workspace tree and renders every window to build/gallery instead.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

"$root/tools/setup.sh"
(build release -DTD_BUILD_TESTS=OFF -- terravox)

files=("$@")
[ ${#files[@]} -gt 0 ] || files=("$root/samples/world.txw")
terravox="$root/build/release/bin/terravox"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$terravox" "${files[@]}"
fi
say "no display: the workspace tree as text, and pictures of the windows in build/gallery"
export QT_QPA_PLATFORM=offscreen
"$terravox" --print-tree "${files[@]}"
"$terravox" --gallery "$root/build/gallery" "${files[@]}"
