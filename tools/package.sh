#!/usr/bin/env bash
# Makes build/package/ZYNVue-VERSION-win64.zip, .exe (the installer), the Python package zynvue-VERSION-….whl and the NuGet
# package ZYNVue.Interop.VERSION.nupkg from what has been built for Windows.
# usage: package.sh   (run by "zyn package")
# The same commit always gives the same bytes: times are the commit's, orders are sorted, modes are fixed.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}
windows=$root/build/windows
out=$root/build/package
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$windows/CMakeCache.txt")
name=ZYNVue-$version-win64
stage=$out/$name
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$root" log -1 --format=%ct)}
export TZ=UTC LC_ALL=C

fill_stage() {
  rm -rf "$out"
  mkdir -p "$out"
  cmake --install "$windows" --strip --prefix "$stage" >"$out/install.log" 2>&1 || { cat "$out/install.log" >&2; return 1; }
  (cd "$stage/bin" && "$zyn" run "$windows/bin/manifest.exe" ZYNVue.Components.manifest ZYNVue.Components "$version.0" \
    "$stage/bin/ZYNVue.dll" "$stage/bin/ZYNModeleGeom.dll")
  "$root/tools/site/make_site.py" "$stage/docs" "$version"
  find "$stage" -type d -exec chmod 755 {} +
  find "$stage" -type f -exec chmod 644 {} +
  find "$stage" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
}

make_zip() {
  (cd "$out" && find "$name" -type f | sort | zip -q -X -9 -D "$name.zip" -@)
}

fill_stage
make_zip
"$root/tools/make_installer.sh" "$stage" "$version" "$out/$name.exe"
python3 "$root/tools/make_wheel.py" "$stage" "$version" "$out"
"$root/tools/make_nupkg.sh" "$stage/bin" "$version" "$out/ZYNVue.Interop.$version.nupkg"
(cd "$out" && sha256sum "$name.zip" "$name.exe" zynvue-*.whl ZYNVue.Interop.*.nupkg)
