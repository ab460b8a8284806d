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
