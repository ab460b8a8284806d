#!/bin/sh
# Builds the tests without sanitizers and without the screens (preset memcheck), runs each program
# and each scenario under valgrind, and prints a line for each: tests, errors, bytes lost, seconds.
# What valgrind says is left in build/memcheck/valgrind. The exit status is 1 when anything was
# found, or a test failed.
# Usage: tools/memcheck/memcheck.sh
set -eu
cd "$(dirname "$0")/../.."
house=$PWD
build=$house/build/memcheck
said=$build/valgrind
cmake --preset memcheck >/dev/null
cmake --build --preset memcheck
rm -rf "$said"
mkdir -p "$said"
failed=0

# check NAME COMMAND...: runs it under valgrind; processes that it starts by fork count with it.
check() {
  name=$1
  shift
  begun=$(date +%s)
  valgrind --leak-check=full --show-leak-kinds=definite,indirect --errors-for-leak-kinds=definite \
    --num-callers=25 --error-exitcode=99 --log-file="$said/$name.%p" "$@" \
    >"$said/$name.out" 2>&1 </dev/stdin || {
    failed=1
    echo "exit status $?" >>"$said/$name.out"
  }
  cat "$said/$name".[0-9]* >"$said/$name.log"
  rm "$said/$name".[0-9]*
  tests=$(sed -n 's/^\[=*\] \([0-9]*\) tests\{0,1\} from .* ran.*/\1/p' "$said/$name.out")
  errors=$(sed -n 's/.*ERROR SUMMARY: \([0-9,]*\) errors.*/\1/p' "$said/$name.log" | tr -d , |
    awk '{ sum += $1 } END { print sum + 0 }')
  lost=$(sed -n 's/.*\(definitely\|indirectly\) lost: \([0-9,]*\) bytes.*/\2/p' "$said/$name.log" |
    tr -d , | awk '{ sum += $1 } END { print sum + 0 }')
  [ "$errors" = 0 ] && [ "$lost" = 0 ] || failed=1
  printf '%-28s %5s tests %3s errors %5s bytes lost %6s s%s\n' "$name" "${tests:-1}" "$errors" \
    "$lost" $(($(date +%s) - begun)) "$(grep -o 'exit status.*' "$said/$name.out" | sed 's/^/  /')"
}

cd "$build"
for program in tests/*_test tests/*/*_test; do
  [ -f "$program" ] && check "$(basename "$program")" "./$program" </dev/null
done
for script in "$house"/tests/scenarios/*.drive; do
  name=$(basename "$script" .drive)
  station=$said/station
  rm -rf "$station"
  "$house/tools/deliver/deliver.sh" "$build/delivered" "$station" >/dev/null
  [ -d "${script%.drive}.files" ] && cp -R "${script%.drive}.files/." "$station"
  check "scenario.$name" tools/drive/drive "$station" <"$script"
done
rm -rf "$said/station"
exit $failed
