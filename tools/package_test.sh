#!/usr/bin/env bash
# Tests build/package in a Wine prefix of its own, where nothing is registered: use without registration, the Python package,
# the zip, the installer for all users and for one, upgrade and removal.
# usage: package_test.sh   (run by "zyn package --test", which holds the display)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=$root/build/package
windows=$root/build/windows
work=$root/build/package-test
kept=$root/build/package-python
wine=/usr/lib/wine/wine64
name=$(basename "$out"/ZYNVue-*-win64.zip .zip)
version=$(sed 's/ZYNVue-\(.*\)-win64/\1/' <<<"$name")
stage=$out/$name
export WINEPREFIX=$work/prefix WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=" LIBGL_ALWAYS_SOFTWARE=1
export DISPLAY=${ZYN_DISPLAY:-:$(<"$root/build/state/display")}
drive=$WINEPREFIX/drive_c
machine=$drive/Program\ Files/ZYNVue
classes=$(cat "$root"/idl/*.idl | grep -c "^ *coclass") # that the libraries publish
uninstall_key='Software\Microsoft\Windows\CurrentVersion\Uninstall\ZYNVue'

die() { printf 'package test: %s\n' "$*" >&2; exit 1; }

# expect WHAT COMMAND...
expect() {
  "${@:2}" || die "$1"
  printf '   %s\n' "$1"
}

quiet() { "$wine" "$@" >>"$work/wine.log" 2>&1 </dev/null; }

# run PROGRAM ARGS...: with its own exit code; its output is in $work/output.
run() { "$wine" "$windows/bin/launcher.exe" "$@" >"$work/output" 2>>"$work/wine.log" </dev/null; }

# exits CODE PROGRAM ARGS...
exits() {
  local status=0
  run "${@:2}" || status=$?
  [[ $status -eq $1 ]] || { printf 'exit code %s\n' "$status" >&2; return 1; }
}

windows_path() { printf 'Z:%s' "${1//\//\\}"; }

end_server() {
  wineserver -k || true
  wineserver -w || true
}

make_prefix() {
  rm -rf "$work"
  mkdir -p "$work"
  quiet "$wine" wineboot -i
  quiet "$wine" winecfg -v win10
  quiet "$wine" reg add 'HKCU\Software\Classes' /f # Windows always has it
  quiet "$wine" reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f
}

remove_prefix() {
  local status=$?
  end_server
  if [[ $status -eq 0 ]]; then rm -rf "$work"; else rm -rf "$WINEPREFIX"; fi
}

# keys FILE: a file in which Wine's server saves a part of the registry, without times, and without what Wine finds out
# about devices each time that it starts.
keys() {
  awk '/^\[/ { sub(/\] [0-9]+$/, "]")
               device = /^\[System\\\\[^\\]*\\\\(Enum|Control\\\\(Class|Video|DeviceClasses))|\\\\NetworkCards/ }
       !device && !/^#time=/' "$1"
}

# snapshot NAME: the whole registry and every file.
snapshot() {
  local hive
  end_server
  mkdir -p "$work/$1"
  for hive in system user userdef; do
    keys "$WINEPREFIX/$hive.reg" >"$work/$1/$hive.reg"
  done
  (cd "$WINEPREFIX" && find . -type d -printf '%P\n' -o ! -name '*.reg' -printf '%P %s\n' | sort) >"$work/$1/files"
}

# as_before: nothing is left in registry and file system.
as_before() {
  snapshot after
  diff -r -x raw "$work/before" "$work/after" >&2
}

# creates_all: every class, by ProgID, from a script host.
creates_all() {
  run cscript.exe //nologo "$(windows_path "$root/tests/package/create_all.vbs")" || true
  grep -q "^created $classes" "$work/output" || { cat "$work/output" >&2; return 1; }
}

creates_none() { ! creates_all 2>>"$work/wine.log"; }

# value_is ROOT NAME TEXT: a value of the installation's record.
value_is() {
  run reg query "$1\\$uninstall_key" /v "$2" && grep -qF -- "$3" "$work/output"
}

# installed_in FOLDER: what the zip holds is there, and the uninstaller.
installed_in() {
  diff -r "$stage" "$1" >"$work/differences" || true
  [[ $(<"$work/differences") == "Only in $1: uninstall.exe" ]] || { cat "$work/differences" >&2; return 1; }
}

# soon COMMAND...: waits until it holds, some seconds at most.
soon() {
  local tries
  for tries in {1..150}; do
    "$@" && return
    sleep 0.1
  done
  return 1
}

uninstalled() { [[ ! -d $1 ]] && ! compgen -G "$drive/users/*/Temp/ns*.tmp" >/dev/null; }

# uninstalls FOLDER: the uninstaller works in a copy of itself, which Windows removes when it starts the next time.
uninstalls() {
  exits 0 "$(windows_path "$1/uninstall.exe")" /S && soon uninstalled "$1" || return 1
  end_server
  quiet "$wine" wineboot -r
}

version_is_in() { x86_64-w64-mingw32-strings -el "$1" | grep -A1 -x ProductVersion | grep -qx "$version.0"; }

gtest() {
  run "$@" || { cat "$work/output" >&2; return 1; }
}

unpack_with_host() {
  mkdir -p "$drive/unzipped" "$drive/elsewhere"
  unzip -q "$out/$name.zip" -d "$drive/unzipped"
  cp "$windows/bin/RegistrationFree_test.exe" "$drive/unzipped/$name/bin/host.exe"
  sed 's/name="viewer"/name="host"/' "$stage/bin/viewer.exe.manifest" >"$drive/unzipped/$name/bin/host.exe.manifest"
  cp "$windows/bin/RegistrationFree_test.exe" "$drive/elsewhere/plain.exe"
}

test_without_registration() {
  printf '== without registration\n'
  local bin='C:\unzipped\'$name'\bin'
  unpack_with_host
  expect "a host with a manifest" gtest "$bin\\host.exe" '--gtest_filter=ByManifest.*'
  ZYNVUE_MANIFEST=$bin'\ZYNVue.Components.manifest' \
    expect "a host that activates a context" gtest 'C:\elsewhere\plain.exe' '--gtest_filter=ByContext.*'
  expect "zynshot, as unzipped" exits 0 "$bin\\zynshot.exe" \
    "$(windows_path /usr/share/assimp/models/STL/Spider_ascii.stl)" -o 'C:\elsewhere\spider.png'
  expect "its picture" test -s "$drive/elsewhere/spider.png"
  expect "no class is known to other programs" creates_none
  rm -rf "$drive/unzipped" "$drive/elsewhere"
  expect "nothing is left" as_before
}

# Wine registers a type library that it finds by a manifest, as soon as a proxy needs it.
put_registry_back() {
  end_server
  cp "$work"/before/raw/*.reg "$WINEPREFIX"
}

test_types_without_registration() {
  unpack_with_host
  expect "a host with a manifest: type libraries, other apartments" gtest 'C:\unzipped\'"$name"'\bin\host.exe' \
    '--gtest_filter=ByManifestTypes.*'
  rm -rf "$drive/unzipped" "$drive/elsewhere"
  put_registry_back
  expect "nothing is left" as_before
}

# What the tests of the Python package need, got once.
prepare_python() {
  local wanted=$root/tests/package/wheels.txt wheels=$kept/wheels
  "$root/tools/windows_python.sh" "$kept/python" "$root/tests/package/pip.txt"
  cmp -s "$wanted" "$wheels/wheels.txt" && return
  rm -rf "$wheels"
  python3 -m pip --disable-pip-version-check --quiet download --platform win_amd64 --python-version 3.11 --only-binary=:all: \
    --no-deps --require-hashes -r "$wanted" -d "$wheels"
  cp "$wanted" "$wheels"
}

# in_python ARGS...: Python starts with a pipe, or a file that Wine opened, as its output only.
in_python() {
  LC_ALL=C.UTF-8 "$wine" "$windows/bin/launcher.exe" "$python/python.exe" "$@" </dev/null 2>&1 | cat >"$work/output" ||
    { cat "$work/output" >&2; return 1; }
}

pip_installs() { in_python -m pip install --no-index --no-cache-dir --no-warn-script-location --find-links "$kept/wheels" "$@"; }

python_tests() { in_python "$(windows_path "$root/tests/package/zynvue_test.py")" "$(windows_path "$root/python/README.md")"; }

test_python() {
  printf '== Python package\n'
  prepare_python
  local python=$work/python
  cp -r "$kept/python" "$python"
  expect "pip installs it and what it needs" pip_installs "$(windows_path "$out/zynvue-$version-py3-none-win_amd64.whl")"
  expect "its tests pass, without NumPy" python_tests
  expect "pip installs NumPy" pip_installs numpy
  expect "its tests pass, with NumPy" python_tests
  ZYNVUE_APARTMENTS=1 expect "they pass from other apartments as well" python_tests
  put_registry_back
  python=$work/"a folder, 中 ü" # of no code page; comtypes keeps modules with the names of folders in them
  mv "$work/python" "$python"
  rm -rf "$python/Lib/site-packages/comtypes/gen"
  expect "they pass in a folder of any name" python_tests
  expect "nothing is left" as_before
}

# What it does in a program: ./zyn hosts csharp.
nupkg_holds_libraries() {
  local file
  for file in ZYNVue.dll ZYNModeleGeom.dll ZYNVue.Components.manifest; do
    cmp "$stage/bin/$file" "$work/nupkg/win-x64/$file" || return 1
  done
}

nupkg_holds_source() { diff -r <(cat "$root"/dotnet/{generated,source}/*.cs | sort) <(cat "$work"/nupkg/source/*.cs | sort); }

test_nupkg() {
  printf '== NuGet package\n'
  unzip -q "$out/ZYNVue.Interop.$version.nupkg" -d "$work/nupkg"
  expect "version $version: nuspec" grep -q "<version>$version</version>" "$work/nupkg/ZYNVue.Interop.nuspec"
  expect "version $version: read-me" grep -q "Version=\"$version\"" "$work/nupkg/README.md"
  expect "it holds the libraries that were staged" nupkg_holds_libraries
  expect "it holds the C# source" nupkg_holds_source
}

test_zip() {
  printf '== zip, registered by hand\n'
  local bin=$drive/unzipped/$name/bin
  mkdir -p "$drive/unzipped"
  unzip -q "$out/$name.zip" -d "$drive/unzipped"
  local binary
  for binary in "$bin"/*.exe "$bin"/*.dll "$out/$name.exe"; do
    expect "version $version: $(basename "$binary")" version_is_in "$binary"
  done
  expect "it holds what was staged" diff -r "$stage" "$drive/unzipped/$name"
  expect "regsvr32" exits 0 regsvr32 /s "$(windows_path "$bin/ZYNModeleGeom.dll")" "$(windows_path "$bin/ZYNVue.dll")"
  expect "a script creates every class" creates_all
  expect "regsvr32 /u" exits 0 regsvr32 /s /u "$(windows_path "$bin/ZYNModeleGeom.dll")" "$(windows_path "$bin/ZYNVue.dll")"
  rm -rf "$drive/unzipped"
  expect "nothing is left" as_before
}

# An installer of a version that came before and held a file that is no longer there.
make_old_installer() {
  cp -r "$stage" "$work/old"
  echo 'no longer there' >"$work/old/docs/obsolete.txt"
  rm "$work/old/CHANGELOG.md"
  "$root/tools/make_installer.sh" "$work/old" 0.9.0 "$work/old.exe"
}

# While a program uses the library, nothing is changed.
test_in_use() {
  : >"$drive/hold"
  quiet cscript.exe //nologo "$(windows_path "$root/tests/package/hold.vbs")" 'C:\hold' &
  local holder=$!
  expect "a program uses it" soon test -f "$drive/holding"
  expect "refused while a program uses it: installing" exits 2 "$(windows_path "$out/$name.exe")" /S
  expect "refused while a program uses it: removing" exits 2 "$(windows_path "$machine/uninstall.exe")" /S '_?=C:\Program' 'Files\ZYNVue'
  rm "$drive/hold"
  wait "$holder"
  rm "$drive/holding"
}

test_machine() {
  printf '== installer, for all users\n'
  expect "the version before installs" exits 0 "$(windows_path "$work/old.exe")" /S
  expect "with its file" test -f "$machine/docs/obsolete.txt"
  expect "recorded" value_is HKLM DisplayVersion 0.9.0
  touch "$machine/docs/mine.txt"
  expect "the new version replaces it" exits 0 "$(windows_path "$out/$name.exe")" /S
  expect "and keeps a file that it did not install" rm "$machine/docs/mine.txt"
  expect "the files are those of the package" installed_in "$machine"
  expect "recorded" value_is HKLM DisplayVersion "$version"
  expect "a script creates every class" creates_all
  test_in_use
  expect "installed once more" exits 0 "$(windows_path "$out/$name.exe")" /S
  expect "a script creates every class" creates_all
  expect "it uninstalls" uninstalls "$machine"
  expect "nothing is left" as_before
}

registered_for_user() {
  local registry=$work/user/user.reg
  [[ $(grep -c '^\[Software\\\\Classes\\\\CLSID\\\\{[^\\]*}\\\\InprocServer32\]$' "$registry") -eq $classes &&
    $(grep -c '^@=".*\\\\Local\\\\Programs\\\\ZYNVue\\\\bin\\\\ZYN[A-Za-z]*\.dll"$' "$registry") -ge $classes ]] &&
    grep -q '^\[Software\\\\Classes\\\\ZYNVue\.ZYN3dGLBitmapContext\.1\\\\CLSID\]$' "$registry"
}

# Wine writes the 32-bit view of the interfaces for the machine all the same.
same_machine() {
  diff <(native_keys before) <(native_keys user) >&2
}

native_keys() { grep '^\[' "$work/$1/system.reg" | grep -v '^\[Software\\\\Classes\\\\Wow6432Node\\\\Interface'; }

# Wine 8 does not create classes that are registered for the user: what is registered is what counts.
test_user() {
  printf '== installer, for the current user\n'
  expect "it installs" exits 0 "$(windows_path "$out/$name.exe")" /S /CurrentUser
  local folder
  folder=$(echo "$drive"/users/*/AppData/Local/Programs/ZYNVue)
  expect "the files are those of the package" installed_in "$folder"
  expect "recorded for the user" value_is HKCU DisplayName ZYNVue
  snapshot user
  expect "every class is registered for the user" registered_for_user
  expect "nothing is registered for the machine" same_machine
  expect "it uninstalls" uninstalls "$folder"
  rmdir "$(dirname "$folder")"
  expect "nothing is left" as_before
}

trap remove_prefix EXIT
make_prefix
make_old_installer
creates_none # what the first run of a script host leaves is not ours
snapshot before
mkdir "$work/before/raw"
cp "$WINEPREFIX"/*.reg "$work/before/raw"
test_without_registration
test_types_without_registration
test_python
test_nupkg
test_zip
test_machine
test_user
printf 'package test: all is well\n'
