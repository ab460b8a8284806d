#!/bin/sh
# Proves that whoever uses the standard's algorithms includes them, in the file or in its header:
# where tests are built the usual headers are read before everything, and whoever leaves them out is
# not found until the program is built to be used.
# Usage: check_algorithm.sh SOURCE_DIR
cd "$1" || exit 2

used='(sort|stable_sort|find|find_if|any_of|all_of|none_of|count|count_if|replace_if|lower_bound'
used="$used|upper_bound|equal_range|transform|reverse|unique|min_element|max_element|rotate|fill"
used="$used|copy_if|equal|mismatch|adjacent_find|partial_sort|binary_search|remove_if|for_each"
used="$used|max|min|clamp)"
failed=0
for file in $(find . -path ./build -prune -o -path ./tests -prune -o -path ./fuzz -prune -o \
    \( -name '*.cpp' -o -name '*.h' \) -print | xargs grep -lE "std::(ranges::)?$used\("); do
  grep -q '#include <algorithm>' "$file" && continue
  header=$(basename "$file" .cpp).h
  beside=$(find "$(dirname "$file")" -name "$header" 2> /dev/null)
  [ -n "$beside" ] && grep -q '#include <algorithm>' $beside && continue
  echo "$file uses algorithms and does not include <algorithm>"
  failed=1
done
exit $failed
