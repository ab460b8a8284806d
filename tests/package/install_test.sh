#!/bin/sh
# install_test.sh BUILD: an installed directory is a station, and installing again keeps what is the
# operator's.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$1
work=$(mktemp -d "${TMPDIR:-/tmp}/brenvo-install.XXXXXX")
program=
trap '[ -z "$program" ] || kill "$program" 2> /dev/null || true; rm -rf "$work"' EXIT
fail() {
  echo "install_test.sh: $1" >&2
  exit 1
}
. "$here/starts.sh"

station=$work/station
cmake --install "$build" --prefix "$station" > "$work/log" || fail "$(cat "$work/log")"
for file in brenvo Brenvo.mdb Brenvo.HLP Manuale.html manuale/LogForm.png Country.html logv.rpt \
  tnc.mnu Lavorati.csv 2m.wav MappaEuropa.jpg; do
  [ -e "$station/$file" ] || fail "$file is not installed"
done
starts_on "$station" "$station/brenvo"

echo "contacts" > "$station/Brenvo.mdb"
echo "my menu" > "$station/tnc.mnu"
rm "$station/Manuale.html"
cmake --install "$build" --prefix "$station" > "$work/log" || fail "$(cat "$work/log")"
[ "$(cat "$station/Brenvo.mdb")" = "contacts" ] || fail "the database was replaced"
[ "$(cat "$station/tnc.mnu")" = "my menu" ] || fail "a changed menu was replaced"
[ -e "$station/Manuale.html" ] || fail "the manual did not come back"
