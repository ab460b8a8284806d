#!/bin/sh
# The guard of the checkout sees a file that comes, one that goes, and nothing else; and whoever
# presses keys without sense in the program has it run where what it saves may lie.
set -eu
guard=$(dirname "$0")/checkout.sh
scratch=$(mktemp -d "${TMPDIR:-/tmp}/brenvo-checkout.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
tree=$scratch/tree
mkdir -p "$tree/tools" "$tree/build/dev" "$tree/.git"
echo one > "$tree/README.md"
echo two > "$tree/tools/a file.sh"

fail() {
  echo "checkout_test.sh: $1" >&2
  exit 1
}
compare() { "$guard" compare "$tree" "$scratch/list"; }

"$guard" note "$tree" "$scratch/list"
echo more >> "$tree/README.md"
touch "$tree/build/dev/made" "$tree/.git/index" "$tree/.README.md.swp"
compare || fail "it complains of what no test has written"
touch "$tree/31021998.pdf"
if compare > "$scratch/said"; then fail "it does not see a file that has come"; fi
grep -q '31021998.pdf' "$scratch/said" || fail "it does not name the file that has come"
rm "$tree/31021998.pdf" "$tree/tools/a file.sh"
if compare > "$scratch/said"; then fail "it does not see a file that has gone"; fi
grep -q 'tools/a file.sh' "$scratch/said" || fail "it does not name the file that has gone"

# A file dialog begins where the program stands.
for script in "$(dirname "$0")"/../../tools/show/*.sh; do
  grep -q 'virtual_screen "\$work"' "$script" || continue
  awk '/^cd "\$work"$/ { moved = 1 }
       /^ *"\$(build\/app\/brenvo|program_file)"|"\$work\/station" > "\$work\/brenvo.log"/ {
         started = 1
         if (!moved) exit 1
       }
       END { exit !(moved && started) }' "$script" ||
    fail "$script starts the program where it stands itself"
done
