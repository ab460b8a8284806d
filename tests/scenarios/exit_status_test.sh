#!/bin/sh
# exit_status_test.sh BUILD: what the program drive tells its caller.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$1
work=$(mktemp -d "${TMPDIR:-/tmp}/brenvo-status.XXXXXX")
trap 'rm -rf "$work"' EXIT
"$here/../../tools/deliver/deliver.sh" "$build/delivered" "$work/station"

# expect STATUS OUTPUT ERRORS: of the script on the standard input.
expect() {
  status=0
  "$build/tools/drive/drive" "$work/station" > "$work/out" 2> "$work/err" || status=$?
  if [ "$status" != "$1" ] || [ "$(cat "$work/out")" != "$2" ] || [ "$(cat "$work/err")" != "$3" ]; then
    echo "status $status, out: $(cat "$work/out"), err: $(cat "$work/err")" >&2
    echo "wanted $1, out: $2, err: $3" >&2
    exit 1
  fi
}

printf 'echo a\n' | expect 0 a ''
printf 'echo a\nhop\necho b\n' | expect 1 a 'drive: line 2: unknown command hop'
printf 'answer yes\n' | expect 1 '' 'drive: line 1: an answer is left that nothing asked for'

rm "$work/station/Brenvo.mdb"
status=0
"$build/tools/drive/drive" "$work/station" < /dev/null > "$work/out" 2> "$work/err" || status=$?
[ $status -eq 1 ]
grep -q '^message critical "Brenvo" ".*"$' "$work/out"
[ "$(cat "$work/err")" = 'drive: the station does not start' ]

status=0
"$build/tools/drive/drive" < /dev/null 2> "$work/err" || status=$?
[ $status -eq 2 ]

# A directory in which nothing can be done is told with its cause, and nothing aborts.
refuses() {
  status=0
  "$build/tools/drive/drive" "$1" < /dev/null > "$work/out" 2> "$work/err" || status=$?
  if [ $status -ne 2 ] || [ -s "$work/out" ] || [ "$(cat "$work/err")" != "drive: $2" ]; then
    echo "status $status for '$1', out: $(cat "$work/out"), err: $(cat "$work/err")" >&2
    exit 1
  fi
}
refuses '' 'Manca il nome della cartella di lavoro.'
refuses "$work/manca" "La cartella $work/manca non esiste."
refuses "$work/out" "La cartella $work/out non è una cartella."
name=$(printf '%0300d' 0)
refuses "$work/$name" "La cartella $work/$name non si apre: nome o percorso troppo lungo."
ln -s giro "$work/giro"
refuses "$work/giro" \
  "La cartella $work/giro non si apre: collegamenti che rimandano l'uno all'altro."

# So is a database that leads nowhere, or lies too deep.
starts_not() {
  status=0
  "$build/tools/drive/drive" "$1" < /dev/null > "$work/out" 2> "$work/err" || status=$?
  if [ $status -ne 1 ] || ! grep -qF "$2" "$work/out"; then
    echo "status $status, out: $(cat "$work/out"), err: $(cat "$work/err")" >&2
    exit 1
  fi
  [ "$(cat "$work/err")" = 'drive: the station does not start' ]
}
ln -s Brenvo.mdb "$work/station/Brenvo.mdb"
starts_not "$work/station" \
  "75 - Errore di accesso a 'Brenvo.mdb' (collegamenti che rimandano l'uno all'altro)."
rm "$work/station/Brenvo.mdb"
deep=$work/$(printf '%0170d/%0170d/%0170d' 0 0 0)
mkdir -p "$deep"
cp "$build/delivered/Brenvo.mdb" "$deep"
starts_not "$deep" '3044 - Il percorso del database è lungo'
