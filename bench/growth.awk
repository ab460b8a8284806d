# How a task grows with the log: the exponent between the smallest and the largest log of the table.
# 0 is a task that does not ask how long the log is, 1 one that goes through all of it.
function microseconds(text,  part) {
  split(text, part, " ")
  return part[1] * (part[2] == "s" ? 1e6 : part[2] == "ms" ? 1e3 : 1)
}
function trimmed(text) {
  gsub(/^ +| +$/, "", text)
  return text
}
BEGIN { FS = "|" }
$4 ~ /[0-9] (us|ms|s) *$/ {
  size = trimmed($2)
  gsub(/,/, "", size)
  task = trimmed($3)
  time = microseconds(trimmed($4))
  if (!(task in least)) order[++tasks] = task
  if (!(task in least) || size + 0 < least[task]) { least[task] = size + 0; at_least[task] = time }
  if (!(task in most) || size + 0 > most[task]) { most[task] = size + 0; at_most[task] = time }
}
END {
  for (i = 1; i <= tasks; ++i) {
    task = order[i]
    if (most[task] == least[task] || at_least[task] <= 0 || at_most[task] <= 0) continue
    exponent = log(at_most[task] / at_least[task]) / log(most[task] / least[task])
    printf "grows by %5.2f%s %s\n", exponent, (exponent > 1.05 ? " (!)" : "    "), task
  }
}
