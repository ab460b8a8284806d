#!/bin/sh
# contest_killed_test.sh BUILD: a contest of sixty contacts through the driver, on three bands, with
# duplicates and corrections; half way the station is killed in the middle of a contact and started
# again. Nothing may be missing, the serials of each band are whole, and the points are those of a
# recount from paper.
set -eu

build=$1
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$root/tools/deliver/deliver.sh" "$build/delivered" "$work/station"
paper=$work/paper
: > "$paper"

band=70cm
contact() {
  serial=$(($(grep -c "^$band " "$paper" || true) + 1))
  echo "$band $serial $1 $3" >> "$paper"
  echo "type GaraContest.Call $1"
  echo "key GaraContest.Call enter"
  echo "type GaraContest.SerialeRicevuto $2"
  echo "key GaraContest.SerialeRicevuto enter"
  echo "type GaraContest.Locator $3"
  echo "key GaraContest.Locator enter"
  echo "advance 7000"
}
# From one to the other.
contacts() {
  n=$1
  while [ "$n" -le "$2" ]; do
    # shellcheck disable=SC2046
    set -- "$1" "$2" $(awk -v n="$n" -f "$root/tools/show/invent.awk")
    if [ $((n % 9)) = 0 ]; then
      again=$(grep "^$band " "$paper" | tail -n 3 | head -n 1)
      contact "$(echo "$again" | cut -d ' ' -f 3)" "$4" "$(echo "$again" | cut -d ' ' -f 4)"
    else
      contact "$3" "$4" "$5"
    fi
    if [ $((n % 10)) = 0 ]; then
      wrong=$(tail -n 1 "$paper" | cut -d ' ' -f 3)
      right=$(echo "$wrong" | sed 's/.$/Z/')
      sed -i "\$ s/ $wrong / $right /" "$paper"
      echo "press GaraContest.cmCorreggi"
      echo "set GaraContest.Call $right"
      echo "press GaraContest.cmInserisci"
    fi
    if [ "$n" = 20 ] || [ "$n" = 40 ]; then
      if [ "$n" = 20 ]; then band=23cm; else band=13cm; fi
      echo "press GaraContest.cmBanda"
    fi
    set -- "$1" "$2"
    n=$((n + 1))
  done
}

{
  echo 'clock "2024-10-05 16:30:00"'
  echo "exec update [User] set Call='IK4ABC'"
  echo "menu cmGaraContest"
  echo 'set GaraContest.MioLocator "JN54MN"'
  echo 'set GaraContest.Regole "IARU Region 1 UHF e microonde"'
  echo "press GaraContest.cmNuova"
  contacts 1 30
  echo "type GaraContest.Call DL0HALF"
  echo "echo half"
} > "$work/first"
mkfifo "$work/script"
"$build/tools/drive/drive" "$work/station" < "$work/script" > "$work/said" 2>&1 &
station=$!
# The script stays open, so that the station waits for what comes next.
exec 3> "$work/script"
cat "$work/first" >&3
tries=1200
until grep -qx half "$work/said"; do
  tries=$((tries - 1))
  if [ $tries = 0 ] || ! kill -0 "$station" 2> /dev/null; then
    cat "$work/said" >&2
    exit 1
  fi
  sleep 0.1
done
kill -9 "$station"
wait "$station" 2> /dev/null || true
exec 3>&-

band=23cm
{
  echo 'clock "2024-10-05 17:30:00"'
  echo "menu cmGaraContest"
  echo "press GaraContest.cmBanda"
  contacts 31 60
  echo "press GaraContest.cmVerifica"
  echo "sql select Banda,ProgrDato,Call,Locator from [Contest Qso] order by Banda,ProgrDato"
  echo "sql select sum(Punti) from GareQso"
} > "$work/second"
"$build/tools/drive/drive" "$work/station" < "$work/second" > "$work/said" 2>&1 || {
  cat "$work/said" >&2
  exit 1
}
awk '$1 == "row" && NF == 5 { print $2, $3, $4, $5 }' "$work/said" | sort > "$work/base"
sort "$paper" > "$work/wanted"
diff -u "$work/wanted" "$work/base"
points=$(awk '$1 == "row" && NF == 2 { print $2 }' "$work/said")
recount=$(awk -v own=JN54MN -f "$root/tools/show/recount.awk" "$paper")
if [ "$points" != "$recount" ]; then
  echo "points $points, from paper $recount" >&2
  exit 1
fi
echo "$(wc -l < "$paper") contacts, $points points"
