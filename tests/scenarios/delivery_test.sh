#!/bin/sh
# What a second delivery replaces, and what it leaves to the operator.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
deliver=$here/../../tools/deliver/deliver.sh
work=$(mktemp -d "${TMPDIR:-/tmp}/brenvo-delivery.XXXXXX")
trap 'rm -rf "$work"' EXIT
from=$work/from
to=$work/to

fail() {
  echo "delivery_test.sh: $1" >&2
  exit 1
}
holds() {
  [ "$(cat "$to/$1")" = "$2" ] || fail "$1 holds '$(cat "$to/$1")' and not '$2'"
}
write() {
  mkdir -p "$(dirname "$1")"
  printf '%s\n' "$2" > "$1"
}

for name in Brenvo.mdb tnc.mnu wwconv.mnu Zone.html 'Mappa del mondo.jpg' waves/A.wav; do
  write "$from/$name" "one"
done
"$deliver" "$from" "$to" > "$work/out"
for name in Brenvo.mdb tnc.mnu wwconv.mnu Zone.html 'Mappa del mondo.jpg' waves/A.wav; do
  holds "$name" "one"
done
[ ! -s "$work/out" ] || fail "a first delivery keeps nothing"

# A compaction that was cut short has left no database, but its data: no empty one takes its place.
for left in BrenvoNEW.MDB Brenvo.BAK; do
  mv "$to/Brenvo.mdb" "$to/$left"
  "$deliver" "$from" "$to" > "$work/out"
  [ ! -e "$to/Brenvo.mdb" ] || fail "an empty database stands beside $left"
  grep -q 'Brenvo.mdb' "$work/out" || fail "nothing is said of the missing database"
  mv "$to/$left" "$to/Brenvo.mdb"
done

# The operator works, and the next version comes.
write "$to/Brenvo.mdb" "contacts"
write "$to/tnc.mnu" "my own menu"
write "$to/Log.ADI" "export"
for name in Brenvo.mdb Brenvo.ini tnc.mnu wwconv.mnu Zone.html 'Mappa del mondo.jpg' waves/A.wav; do
  write "$from/$name" "two"
done
"$deliver" "$from" "$to" > "$work/out"
holds Brenvo.mdb "contacts"
holds Brenvo.ini "two"
holds tnc.mnu "my own menu"
holds wwconv.mnu "two"
holds Zone.html "two"
holds "Mappa del mondo.jpg" "two"
holds waves/A.wav "two"
holds Log.ADI "export"
[ "$(cat "$work/out")" = "kept as changed: tnc.mnu" ] || fail "the kept menu is named"

# What was kept once is still the operator's, and what he puts back is the delivery's again.
write "$to/Brenvo.ini" "settings"
write "$from/tnc.mnu" "three"
write "$from/wwconv.mnu" "three"
"$deliver" "$from" "$to" > "$work/out"
holds tnc.mnu "my own menu"
holds wwconv.mnu "three"
holds Brenvo.ini "settings"
write "$to/tnc.mnu" "one"
"$deliver" "$from" "$to" > "$work/out"
holds tnc.mnu "three"

# A directory from before there was a memory of deliveries: a file that differs may be changed.
rm "$to/.delivered"
write "$to/Zone.html" "unknown"
"$deliver" "$from" "$to" > "$work/out"
holds Zone.html "unknown"

# A database that was never changed is the operator's all the same.
"$deliver" "$from" "$work/fresh" > "$work/out"
write "$from/Brenvo.mdb" "four"
"$deliver" "$from" "$work/fresh" > "$work/out"
[ "$(cat "$work/fresh/Brenvo.mdb")" = "two" ] || fail "a database is never replaced"

# A first delivery that finds no room leaves nothing that the next one takes for the operator's.
head -c 100000 /dev/zero > "$from/Brenvo.mdb"
head -c 100000 /dev/zero > "$from/Zone.html"
if (ulimit -f 8 && exec "$deliver" "$from" "$work/full") > "$work/out" 2>&1; then
  fail "a delivery without room is told"
fi
[ ! -e "$work/full/Brenvo.mdb" ] || fail "half a database stands there"
"$deliver" "$from" "$work/full" > "$work/out"
for name in Brenvo.mdb Zone.html waves/A.wav; do
  cmp "$from/$name" "$work/full/$name" || fail "$name is not whole"
done
[ ! -s "$work/out" ] || fail "half a file was kept as changed"
[ ! -e "$work/full/.delivered.part" ] || fail "what was begun is left"

# Rules that the operator changed stay, and so do those that he wrote beside ours.
write "$from/Lavorati.csv" "one"
"$deliver" "$from" "$to" > "$work/out"
write "$to/Lavorati propri.csv" "mine"
write "$from/Lavorati.csv" "two"
"$deliver" "$from" "$to" > "$work/out"
holds Lavorati.csv "two"
holds "Lavorati propri.csv" "mine"
write "$to/Lavorati.csv" "changed"
write "$from/Lavorati.csv" "three"
"$deliver" "$from" "$to" > "$work/out"
holds Lavorati.csv "changed"
grep -q 'kept as changed: Lavorati.csv' "$work/out" || fail "the kept rules are not named"
