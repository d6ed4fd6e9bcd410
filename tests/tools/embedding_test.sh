#!/usr/bin/env bash
# The example of an embedding program, as its users build it: tests/tools/embedding_test.sh
# SOURCE_FOLDER BUILD_FOLDER CXX [full]
# Against the installed library, moved after its installation, by find_package and by pkg-config; and
# as a part of a host's build, which is only configured, or with "full" built too.
set -euo pipefail
source="$1"
build="$2"
export CXX="$3"
full="${4:-}"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
export HOME="$scratch" XDG_CONFIG_HOME="$scratch/settings" SOURCE_DATE_EPOCH=1000000000
unset DESTDIR PKG_CONFIG_PATH CMAKE_PREFIX_PATH
example="$source/examples/embedding"
failures=0
fail() {
  echo "FAILED: $1" >&2
  [[ ! -e "$scratch/log" ]] || tail -20 "$scratch/log" >&2
  failures=$((failures + 1))
}
# Runs a command; its output is shown only if it fails.
quietly() {
  local what="$1"
  shift
  "$@" >"$scratch/log" 2>&1 || fail "$what"
}

# Two programs with their documents, by their paths without extension. The library takes the time from
# the clock, so the lines with dates differ.
same_but_dates() {
  local extension
  for extension in VKP VKD VKW; do
    diff <(grep -av -i 'date\|time written' "$2.$extension") \
      <(grep -av -i 'date\|time written' "$3.$extension") >"$scratch/log" || fail "$1: $2.$extension"
  done
}

# The example makes two projects whose programs are those of the command.
try() {
  local what="$1" program="$2" bench
  rm -rf "$scratch/out" "$scratch/expected"
  mkdir "$scratch/out" "$scratch/expected"
  quietly "$what: run" "$program" "$example/bench.txt" "$scratch/out" north south
  for bench in north south; do
    quietly "$what: command" "$build/ostrand" generate "$scratch/out/$bench.VKG" -o "$scratch/expected"
    same_but_dates "$what" "$scratch/out/$bench" "$scratch/expected/$bench"
  done
}

cmake --install "$build" --prefix "$scratch/installed" --component development >/dev/null
mv "$scratch/installed" "$scratch/moved"
if grep -rl -F -e "$source/" -e "$build" "$scratch/moved"; then fail "paths of the build are installed"; fi
headers="$(cd "$scratch/moved" && find include -type f | LC_ALL=C sort | tr '\n' ' ')"
[[ "$headers" == "include/ostrand/host.h include/ostrand/ostrand.h include/ostrand/session.h " ]] ||
  fail "headers: $headers"

quietly "find_package" cmake -S "$example" -B "$scratch/package" -G Ninja \
  -DCMAKE_PREFIX_PATH="$scratch/moved" \
  -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror"
quietly "find_package: build" cmake --build "$scratch/package"
try find_package "$scratch/package/bench_programs"
if command -v pkg-config >/dev/null && command -v make >/dev/null; then
  pc="$(dirname "$(find "$scratch/moved" -name ostrand.pc)")"
  cp "$example"/{main.cpp,Makefile} "$scratch"
  quietly "pkg-config: build" env PKG_CONFIG_PATH="$pc" make -C "$scratch" bench_programs
  try pkg-config "$scratch/bench_programs"
  version="$(PKG_CONFIG_PATH="$pc" pkg-config --modversion ostrand)"
  [[ -n "$version" && "$("$build/ostrand" --version)" == *"$version"* ]] || fail "pkg-config: version $version"
else
  echo "not tried: the example with pkg-config and make; one of them is missing" >&2
fi

# The program of the page.
awk '/^```/ { inside = $2 == "first.cpp"; next } inside' "$source/docs/embedding.md" >"$scratch/first.cpp"
library="$(find "$scratch/moved" -name libostrand.a)"
quietly "page: build" "$CXX" -std=c++17 -Wall -Wextra -I "$scratch/moved/include" -o "$scratch/first" \
  "$scratch/first.cpp" "$library"
mkdir "$scratch/page" "$scratch/page-expected"
quietly "page: run" "$scratch/first" "$source/examples/weather-mast.VKG" "$scratch/page"
quietly "page: command" "$build/ostrand" generate "$source/examples/weather-mast.VKG" -o "$scratch/page-expected"
same_but_dates "page" "$scratch/page/weather-mast" "$scratch/page-expected/weather-mast"
if "$scratch/first" "$scratch/none.VKG" "$scratch" >/dev/null 2>"$scratch/log"; then fail "page: no fault"; fi
[[ "$(cat "$scratch/log")" == "FILE NOT FOUND: "* ]] || fail "page: message"

# As a part of a host's build: no warnings as errors, no tests, nothing to install, no command.
for from in subdirectory fetch; do
  host="$scratch/$from"
  quietly "$from" cmake -S "$example" -B "$host" -G Ninja -DOSTRAND_FROM="$from" \
    -DOSTRAND_SOURCE="$source" -DCMAKE_BUILD_TYPE=Debug
  commands="$(ninja -C "$host" -t commands 2>/dev/null)"
  [[ "$commands" == *main.cpp*libostrand.a* ]] || fail "$from: the library is not linked"
  [[ "$commands" != *-Werror* && "$commands" != *gtest* && "$commands" != *Qt6* ]] ||
    fail "$from: commands of the project itself"
  [[ "$commands" != *app/cli* ]] || fail "$from: the command is built"
  quietly "$from: install" cmake --install "$host" --prefix "$scratch/host-installed"
  [[ -z "$(find "$scratch/host-installed" -type f 2>/dev/null)" ]] || fail "$from: installs files"
  [[ "$(ctest --test-dir "$host" -N 2>&1)" == *"Total Tests: 0"* ||
    "$(ctest --test-dir "$host" -N 2>&1)" == *"No tests were found"* ]] || fail "$from: has tests"
done
if [[ "$full" == full ]]; then
  quietly "subdirectory: build" cmake --build "$scratch/subdirectory"
  try subdirectory "$scratch/subdirectory/bench_programs"
fi

[[ "$failures" -eq 0 ]]
