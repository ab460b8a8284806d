#!/bin/sh
# operate.sh BUILD OUT [MINUTES]: an evening at the station (30 minutes) by real keys, in the log, the
# grid, the list, a station's page and the search: contacts are typed, corrected, found again and
# taken back, and each step is looked for in the database. At the end the log must hold what was
# typed, contact by contact. Pictures of every tenth round go to OUT.
set -eu

if [ $# -lt 2 ]; then
  echo "operate.sh BUILD OUT [MINUTES]" >&2
  exit 2
fi
minutes=${3:-30}
. "$(dirname "$0")/operator.sh"

own_station
keys ctrl+l
settle

# What a log on paper would hold: a line a contact.
paper=$work/paper
: > "$paper"
in_log() { rows "SELECT Call,trim(Banda),trim(Modo),Locator,Qra,Qth FROM Log ORDER BY QsoNr"; }
log_is_as_on_paper() { [ "$(in_log)" = "$(cat "$paper")" ]; }
as_on_paper() { waits "log as on paper after: $1" log_is_as_on_paper; }

# The contact of a round: call, band, mode, locator, name and place by its number.
invent() {
  awk -v n="$1" 'BEGIN {
    split("I DL EA F OK S5 HB9 OE PA SP", prefix, " ")
    split("2m 70cm 6m 20m 40m", band, " ")
    split("SSB CW FM", mode, " ")
    split("JN45 JO62 JN11 JN33 JN79 JN76 JN47 JN78 JO22 KO02", square, " ")
    split("Mario Klaus Juan Pierre Jan Janez Urs Franz Piet Adam", name, " ")
    split("Torino Berlin Girona Nice Brno Celje Bern Linz Delft Lodz", place, " ")
    p = n % 10 + 1
    letter = "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    suffix = substr(letter, int(n / 26) % 26 + 1, 1) substr(letter, n % 26 + 1, 1) "X"
    digit = prefix[p] ~ /[0-9]$/ ? "" : int(n / 10) % 9 + 1
    print prefix[p] digit suffix, band[int(n / 3) % 5 + 1], mode[int(n / 7) % 3 + 1], \
          square[p] substr(letter, n % 24 + 1, 1) substr(letter, int(n / 5) % 24 + 1, 1), \
          toupper(name[p]), toupper(place[p])
  }'
}
on_paper() { echo "$1|$2|$3|$4|$5|$6" >> "$paper"; }
# The operator's word for a band is what the log's own list calls it.
spoken() { echo "$1" | tr -d ' '; }

type_contact() {
  contact "$1" "$2" "$3" "$4" "$5" "$6"
  banda=$(rows "SELECT trim(Banda) FROM Log ORDER BY QsoNr DESC LIMIT 1")
  [ "$(spoken "$banda")" = "$2" ] || fail "band $2 became $banda"
  on_paper "$1" "$banda" "$3" "$4" "$5" "$6"
  as_on_paper "contact $1"
}
last_is() { sed -i "\$ s/|[^|]*\$/|$1/" "$paper"; }
drop_last() { sed -i '$ d' "$paper"; }
# The place of the contact on the screen gets one word more.
correct_place() {
  keys ctrl+End
  settle
  keys $(yes Tab | head -8) End
  words " NORD"
  keys F3
  last_is "$1 NORD"
  as_on_paper "correction of $1"
}

round=0
begun=$(date +%s)
while [ $(($(date +%s) - begun)) -lt $((minutes * 60)) ]; do
  round=$((round + 1))
  # shellcheck disable=SC2046
  set -- $(invent $round)
  type_contact "$@"
  if [ $((round % 3)) = 0 ]; then correct_place "$6"; fi
  if [ $((round % 4)) = 0 ]; then
    # Wrong all along: the correction is taken back where there was one, else the contact.
    keys ctrl+z
    if [ $((round % 3)) = 0 ]; then last_is "$6"; else drop_last; count=$((count - 1)); fi
    as_on_paper "taking back in round $round"
  fi
  if [ $((round % 5)) = 0 ]; then
    keys F7
    settle
    keys Home Next End Prior
    settle
    keys F7
    settle
  fi
  if [ $((round % 6)) = 0 ]; then
    keys ctrl+e
    settle
    keys ctrl+f
    words "$(tail -n 1 "$paper" | cut -d '|' -f 1)"
    settle
    [ $((round % 10)) != 0 ] || picture "list-$round"
    keys ctrl+w
    settle
  fi
  if [ $((round % 7)) = 0 ]; then
    keys ctrl+i
    settle
    [ $((round % 10)) != 0 ] || picture "station-$round"
    keys ctrl+w
    settle
  fi
  if [ $((round % 10)) = 0 ]; then picture "log-$round"; fi
done

log_is_as_on_paper || fail "the log is not what was typed"
keys alt+F4
gone() { ! alive; }
waits "end" gone
if grep -qE "runtime error|Sanitizer" "$work/brenvo.log"; then fail "a sanitizer spoke"; fi
echo "$round rounds, $(wc -l < "$paper") contacts in the log, as on paper"
