#!/usr/bin/env bash
# The desktop's files are valid, and the Debian package holds everything, is clean and works where
# it is unpacked.
#   check_packaging.sh SOURCE_DIRECTORY BUILD_DIRECTORY
set -euo pipefail
source=$1
build=$2
files=$source/packaging
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
  echo "$*" >&2
  exit 1
}

desktop-file-validate "$files/orin.desktop"
appstreamcli validate --no-net --pedantic "$build/packaging/orin.metainfo.xml"
xmllint --noout "$files/orin.svg" "$files/orin.metainfo.xml"
for size in 16 256; do
  rsvg-convert -w $size -h $size "$files/orin.svg" -o "$scratch/icon.png"
  [ "$(stat -c %s "$scratch/icon.png")" -gt $((size * 10)) ] || fail "orin.svg is blank at $size"
done
for page in "$files"/man/*.1; do
  mandoc -T lint -W warning "$page"
  warnings=$(MANWIDTH=80 LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l "$page" 2>&1 >/dev/null)
  [ -z "$warnings" ] || fail "$page: $warnings"
done

# A manual page that links to nothing is a page lost to the reader.
for page in "$source"/docs/*/*.md "$source"/docs/*.md "$source"/README.md; do
  for target in $(grep -o ']([^):]*)' "$page" | sed 's/^](//; s/[#)].*//'); do
    [ -e "$(dirname "$page")/$target" ] || fail "$page links to $target, which is not there"
  done
done

(cd "$scratch" && cpack --config "$build/CPackConfig.cmake" -B "$scratch/made" >"$scratch/log" 2>&1) ||
  fail "$(cat "$scratch/log")"
package=$(echo "$scratch"/made/orin_*.deb)
dpkg-deb -x "$package" "$scratch/root"
cd "$scratch/root/usr"
for file in bin/orin bin/orin-cli bin/orin-draw \
  share/orin/demo/orin.ini share/orin/demo/brand/^DJI.csv share/orin/manual/index.md \
  share/orin/items.md share/applications/orin.desktop \
  share/icons/hicolor/scalable/apps/orin.svg share/metainfo/jp.orin.orin.metainfo.xml \
  share/man/ja/man1/orin.1.gz share/man/ja/man1/orin-cli.1.gz share/man/ja/man1/orin-draw.1.gz share/man/man1/orin.1.gz \
  share/doc/orin/copyright share/doc/orin/changelog.Debian.gz; do
  [ -e "$file" ] || fail "the package has no $file"
done
control=$(dpkg-deb -f "$package" Depends)
for needed in libqt6widgets6 libqt6svg6 qt6-translations-l10n fonts-; do
  [[ $control == *$needed* ]] || fail "the package does not depend on $needed: $control"
done
lintian --allow-root --fail-on error,warning "$package"

# The programs find what belongs to them where they are, wherever that is.
bin/orin-cli --help >/dev/null
[ "$(bin/orin --version)" = "$(dpkg-deb -f "$package" Version | sed 's/-.*//')" ] ||
  fail "orin --version is not the package's version"
home=$scratch/home
cp -r share/orin/demo "$home"
bin/orin-cli --home "$home" init
[ "$(bin/orin-cli --home "$home" update-csv --stocks "$home/stocks.csv")" = 43,43,1013 ] ||
  fail "the demo market is another one"
bin/orin-cli --home "$home" chart AAPL -o "$scratch/chart.png"
[ "$(head -c 4 "$scratch/chart.png" | tail -c 3)" = PNG ] || fail "orin-draw has drawn no picture"
QT_QPA_PLATFORM=offscreen timeout 60 bin/orin --home "$home" --close-when-ready
[ ! -e "$home/orin.act" ] || fail "orin has not ended as it should"
[ ! -e "$home/orinerr.txt" ] || fail "orin: $(iconv -f CP932 -t UTF-8 "$home/orinerr.txt")"
