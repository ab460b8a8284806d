#!/bin/sh
# brenvo [DIR]: starts the station on the user's application directory, ~/Brenvo if none is named.
# The first start fills it; the first one after an update of the package renews what is not the
# operator's.
set -eu

root=$(dirname "$(dirname "$(readlink -f "$0")")")
shared=$root/share/brenvo
dir=${1:-$HOME/Brenvo}

stamp=$dir/.package
if ! cmp -s "$shared/stamp" "$stamp"; then
  # What goes wrong here (a full disk, no right to write) the program tells on the screen.
  if "$shared/deliver.sh" "$shared/delivered" "$dir" > /dev/null; then
    cp "$shared/stamp" "$stamp"
  fi
fi
exec "$root/lib/brenvo/brenvo" "$dir"
