#!/bin/sh
# show.sh BUILD OUT: starts the program on a virtual screen and on a scratch directory, logs
# contacts with real keys, and writes pictures to OUT. The exit status is 0 when the contacts are
# in the database.
set -eu

if [ $# -ne 2 ]; then
  echo "show.sh BUILD OUT" >&2
  exit 2
fi
build=$1
out=$2
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
started=
cleanup() {
  # Last started, first ended.
  for pid in $started; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

mkdir -p "$out" "$work/runtime" "$work/station"
rm -f "$out"/*.png
chmod 700 "$work/runtime"
export XDG_RUNTIME_DIR="$work/runtime" QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY || true

Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3> "$work/display" 2> "$work/xvfb.log" &
started="$! $started"
for _ in $(seq 100); do
  [ -s "$work/display" ] && break
  sleep 0.1
done
[ -s "$work/display" ] || { cat "$work/xvfb.log" >&2; echo "show.sh: no virtual screen" >&2; exit 1; }
DISPLAY=:$(cat "$work/display")
export DISPLAY
if command -v openbox > /dev/null; then
  openbox > "$work/openbox.log" 2>&1 &
  started="$! $started"
fi

"$root/tools/deliver/deliver.sh" "$build/delivered" "$work/station" > /dev/null
"$build/app/brenvo" "$work/station" > "$work/brenvo.log" 2>&1 &
program=$!
started="$program $started"
# A frame of its own size comes up; until then keys would go nowhere.
window=
for _ in $(seq 150); do
  window=$(xdotool search --onlyvisible --name '^Brenvo$' 2>/dev/null | head -1 || true)
  [ -n "$window" ] && break
  kill -0 "$program" 2>/dev/null || { cat "$work/brenvo.log" >&2; exit 1; }
  sleep 0.2
done
[ -n "$window" ] || { echo "show.sh: the program does not come up" >&2; exit 1; }
sleep 1

picture() {
  sleep 1.2
  import -window root "$out/$1.png"
  echo "$out/$1.png"
}
keys() { xdotool key --delay 60 "$@"; }
words() { xdotool type --delay 40 "$1"; }

# One contact, from the call to the note, as the keyboard goes through the fields.
contact() {
  keys F5
  sleep 0.4
  words "$1"
  keys Tab
  sleep 0.6
  words "$2"  # the band: the list follows what is typed
  keys Tab Tab
  words "$3"
  keys Tab
  words 59
  keys Tab
  words 59
  keys Tab
  words "$4"
  keys Tab
  words "$5"
  keys Tab
  words "$6"
  [ -z "${7:-}" ] || picture "$7"
  keys F2
  sleep 0.5
  # Back to the call.
  keys $(yes shift+Tab | head -8)
}

picture 1-mainframe
keys ctrl+l
sleep 1.5
contact ik1abc 2m SSB JN45AA Mario Torino
contact dl1xyz 2m CW JO62QM Klaus Berlin
contact ea3zz 2m SSB JN11BK Juan Barcellona 2-log
keys F7
picture 3-grid
keys F7
sleep 0.5
keys ctrl+b
sleep 1
words i5xyz
keys Return
picture 4-worked
keys ctrl+u
picture 5-station

rows=$(sqlite3 "$work/station/Brenvo.mdb" 'SELECT count(*) FROM Log' 2>/dev/null || echo unknown)
echo "Contacts in the log: $rows"
[ "$rows" = 3 ] || [ "$rows" = unknown ]
