#!/bin/sh
# Proves that tests write nothing into the checkout.
# checkout.sh note SOURCE_DIR LIST: writes down in LIST the names of all files there.
# checkout.sh compare SOURCE_DIR LIST: says which have come or gone since, and fails then. What
# somebody edits meanwhile keeps its name; git's own files, the build folder and what editors leave
# do not count.
set -eu

names() {
  (cd "$1" && find . \( -path ./.git -o -path ./build -o -path ./.cache \) -prune -o \
    ! -type d ! -name '*.sw?' ! -name '*~' -print) | LC_ALL=C sort
}

case $1 in
  note) names "$2" > "$3" ;;
  compare)
    [ -f "$3" ] || exit 0
    names "$2" > "$3.after"
    if ! cmp -s "$3" "$3.after"; then
      echo "While the tests ran, these files came into the checkout or went from it:"
      LC_ALL=C comm -3 "$3" "$3.after"
      exit 1
    fi ;;
  *)
    echo "checkout.sh note|compare SOURCE_DIR LIST" >&2
    exit 2 ;;
esac
