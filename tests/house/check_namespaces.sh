#!/bin/sh
# Proves that each room is a namespace, and that what lies in the room is declared there.
# Usage: check_namespaces.sh SOURCE_DIR
cd "$1" || exit 2

rooms=$(sed -n 's/^ *add_room(\([a-z]*\) .*/\1/p' CMakeLists.txt)
failed=0
for room in $rooms; do
  [ "$room" = app ] && continue  # holds main alone
  for file in $(find "$room" -name '*.h' -o -name '*.cpp'); do
    own="namespace brenvo::$room {"
    if ! grep -qxF "$own" "$file"; then
      echo "$file declares nothing in brenvo::$room"
      failed=1
    fi
    # Another room's names may be announced there, and nothing be defined.
    foreign=$(awk -v own="$own" '
      /^namespace brenvo/ { inside = $0 != own; next }
      /^}/ { inside = 0 }
      inside && NF && !/^(class|struct) [A-Za-z]+;$/ { print }' "$file")
    if [ -n "$foreign" ]; then
      echo "$file defines in another namespace: $foreign"
      failed=1
    fi
  done
done
exit $failed
