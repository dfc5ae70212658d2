#!/usr/bin/env bash
# Makes the NuGet package ZYNVue.Interop: the declarations for C# as source, both DLLs and their manifest.
# usage: make_nupkg.sh LIBRARIES VERSION OUTPUT   (LIBRARIES: the folder of the DLLs and of ZYNVue.Components.manifest)
# The same input gives the same bytes: times are SOURCE_DATE_EPOCH, orders are sorted, modes are fixed.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
libraries=$1 version=$2 output=$(realpath "$3")
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
export TZ=UTC LC_ALL=C

cp -r "$root/dotnet/package/." "$stage"
sed -i "s/@PROJECT_VERSION@/$version/" "$stage"/{ZYNVue.Interop.nuspec,README.md}
mkdir "$stage"/{source,win-x64}
cp "$root"/dotnet/{source,generated}/*.cs "$stage/source"
cp "$libraries"/{ZYNVue.dll,ZYNModeleGeom.dll,ZYNVue.Components.manifest} "$stage/win-x64"
cp "$root/LICENSE" "$stage/LICENSE.txt"
cp "$root/NOTICE" "$stage/NOTICE.txt"

find "$stage" -type f -exec chmod 644 {} + -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
rm -f "$output"
(cd "$stage" && find . -type f -printf '%P\n' | sort | zip -q -X -9 -D "$output" -@)
