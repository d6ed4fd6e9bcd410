#!/usr/bin/env bash
# The code shown in docs/contributing.md is in the sources, and the paths that the page names exist:
# tests/tools/quoted_code_test.sh SOURCE_FOLDER
# A block ```cpp PATH has lines of that file, in their order; "..." stands for lines left out.
set -euo pipefail
cd "$1"
page=docs/contributing.md
LC_ALL=C awk '
  /^```/ {
    if (path != "") { path = ""; next }
    path = $2
    line = 0
    if (path == "") { path = "none"; next }
    ++blocks
    count = 0
    while ((getline text[++count] < path) > 0) {}
    close(path)
    next
  }
  path != "" && path != "none" && $0 != "..." {
    do ++line; while (line < count && text[line] != $0)
    if (line >= count) {
      print "FAILED: not in " path ", or not in this order: " $0
      failed = 1
    }
  }
  END {
    if (blocks < 5) { print "FAILED: no code"; failed = 1 }
    exit failed
  }' "$page"

failed=0
while read -r path; do
  # Files that a build makes do not count.
  [[ "$path" == build/* || "$path" == .ci/* || -e "$path" ]] || {
    echo "FAILED: $page names $path, which does not exist"
    failed=1
  }
done < <(grep -oE '(build/release/)?(src|app|docs|tests|include|tools|examples|cmake)/[A-Za-z0-9_./-]*[A-Za-z0-9_/]' "$page" | sort -u)
exit "$failed"
