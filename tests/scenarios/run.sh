#!/bin/sh
# run.sh BUILD NAME: runs a scenario on a freshly delivered directory and compares all that it
# prints with NAME.out, byte for byte. Lines on the standard error and an exit status other than 0
# belong to the output too.
# run.sh --bless BUILD NAME...: writes the outputs instead; read them before you commit them.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
bless=
if [ "$1" = --bless ]; then
  bless=yes
  shift
fi
build=$1
shift

play() {
  rm -rf "$2"
  "$here/../../tools/deliver/deliver.sh" "$build/delivered" "$2"
  status=0
  "$build/tools/drive/drive" "$2" < "$here/$1.drive" 2>&1 || status=$?
  if [ $status -ne 0 ]; then echo "exit status $status"; fi
}

scratch=$(mktemp -d "${TMPDIR:-/tmp}/brenvo-scenario.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

for name in "$@"; do
  play "$name" "$scratch/station" > "$scratch/out"
  if [ -n "$bless" ]; then
    cp "$scratch/out" "$here/$name.out"
    continue
  fi
  diff -u "$here/$name.out" "$scratch/out"
done
