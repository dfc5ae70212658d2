#!/usr/bin/env bash
# on.sh SUITE COMMAND [ARGS...]: runs ./zyn COMMAND in a Debian of another suite (trixie, ...), which debootstrap makes
# below build/on/SUITE: tree is that Debian, build what our builds make there. Mounts and processes are in namespaces of
# their own and end with the command, also where it is killed. Needs root, or sudo.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
suite=$1
place=$root/build/on/$suite
tree=$place/tree

as_root=()
[[ $EUID -eq 0 ]] || as_root=(sudo)

# A tree that was made to its end only: debootstrap leaves a part of one where it fails.
make_tree() {
  printf '== making a Debian %s in build/on/%s (once)\n' "$suite" "$suite" >&2
  "${as_root[@]}" rm -rf "$tree.part"
  if ! "${as_root[@]}" debootstrap --variant=minbase "$suite" "$tree.part" >"$place/debootstrap.log" 2>&1; then
    tail -n 5 "$place/debootstrap.log" >&2
    exit 1
  fi
  "${as_root[@]}" mv "$tree.part" "$tree"
}

mkdir -p "$place/build"
lock=$place/lock
(
  flock 9
  [[ -d $tree ]] || make_tree
) 9>"$place/making"
"${as_root[@]}" mkdir -p "$tree$root"
"${as_root[@]}" cp /etc/resolv.conf "$tree/etc/"
folder=$root
[[ $PWD/ != "$root"/* ]] || folder=$PWD # arguments may name files from here
flock -n "$lock" true || printf '== waiting for another command in build/on/%s\n' "$suite" >&2

# One command at a time: what a session leaves in the build folder about its display and processes is of no use to another
# one's namespaces.
# shellcheck disable=SC2016 # expanded by the shell in the namespaces
exec "${as_root[@]}" flock --no-fork "$lock" unshare --mount --pid --fork --kill-child -- bash -euc '
  place=$1 root=$2 folder=$3
  shift 3
  mount --rbind /dev "$place/tree/dev"
  mount --bind /tmp "$place/tree/tmp"
  mount --bind "$root" "$place/tree$root"
  mount --bind "$place/build" "$place/tree$root/build"
  mount -t proc proc "$place/tree/proc"
  rm -f "$place"/build/state/{xvfb.pid,display} # of a command that was killed
  exec chroot "$place/tree" env -C "$folder" HOME=/root "$root/zyn" "$@"
' on "$place" "$root" "$folder" "${@:2}"
