#!/bin/sh
# any_keys.sh BUILD SEED [SECONDS]: somebody who presses anything anywhere, for some seconds (300),
# in the program of a build with sanitizers, on a virtual screen and a scratch directory of made-up
# contacts. The same seed presses the same keys. A program that was closed is started again. The
# exit status is 0 when none crashed and each ended when it was told to; where one did not, what it
# said is printed.
set -eu

if [ $# -lt 2 ]; then
  echo "any_keys.sh BUILD SEED [SECONDS]" >&2
  exit 2
fi
build=$(cd "$1" && pwd)
seed=$2
seconds=${3:-300}
root=$(cd "$(dirname "$0")/../.." && pwd)
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
virtual_screen "$work"
# A window manager without keys and menus of its own: all of them are the program's.
cat > "$work/rc.xml" << 'XML'
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <desktops><number>1</number></desktops>
  <keyboard></keyboard>
  <mouse><dragThreshold>8</dragThreshold></mouse>
  <applications>
    <application name="*" type="normal">
      <decor>no</decor><position force="yes"><x>0</x><y>0</y></position>
    </application>
  </applications>
</openbox_config>
XML
openbox --config-file "$work/rc.xml" > "$work/openbox.log" 2>&1 &
started="$! $started"

# A page that is made is not to be seen in a browser.
mkdir "$work/bin"
printf '#!/bin/sh\n' > "$work/bin/xdg-open"
chmod +x "$work/bin/xdg-open"
PATH=$work/bin:$PATH

# A print that goes to a file, a page that is saved: what keys without sense write lies here.
mkdir "$work/home"
HOME=$work/home
export HOME
cd "$work"

"$root/tools/deliver/deliver.sh" "$build/delivered" "$work/station" > /dev/null
"$build/tools/demonstration/demonstrate" "$work/station" 1500 > /dev/null

# Keys, words and clicks without end, the menu bar more often than its place on the screen earns.
anything() {
  awk -v seed="$seed" '
    function below(n) { return int(rand() * n) }
    function one_of(list, n) { return list[1 + below(n)] }
    BEGIN {
      srand(seed)
      keys = split("Tab Tab Tab Tab Tab shift+Tab Return Return Return Escape Up Down Left Right " \
                   "Prior Next Home End space space BackSpace Delete ctrl+Tab ctrl+F4 alt+Down " \
                   "ctrl+a ctrl+c ctrl+v ctrl+x ctrl+z F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12 " \
                   "alt+a alt+b alt+c alt+d alt+e alt+g alt+i alt+l alt+m alt+n alt+p alt+q " \
                   "alt+r alt+s alt+t alt+u alt+v alt+z", key, " ")
      words = split("IK3ABC JN55WJ 144.300 dl1xyz è*[#? 0512 2359 73 %n GM4 JN65 59001 -12,5 " \
                    "99999999 31021998", word, " ")
      menus = split("20 70 138 197 242 320 394 447", menu, " ")
      for (;;) {
        kind = rand()
        if (kind < 0.1) {
          at = one_of(menu, menus)
          print "mousemove", at, 8, "click 1"
          print "mousemove", at + 20, 15 + below(320), "click 1"
        } else if (kind < 0.45) {
          line = "key --delay 15"
          for (left = 1 + below(5); left > 0; --left) line = line " " one_of(key, keys)
          print line
        } else if (kind < 0.6) {
          print "type --delay 8", one_of(word, words)
        } else if (kind < 0.97) {
          button = rand() < 0.7 ? 1 : 2 + below(4)
          print "mousemove", below(1280), below(800), \
                "click --repeat", 1 + below(2), "--delay 40", button
        } else {
          print "mousemove", below(1280), below(800), "mousedown 1"
          print "mousemove", below(1280), below(800), "mouseup 1"
        }
        print "sleep 0.05"
      }
    }'
}

anything | timeout "$seconds" xdotool - > "$work/xdotool.log" 2>&1 &
fingers=$!
started="$fingers $started"
failed=
runs=0
while kill -0 "$fingers" 2> /dev/null; do
  runs=$((runs + 1))
  ASAN_OPTIONS=detect_leaks=0:exitcode=99 UBSAN_OPTIONS=print_stacktrace=1 \
    "$build/app/brenvo" "$work/station" > "$work/brenvo.log" 2>&1 &
  program=$!
  started="$program $started"
  while kill -0 "$fingers" 2> /dev/null && kill -0 "$program" 2> /dev/null; do sleep 0.5; done
  for _ in $(seq 60); do
    kill "$program" 2> /dev/null || break
    sleep 0.5
  done
  if kill -KILL "$program" 2> /dev/null; then failed="it did not end when told to"; fi
  wait "$program" || true
  if grep -qE "runtime error|Sanitizer" "$work/brenvo.log"; then failed="a sanitizer spoke"; fi
  [ -z "$failed" ] || break
done
if [ -n "$failed" ]; then
  cat "$work/brenvo.log" >&2
  echo "any_keys.sh: seed $seed, run $runs: $failed" >&2
  exit 1
fi
echo "seed $seed: $seconds s, $runs runs"
