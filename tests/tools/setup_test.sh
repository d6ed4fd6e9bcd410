#!/usr/bin/env bash
# ./test and ./run on a machine without packages: tests/tools/setup_test.sh SOURCE_FOLDER
# dpkg-query, id, sudo, apt-get, cmake and ctest are stand-ins that record their calls; nothing is
# installed or built.
set -euo pipefail
shopt -s extglob
source_folder="$1"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
calls="$scratch/calls"
failures=0

# One stand-in: a name, and its action after its call was recorded.
stand_in() {
  printf '#!/bin/bash\necho "%s $*" >>"%s"\n%s\n' "$1" "$calls" "$2" >"$scratch/bin/$1"
  chmod +x "$scratch/bin/$1"
}

# A machine: the packages it has ("all", "none", or "noqt" for all but Qt), its user's number, and whether sudo,
# `apt-get update` and `apt-get install` succeed (0) or not (1).
machine() {
  rm -rf "$scratch/bin"
  mkdir "$scratch/bin"
  : >"$calls"
  case "$1" in
    all) stand_in dpkg-query 'echo -n installed' ;;
    none) stand_in dpkg-query 'exit 1' ;;
    # shellcheck disable=SC2016
    noqt) stand_in dpkg-query '[[ "$*" != *" qt6-"* ]] && echo -n installed' ;;
  esac
  stand_in id "echo $2"
  # shellcheck disable=SC2016
  stand_in sudo '[ '"$3"' = 0 ] || exit 1; shift; exec "$@"'
  # shellcheck disable=SC2016
  stand_in apt-get 'case "$*" in *install*) exit '"$5"' ;; *) exit '"$4"' ;; esac'
  stand_in cmake ''
  stand_in ctest ''
}

# Runs a script of the project, with its arguments, and compares its exit code, the message and the
# calls (patterns).
expect() {
  local what="$1" code="$3" message="$4" called="$5" not_called="$6" got=0
  local -a script
  read -ra script <<<"$2"
  PATH="$scratch/bin:$PATH" "$source_folder/${script[0]}" "${script[@]:1}" \
    >"$scratch/out" 2>"$scratch/err" || got=$?
  [[ "$got" -eq "$code" ]] || fail "$what: exit code $got"
  [[ "$(cat "$scratch/err")" == $message ]] || fail "$what: $(cat "$scratch/err")"
  [[ "$(cat "$calls")" == $called ]] || fail "$what: not called: $called"
  [[ -z "$not_called" || "$(cat "$calls")" != $not_called ]] || fail "$what: called: $not_called"
}
fail() {
  echo "FAILED: $1" >&2
  failures=$((failures + 1))
}

build="cmake ninja-build g++"
tests="$build libgtest-dev libgmock-dev"
qt="qt6-base-dev qt6-svg-dev"
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
command="  sudo apt-get install --no-install-recommends"

machine none 1000 1 0 0
expect "test without rights" test 1 \
  "Missing packages: $tests"$'\n'"This user may not install packages. Install them with:"$'\n'"$command $tests" \
  '*' '*@(apt-get|cmake|ctest) *'
machine none 1000 1 0 0
expect "run without rights" run 1 "Missing packages: $build"$'\n'*"$command $build" '*' '*@(apt-get|cmake) *'
machine none 0 1 1 0
expect "no package lists" test 1 "Missing packages: $tests"$'\n'"The package lists cannot be fetched.*$command $tests" \
  '*apt-get update*' '*@(apt-get install|cmake|ctest) *'
machine none 0 1 0 1
expect "no such package" test 1 "*The packages cannot be installed.*$command $tests" '*apt-get install*' '*cmake --*'
machine none 1000 0 0 0
expect "installed with sudo" test 0 '' "*apt-get update*apt-get install*$tests*ctest *" ''
machine all 1000 1 0 0
expect "nothing missing" test 0 '' '*cmake --preset*OSTRAND_DESKTOP=ON*cmake --build*ctest *' '*@(sudo|apt-get) *'
machine noqt 1000 1 0 0
expect "test without Qt" test 0 \
  "Missing packages: $qt"$'\n'"*$command $qt"$'\n'"Without Qt 6 the desktop is neither built nor tested*" \
  '*OSTRAND_DESKTOP=AUTO*ctest *' '*apt-get *'

# A build of one target fails, so that ./run does not go on to run it.
machine noqt 1000 1 0 0
stand_in cmake '[[ "$*" != *--target* ]]'
expect "run builds the command alone" run 1 '' '*cmake --build*--target ostrand' '*@(apt-get *|-desktop)*'
machine all 1000 1 0 0
stand_in cmake '[[ "$*" != *--target* ]]'
DISPLAY=:987 expect "run desktop" 'run desktop' 1 '' '*OSTRAND_DESKTOP=ON*cmake --build*ostrand-desktop' ''
machine noqt 1000 1 0 0
DISPLAY=:987 expect "desktop without Qt" 'run desktop' 1 "Missing packages: $qt"$'\n'"*$command $qt" '*' '*cmake --*'
machine all 1000 1 0 0
expect "desktop without a display" 'run desktop' 1 'There is no display*DISPLAY*ssh -X*xvfb-run*' '' ''
expect "run with a wrong word" 'run dekstop' 2 'usage: *' '' ''

[[ "$failures" -eq 0 ]]
