#!/usr/bin/env bash
# Runs the examples of a page as printed there: tests/tools/page_examples_test.sh PAGE OSTRAND
# A block ```KIND NAME is written to the file NAME. In a block ```console each line that begins with
# "$ " is a command, followed by its output, in which "..." stands for any text.
set -euo pipefail
page="$(realpath "$1")"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/bin" "$scratch/work" "$scratch/home"
ln -s "$(realpath "$2")" "$scratch/bin/ostrand"
export PATH="$scratch/bin:$PATH" HOME="$scratch/home" XDG_CONFIG_HOME="$scratch/home"
export SOURCE_DATE_EPOCH=1000000000
unset NO_COLOR CLICOLOR_FORCE
cd "$scratch/work"
failures=0
commands=0

# Runs a command and compares what it prints.
try() {
  local command="$1" expected="$2" shown pattern
  commands=$((commands + 1))
  shown="$(bash -c "$command" 2>&1 </dev/null)" || true
  # All of it is literal, except for "...".
  pattern="$(sed -e 's/[][*?\\]/\\&/g' -e 's/\.\.\./*/g' <<<"$expected")"
  # shellcheck disable=SC2053
  if [[ "$shown" != $pattern ]]; then
    printf 'FAILED: $ %s\n--- in the page\n%s\n--- shown\n%s\n' "$command" "$expected" "$shown" >&2
    failures=$((failures + 1))
  fi
}

inside=""
command=""
output=""
flush() {
  if [[ -n "$command" ]]; then try "$command" "${output%$'\n'}"; fi
  command=""
  output=""
}
while IFS= read -r line; do
  if [[ "$line" == '```'* ]]; then
    flush
    if [[ -n "$inside" ]]; then
      inside=""
    elif [[ "$line" == '```console' ]]; then
      inside=console
    elif [[ "$line" == '```'*' '* ]]; then
      inside="file ${line##* }"
      : >"${inside#file }"
    else
      inside=other
    fi
  elif [[ "$inside" == console && "$line" == '$ '* ]]; then
    flush
    command="${line#'$ '}"
  elif [[ "$inside" == console ]]; then
    output+="$line"$'\n'
  elif [[ "$inside" == file* ]]; then
    printf '%s\n' "$line" >>"${inside#file }"
  fi
done <"$page"
flush
if [[ "$commands" -eq 0 ]]; then
  echo "FAILED: no command in $page" >&2
  exit 1
fi
[[ "$failures" -eq 0 ]]
