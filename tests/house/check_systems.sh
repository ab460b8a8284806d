#!/bin/sh
# Proves that what each system does in its own way stands in one file a room, where a note says what
# another system must supply.
# Usage: check_systems.sh SOURCE_DIR
cd "$1" || exit 2

allowed="file/sync.cpp ui/qt_serial_port.cpp tools/screens/far_ends.cpp"

headers='^#include <(unistd|fcntl|signal|termios|poll|dirent|dlfcn|pwd|spawn|windows|(sys|netinet|arpa)/[a-z]+)\.h>'
names='(_WIN32|__APPLE__|__linux__|__unix__|Q_OS_[A-Z]+)'
rooms=$(sed -n 's/^ *add_room(\([a-z]*\) .*/\1/p' CMakeLists.txt)
failed=0
for file in $(grep -rlE "$headers|$names" --include=*.h --include=*.cpp $rooms app tools); do
  case " $allowed " in
    *" $file "*) ;;
    *) echo "$file is of one system:"
       grep -nE "$headers|$names" "$file"
       failed=1 ;;
  esac
done
for file in $allowed; do
  grep -q '[Aa]nother \(one\|system\) must supply' "$file" && continue
  echo "$file does not say what another system must supply"
  failed=1
done
exit $failed
