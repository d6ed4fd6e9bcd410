#!/usr/bin/env bash
# Installs missing packages of the named groups of tools/packages.txt: tools/setup.sh build test
# If it may not install, it names the packages and the command that installs them, and ends with
# exit code 1, so that its caller stops.
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

refuse() {
  echo "Missing packages: ${missing[*]}" >&2
  echo "$1. Install them with:" >&2
  echo "  sudo apt-get install --no-install-recommends ${missing[*]}" >&2
  exit 1
}

as_root=()
if [[ "$(id -u)" -ne 0 ]]; then
  as_root=(sudo -n)
  sudo -n true 2>/dev/null || refuse "This user may not install packages"
fi
command -v apt-get >/dev/null || refuse "There is no apt-get on this machine"
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq || refuse "The package lists cannot be fetched"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
  refuse "The packages cannot be installed"
