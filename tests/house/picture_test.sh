#!/bin/sh
# Compares the picture of the rooms in the README with what the build knows.
# Usage: picture_test.sh README ROOMS [--write]
set -eu
readme=$1
rooms=$2
if [ "${3-}" = --write ]; then
  awk -v rooms="$rooms" '
    / ──► / { if (!done) while ((getline line < rooms) > 0) print line; done = 1; inside = 1; next }
    inside && /^    [a-z]/ { next }
    { inside = 0; print }' "$readme" > "$readme.new"
  mv "$readme.new" "$readme"
  exit
fi
shown=$(awk '/ ──► / { inside = 1 } inside && !/^    [a-z]/ { exit } inside' "$readme")
if [ "$shown" != "$(cat "$rooms")" ]; then
  echo "The README's picture of the rooms is not the build's (picture_test.sh README ROOMS --write):"
  cat "$rooms"
  exit 1
fi
