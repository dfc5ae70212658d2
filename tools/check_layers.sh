#!/usr/bin/env bash
# Fails when a file of src/ includes what its layer may not use: no suffix = standard C++ only, _gl = + OpenGL,
# _win = + Windows, _com = everything.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

find src -name '*.cpp' -o -name '*.h' | sort | xargs awk '
  function rank(path) {
    if (path ~ /_com\.(h|cpp)$/) return 3
    if (path ~ /_win\.(h|cpp)$/) return 2
    if (path ~ /_gl\.(h|cpp)$/ || path ~ /gl_api\.h$/) return 1
    return 0
  }
  FNR == 1 { own = rank(FILENAME) }
  /^[ \t]*#[ \t]*include/ {
    name = $0
    sub(/^[^<"]*[<"]/, "", name)
    sub(/[>"].*$/, "", name)
    needs = 0
    if ($0 ~ /"/) needs = rank(name)
    if (name ~ /^GL\//) needs = 1
    if (name ~ /^GL\/w?gl?ext\.h$/ || name ~ /^(windows|wingdi|winuser|gdiplus.*)\.h$/) needs = 2
    if (name ~ /^(ole.*|ocidl|comdef|comutil|objbase|objidl|oaidl|unknwn)\.h$/ || name ~ /^wrl\// || name ~ /^ZYN(VUE|MODELEGEOM)\.h$/) needs = 3
    if (own == 0 && FILENAME ~ /gl_api\.h$/) next
    if (needs > own) { printf "%s:%d: %s is not for this layer\n", FILENAME, FNR, name; bad = 1 }
  }
  END { exit bad }'
