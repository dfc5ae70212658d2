#!/usr/bin/env bash
# fuzz.sh DIRECTORY COUNT SEED: runs each fuzz target of a native build with COUNT inputs on top of its
# corpus, and keeps in tests/fuzz/corpus few small inputs that reach all branches that were reached.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
native=$(realpath "$1") count=$2 seed=$3

for source in "$root"/tests/fuzz/*_fuzz.cpp; do
  target=$(basename "$source" .cpp)
  corpus=$root/tests/fuzz/corpus/$target
  work=$native/corpus/$target
  rm -rf "$work"
  mkdir -p "$corpus" "$work/found" "$work/kept"
  printf '== fuzzing: %s\n' "$target" >&2
  (cd "$work" && "$native/bin/$target" -runs="$count" -seed="$seed" -max_len=512 -timeout=20 -rss_limit_mb=1024 \
    -reduce_inputs=1 -print_final_stats=1 found "$corpus" 2>run.log) || { tail -n 40 "$work/run.log" >&2; exit 1; }
  grep -E '^stat::(number_of_executed_units|new_units_added)' "$work/run.log"
  (cd "$work" && "$native/bin/$target" -merge=1 -use_counters=0 kept "$corpus" found 2>merge.log)
  rm -rf "$corpus"
  mv "$work/kept" "$corpus"
done
