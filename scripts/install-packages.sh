#!/usr/bin/env bash
# Installs what building (and, with --checks, checking) needs on Debian 12. Installs only what is
# missing, so that a machine that has everything needs neither network nor root.
set -euo pipefail

packages=(build-essential cmake ninja-build libexpected-dev libcli11-dev)
if [ "${1:-}" = --checks ]; then
  packages+=(libgtest-dev libgmock-dev clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev)
fi

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
    missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
