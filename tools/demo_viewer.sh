#!/usr/bin/env bash
# Drives the viewer with mouse and keys of the build tree's private display and takes pictures of it.
# usage: demo_viewer.sh SCENE FILE FOLDER [PROGRAM]   (run by "zyn demo"; SCENE: model, graph, decades or path, which
# takes a program besides; prints the pictures' names)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}
scene=$1
file=$(realpath -e "$2")
mkdir -p "$3"
folder=$(realpath "$3")
program=${4:+$(realpath -e "$4")}
title="$(basename "$file")${program:+, $(basename "$program")} - ZYNVue viewer"
width=1000
height=700 # of the view; the window has bars above and below besides, and a tree on the left
bars=58    # height of those above
last=

die() { printf 'demo: viewer: %s\n' "$*" >&2; exit 1; }

# start COMMANDS: the viewer with the file, and commands behind its loading.
start() {
  "$zyn" run "$root/build/windows/bin/viewer.exe" "$file" ${program:+"$program"} --size "${width}x$height" --batch --script "$1" >&2 &
  viewer=$!
  DISPLAY=:$(<"$root/build/state/display")
  export DISPLAY
  trap 'xdotool key ctrl+q || true' EXIT
  for _ in {1..300}; do
    window=$(xdotool search --onlyvisible --name "^$title\$" 2>/dev/null | head -n 1) && [[ -n $window ]] && return
    kill -0 "$viewer" 2>/dev/null || die "it ended too early"
    sleep 0.1
  done
  die "it does not show $file"
}

# Where the window is on the display.
find_view() {
  local name value
  while IFS='=' read -r name value; do
    case $name in
      X) left=$value ;;
      Y) top=$value ;;
      WIDTH) window_width=$value ;;
      HEIGHT) window_height=$value ;;
    esac
  done < <(xdotool getwindowgeometry --shell "$window")
}

# at X Y: moves the mouse to a place of the view, in per cent of its width and height.
at() { xdotool mousemove $((left + window_width - width + $1 * width / 100)) $((top + bars + $2 * height / 100)); }

# drag BUTTON X Y X Y: holds a button down along a line, and leaves it down.
drag() {
  local step
  at "$2" "$3"
  xdotool mousedown "$1"
  for step in {1..10}; do
    at $(($2 + ($4 - $2) * step / 10)) $(($3 + ($5 - $3) * step / 10))
    sleep 0.05
  done
}

# take NAME: a picture of the window once it keeps still; it must differ from the picture before.
take() {
  local picture=$folder/$1.png now before=none
  for _ in {1..50}; do
    sleep 0.2
    now=$(import -window root -crop "${window_width}x$window_height+$left+$top" rgb:- | sha256sum)
    [[ $now == "$before" && $now != "$last" ]] && break
    before=$now
  done
  [[ $now != "$last" ]] || die "nothing happened before $1.png"
  last=$now
  import -window root -crop "${window_width}x$window_height+$left+$top" +repage "$picture"
  printf '%s\n' "$picture"
}

stop() {
  xdotool key ctrl+q
  for _ in {1..100}; do
    if ! kill -0 "$viewer" 2>/dev/null; then
      wait "$viewer" || die "it ended with code $?"
      trap - EXIT
      return
    fi
    sleep 0.1
  done
  die "it does not close"
}

# play_model: turns, picks, looks.
play_model() {
  start yz+,turn-left,turn-left,turn-up,zoom-all
  find_view
  at 2 2
  take opened
  drag 1 40 50 60 42
  xdotool mouseup 1
  take rotated
  at 50 50
  xdotool click --repeat 6 --delay 60 5
  take wheel
  xdotool key p
  drag 1 50 50 38 44
  xdotool mouseup 1
  take panned
  xdotool key 4
  at 50 50
  take front
  xdotool key ctrl+1
  take shaded
  xdotool key ctrl+4
  take hidden-line
  xdotool key ctrl+3
  take edges
  xdotool key v
  take perspective
  xdotool key v
  xdotool key s
  xdotool click 1
  take selected
  xdotool key w
  drag 1 22 12 42 45
  take rubber-band
  xdotool mouseup 1
  take window-selection
  xdotool key Escape g t
  xdotool key o
  take outline
  xdotool key o g t Home alt+v
  take menu
  xdotool key Escape Escape
  xdotool key l
  take lights
  xdotool key Escape
  stop
}

# play_graph: asks for nearest points, zooms, changes axes.
play_graph() {
  start ""
  find_view
  at 45 40
  take graph
  xdotool click 1
  take nearest
  xdotool key t t t
  at 61 30
  xdotool click 1
  take trace
  xdotool key Escape shift+t shift+t shift+t z
  drag 1 48 18 62 62
  take zoom-rectangle
  xdotool mouseup 1
  at 50 50
  take zoomed
  xdotool click --repeat 3 --delay 60 5
  take graph-wheel
  drag 2 40 50 55 40
  xdotool mouseup 2
  take graph-panned
  xdotool key f alt+l
  take graph-menu
  xdotool key Escape Escape
  stop
}

# play_decades: logarithmic axes.
play_decades() {
  start log-x,log-y
  find_view
  at 52 40
  xdotool click 1
  take log-log
  stop
}

# play_path: a program beside its part, led to a line.
play_path() {
  start ball-nose,colour-progress
  find_view
  at 2 2
  take path-opened
  xdotool mousemove $((left + window_width - 150)) $((top + bars + 560)) click 1
  for _ in {1..16}; do xdotool key Next; done
  take path
  xdotool key 9
  take path-speed
  stop
}

play_"$scene"
