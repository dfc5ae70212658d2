#!/usr/bin/env bash
# Builds the package of the current commit twice, from nothing, in two folders and two environments, and compares.
# usage: package_verify.sh   (run by "zyn package --verify")
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
work=$root/build/package-verify
commit=$(git -C "$root" rev-parse HEAD)
export CCACHE_DISABLE=1

# build FOLDER COMMAND-PREFIX...
build() {
  git clone -q "$root" "$1"
  git -C "$1" checkout -q --detach "$commit"
  "${@:2}" "$1/zyn" package >"$1.log" 2>&1 || { tail -n 20 "$1.log" >&2; return 1; }
}

rm -rf "$work"
mkdir -p "$work/another"
(umask 022 && build "$work/one" env TZ=UTC LC_ALL=C.UTF-8)
(umask 077 && build "$work/another/folder" env TZ=Asia/Tokyo LC_ALL=C)
for file in "$work"/one/build/package/*.{zip,exe,whl,nupkg}; do
  cmp "$file" "$work/another/folder/build/package/$(basename "$file")"
  (cd "$(dirname "$file")" && sha256sum "$(basename "$file")")
done
rm -rf "$work"
printf 'package verify: both builds are the same\n'
