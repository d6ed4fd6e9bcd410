#!/usr/bin/env bash
# Loads, resaves, generates, checks and shows every project of a folder: tools/try-samples.sh PROGRAM FOLDER
# The program may report faults of a project (exit code 1) but must not crash. A second save may
# differ from the first only in empty units, which the format restores as the default; a third must
# have the same bytes.
set -euo pipefail
program="$1"
samples="$2"
export SOURCE_DATE_EPOCH=1000000000
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch"/{first,second,third}
failed=0

# Runs a command that must end with 0 or 1 within a minute.
try() {
  local code=0
  timeout 60 "$@" >"$scratch/said" 2>&1 || code=$?
  if [[ $code -gt 1 ]]; then
    echo "exit code $code: $*"
    tail -n 40 "$scratch/said"
    failed=1
  fi
}

count=0
shopt -s nullglob
for project in "$samples"/*.VKG; do
  title="$(basename "$project" .VKG)"
  try "$program" resave "$project" -o "$scratch/first"
  try "$program" resave "$scratch/first/$title.VKG" -o "$scratch/second"
  try "$program" resave "$scratch/second/$title.VKG" -o "$scratch/third"
  try "$program" generate "$project" -o "$scratch/first"
  for command in check summary wiring; do try "$program" "$command" "$project"; done
  difference="$(diff --text "$scratch"/{first,second}/"$title.VKG" | grep -a '^[<>]' |
    grep -avE '^> (Long)?Units\(' || true)"
  if [[ -n "$difference" ]]; then
    echo "$title: a second save differs from the first: $difference"
    failed=1
  fi
  if ! cmp "$scratch"/{second,third}/"$title.VKG"; then
    echo "$title: a third save differs from the second"
    failed=1
  fi
  for extension in VKP VKD VKW; do
    if [[ ! -s "$scratch/first/$title.$extension" ]]; then
      echo "$title: no .$extension"
      failed=1
    fi
  done
  count=$((count + 1))
done
echo "$count projects tried"
[[ $count -gt 0 && $failed -eq 0 ]]
