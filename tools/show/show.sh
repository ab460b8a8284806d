#!/bin/sh
# show.sh BUILD OUT: starts the program on a virtual screen and on a scratch directory, and walks the
# main road with real keys and mouse clicks: own profile, contacts, search, grid, matrix, map,
# saved desktop, closing. Pictures go to OUT. The exit status is 0 when the contacts are in the
# database.
set -eu

if [ $# -ne 2 ]; then
  echo "show.sh BUILD OUT" >&2
  exit 2
fi
. "$(dirname "$0")/operator.sh"

picture 1-mainframe

# The hint on the empty map says where.
own_station 2-station

keys ctrl+l
settle
contact ik1abc 2m SSB JN45AA Mario Torino
contact dl1xyz 2m CW JO62QM Klaus Berlin
contact ea3zz 2m SSB JN11BK Juan Barcellona 3-log
keys F7
picture 4-grid
keys F7
settle

# A key of the main menu is the menu's also while the caret stands in a field.
keys ctrl+u
settle
keys Tab
words "Anna Bianchi"
keys F3
waits "second look at the profile" holds 'SELECT Qra FROM "User"' 'Anna Bianchi'
keys ctrl+w
settle

# The search is a dialog; Enter searches.
keys F8
dialog_is_up() { [ "$(active)" != Brenvo ]; }
waits "search" dialog_is_up
settle
keys F1
picture 5-help
keys Escape
settle
keys Escape
settle

keys ctrl+b
settle
words ik1abc
keys Return
picture 6-worked

# The desktop is saved; a menu opens under the mouse.
keys ctrl+shift+d
waits "saved desktop" grep -q '^Window=' "$work/station/Brenvo.ini"
click 140 10
picture 7-menu

# The frame's own way out: every window keeps its place.
keys Escape
waits "main frame" frame_is_up
keys alt+F4
gone() { ! alive; }
waits "end" gone
grep -q '^\[Hrd\]' "$work/station/Brenvo.ini" || fail "no place of a window was kept"
found=$(rows 'SELECT count(*) FROM Log')
echo "Contacts in the log: ${found:-unknown}"
[ "$found" = 3 ]
