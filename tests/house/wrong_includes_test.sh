#!/bin/sh
# Proves that a room sees the public headers of the rooms below it and nothing else: whatever else
# it includes does not compile, and no declaration of its own names another room.
# Usage: wrong_includes_test.sh SOURCE_DIR COMPILER INCLUDES
# INCLUDES has a line "ROOM DIRECTORY..." for each room, as the build has it.
set -u
cd "$1" || exit 2
compiler=$2
includes=$3

low="base"
middle="core engine forms geo entities platform $low"
frame="frame upkeep worked"
windows="history log contest awards maps print links tables adif list checks digital rig gara conferme diplomi"
may_see() {
  case $1 in
    base) echo "base" ;;
    geo) echo "geo $low" ;;
    entities) echo "entities $low" ;;
    engine) echo "engine $low" ;;
    dialect) echo "dialect engine $low" ;;
    file) echo "file dialect engine $low" ;;
    platform) echo "platform $low" ;;
    forms) echo "forms platform $low" ;;
    recorder) echo "recorder forms platform $low" ;;
    core) echo "file $middle" ;;
    worked) echo "worked $middle" ;;
    upkeep) echo "upkeep file $middle" ;;
    frame) echo "$frame $middle" ;;
    log) echo "log history worked $middle" ;;
    history|contest|awards|links|rig|tables|adif) echo "$1 $middle" ;;
    list|gara) echo "$1 adif $middle" ;;
    checks|digital|conferme) echo "$1 worked adif $middle" ;;
    diplomi) echo "diplomi conferme worked adif $middle" ;;
    maps) echo "maps $frame $middle" ;;
    print) echo "print history $frame $middle" ;;
    station) echo "station $windows $frame $middle" ;;
    ui) echo "ui station $windows $frame $middle" ;;
  esac
}

failed=0
say() { echo "$*"; failed=1; }

# Whether a source with this include gets through in a room.
compiles() {
  # Not from here: what stands in the working directory would be found.
  echo "#include $1" | (cd / && "$compiler" -std=c++20 -E -o /dev/null -x c++ $flags - 2>/dev/null)
}

rooms=$(cut -d' ' -f1 "$includes")
[ -n "$rooms" ] || say "no rooms in $includes"
for room in $rooms; do
  flags=$(sed -n "s/^$room //p" "$includes" | tr ' ' '\n' | sed '/^$/d; s/^/-I/' | tr '\n' ' ')
  allowed=$(may_see "$room")
  [ -n "$allowed" ] || say "$room: what may it see?"
  for other in $rooms; do
    public=$(ls "$other/include/$other"/*.h 2>/dev/null | head -1)
    private=$(ls "$other"/*.h 2>/dev/null | head -1)
    [ -n "$public" ] || say "$other has no public header"
    case " $allowed " in
      *" $other "*) compiles "\"$other/${public##*/}\"" || say "$room does not see $other" ;;
      *)
        compiles "\"$other/${public##*/}\"" && say "$room sees $other"
        grep -nE "(^|[^A-Za-z0-9_:])(brenvo::)?$other::[A-Za-z]|namespace brenvo::$other\\b" \
          "$room"/*.cpp "$room"/*.h "$room/include/$room"/*.h /dev/null | grep -v "://" &&
          say "$room names $other"
        ;;
    esac
    [ -z "$private" ] || ! compiles "\"$other/${private##*/}\"" ||
      say "$room sees $private, which is private"
  done
  [ "$room" = ui ] || ! compiles "<QString>" || say "$room sees Qt"
done
exit $failed
