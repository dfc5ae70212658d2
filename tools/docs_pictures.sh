#!/usr/bin/env bash
# Makes the pictures of docs/ (docs/gallery) small from those that the demo left in build/gallery.
# Run by "zyn demo --docs".
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}
docs=$root/docs/gallery
cd "$root/build/gallery"

# What is left of a picture: no dates, no more colours than it needs.
small=(-strip -define png:exclude-chunks=date,time -define png:compression-level=9)

# shrink PICTURE NAME WIDTH COLOURS
shrink() { convert "$1" -resize "$3x" +dither -colors "$4" "${small[@]}" "$docs/$2.png"; }

# sheet NAME COLUMNS SIZE COLOURS [LABEL PICTURE]...: several pictures with labels below them.
sheet() {
  local name=$1 columns=$2 size=$3 colours=$4
  shift 4
  local pictures=()
  while [[ $# -gt 0 ]]; do
    pictures+=(-label "$1" "$2")
    shift 2
  done
  montage -font Liberation-Sans -pointsize 14 "${pictures[@]}" -tile "${columns}x" -geometry "$size+4+4" png:- |
    convert png:- +dither -colors "$colours" "${small[@]}" "$docs/$name.png"
}

output=$("$zyn" run cscript.exe //nologo "$root/hosts/scripts/camera.js" camera) || true
[[ $output == *"done: 1 pictures"* ]] || { printf 'camera.js failed\n' >&2; exit 1; }

mkdir -p "$docs"
rm -f "$docs"/*.png
sheet overview 3 320x240 192 "" wuson.png "" wuson-outline.png "" wuson-translucent.png "" house.jpg \
  "" jscript/heights.png "" vbscript/annotated.png
shrink wuson-annotated.png annotated 800 128
shrink graphs/seasons.png graph 800 128
shrink graphs/anomalies.png anomalies 800 64
shrink viewer/nearest.png viewer-graph 800 128
shrink viewer/zoom-rectangle.png zoom-rectangle 800 128
shrink viewer/log-log.png log-log 800 64
shrink viewer/lights.png lights 700 192
sheet picking 3 320x224 192 "a press picks" viewer/selected.png "rubber band" viewer/rubber-band.png \
  "what it selected" viewer/window-selection.png
sheet mouse 2 420x294 192 "initView" viewer/opened.png "drag: rotate" viewer/rotated.png "wheel: zoom" viewer/wheel.png \
  "drag in mode 1: pan" viewer/panned.png
sheet views 4 220x165 128 "VueXYp" vbscript/xy+.png "VueXZp" vbscript/xz+.png "VueYZp" vbscript/yz+.jpg \
  "VueTournage" vbscript/turning.bmp "VueXYm" vbscript/xy-.png "VueXZm" vbscript/xz-.png "VueYZm" vbscript/yz-.gif
shrink camera/camera.png camera 900 64
printf '== pictures of docs\n'
du -bch "$docs"/*.png
