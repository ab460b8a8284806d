# Two tables: names the tasks whose median in the second is more than 1.2 times that of the first. A
# task may stand in a table several times.
function microseconds(text,  part) {
  split(text, part, " ")
  return part[1] * (part[2] == "s" ? 1e6 : part[2] == "ms" ? 1e3 : 1)
}
function trimmed(text) {
  gsub(/^ +| +$/, "", text)
  return text
}
# The middle one of `count` times, kept by key and number.
function median(times, key, count,  i, j, sorted, swap) {
  for (i = 1; i <= count; ++i) sorted[i] = times[key, i]
  for (i = 2; i <= count; ++i) {
    for (j = i; j > 1 && sorted[j - 1] > sorted[j]; --j) {
      swap = sorted[j]; sorted[j] = sorted[j - 1]; sorted[j - 1] = swap
    }
  }
  return sorted[int((count + 1) / 2)]
}
BEGIN { FS = "|" }
$4 ~ /[0-9] (us|ms|s) *$/ {
  key = trimmed($2) " " trimmed($3)
  time = microseconds(trimmed($4))
  if (FILENAME == ARGV[1]) before[key, ++counts_before[key]] = time
  else after[key, ++counts_after[key]] = time
}
END {
  for (key in counts_after) {
    if (!(key in counts_before)) continue
    ++compared
    was = median(before, key, counts_before[key])
    is = median(after, key, counts_after[key])
    if (was > 0 && is > 1.2 * was) {
      ++worse
      printf "%.2f times what it was: %s\n", is / was, key
    }
  }
  printf "%d tasks compared, %d slower by more than a fifth\n", compared, worse
}
