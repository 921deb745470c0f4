#!/usr/bin/env bash
# install_packages.sh PURPOSE...: installs the Debian packages that tools/packages.txt lists under each purpose.
# Does nothing, and needs no rights, when all are there.
set -euo pipefail
list="$(dirname "$0")/packages.txt"

wanted=()
for purpose in "$@"; do
    read -r -a packages <<<"$(awk -v p="# $purpose" '/^#/ {inside = ($0 == p); next} inside' "$list" | tr '\n' ' ')"
    [ "${#packages[@]}" -gt 0 ] || { echo "install_packages.sh: no packages under '$purpose' in $list" >&2; exit 2; }
    wanted+=("${packages[@]}")
done

missing=()
for package in "${wanted[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
[ "${#missing[@]}" -gt 0 ] || exit 0

echo "Installing from Debian: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo=sudo
$sudo apt-get update -qq
$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
