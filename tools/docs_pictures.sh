#!/usr/bin/env bash
# Makes the pictures of docs/ (docs/gallery) small from those that the demo left in build/gallery.
# Run by "zyn demo --docs".
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}
docs=$root/docs/gallery
cd "$root/build/gallery"

# What is left of a picture: no dates. Pictures with gradients and shades are JPEG files, as few colours would tear them
# into bands; graphs and drawings have no more colours than they need.
small=(-strip -define png:exclude-chunks=date,time -define png:compression-level=9)
shaded=(-strip -sampling-factor 4:4:4 -quality 90)

# shrink PICTURE NAME WIDTH COLOURS
shrink() { convert "$1" -resize "$3x" +dither -colors "$4" "${small[@]}" "$docs/$2.png"; }

# shrink_shaded PICTURE NAME WIDTH
shrink_shaded() { convert "$1" -resize "$3x" "${shaded[@]}" "$docs/$2.jpg"; }

# sheet NAME COLUMNS SIZE [LABEL PICTURE]...: several pictures with labels below them.
sheet() {
  local name=$1 columns=$2 size=$3
  shift 3
  local pictures=()
  while [[ $# -gt 0 ]]; do
    pictures+=(-label "$1" "$2")
    shift 2
  done
  montage -font Liberation-Sans -pointsize 14 -bordercolor '#c8ccd2' -border 1 "${pictures[@]}" -tile "${columns}x" \
    -geometry "$size+4+4" png:- | convert png:- "${shaded[@]}" "$docs/$name.jpg"
}

output=$("$zyn" run cscript.exe //nologo "$root/hosts/scripts/camera.js" camera) || true
[[ $output == *"done: 1 pictures"* ]] || { printf 'camera.js failed\n' >&2; exit 1; }
mkdir -p gear
output=$("$zyn" run cscript.exe //nologo "$root/hosts/scripts/gear.js" gear) || true
[[ $output == *"done: 792 faces"* ]] || { printf 'gear.js failed\n' >&2; exit 1; }

mkdir -p light
output=$("$zyn" run cscript.exe //nologo "$root/hosts/scripts/light.vbs" "$root/hosts/data/gear.stl" light) || true
[[ $output == *"done: 14 pictures"* ]] || { printf 'light.vbs failed\n' >&2; exit 1; }

mkdir -p "$docs"
rm -f "$docs"/*.png "$docs"/*.jpg
sheet overview 3 320x240 "" wuson.png "" wuson-outline.png "" wuson-translucent.png "" house.jpg \
  "" jscript/heights.png "" vbscript/annotated.png
shrink_shaded wuson-annotated.png annotated 800
shrink measurement/carbon-dioxide.png graph 800 64
shrink measurement/weather.png weather 800 64
shrink measurement/scattering.png scattering 800 64
shrink measurement/sea-surface.png sea-surface 800 128
shrink graphs/seasons.png seasons 800 128
shrink graphs/anomalies.png anomalies 800 64
shrink viewer/nearest.png viewer-graph 800 128
shrink viewer/zoom-rectangle.png zoom-rectangle 800 128
shrink viewer/log-log.png log-log 800 64
shrink_shaded viewer/lights.png lights 700
shrink_shaded viewer/path.png viewer-path 900
sheet picking 3 320x224 "a press picks" viewer/selected.png "rubber band" viewer/rubber-band.png \
  "what it selected" viewer/window-selection.png
sheet mouse 2 420x294 "VueYZp, RotateH, RotateV" viewer/opened.png "drag: rotate" viewer/rotated.png "wheel: zoom" viewer/wheel.png \
  "drag in mode 1: pan" viewer/panned.png
sheet views 4 220x165 "VueXYp" vbscript/xy+.png "VueXZp" vbscript/xz+.png "VueYZp" vbscript/yz+.jpg \
  "VueTournage" vbscript/turning.bmp "VueXYm" vbscript/xy-.png "VueXZm" vbscript/xz-.png "VueYZm" vbscript/yz-.gif
sheet parts 3 320x240 "0 surfaces" part-shaded.png "1 every edge" part-edges.png "2 with feature edges" part-shaded-edges.png \
  "3 hidden-line" part-hidden-line.png "4 points" part-points.png "values" part/part.png
shrink_shaded gear/gear.png gear 800
sheet light 4 220x165 "setColor, head-on" light/top-colour.png "setMaterial, head-on" light/top-material.png \
  "light from the eye" light/material.png "over the left shoulder" light/material-shoulder.png \
  "triangles from above" light/triangles-above.png "triangles from below" light/triangles-below.png \
  "mesh from below" light/mesh-below.png "opposed normals" light/mesh-opposed.png
shrink_shaded paths/progress.png toolpath 800
sheet toolpaths 3 400x300 "by speed" paths/speeds.png "printed, by speed" paths/printed.png \
  "contour and holes" paths/holes.png
shrink_shaded viewer/selected.png viewer 900
shrink camera/camera.png camera 900 64
printf '== pictures of docs\n'
du -bch "$docs"/*
