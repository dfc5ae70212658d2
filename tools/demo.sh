#!/usr/bin/env bash
# Renders models and graphs into build/gallery with each kind of host: the zynshot program, scripts run by cscript, the
# viewer.
# usage: demo.sh [MODEL]   (run by "zyn demo"; MODEL is an STL or OBJ file, default: three real test models)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}
zynshot=$root/build/windows/bin/zynshot.exe
gallery=$root/build/gallery
models=/usr/share/assimp/models
pictures=()

die() { printf 'demo: %s\n' "$*" >&2; exit 1; }

# shoot MODEL NAME UPRIGHT: every view, look and format that zynshot offers, in one run; annotated with the logo of
# the scripts where they have run.
shoot() {
  local model=$1 name=$2 upright=$3 view arguments=() shots=() logo=()
  if [[ -f vbscript/logo.bmp ]]; then
    logo=(--logo vbscript/logo.bmp)
  fi
  for view in xy+ xy- xz+ xz- yz+ yz- turning; do
    shots+=("$name-$view.png")
    arguments+=(-o "$name-$view.png" --view "$view")
  done
  shots+=("$name.png" "$name.jpg" "$name.gif" "$name.bmp" "$name-translucent.png" "$name-outline.png"
    "$name-annotated.png")
  arguments+=(-o "$name.png" --view "$upright"
    -o "$name.jpg" --view "$upright" --material metal --color '#b08d3c'
    -o "$name.gif" --view "$upright" --light1 off
    -o "$name.bmp" --view "$upright" --gradient orange
    -o "$name-translucent.png" --view "$upright" --color tomato --transparent 0.35
    -o "$name-outline.png" --view "$upright" --outline --color navy --background white
    -o "$name-annotated.png" --view "$upright" --dimensions --title "${name^}" "${logo[@]}")
  printf '== zynshot: %s\n' "$model"
  "$zyn" run "$zynshot" "$model" --size 1200x900 --smooth 30 --gradient '#88aad8' --light1 -35,40 \
    --light2 '70,-10,#b0c8ff' "${arguments[@]}" || die "zynshot failed"
  pictures+=("${shots[@]}")
}

# shoot_styles: a part of the samples in every style, in perspective.
shoot_styles() {
  local style arguments=()
  for style in shaded edges shaded-edges hidden-line points; do
    arguments+=(-o "part-$style.png" --style "$style")
    [[ $style != points ]] || arguments+=(--edges navy,5)
    pictures+=("part-$style.png")
  done
  "$zyn" run "$zynshot" "$root/hosts/data/part.obj" --size 800x600 --perspective 30 --edges navy,1.5 "${arguments[@]}" ||
    die "zynshot failed"
}

# play SCRIPT FILE FOLDER PICTURES...: cscript ends with 0 even when a script fails: its end marker is what counts.
play() {
  local script=$1 file=$2 folder=$3 output
  shift 3
  printf '== cscript %s: %s\n' "$script" "$file"
  output=$("$zyn" run cscript.exe //nologo "$root/hosts/scripts/$script" "$file" "$folder") || true
  printf '%s\n' "$output" | tr -d '\r'
  [[ $output == *"done: $# pictures"* ]] || die "$script failed"
  pictures+=("${@/#/$folder/}")
}

play_both() {
  play gallery.vbs "$1" vbscript xy+.png xy-.png xz+.png xz-.png yz+.jpg yz-.gif turning.bmp translucent.png \
    annotated.png logo.bmp
  play heights.js "$2" jscript heights.png heights.jpg heights.gif heights.bmp
}

play_part() {
  mkdir -p part
  local output
  output=$("$zyn" run cscript.exe //nologo "$root/hosts/scripts/part.vbs" "$root/hosts/data/part.obj" part) || true
  [[ $output == *"done: "* ]] || die "part.vbs failed: $output"
  pictures+=(part/part.png)
}

# play_paths: programs of the samples over the part that they mill or print.
play_paths() {
  local part=$root/hosts/data/part.obj paths=$root/hosts/data/paths output
  mkdir -p paths
  output=$("$zyn" run cscript.exe //nologo "$root/hosts/scripts/toolpath.vbs" "$part" "$paths/part_finish.nc" paths) || true
  [[ $output == *"done: "* ]] || die "toolpath.vbs failed: $output"
  "$zyn" run "$zynshot" "$part" "$paths/part_prusa.gcode" --size 1200x900 --path-colours speed --transparent 0.3 --surplus 0 \
    --perspective 30 -o paths/printed.png || die "zynshot failed"
  "$zyn" run "$zynshot" "$part" "$paths/part_holes.nc" --size 1200x900 --position line:65 --tool 6 --perspective 30 --surplus 0 \
    -o paths/holes.png || die "zynshot failed"
  pictures+=(paths/{speeds,progress,printed,holes}.png)
}

# watch SCENE FILE [PROGRAM]: the viewer, driven by mouse and keys.
watch() {
  local output
  printf '== viewer: %s\n' "$2"
  output=$("$root/tools/demo_viewer.sh" "$1" "$2" "$gallery/viewer" "${@:3}") || die "the viewer failed"
  mapfile -t -O "${#pictures[@]}" pictures <<<"$output"
}

# make_filter_table FILE: how a resonant low-pass filter passes frequencies.
make_filter_table() {
  awk 'BEGIN {
    print "frequency [Hz],gain,noise"
    for (i = 0; i <= 600; ++i) {
      f = 10 ^ (i / 100)
      printf "%.6g,%.6g,%.6g\n", f, 1 / sqrt((1 - (f / 2000) ^ 2) ^ 2 + (f / 20000) ^ 2), 0.001 * (1 + 300 / f)
    }
  }' >"$1"
}

# A text STL says "facet" early; a binary one has its numbers there.
is_text_stl() { head -c 1000 "$1" | LC_ALL=C grep -qai '^[[:space:]]*facet[[:space:]]'; }

list_pictures() {
  local picture missing=0
  printf '== pictures in %s\n' "$gallery"
  for picture in "${pictures[@]}"; do
    if [[ -s $picture ]]; then
      printf '%10d bytes  %s\n' "$(stat -c %s "$picture")" "$picture"
    else
      printf '   MISSING        %s\n' "$picture"
      missing=1
    fi
  done
  [[ $missing -eq 0 ]] || die "pictures are missing"
}

if [[ $# -gt 0 ]]; then
  model=$(realpath -e "$1") || exit 1
fi
rm -rf "$gallery"
mkdir -p "$gallery"
cd "$gallery"
if [[ $# -gt 0 ]]; then
  name=$(basename "${model%.*}")
  if is_text_stl "$model"; then
    play_both "$model" "$model"
  fi
  shoot "$model" "$name" iso
  watch model "$model"
else
  play_both "$models/STL/Spider_ascii.stl" "$models/STL/sphereWithHole.stl"
  play measurement.js "$root/hosts/data" measurement {carbon-dioxide,weather,scattering,sea-surface}.{png,svg,pdf}
  play graphs.js "$root/hosts/data/sea_surface_temperature.csv" graphs seasons.png seasons-print.png anomalies.png \
    anomalies-print.png
  shoot "$models/STL/Wuson.stl" wuson iso-y
  shoot "$models/OBJ/regr01.obj" house iso
  shoot_styles
  play_part
  play_paths
  watch model "$models/OBJ/spider.obj"
  watch path "$root/hosts/data/part.obj" "$root/hosts/data/paths/part_finish.nc"
  watch graph "$root/hosts/data/sea_surface_temperature.csv"
  make_filter_table filter.csv
  watch decades filter.csv
fi
list_pictures
