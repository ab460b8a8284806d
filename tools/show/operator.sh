# For scripts to read in: the program of the build $1 on a virtual screen and on a scratch directory,
# and what an operator's hands do there. Pictures go to $2. Each step waits for what it needs, up to
# WAIT seconds (90), so that a slow machine is only slow.
build=$(cd "$1" && pwd)
mkdir -p "$2"
out=$(cd "$2" && pwd)
patience=${WAIT:-90}
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
started=
screen=
cleanup() {
  # Last started, first ended.
  for pid in $started $screen; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
  echo "$0: $1" >&2
  [ ! -s "$work/brenvo.log" ] || cat "$work/brenvo.log" >&2
  import -window root "$out/failed.png" 2>/dev/null || true
  exit 1
}
# waits WHAT COMMAND...: until the command succeeds.
waits() {
  what=$1
  shift
  tries=$((patience * 5))
  until "$@" > /dev/null 2>&1; do
    tries=$((tries - 1))
    [ $tries -gt 0 ] || fail "no $what"
    sleep 0.2
  done
}

mkdir -p "$work/station"
rm -f "$out"/*.png
. "$root/tools/show/virtual_screen.sh"
virtual_screen "$work"
if command -v openbox > /dev/null; then
  openbox > "$work/openbox.log" 2>&1 &
  started="$! $started"
fi

cd "$work"
"$root/tools/deliver/deliver.sh" "$build/delivered" "$work/station" > /dev/null
ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=0} "$build/app/brenvo" "$work/station" > "$work/brenvo.log" 2>&1 &
program=$!
started="$program $started"

active() { xdotool getactivewindow getwindowname; }
alive() { kill -0 "$program" 2>/dev/null; }
frame_is_up() { alive || fail "the program has ended"; [ "$(active)" = Brenvo ]; }
# The picture of the screen, as one number.
screen() { import -window root rgb:- | cksum; }
# Until nothing has moved for a moment: the program has done what it was asked.
settled() {
  before=$(screen)
  sleep 0.25
  [ "$(screen)" = "$before" ]
}
# A blinking caret must not keep it waiting for ever.
settle() {
  for _ in 1 2 3 4 5 6; do
    if settled; then return; fi
  done
}
rows() { sqlite3 "file:$work/station/Brenvo.mdb?mode=ro" "$1" 2>/dev/null; }
holds() { [ "$(rows "$1")" = "$2" ]; }

picture() {
  settle
  import -window root "$out/$1.png"
  echo "$out/$1.png"
}
keys() { xdotool key --delay 60 "$@"; }
words() { xdotool type --delay 40 "$1"; }
# A click at a place within the active window.
click() {
  corner=$(xwininfo -id "$(xdotool getactivewindow)" |
    awk '/Absolute upper-left X/ { x = $4 } /Absolute upper-left Y/ { print x, $4 }')
  xdotool mousemove $((${corner% *} + $1)) $((${corner#* } + $2)) click 1
}

# The own station, told once. A picture is taken under the name that is told.
own_station() {
  keys ctrl+u
  settle
  words ik3dem
  keys Tab
  words "Anna Verdi"
  keys Tab
  words Padova
  keys Tab
  words "Via delle Antenne 73"
  keys Tab
  words pd
  keys Tab
  words jn55wj
  [ -z "${1:-}" ] || picture "$1"
  keys F3
  waits "own locator" holds 'SELECT Locator FROM "User"' JN55WJ
  keys ctrl+w
  settle
}

# One contact, from the call to the note, as the keyboard goes through the fields; then the call
# again.
count=0
contact() {
  # The log takes none of that minute.
  while [ "$(date -u +%H%M)" = 0000 ] || [ "$(date +%H%M)" = 0000 ]; do sleep 5; done
  keys F5
  settle
  words "$1"
  keys Tab
  settle
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
  count=$((count + 1))
  waits "contact $count" holds 'SELECT count(*) FROM Log' $count
  keys $(yes shift+Tab | head -8)
}

waits "main frame" frame_is_up
