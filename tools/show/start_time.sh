#!/bin/sh
# start_time.sh PROGRAM STATION [TIMES]: milliseconds from starting the program on an application
# directory until its main frame stands on a virtual screen, for each of some starts (5). What is
# looked at every few milliseconds is the screen's own list of windows.
set -eu

if [ $# -lt 2 ]; then
  echo "start_time.sh PROGRAM STATION [TIMES]" >&2
  exit 2
fi
program_file=$(realpath "$1")
station=$(realpath "$2")
work=$(mktemp -d)
screen=
program=
cleanup() {
  for pid in $program $screen; do kill "$pid" 2> /dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

. "$(dirname "$0")/virtual_screen.sh"
virtual_screen "$work"
cd "$work"
now() { date +%s%3N; }

for _ in $(seq "${3:-5}"); do
  from=$(now)
  "$program_file" "$station" > "$work/program.log" 2>&1 &
  program=$!
  until xwininfo -root -tree | grep -q '"Brenvo": .* [0-9][0-9][0-9][0-9]*x[0-9][0-9][0-9]'; do
    kill -0 $program 2> /dev/null || { cat "$work/program.log" >&2; exit 1; }
  done
  echo "$(($(now) - from)) ms"
  # Through the start to an idle program, then away with it.
  sleep 1
  kill $program
  wait $program 2> /dev/null || true
  program=
done
