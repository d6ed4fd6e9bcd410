#!/usr/bin/env bash
# ostrand-desktop in a real window, on a display in memory: tests/desktop/smoke_test.sh
# OSTRAND_DESKTOP EXAMPLE.VKG
# It opens the example, shows it in its title and on the screen, takes keys and quits. Exit code 77
# without Xvfb or xdotool, unless OSTRAND_REQUIRE_DISPLAY is set.
set -euo pipefail
for program in Xvfb xdotool; do
  if ! command -v "$program" >/dev/null; then
    echo "skipped: no $program; to install it: sudo apt-get install xvfb xdotool" >&2
    [[ -z "${OSTRAND_REQUIRE_DISPLAY:-}" ]] || exit 1
    exit 77
  fi
done
desktop="$1"
scratch="$(mktemp -d)"
name="$(basename "$2" .VKG)"
cp "$2" "$scratch"
export HOME="$scratch" XDG_CONFIG_HOME="$scratch/config" XDG_STATE_HOME="$scratch/state"
export XDG_RUNTIME_DIR="$scratch" QT_QPA_PLATFORM=xcb
running=()
finish() {
  local process
  for process in "${running[@]}"; do kill "$process" 2>/dev/null || true; done
  wait
  rm -rf "$scratch"
}
trap finish EXIT
fail() {
  echo "FAILED: $1" >&2
  cat "$scratch/log" >&2
  exit 1
}
# Waits until a command succeeds, for up to a minute while the desktop runs.
until_true() {
  local what="$1" rounds
  shift
  for ((rounds = 0; rounds < 600; ++rounds)); do
    if "$@" >/dev/null 2>&1; then return; fi
    kill -0 "$window" 2>/dev/null || fail "$what: ostrand-desktop has ended"
    sleep 0.1
  done
  fail "$what: not within a minute"
}

# -displayfd: the server picks a free number and reports it once it is ready.
mkfifo "$scratch/display"
Xvfb -displayfd 3 -screen 0 1024x768x24 -fbdir "$scratch" -nolisten tcp \
  3>"$scratch/display" >"$scratch/xvfb.log" 2>&1 &
running+=($!)
read -r number <"$scratch/display"
export DISPLAY=":$number"

"$desktop" "$scratch/$name.VKG" >"$scratch/log" 2>&1 &
window=$!
running+=("$window")
until_true "a window titled $name" xdotool search --onlyvisible --name "$name.* - Ostrand"
id="$(xdotool search --onlyvisible --name "$name.* - Ostrand" | head -1)"

# Something besides one colour is on the screen: text and icons do not compress to nothing.
painted() { [[ "$(gzip -c "$scratch/Xvfb_screen0" | wc -c)" -gt 20000 ]]; }
until_true "a painted window" painted

xdotool windowfocus "$id"
xdotool key ctrl+q
ended() { ! kill -0 "$window" 2>/dev/null; }
for ((rounds = 0; rounds < 600; ++rounds)); do
  if ended; then break; fi
  sleep 0.1
done
ended || fail "Ctrl+Q: the desktop still runs after a minute"
code=0
wait "$window" || code=$?
[[ "$code" -eq 0 ]] || fail "Ctrl+Q: exit code $code"
cmp "$2" "$scratch/$name.VKG" || fail "looking at a project has changed its file"
