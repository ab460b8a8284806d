#!/bin/sh
# Installs the Debian packages that are missing.
# Usage: packages.sh run|test|show
#   run   what building and running the program takes
#   test  the same, and what the tests take
#   show  the same as run, and what showing it on a virtual screen takes
set -eu

run="g++ cmake ninja-build ccache pkg-config libsqlite3-dev libssl-dev libfmt-dev libutfcpp-dev libexpat1-dev
     libxlsxwriter-dev nlohmann-json3-dev qt6-base-dev qt6-serialport-dev qt6-multimedia-dev qt6-svg-dev qtkeychain-qt6-dev qt6-image-formats-plugins
     libgl-dev libvulkan-dev libxkbcommon-dev qt6-translations-l10n qt6-qpa-plugins
     fonts-dejavu-core fonts-liberation espeak-ng iso-flags-png-320x240"
test="libgtest-dev libgmock-dev sqlite3 xvfb xauth hamradio-files dpkg-dev xdotool openbox
      imagemagick x11-utils chromium libhamlib-utils lld"
show="xvfb xauth xdotool openbox imagemagick x11-utils sqlite3"

case ${1-} in
  run) wanted=$run ;;
  test) wanted="$run $test" ;;
  show) wanted="$run $show" ;;
  *) echo "usage: packages.sh run|test|show" >&2; exit 2 ;;
esac

if ! command -v dpkg-query >/dev/null 2>&1; then
  echo "Not a Debian system. Install by hand what these packages hold:" $wanted >&2
  exit 0
fi
missing=
for package in $wanted; do
  dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
    missing="$missing $package"
done
[ -n "$missing" ] || exit 0

if [ "$(id -u)" = 0 ]; then
  as_root=
elif command -v sudo >/dev/null 2>&1; then
  as_root=sudo
else
  echo "These packages are missing, and only root can install them:$missing" >&2
  exit 1
fi
echo "Installing:$missing" >&2
$as_root apt-get update -q >&2
# sudo passes no variables on.
$as_root env DEBIAN_FRONTEND=noninteractive \
  apt-get install -q -y --no-install-recommends $missing >&2
