# Sourced: starts_on DIR COMMAND...: the command comes up as a station on DIR, without a screen, and
# ends when it is told to.
starts_on() {
  station=$1
  shift
  QT_QPA_PLATFORM=offscreen "$@" > "$work/program.log" 2>&1 &
  program=$!
  tries=300
  until [ -e "$station/Brenvo.lock" ] && [ -e "$station/Brenvo.mdb-wal" ]; do
    kill -0 $program 2> /dev/null || fail "the program ended: $(cat "$work/program.log")"
    tries=$((tries - 1))
    [ $tries -gt 0 ] || fail "the program does not come up on $station"
    sleep 0.2
  done
  kill $program
  wait $program 2> /dev/null || true
  program=
}
