#!/usr/bin/env bash
# Builds ミルテ, makes the demo market from the quotes in demo/, screens it, shows the lists and draws
# a chart to a file.
# With --window it opens the program on that market afterwards.
# The market stays in build/demo (or in the directory of $ORIN_DEMO) and can be explored with
# orin-cli --home build/demo.
set -euo pipefail
cd "$(dirname "$0")/.."

window=
case ${1:-} in
  '') ;;
  --window) window=1 ;;
  *) echo "使い方：scripts/demo.sh [--window]" >&2; exit 2 ;;
esac

scripts/install-packages.sh >&2
cmake --preset release >/dev/null
cmake --build --preset release --target orin-cli --target orin-draw --target orin >&2

home=${ORIN_DEMO:-build/demo}
cli=(build/release/src/app/orin-cli --home "$home")

rm -rf "$home"
mkdir -p "$home"
cp -r demo/. "$home"
for analysis in "$home"/analysis/*.txt; do
  mkdir -p "$home/patrol/$(basename "$analysis" .txt)"
done

echo "■ 株価の取り込み（ファイル数,銘柄数,取引日数）"
"${cli[@]}" init
"${cli[@]}" update-csv --stocks "$home/stocks.csv"

echo
echo "■ 株価データの検査"
"${cli[@]}" check 2>&1

echo
echo "■ 株価分析（分析結果のファイル、選ばれた銘柄の数）"
results=$("${cli[@]}" screen --group "$home/orin.chk" | sed "s|^$PWD/||")
echo "$results"

while IFS=$'\t' read -r list count; do
  echo
  echo "■ $list（${count}銘柄）"
  iconv -f CP932 -t UTF-8 "$list" | tr -d '\r'
done <<<"$results"

echo
echo "■ チャート"
chart=$home/chart.png
"${cli[@]}" chart AAPL --sub rsi --sub ichimoku -o "$chart"
echo "$chart"

if [ -n "$window" ]; then
  exec build/release/src/app/orin --home "$home"
fi
