#!/usr/bin/env bash
# Runs clang-tidy over every translation unit of src/ and hosts/, each with the flags of its own build.
# usage: check_tidy.sh BUILD-FOLDER (which holds native/ and windows/)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=$1

# clang reads MinGW's headers when it is told where they are, in the order in which GCC searches them.
mingw=(--extra-arg-before=--target=x86_64-w64-mingw32)
while read -r folder; do
  mingw+=("--extra-arg=-isystem$folder")
done < <(x86_64-w64-mingw32-g++-posix -E -x c++ -v /dev/null 2>&1 |
  sed -n '/#include <...>/,/End of search/s/^ //p' | grep -v '/lib/gcc/.*/include$')

# Paths through a function that are followed: with the default, ten times as many, most of the time goes into a few functions.
paths=(--extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang --extra-arg=max-nodes=20000)

check() {
  # Without precompiled headers, which are GCC's and hide what a file fails to include.
  local database=$build/tidy/$(basename "$1")
  mkdir -p "$database"
  sed 's/ -Winvalid-pch -include [^ ]*cmake_pch.hxx//' "$1/compile_commands.json" >"$database/compile_commands.json"
  shift
  xargs -r -n 4 -P "$(nproc)" clang-tidy --quiet -p "$database" "${paths[@]}" "$@" 2> >(grep -v 'warnings generated' >&2)
}

find src hosts -name '*.cpp' ! -name '*_win.cpp' ! -name '*_com.cpp' ! -name 'main.cpp' | sort | check "$build/native"
find src hosts -name '*_win.cpp' -o -name '*_com.cpp' -o -name 'main.cpp' | sort | check "$build/windows" "${mingw[@]}"
