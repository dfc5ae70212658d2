#!/usr/bin/env bash
# Opens the viewer on the display of whoever calls it.
# usage: viewer.sh [FILE...]   (run by "zyn viewer"; FILE is a model, STL, OBJ, PLY, OFF or 3MF, a program for a mill or a
# printer, NC, NGC, GCODE, TAP, CNC ..., or one of each, or a table, CSV or TSV)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}

die() { printf 'viewer: %s\n' "$*" >&2; exit 1; }

[[ -n ${DISPLAY:-} ]] || die "there is no display to open it on; ./zyn demo takes pictures of it in build/gallery/viewer"

arguments=()
for file in "$@"; do
  [[ -f $file ]] || die "$file: no such file"
  arguments+=("$(realpath "$file")")
done
ZYN_DISPLAY=$DISPLAY exec "$zyn" run "$root/build/windows/bin/viewer.exe" "${arguments[@]}"
