#!/usr/bin/env bash
# Fails when a file of src/ includes what its layer may not use (no suffix = standard C++ only, _gl = + OpenGL,
# _win = + Windows, _com = everything), or a file of a folder that src/folders.txt does not allow its own.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

awk '
  function folder(path) {
    sub(/^src\//, "", path)
    sub(/\/[^\/]*$/, "", path)
    return path
  }
  function rank(path) {
    if (path ~ /_com\.(h|cpp)$/) return 3
    if (path ~ /_win\.(h|cpp)$/) return 2
    if (path ~ /_gl\.(h|cpp)$/ || path ~ /gl_api\.h$/) return 1
    return 0
  }
  FILENAME == "src/folders.txt" {
    if ($0 ~ /^#/) next
    sub(/:/, "", $1)
    known[$1] = 1
    for (i = 2; i <= NF; ++i) {
      if (!($i in known)) { printf "%s:%d: %s is not a folder below %s\n", FILENAME, FNR, $i, $1; bad = 1 }
      allowed[$1, $i] = 1
    }
    next
  }
  FNR == 1 {
    own = rank(FILENAME)
    home = folder(FILENAME)
    if (!(home in known)) { printf "%s: %s is not in src/folders.txt\n", FILENAME, home; bad = 1 }
    if (home == "core" && own != 0 || home == "platform" && own % 2 == 1) { printf "%s: not a layer of %s\n", FILENAME, home; bad = 1 }
  }
  /^[ \t]*#[ \t]*include/ {
    name = $0
    sub(/^[^<"]*[<"]/, "", name)
    sub(/[>"].*$/, "", name)
    needs = 0
    if ($0 ~ /"/) needs = rank(name)
    if (name ~ /^GL\//) needs = 1
    if (name ~ /^GL\/w?gl?ext\.h$/ || name ~ /^(windows|wingdi|winuser|gdiplus.*)\.h$/) needs = 2
    if (name ~ /^(ole.*|ocidl|comdef|comutil|objbase|objidl|oaidl|unknwn)\.h$/ || name ~ /^wrl\// || name ~ /^ZYN(VUE|MODELEGEOM)\.h$/) needs = 3
    if ($0 ~ /"/ && name ~ /\//) {
      to = folder(name)
      if (to != home && !((home, to) in allowed)) { printf "%s:%d: %s may not include %s\n", FILENAME, FNR, home, name; bad = 1 }
      used[home, to] = 1
    }
    if (own == 0 && FILENAME ~ /gl_api\.h$/) next
    if (needs > own) { printf "%s:%d: %s is not for this layer\n", FILENAME, FNR, name; bad = 1 }
  }
  END {
    for (edge in allowed) {
      split(edge, ends, SUBSEP)
      if (!(edge in used)) { printf "src/folders.txt: %s includes nothing of %s\n", ends[1], ends[2]; bad = 1 }
    }
    exit bad
  }' src/folders.txt $(find src -name '*.cpp' -o -name '*.h' | sort)
