#!/bin/sh
# Runs targets of the fuzz preset one after another, round after round, each for some minutes of
# processor time, and notes a line for each run in FOLDER/rounds.tsv: target, seconds of processor
# time, inputs, edges covered, exit status (0: nothing found). What they find is left in FOLDER,
# their inputs in CORPORA/TARGET. Ends when told to, or when FOLDER/stop is there.
# Usage: fuzz/rounds.sh CORPORA FOLDER MINUTES TARGET...      (TARGET as in fuzz/TARGET_fuzz.cpp)
set -u
corpora=$1 folder=$2 minutes=$3
shift 3
house=$(cd "$(dirname "$0")/.." && pwd)
ticks=$(getconf CLK_TCK)
mkdir -p "$folder"
export ASAN_OPTIONS=malloc_context_size=5:quarantine_size_mb=32

# Processor time of a process so far, in seconds.
used() {
  awk -v ticks="$ticks" '{ sub(/.*\) /, ""); print int(($12 + $13) / ticks) }' "/proc/$1/stat" 2>/dev/null
}

while :; do
  for target; do
    [ -e "$folder/stop" ] && exit 0
    mkdir -p "$corpora/$target"
    log=$folder/$target.log
    dictionary=$house/fuzz/$target.dict
    "$house/build/fuzz/fuzz/${target}_fuzz" \
      $([ -e "$dictionary" ] && echo "-dict=$dictionary") -max_len=2000 -entropic=0 \
      -timeout=1800 -report_slow_units=1800 -print_final_stats=1 \
      -artifact_prefix="$folder/$target-" \
      "$corpora/$target" "$house/fuzz/seeds/$target" >"$log" 2>&1 &
    process=$!
    spent=0
    while now=$(used "$process") && [ -n "$now" ]; do
      spent=$now
      [ "$spent" -ge $((minutes * 60)) ] && kill -USR1 "$process"  # ends it, with its figures
      [ -e "$folder/stop" ] && kill -USR1 "$process"
      sleep 2
    done
    wait "$process"
    status=$?
    inputs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    edges=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -1)
    printf '%s\t%s\t%s\t%s\t%s\n' "$target" "$spent" "${inputs:-0}" "${edges:-0}" "$status" \
      >>"$folder/rounds.tsv"
    [ "$status" -ne 0 ] && cp "$log" "$folder/$target-$(date +%H%M%S).log"
  done
done
