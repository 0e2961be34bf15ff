#!/usr/bin/env bash
# Installs what building and running (and, with --checks, checking) needs on Debian 12. Installs
# only what is missing, so that a machine that has everything needs neither network nor root.
set -euo pipefail

# The last line is what the window program runs with: the reader of its icon, the Japanese of the
# toolkit's own dialogs, letters.
packages=(build-essential cmake ninja-build libexpected-dev libcli11-dev libxxhash-dev libgtest-dev libgmock-dev
  qt6-base-dev qt6-svg-dev
  libqt6svg6 qt6-translations-l10n fonts-noto-cjk)
if [ "${1:-}" = --checks ]; then
  packages+=(ccache clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev
    appstream desktop-file-utils librsvg2-bin libxml2-utils lintian man-db mandoc)
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
