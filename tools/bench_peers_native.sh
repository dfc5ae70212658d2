#!/usr/bin/env bash
# Measures libraries of Debian with the scenes of bench/peers, natively, beside OpenGL alone (bench/peers/native).
# usage: bench_peers_native.sh   (run by "zyn bench peers --native"); pictures go into build/peers-native
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=$root/build/peers-native
products=(raw osg coin qcustomplot qwt)

cmake -S "$root/bench/peers/native" -B "$out" -G Ninja >"$out.log"
cmake --build "$out" >>"$out.log"
chmod 700 "$out"
export LIBGL_ALWAYS_SOFTWARE=1 XDG_RUNTIME_DIR=$out # Qt wants one, of its own

# A row with the ratio of its frame to that of OpenGL alone, where there is one.
with_ratio() {
  awk -F '|' -v OFS='|' '$2 == " raw " { alone = $5 }
    { $5 = $5 "|" (alone && $5 != alone ? sprintf(" %.2g ", $5 / alone) : " - "); print; fflush() }'
}

for scene in objects few mesh path trace labels; do
  printf '\n%s, milliseconds\n\n' "$scene"
  echo "| | build | first frame | frame | to OpenGL alone | first pick | pick | change, frame | PNG | MB |"
  echo "|---|---|---|---|---|---|---|---|---|---|"
  for product in "${products[@]}"; do
    if "$out/$product" scenes | grep -qw "$scene"; then
      "$out/$product" "$scene" "$out"
    fi
  done | with_ratio
done
