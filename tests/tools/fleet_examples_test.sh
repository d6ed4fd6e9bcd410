#!/usr/bin/env bash
# Runs the examples of docs/fleet.md as printed there: tests/tools/fleet_examples_test.sh
# SOURCE_FOLDER OSTRAND
# Without GNU parallel its example is only parsed; without make that one is skipped. The test plays
# the part of Slurm.
set -euo pipefail
page="$1/docs/fleet.md"
examples="$1/examples"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
export HOME="$scratch" XDG_CONFIG_HOME="$scratch/settings" SOURCE_DATE_EPOCH=1000000000
mkdir "$scratch/bin" "$scratch/expected"
ln -s "$2" "$scratch/bin/ostrand"
export PATH="$scratch/bin:$PATH"
failures=0
fail() {
  echo "FAILED: $1" >&2
  failures=$((failures + 1))
}

# A fresh fleet of two shards in a separate folder, with all examples of the page.
fleet() {
  mkdir -p "$scratch/$1/projects/000" "$scratch/$1/projects/001"
  cd "$scratch/$1"
  cp "$examples"/{weather-mast,vehicle-test}.VKG projects/000
  cp "$examples"/{thermal-survey,bridge-monitoring}.VKG projects/001
  local name
  for name in shard.sh fleet.sh Makefile parallel.sh fleet.sbatch; do
    awk -v name="$name" '/^```/ { inside = $2 == name; next } inside' "$page" >"$name"
    [[ -s "$name" ]] || fail "no example $name"
  done
  chmod +x ./*.sh
}

for shard in 000 001; do mkdir "$scratch/expected/$shard"; done
fleet expect
ostrand generate projects/000/*.VKG -o "$scratch/expected/000" >/dev/null
ostrand generate projects/001/*.VKG -o "$scratch/expected/001" >/dev/null

same() { diff -r "$scratch/expected" out >/dev/null || fail "$1: other files"; }

# Tests a way to generate the fleet: it makes every file; with an unreadable project it fails, and
# makes all others.
way() {
  local what="$1"
  shift
  fleet "$what"
  "$@" >log.txt 2>&1 || fail "$what: $(cat log.txt)"
  same "$what"
  rm -rf out fleet.log
  mkdir projects/000/broken.VKG
  if "$@" >log.txt 2>&1; then fail "$what: success with a fault"; fi
  same "$what with a fault"
}

slurm() {
  local result=0 task
  for task in 0 1; do SLURM_ARRAY_TASK_ID="$task" bash fleet.sbatch || result=1; done
  return "$result"
}

way fleet ./fleet.sh
way slurm slurm
bash -n fleet.sbatch || fail "fleet.sbatch does not parse"

if parallel --version 2>/dev/null | grep -q 'GNU parallel'; then
  way parallel ./parallel.sh
  rm -r projects/000/broken.VKG out
  ./parallel.sh >log.txt 2>&1 || fail "parallel again: $(cat log.txt)"
  [[ -e out/000 && ! -e out/001 ]] || fail "parallel again: not only what failed"
else
  sh -n parallel.sh || fail "parallel.sh does not parse"
fi

if command -v make >/dev/null; then
  way make make -j 2 -k
  fleet again
  find projects -name '*.VKG' -exec touch -d '1 hour ago' {} +
  make >/dev/null
  touch -d '1 hour ago' out/*/*
  touch projects/000/vehicle-test.VKG
  make >log.txt
  [[ "$(cat log.txt)" == *vehicle-test* && "$(grep -c '^ostrand' log.txt)" == 1 ]] ||
    fail "make again: $(cat log.txt)"
fi

[[ "$failures" -eq 0 ]]
