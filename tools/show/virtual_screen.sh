# For scripts to read in: virtual_screen WORK [SIZE] starts a screen of SIZE (1280x800) that nobody
# sees, with its files in WORK, for the programs that follow. $screen is its process, for the script
# to end.
virtual_screen() {
  Xvfb -displayfd 3 -screen 0 "${2:-1280x800}x24" -nolisten tcp -noreset \
    3> "$1/display" 2> "$1/xvfb.log" &
  screen=$!
  for _ in $(seq 300); do
    [ -s "$1/display" ] && break
    sleep 0.1
  done
  if [ ! -s "$1/display" ]; then
    cat "$1/xvfb.log" >&2
    echo "no virtual screen" >&2
    return 1
  fi
  mkdir -p "$1/runtime"
  chmod 700 "$1/runtime"
  DISPLAY=:$(cat "$1/display")
  export DISPLAY XDG_RUNTIME_DIR="$1/runtime" QT_QPA_PLATFORM=xcb
  unset WAYLAND_DISPLAY || true
}
