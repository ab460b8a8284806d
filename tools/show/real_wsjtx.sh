#!/bin/sh
# real_wsjtx.sh BUILD PICTURES: the program of a build beside the real WSJT-X (Debian: wsjtx,
# xdotool, openbox, imagemagick) on a virtual screen. WSJT-X opens, by its menu's key, a recording
# that ft8sim has made; its decode comes to the window Digitale, which colours it there; a contact
# that is logged there with its own keys stands in the log once. Leaves a picture of each step in
# the folder PICTURES; the exit status is 0 when the contact is in the log, once, and WSJT-X has
# painted the line of the needed station in the colour of its need.
set -eu

if [ $# -ne 2 ]; then
  echo "real_wsjtx.sh BUILD PICTURES" >&2
  exit 2
fi
build=$(cd "$1" && pwd)
mkdir -p "$2"
pictures=$(cd "$2" && pwd)
root=$(cd "$(dirname "$0")/../.." && pwd)
for program in wsjtx ft8sim xdotool openbox import sqlite3; do
  command -v "$program" > /dev/null || { echo "$program is missing" >&2; exit 2; }
done
work=$(mktemp -d)
screen=
started=
cleanup() {
  for pid in $started $screen; do kill "$pid" 2> /dev/null || true; done
  wait 2> /dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

. "$root/tools/show/virtual_screen.sh"
virtual_screen "$work" 1900x1000
openbox > "$work/openbox.log" 2>&1 &
started="$! $started"

cd "$work"
port=$((20000 + $$ % 20000))
"$root/tools/deliver/deliver.sh" "$build/delivered" "$work/station" > /dev/null
sqlite3 "$work/station/Brenvo.mdb" "update User set Call='IK3ABC', Locator='JN65AA'"
printf '[Digitale]\nAscolta=Y\nPorta=%s\nPortaADIF=0\n[Desktop]\nFinestre=Digitale\n' "$port" \
  > "$work/station/Brenvo.ini"
mkdir -p "$work/home/.config"
HOME=$work/home
export HOME
"$build/app/brenvo" "$work/station" > "$work/brenvo.log" 2>&1 &
ours=$!
started="$ours $started"

cat > "$HOME/.config/WSJT-X.ini" << INI
[Configuration]
MyCall=IK3ABC
MyGrid=JN65AA
UDPServer=127.0.0.1
UDPServerPort=$port
AcceptUDPRequests=true
Rig=None

[Common]
Mode=FT8
INI
ft8sim "CQ DL1ABC JO31" 1500.0 0.0 0.1 1.0 1 -5 > "$work/ft8sim.log" 2>&1
mv "$work/000000_000001.wav" "$work/260704_140300.wav"

window_of() {
  for _ in $(seq 60); do
    found=$(xdotool search --onlyvisible --name "$1" 2> /dev/null | head -1)
    [ -n "$found" ] && break
    sleep 0.5
  done
  [ -n "$found" ] || { echo "no window $1" >&2; exit 1; }
}
picture() { import -window root "$pictures/$1.png"; }

window_of '^Brenvo'
brenvo=$found
xdotool windowsize "$brenvo" 1000 600 windowmove "$brenvo" 890 380 windowactivate "$brenvo"
sleep 1
xdotool key ctrl+d  # the saved desktop: the window Digitale
sleep 2

wsjtx > "$work/wsjtx.log" 2>&1 &
started="$! $started"
window_of 'WSJT-X   v'
wsjtx=$found
sleep 6
# Its splash goes at a click.
for splash in $(xdotool search --onlyvisible --class wsjtx); do
  name=$(xdotool getwindowname "$splash")
  case $name in *Wide*) xdotool windowminimize "$splash" ;; esac
done
xdotool mousemove 950 440 click 1
sleep 1
xdotool windowactivate --sync "$wsjtx" windowmove "$wsjtx" 0 20
sleep 1
xdotool mousemove --window "$wsjtx" 220 42 click 1
xdotool key ctrl+o
sleep 2
xdotool type --delay 20 "$work/260704_140300.wav"
xdotool key Return
sleep 5
xdotool windowactivate --sync "$wsjtx" key alt+d  # Decode
sleep 6
picture 1-decoded
xdotool mousemove --window "$wsjtx" 330 92 click --repeat 2 --delay 60 1
sleep 2
xdotool windowactivate --sync "$wsjtx" key alt+q  # Log QSO
window_of 'Log QSO'
picture 2-logging
xdotool windowactivate --sync "$found" key Return
sleep 4
picture 3-logged

failed=0
rows=$(sqlite3 "$work/station/Brenvo.mdb" \
  "select Call,Banda,Modo,Locator,Country from Log" | tr '\n' ';')
echo "log: $rows"
[ "$(sqlite3 "$work/station/Brenvo.mdb" 'select count(*) from Log')" = 1 ] || failed=1
# The colour of the first need, anywhere in the pane of WSJT-X.
painted=$(convert "$pictures/1-decoded.png" -crop 870x400+0+0 -fill black +opaque '#FF7878' \
  -fill white -opaque '#FF7878' -format '%[fx:int(mean*w*h+0.5)]' info:)
echo "painted: $painted pixels"
[ "$painted" -gt 200 ] || failed=1
[ "$failed" = 0 ] && echo "once in the log, and coloured"
exit $failed
