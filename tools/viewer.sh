#!/usr/bin/env bash
# Opens the viewer on the display of whoever calls it.
# usage: viewer.sh [FILE]   (run by "zyn viewer"; FILE is a model, STL, OBJ, PLY, OFF or 3MF, or a table, CSV or TSV)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}

die() { printf 'viewer: %s\n' "$*" >&2; exit 1; }

[[ $# -le 1 ]] || die "one file at a time"
[[ -n ${DISPLAY:-} ]] || die "there is no display to open it on; ./zyn demo takes pictures of it in build/gallery/viewer"

arguments=()
if [[ $# -gt 0 ]]; then
  [[ -f $1 ]] || die "$1: no such file"
  arguments=("$(realpath "$1")")
fi
ZYN_DISPLAY=$DISPLAY exec "$zyn" run "$root/build/windows/bin/viewer.exe" "${arguments[@]}"
