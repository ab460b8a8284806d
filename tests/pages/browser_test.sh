#!/bin/sh
# browser_test.sh BUILD BROWSER: writes award pages from the delivered templates, opens each in a
# browser without a screen, as wide as a desk's and as a phone's, and compares what the browser
# shows with pages.out. With BRENVO_BLESS=1 in the environment it writes pages.out instead.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
build=$1
browser=$2

scratch=$(mktemp -d "${TMPDIR:-/tmp}/brenvo-pages.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
station=$scratch/station
"$here/../../tools/deliver/deliver.sh" "$build/delivered" "$station"
"$build/tools/drive/drive" "$station" < "$here/pages.drive" > "$scratch/driven"

# Prints what the probe told of a page.
show() {
  timeout 120 "$browser" --headless --no-sandbox --disable-gpu --disable-dev-shm-usage \
    --user-data-dir="$scratch/profile" --window-size="$2,900" --virtual-time-budget=2000 \
    --dump-dom "file://$station/$1" > "$scratch/shown" 2> "$scratch/complaints" || {
    cat "$scratch/complaints"
    return 1
  }
  sed -n '/<pre>/,/<\/pre>/p' "$scratch/shown" | sed '1d;$d'
}

grep -E '^(message|error)' "$scratch/driven" > "$scratch/out" || true
for page in Country Provincie Square Zone; do
  cat "$here/probe.html" >> "$station/OUT_$page.html"
  for width in 1200 500; do
    echo "$page, $width pixels"
    show "OUT_$page.html" "$width"
  done
done >> "$scratch/out"

if [ -n "${BRENVO_BLESS-}" ]; then
  cp "$scratch/out" "$here/pages.out"
fi
diff -u "$here/pages.out" "$scratch/out"
