#!/usr/bin/env bash
# What the build says of wrong includes: tests/tools/check_room_test.sh SOURCE_FOLDER CMAKE
# The rooms are made up: `middle` knows `low`, and there is `top` above it.
set -euo pipefail
source_folder="$1"
cmake="$2"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
failures=0

# Compares the check's exit code (0 or 1) and error lines for the room `middle`.
expect() {
  local what="$1" code="$2" lines="$3" got=0
  rm -f "$scratch/stamp"
  "$cmake" "-DSOURCE_DIR=$scratch" -DROOM=middle "-DKNOWS=low/deep;low" "-DSTAMP=$scratch/stamp" \
    -P "$source_folder/cmake/check_room.cmake" >"$scratch/out" 2>&1 || got=1
  [[ "$got" -eq "$code" ]] || fail "$what: exit code $got"
  [[ "$(grep ': error: ' "$scratch/out" || true)" == "$lines" ]] ||
    fail "$what: $(cat "$scratch/out")"
  [[ "$code" -ne 0 || -e "$scratch/stamp" ]] || fail "$what: no stamp"
  [[ "$code" -eq 0 || ! -e "$scratch/stamp" ]] || fail "$what: a stamp after an error"
}
fail() {
  echo "FAILED: $1" >&2
  failures=$((failures + 1))
}

mkdir -p "$scratch"/src/{low/deep,middle,top}
touch "$scratch"/src/{low/low,low/deep/deep,middle/middle,top/top}.h
cat >"$scratch/src/middle/good.cpp" <<'END'
#include "middle/middle.h"

#include <sys/stat.h>
#include <vector>

#include "low/deep/deep.h"
#include "low/low.h"
// #include "top/top.h"
const char* const kText = R"([one; two] #include "top/top.h")";
END
expect "good includes" 0 ''

cat >"$scratch/src/middle/bad.cpp" <<'END'
#include "low/low.h"

const char* const kText = "[;]";
#include "top/top.h"
  #  include <top/top.h>
#include "../top/top.h"
END
printf '#include "good.h"\n' >"$scratch/src/middle/bad.h"
knows="it knows low/deep, low"
expect "wrong includes" 1 "src/middle/bad.cpp:4: error: room middle may not include top/top.h; $knows
src/middle/bad.cpp:5: error: room middle may not include top/top.h; $knows
src/middle/bad.cpp:6: error: room middle may not include ../top/top.h; $knows
src/middle/bad.h:1: error: room middle may not include good.h; $knows"

[[ "$failures" -eq 0 ]]
