#!/usr/bin/env bash
# Measures this library beside others for Python with the same scenes (bench/peers), under Wine.
# usage: bench_peers.sh [--quick] [SCENE...]   (run by "zyn bench peers")
# Fetches a Python for Windows and those products into build/peers, once; pictures go there too.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}
windows=$root/build/windows
out=$root/build/peers
stage=$out/stage
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$windows/CMakeCache.txt")

# The package zynvue from what has been built, as users install it.
install_zynvue() {
  rm -rf "$stage" "$out"/zynvue-*.whl
  cmake --install "$windows" --strip --prefix "$stage" >"$out/install.log"
  (cd "$stage/bin" && "$zyn" run "$windows/bin/manifest.exe" ZYNVue.Components.manifest ZYNVue.Components "$version.0" \
    "$stage/bin/ZYNVue.dll" "$stage/bin/ZYNModeleGeom.dll")
  SOURCE_DATE_EPOCH=0315532800 python3 "$root/tools/make_wheel.py" "$stage" "$version" "$out"
  rm -rf "$out"/python/Lib/site-packages/zynvue*
  PIP_ROOT_USER_ACTION=ignore python3 -m pip --disable-pip-version-check --quiet install --platform win_amd64 \
    --python-version 3.11 --only-binary=:all: --no-deps --no-compile --target "$out/python/Lib/site-packages" \
    "$out"/zynvue-*.whl
}

mkdir -p "$out"
"$root/tools/windows_python.sh" "$out/python" "$root/bench/peers/requirements.txt"
install_zynvue
cd "$out"
# It prints into files that a Windows program opens: under Wine Python does not start with those of this shell.
status=0
"$zyn" run cmd.exe /c "python\\python.exe ..\\..\\bench\\peers\\main.py . $* >table.txt 2>messages.txt" || status=$?
tr -d '\r' <table.txt
[[ $status -eq 0 ]] || { tail -n 20 messages.txt >&2; exit "$status"; }
