#!/bin/sh
# run.sh BUILD NAME: runs a scenario on a freshly delivered directory, with what the folder
# NAME.files adds as an operator's own, and compares all that it
# prints with NAME.out, byte for byte. Lines on the standard error, an exit status other than 0 and
# the files that the station has written belong to the output too.
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

# A line a file: its checksum, its length and its name.
contents() {
  (cd "$1" && find . -type f ! -name 'Brenvo*' ! -name .delivered -exec cksum {} +) | sed 's| \./| |'
}

play() {
  rm -rf "$2"
  "$here/../../tools/deliver/deliver.sh" "$build/delivered" "$2"
  files=$here/$1.files
  if [ -d "$files" ]; then cp -R "$files/." "$2"; fi
  status=0
  "$build/tools/drive/drive" "$2" < "$here/$1.drive" 2>&1 || status=$?
  if [ $status -ne 0 ]; then echo "exit status $status"; fi
  # What the station wrote: exports and pages, without the carriage returns; some are UTF-8.
  { contents "$build/delivered"; if [ -d "$files" ]; then contents "$files"; fi; } |
    LC_ALL=C sort > "$scratch/given"
  contents "$2" | LC_ALL=C sort | LC_ALL=C comm -13 "$scratch/given" - | cut -d ' ' -f 3- |
    LC_ALL=C sort | while IFS= read -r file; do
    echo "file $file"
    letters=UTF-8
    iconv -f UTF-8 -t UTF-8 "$2/$file" > /dev/null 2>&1 || letters=WINDOWS-1252
    iconv -f "$letters" -t UTF-8 "$2/$file" | tr -d '\r'
  done
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
