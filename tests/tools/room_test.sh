#!/usr/bin/env bash
# Builds rooms with wrong includes: tests/tools/room_test.sh SOURCE_FOLDER CMAKE COMPILER
# The rooms are fictitious: `middle` may include `aid`, `deep` and through it `low`; `top` is above
# it.
set -euo pipefail
source_folder="$1"
cmake="$2"
house="$(mktemp -d)"
trap 'rm -rf "$house"' EXIT
failures=0

# Builds, and compares the exit code (0 or 1) and the error lines.
expect() {
  local what="$1" code="$2" lines="$3" got=0
  "$cmake" --build "$house/build" >"$house/out" 2>&1 || got=1
  if [[ "$got" -ne "$code" || "$(grep ': error: ' "$house/out")" != "$lines" ]]; then
    echo "FAILED: $what: exit code $got" >&2
    cat "$house/out" >&2
    failures=$((failures + 1))
  fi
}

mkdir -p "$house"/src/{aid,low/deep,middle,top}
touch "$house"/src/{aid/aid,low/low,low/deep/deep,middle/middle,top/top}.{h,cpp}
cat >"$house/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.22)
project(house LANGUAGES CXX)
add_library(ostrand_flags INTERFACE)
include($source_folder/cmake/room.cmake)
ostrand_room(low)
ostrand_room(deep FOLDER low/deep KNOWS low)
ostrand_room(aid)
ostrand_room(middle KNOWS deep aid)
ostrand_room(top KNOWS middle)
END
cat >"$house/src/middle/middle.cpp" <<'END'
#include "middle/middle.h"

#include <sys/stat.h>
#include <string>

#include "low/deep/deep.h"
#include "low/low.h"
// #include "top/top.h"
const char* text = "[one; two] #include \"top/top.h\"";
END
"$cmake" -G Ninja -S "$house" -B "$house/build" "-DCMAKE_CXX_COMPILER=$3" >"$house/out" 2>&1 ||
  { cat "$house/out" >&2 && exit 1; }
expect "good includes" 0 ''
expect "nothing new" 0 ''
grep -q "no work to do" "$house/out" || { echo "FAILED: checked again" >&2 && failures=1; }

knows="it knows aid, low, low/deep"
echo '#include "top/top.h"' >"$house/src/middle/middle.h"
expect "a header" 1 "src/middle/middle.h:1: error: room middle may not include top/top.h; $knows"
echo >"$house/src/middle/middle.h"
expect "the header put right" 0 ''

# They would compile.
cat >"$house/src/middle/middle.cpp" <<'END'
#include "low/low.h"

const char* text = "[;]";
#include "top/top.h"
  #  include <top/top.h>
#include "../top/top.h"
#include "middle.h"
END
expect "a source" 1 "src/middle/middle.cpp:4: error: room middle may not include top/top.h; $knows
src/middle/middle.cpp:5: error: room middle may not include top/top.h; $knows
src/middle/middle.cpp:6: error: room middle may not include ../top/top.h; $knows
src/middle/middle.cpp:7: error: room middle may not include middle.h; $knows"
rm "$house/src/middle/middle.cpp"
echo '#include "low/low.h"' >"$house/src/middle/new.cpp"
echo '#include "low/deep/deep.h"' >"$house/src/low/low.h"
expect "a room that knows none" 1 \
  "src/low/low.h:1: error: room low may not include low/deep/deep.h; it knows no other room"

[[ "$failures" -eq 0 ]]
