#!/usr/bin/env bash
# Has the SVG and PDF files that a test program writes drawn by other programs, and the program compare what they show with
# its own pictures.
# usage: check_vectors.sh PROGRAM   (run by the test host.VectorFiles_shown)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export ZYN_VECTOR_FOLDER="Z:${folder//\//\\}"

"$root/zyn" run "$1" --gtest_filter='*VectorFiles.SvgHolds*:*VectorFiles.PdfHas*:*VectorFiles.EmfShows*'
cd "$folder"
for scene in graph objects frame; do
  rsvg-convert "$scene.svg" -o "$scene.svg.png"
  pdftoppm -r 72 -png -singlefile "$scene.pdf" "$scene.pdf"
  pdftotext "$scene.pdf" "$scene.pdf.txt"
  if pdffonts "$scene.pdf" | tail -n +3 | grep -v 'yes yes yes'; then
    echo "$scene.pdf: fonts above are not embedded as parts with their Unicode"
    exit 1
  fi
done
output=$("$root/zyn" run "$1" --gtest_filter='*VectorFiles.OthersShow*') || { printf '%s\n' "$output"; exit 1; }
printf '%s\n' "$output"
[[ $output != *SKIPPED* ]]
