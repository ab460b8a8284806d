#!/bin/sh
# Proves that each room includes only what it may, and that Qt stays where screens are drawn.
# Usage: check_rooms.sh SOURCE_DIR
cd "$1" || exit 2

allowed() {
  case $1 in
    base) echo "base" ;;
    engine) echo "engine base" ;;
    dialect) echo "dialect engine base" ;;
    file) echo "file dialect engine base" ;;
    platform) echo "platform base" ;;
    forms) echo "forms platform base" ;;
    recorder) echo "recorder forms platform base" ;;
    core) echo "core file engine forms platform base" ;;
    log|contest|awards|maps|print|links|tables|adif) echo "$1 core engine forms platform base" ;;
    station) echo "station log contest awards maps print links tables adif core engine forms platform base" ;;
    ui) echo "ui station log contest awards maps print links tables adif core engine forms platform base" ;;
  esac
}

rooms=$(sed -n 's/^ *add_room(\([a-z]*\) .*/\1/p' CMakeLists.txt)
failed=0
for room in $rooms; do
  for include in $(grep -hoE '^#include "[a-z]+/' "$room"/*.h "$room"/*.cpp 2>/dev/null |
                   sed 's/.*"//; s,/,,' | sort -u); do
    case " $(allowed "$room") " in
      *" $include "*) ;;
      *) echo "$room may not include $include:"
         grep -lE "^#include \"$include/" "$room"/*.h "$room"/*.cpp 2>/dev/null
         failed=1 ;;
    esac
  done
done

qt=
for room in $rooms; do
  [ "$room" = ui ] || qt=$qt$(grep -lE '^#include <Q' "$room"/* 2>/dev/null)
done
if [ -n "$qt" ]; then
  echo "Qt headers outside the screens:"
  echo "$qt"
  failed=1
fi

sqlite=
for room in $rooms; do
  [ "$room" = file ] || sqlite=$sqlite$(grep -lE 'sqlite3' "$room"/*.h "$room"/*.cpp 2>/dev/null)
done
if [ -n "$sqlite" ]; then
  echo "SQLite outside file/:"
  echo "$sqlite"
  failed=1
fi
exit $failed
