#!/bin/sh
# deliver.sh FROM DIR: brings a delivered directory into an operator's application directory.
#
# Everything is replaced but what is the operator's: an existing database and settings file always
# stay, and so does the place of a database that an interrupted compaction left under another name;
# a database is brought up to date, where the maker stands beside FROM; templates, menus, report
# layouts and rules stay when they were changed since the last delivery,
# which DIR/.delivered remembers by checksum. A file that stays is named on the standard output.
set -eu

if [ $# -ne 2 ]; then
  echo "deliver.sh FROM DIR" >&2
  exit 2
fi
from=$1
to=$2
[ -f "$from/Brenvo.mdb" ] || { echo "deliver.sh: no delivered directory: $from" >&2; exit 1; }
maker=$from/../tools/mkdatabase/mkdatabase
mkdir -p "$to"
manifest=$to/.delivered
new=$to/.delivered.new
: > "$new"

checksum() {
  cksum < "$1"
}

# The checksum that a file had when it was delivered last; empty when it never was.
delivered_as() {
  [ ! -f "$manifest" ] || awk -F '\t' -v name="$1" '$2 == name { print $1 }' "$manifest"
}

remember() {
  printf '%s\t%s\n' "$2" "$1" >> "$new"
}

put() {
  if cmp -s "$from/$1" "$to/$1"; then return; fi
  mkdir -p "$(dirname "$to/$1")"
  cp -p "$from/$1" "$to/$1.new"
  mv -f "$to/$1.new" "$to/$1"
}

# The names below FROM, those that the arguments (of find) choose.
names() {
  (cd "$from" && find . -type f "$@") | sed 's|^\./||' | LC_ALL=C sort
}

# A new directory takes everything at once. What is cut short (a full disk, the operator's Ctrl-C)
# leaves no half of a file under its name: half a database would be taken for the operator's.
part=$to/.delivered.part
rm -rf "$part"
if [ -z "$(ls -A "$to" | grep -v '^\.delivered\.new$')" ]; then
  cp -Rp "$from/." "$part"
  mv -f "$part"/* "$to"
  rmdir "$part"
  names \( -name '*.mnu' -o -name '*.html' -o -name '*.rpt' -o -name '*.csv' -o -name '*.json' \) | while IFS= read -r name; do
    remember "$name" "$(checksum "$from/$name")"
  done
  mv -f "$new" "$manifest"
  exit 0
fi

names | while IFS= read -r name; do
  case $name in
    Brenvo.mdb)
      # A compaction that was cut short leaves the contacts under one of these names: an empty
      # database in their place would be taken for the station's log.
      # A link that leads nowhere may lead to the log again, once its disk is there.
      if [ -e "$to/$name" ] || [ -L "$to/$name" ]; then
        # What is no database is the program's to tell, when it starts.
        if [ -x "$maker" ] && ! "$maker" --complete "$to"; then
          echo "$name stays as it is"
        fi
      elif [ -e "$to/BrenvoNEW.MDB" ] || [ -e "$to/Brenvo.BAK" ]; then
        echo "no Brenvo.mdb, but what a compaction has left: nothing new was put in its place"
      else
        put "$name"
      fi
      ;;
    Brenvo.ini)
      [ -e "$to/$name" ] || put "$name"
      ;;
    *.mnu | *.html | *.rpt | *.csv | *.json)
      offered=$(checksum "$from/$name")
      if [ ! -e "$to/$name" ]; then
        put "$name"
        remember "$name" "$offered"
      else
        present=$(checksum "$to/$name")
        before=$(delivered_as "$name")
        if [ "$present" = "$offered" ] || [ "$present" = "$before" ]; then
          put "$name"
          remember "$name" "$offered"
        else
          echo "kept as changed: $name"
          [ -z "$before" ] || remember "$name" "$before"
        fi
      fi
      ;;
    *) put "$name" ;;
  esac
done
mv -f "$new" "$manifest"
