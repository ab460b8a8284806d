#!/bin/sh
# debian_test.sh BUILD: the Debian package holds what a desktop looks for, and its command gives a
# user an application directory of his own.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$1
work=$(mktemp -d "${TMPDIR:-/tmp}/brenvo-package.XXXXXX")
program=
trap '[ -z "$program" ] || kill "$program" 2> /dev/null || true; rm -rf "$work"' EXIT
fail() {
  echo "debian_test.sh: $1" >&2
  exit 1
}
. "$here/starts.sh"

(cd "$work" && cpack --config "$build/CPackConfig.cmake" -B "$work/made" > "$work/log" 2>&1) ||
  fail "$(cat "$work/log")"
package=$(ls "$work"/made/brenvo_*.deb)
dpkg-deb -f "$package" Package Version Section Depends > "$work/control"
grep -q '^Package: brenvo$' "$work/control" || fail "$(cat "$work/control")"
grep -q '^Section: hamradio$' "$work/control" || fail "$(cat "$work/control")"
for needed in libqt6widgets6 libsqlite3-0 qt6-qpa-plugins; do
  grep -q "^Depends:.*$needed" "$work/control" || fail "$needed is not among the dependencies"
done
dpkg-deb -x "$package" "$work/root"
usr=$work/root/usr
for file in bin/brenvo lib/brenvo/brenvo share/applications/brenvo.desktop \
  share/metainfo/brenvo.metainfo.xml share/icons/hicolor/scalable/apps/brenvo.svg \
  share/brenvo/delivered/Brenvo.mdb share/brenvo/delivered/manuale/LogForm.png; do
  [ -e "$usr/$file" ] || fail "$file is not in the package"
done
for entry in 'Exec=brenvo' 'Icon=brenvo' 'Type=Application'; do
  grep -q "^$entry\$" "$usr/share/applications/brenvo.desktop" || fail "no $entry"
done

# Two users, and what the second start leaves alone.
for user in anna mario; do
  mkdir "$work/$user"
  HOME=$work/$user starts_on "$work/$user/Brenvo" "$usr/bin/brenvo"
done
echo "my menu" > "$work/anna/Brenvo/tnc.mnu"
rm -f "$work/anna/Brenvo/Brenvo.lock" "$work/anna/Brenvo/Brenvo.mdb-wal"
rm "$work/anna/Brenvo/logv.rpt"
HOME=$work/anna starts_on "$work/anna/Brenvo" "$usr/bin/brenvo"
[ ! -e "$work/anna/Brenvo/logv.rpt" ] || fail "the same package delivers twice"
# An update renews what is not the user's.
echo "2.0.0" > "$usr/share/brenvo/stamp"
rm -f "$work/anna/Brenvo/Brenvo.lock" "$work/anna/Brenvo/Brenvo.mdb-wal"
HOME=$work/anna starts_on "$work/anna/Brenvo" "$usr/bin/brenvo"
[ -e "$work/anna/Brenvo/logv.rpt" ] || fail "an update delivers nothing"
[ "$(cat "$work/anna/Brenvo/tnc.mnu")" = "my menu" ] || fail "an update replaced a changed menu"
# A directory that is named instead.
HOME=$work/anna starts_on "$work/portable" "$usr/bin/brenvo" "$work/portable"
