#!/usr/bin/env bash
# Checks the tables "From an output to its source" of docs/architecture.md against the sources and
# the outputs: each row is true, and every shown text has a row. Prints the faults.
# Usage: source_map_test.sh SOURCE_FOLDER
set -euo pipefail
cd "$1"
shopt -s globstar
LC_ALL=C exec awk -f tests/tools/source_map.awk docs/architecture.md src/**/*.{h,cpp} app/cli/*.{h,cpp} \
  tests/golden/*.{VKP,VKD,VKW,summary} examples/*.VKG
