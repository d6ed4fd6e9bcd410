#!/usr/bin/env bash
# The report as a command, without a display: report_command_test.sh DESKTOP PROJECT
set -euo pipefail
desktop=$1
project=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_CONFIG_HOME=$folder XDG_STATE_HOME=$folder XDG_RUNTIME_DIR=$folder
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM

fail() { echo "FAILED: $*"; exit 1; }
# Exit status and message of a report that is refused.
refused() {
  local status=$1 words=$2 got=0
  shift 2
  "$desktop" "$@" 2> "$folder/errors" || got=$?
  [ "$got" = "$status" ] || fail "status $got, not $status: $*"
  grep -q -- "$words" "$folder/errors" || fail "no \"$words\": $(cat "$folder/errors")"
}

for extension in pdf svg png csv; do
  SOURCE_DATE_EPOCH=1700000000 TZ=Asia/Tokyo "$desktop" --report "$folder/one.$extension" "$project"
  SOURCE_DATE_EPOCH=1700000000 TZ=America/New_York "$desktop" --report "$folder/two.$extension" \
    "$project"
  cmp "$folder/one.$extension" "$folder/two.$extension" || fail "two runs differ: .$extension"
done
grep -aq '/CreationDate (D:20231114221320' "$folder/one.pdf" || fail "another moment"
"$desktop" --report "$folder/letter.pdf" --paper letter --parts wiring,Channels "$project"
grep -aq '/MediaBox \[0 0 612' "$folder/letter.pdf" || fail "another paper"

echo old > "$folder/kept.pdf"
refused 1 'FILE NOT FOUND' --report "$folder/kept.pdf" "$folder/none.VKG"
refused 2 'unknown part' --report "$folder/kept.pdf" --parts tables,all "$project"
refused 2 'A4 or Letter' --report "$folder/kept.pdf" --paper A3 "$project"
refused 2 'empty file name' --report '' "$project"
refused 2 'needs one project' --report "$folder/kept.pdf"
refused 1 'must end in .pdf' --report "$folder/kept.txt" "$project"
refused 1 'No such file or directory' --report "$folder/none/kept.pdf" "$project"
[ "$(cat "$folder/kept.pdf")" = old ] || fail "a refused report has replaced the old one"
