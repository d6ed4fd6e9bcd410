#!/usr/bin/env bash
# Installs what is missing of the package groups named: tools/setup.sh build test
# The groups are those of tools/packages.txt. Where nothing may be installed, it says what is
# missing and leaves it to the build to find its tools elsewhere.
set -euo pipefail
export PATH="${PATH:-/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin}"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"

missing=()
while read -r group package; do
  [[ " $* " == *" $group "* ]] || continue
  status="$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)"
  [[ "$status" == installed ]] || missing+=("$package")
done < <(grep -v '^#' "$here/packages.txt")
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ "$(id -u)" -ne 0 ]]; then
  as_root=(sudo -n)
fi
if ! command -v apt-get >/dev/null || ! "${as_root[@]}" true 2>/dev/null; then
  echo "Packages that could not be installed here: ${missing[*]}" >&2
  exit 0
fi
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
