#!/usr/bin/env bash
# Makes the Windows installer of the files below a folder.
# usage: make_installer.sh FOLDER VERSION OUTPUT
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$1
version=$2
output=$3
authors=$(sed -n 's/^set(ZYN_AUTHORS "\(.*\)")$/\1/p' "$root/CMakeLists.txt")
lists=$(mktemp -d)
trap 'rm -rf "$lists"' EXIT
export LC_ALL=C

# The commands that put every file into its folder.
list_files() {
  local path
  while read -r path; do
    printf 'SetOutPath "$INSTDIR%s"\n' "${path:+\\${path//\//\\}}"
    find "$folder/$path" -maxdepth 1 -type f | sort | sed 's/.*/File "&"/'
  done < <(find "$folder" -type d -printf '%P\n' | sort)
}

# The commands that remove them, then the folders, from the innermost outwards.
list_removal() {
  find "$folder" -type f -printf '%P\n' | sort | tr / '\\' | sed 's/.*/Delete "$INSTDIR\\&"/'
  find "$folder" -mindepth 1 -type d -printf '%P\n' | sort -r | tr / '\\' | sed 's/.*/RMDir "$INSTDIR\\&"/'
}

list_files >"$lists/files.nsh"
list_removal >"$lists/removal.nsh"
makensis -V2 -X'Target amd64-unicode' -DVERSION="$version" -DAUTHORS="$authors" -DFILES="$lists/files.nsh" \
  -DREMOVAL="$lists/removal.nsh" -DLICENSE="$folder/LICENSE.txt" -DOUTPUT="$output" "$root/packaging/installer.nsi"
