#!/bin/sh
# contest.sh BUILD OUT [CONTACTS]: a contest by rules (500 contacts) by real keys, in the rhythm of a
# good hour: three bands, a duplicate every twentieth, a correction every twenty-fifth, and half way
# the program is killed in the middle of a contact and started again. Each contact is looked for in
# the database; at the end nothing may be missing, the serials of each band are whole, and the points
# are those that a recount from paper gives. Pictures of every hundredth contact go to OUT.
set -eu

if [ $# -lt 2 ]; then
  echo "contest.sh BUILD OUT [CONTACTS]" >&2
  exit 2
fi
contacts=${3:-500}
. "$(dirname "$0")/operator.sh"

own_station
today=$(date -u +%d/%m/%Y)

# The window's name is its caption.
contest_is_up() { [ "$(active)" = "Contest con le regole" ] || [ "$(active)" = Brenvo ]; }
open_contest() {
  keys ctrl+p
  settle
  words "contest con le regole"
  settle
  keys Return
  settle
  waits "the contest's window" contest_is_up
}

open_contest
# From the call back to the rules.
keys $(yes shift+Tab | head -10)
words "IARU Region 1 UHF"  # the blank opens the list
settle
keys Return
settle
keys Tab ctrl+a
words "$today"
keys Insert
waits "a contest" holds 'SELECT count(*) FROM Gare' 1
settle
picture begun

# A contact by its number: call, serial, locator.
invent() { awk -v n="$1" -f "$root/tools/show/invent.awk"; }

# What a log on paper would hold: a line a contact, band, serial, call, locator.
paper=$work/paper
: > "$paper"
band=1
stored() { rows 'SELECT count(*) FROM "Contest Qso"'; }
all_stored() { [ "$(stored)" = "$(wc -l < "$paper")" ]; }
last_call_is() {
  [ "$(rows 'SELECT q.Call FROM "Contest Qso" q JOIN GareQso g ON g.DataContest=q.DataContest AND
       g.Banda=q.Banda AND g.ProgrDato=q.ProgrDato ORDER BY g.Quando DESC, g.rowid DESC LIMIT 1')" = "$1" ]
}
type_contact() {
  words "$1"
  keys Return
  words "$2"
  keys Return
  words "$3"
  keys Return
}
contact() {
  serial=$(($(grep -c "^$band " "$paper" || true) + 1))
  type_contact "$1" "$2" "$3"
  echo "$band $serial $1 $3" >> "$paper"
  waits "contact $(wc -l < "$paper"), $1" all_stored
}

n=0
while [ "$n" -lt "$contacts" ]; do
  n=$((n + 1))
  # shellcheck disable=SC2046
  set -- $(invent $n)
  if [ $((n % 20)) = 0 ]; then
    # One that was worked before on this band.
    # shellcheck disable=SC2046
    set -- $(grep "^$band " "$paper" | tail -n 7 | head -n 1 | cut -d ' ' -f 3) "$2" \
      $(grep "^$band " "$paper" | tail -n 7 | head -n 1 | cut -d ' ' -f 4)
  fi
  contact "$1" "$2" "$3"
  if [ $((n % 25)) = 0 ]; then
    right=$(echo "$1" | sed 's/.$/Z/')
    keys F3
    settle
    keys ctrl+a
    words "$right"
    keys F2
    sed -i "\$ s/ $1 / $right /" "$paper"
    waits "correction of $1" last_call_is "$right"
  fi
  if [ "$n" = $((contacts / 3)) ] || [ "$n" = $((2 * contacts / 3)) ]; then
    keys F7
    band=$((band + 1))
  fi
  if [ "$n" = $((contacts / 2)) ]; then
    words "DL0HALF"
    kill -9 "$program"
    wait "$program" 2> /dev/null || true
    ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=0} "$build/app/brenvo" "$work/station" > "$work/brenvo.log" 2>&1 &
    program=$!
    started="$program $started"
    waits "main frame again" frame_is_up
    settle
    all_stored || fail "the kill has lost contacts"
    open_contest
    [ "$band" = 1 ] || keys $(yes F7 | head -$((band - 1)))
    settle
    picture again
  fi
  [ $((n % 100)) != 0 ] || picture "contact-$n"
done
keys F4
settle
picture checked

# Bands by the order in which the rules name them.
in_base() {
  rows 'SELECT CASE trim(Banda) WHEN "70cm" THEN 1 WHEN "23cm" THEN 2 ELSE 3 END, ProgrDato, Call,
        Locator FROM "Contest Qso" ORDER BY 1, 2' | tr '|' ' '
}
in_base > "$work/base"
sort -k 1,1n -k 2,2n "$paper" > "$work/wanted"
diff -u "$work/wanted" "$work/base" || fail "the contest is not what was typed"
recount=$(awk -v own=JN55WJ -f "$root/tools/show/recount.awk" "$paper")
points=$(rows 'SELECT sum(Punti) FROM GareQso')
[ "$points" = "$recount" ] || fail "points $points, from paper $recount"
keys alt+F4
gone() { ! alive; }
waits "end" gone
if grep -qE "runtime error|Sanitizer" "$work/brenvo.log"; then fail "a sanitizer spoke"; fi
echo "$(wc -l < "$paper") contacts, $points points, as on paper"
