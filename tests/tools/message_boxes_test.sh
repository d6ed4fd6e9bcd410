#!/usr/bin/env bash
# The table "Every message box" of docs/handbook.md has the titles of "Message boxes and file dialogs"
# in docs/architecture.md, which is compared with the sources, and no others:
# tests/tools/message_boxes_test.sh SOURCE_FOLDER
set -euo pipefail
export LC_ALL=C
cd "$1/docs"
# Texts within boxes, which the sources' table has too.
inner='^(IT IS POSSIBLE IN THIS MODE|THAT WILL NOT RUN PROPERLY|THIS MUST BE CORRECTED|SEE WIRING DIAGRAM|FORMULA REJECTED)'

# The titles of a table: the texts between backquotes in the first column of a section; those in
# parentheses explain. TIMING PROBLEM 1 is a TIMING PROBLEM.
titles() {
  awk -v section="$2" '
    /^#/ { inside = $0 ~ section "$" }
    inside && /^\| `/ {
      split($0, cells, / \| /)
      gsub(/ \([^)]*\)/, "", cells[1])
      count = split(cells[1], parts, "`")
      for (at = 2; at < count; at += 2) print parts[at]
    }' "$1" | sed -E 's/ [12]$//; s/^ +//' | grep -vE "$inner" | sort -u
}
sources="$(titles architecture.md 'Message boxes and file dialogs')"
handbook="$(titles handbook.md 'Every message box')"
[[ "$(wc -l <<<"$sources")" -gt 50 ]] || { echo "FAILED: no titles in architecture.md" >&2; exit 1; }
if ! difference="$(diff <(echo "$sources") <(echo "$handbook"))"; then
  echo "FAILED: < is missing in docs/handbook.md, > is no title of a box" >&2
  echo "$difference" >&2
  exit 1
fi
if grep -nE '^\| `[^|]*\|( *\||[^|]*\| *\|)' handbook.md; then
  echo "FAILED: a box without a text" >&2
  exit 1
fi
