#!/usr/bin/env bash
# Runs the programs in the guides: blocks marked "file=NAME" in README.md and docs/*.md, beside gear.stl. Scripts and console
# programs must print "done"; programs with a window are compiled; those in Python must be samples, word by word. Fails also
# when a page refers to a file that is not there.
# usage: check_guides.sh BUILD-FOLDER (of the build for Windows)   (run by the test docs.guides)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$(realpath "$1")
headers=$build/idl
folder=$build/guides
flags=(-std=c++20 -Wall -Wextra -Werror "-I$headers" "$headers/ZYNVUE_i.c" "$headers/ZYNMODELEGEOM_i.c" -static -lole32
  -loleaut32 -luuid -lopengl32)
failures=0

fail() { printf '%s\n' "$*"; failures=1; }

# expect_done NAME PROGRAM ARGS...
expect_done() {
  local name=$1 output
  shift
  output=$("$root/zyn" run "$@") || true
  [[ $output == *done* ]] || fail "$name: $output"
}

check() {
  case $1 in
    *.vbs | *.js) expect_done "$1" cscript.exe //nologo "$1" ;;
    *.cpp)
      local windowed=()
      if grep -q wWinMain "$1"; then
        windowed=(-municode -mwindows)
      fi
      if ! x86_64-w64-mingw32-g++-posix "$1" "${flags[@]}" "${windowed[@]}" -o "${1%.cpp}.exe"; then
        fail "$1 does not compile"
      elif [[ ${#windowed[@]} -eq 0 ]]; then
        expect_done "$1" "$folder/${1%.cpp}.exe"
      fi
      ;;
    *.py) cmp -s "$1" "$root/hosts/python/$1" || fail "$1 is not the one of hosts/python, which ./zyn hosts runs" ;;
    *) fail "$1: a program of which kind?" ;;
  esac
}

# check_links PAGE: what it refers to within the repository is there, and, for a page of docs, in the package as well,
# which has the hosts beside the docs.
check_links() {
  local link
  while read -r link; do
    link=${link%%#*}
    [[ -z $link || $link == http* || -e $(dirname "$1")/$link ]] || fail "$1: no $link"
    [[ $1 != "$root"/docs/*.md || $link != ../* || $link == ../hosts* || $1 == */reference/* ]] ||
      fail "$1: $link is not in the package"
  done < <(grep -o '](\([^) ]*\))' "$1" | sed 's/^](//; s/)$//')
}

rm -rf "$folder"
mkdir -p "$folder"
awk -v folder="$folder" '
  /^```/ && match($0, /file=[^ ]+/) { file = folder "/" substr($0, RSTART + 5, RLENGTH - 5); next }
  /^```/ { file = "" }
  file { print > file }' "$root"/README.md "$root"/docs/*.md
cd "$folder"
programs=(*.*)
cp "$root/hosts/data/gear.stl" .
for program in "${programs[@]}"; do
  check "$program"
done
for page in "$root"/*.md "$root"/docs/*.md "$root"/docs/reference/*.md; do
  check_links "$page"
done
exit "$failures"
