#!/usr/bin/env bash
# Draws every sub-chart into docs/gallery and writes its page. Run scripts/demo.sh before.
#   scripts/gallery.sh [program [home]]
set -euo pipefail
cd "$(dirname "$0")/.."

cli=(${1:-build/release/src/app/orin-cli} --home "${2:-build/demo}")
out=docs/gallery
stock=AAPL
mkdir -p "$out"
rm -f "$out"/*.png

# The demo market has no quotes within a day: one made-up day for the intraday chart alone.
intraday() {
  perl -e '
    my ($slot, $date) = @ARGV;
    my $price = 309.6;
    print pack("d<", $date), "\0" x 3512, "\0" x (3520 * ($slot - 2));
    for my $i (0 .. 79) {
      if ($i > 77) { print pack("l< q<5", 0, 0, 0, 0, 0, -10000); next; }
      my $open = $price;
      $price += sin($i * 0.37) * 0.22 + cos($i * 1.3) * 0.12;
      my ($low, $high) = $open < $price ? ($open, $price) : ($price, $open);
      my $volume = int(150000 + 350000 * (($i - 39) / 39) ** 2);
      print pack("l< q<5", 9.5 * 3600 + 300 * ($i + 1), map { int($_ * 10000 + 0.5) }
        $open, $high + 0.11, $low - 0.09, $price, $volume);
    }' "$1" "$2"
}
slot=$("${cli[@]}" master "$stock" | tail -1 | cut -d, -f3)
data="${2:-build/demo}/data/orint001.dat"
trap 'rm -f "$data"' EXIT
intraday "$slot" 43840 >"$data"

page=$out/README.md
{
  echo '# チャートの見本'
  echo
  echo '`scripts/gallery.sh` が見本市場の株価から作るページです。日中足の株価だけは見本のために作ったものです。'
} >"$page"

draw() { # file, heading, options...
  local file=$1 heading=$2
  shift 2
  "${cli[@]}" chart "$stock" --size "${size:-720x520}" -o "$out/$file.png" "$@"
  printf '\n## %s\n\n![%s](%s.png)\n' "$heading" "$heading" "$file" >>"$page"
}

draw main ローソク足
draw main_bars バーチャートと重ねた出来高 --main bar --volume overlay
draw main_log 対数の目盛、比較銘柄 --axis log --compare ^DJI --from 2015/01/12 --volume none
draw main_percent 騰落率の目盛、終値の線 --axis percent --main line --theme light
draw main_week 週足 --period week
draw main_month 月足 --period month --theme light
draw print_grey 灰色の印刷 --ink grey --sub ichimoku --volume none
draw print_pattern 白黒の印刷 --ink pattern --sub bollinger --volume none

while IFS=, read -r number name key; do
  [ "$number" = 番号 ] && continue
  period=day
  prefix=
  case $name in
    週足*) period=week prefix=week_ ;;
    月足*) period=month prefix=month_ ;;
  esac
  options=(--period "$period" --sub "$key" --volume none)
  case $key in
    kagi) options+=(--from 2015/01/12) ;;
    correlation | inversewatch) options+=(--from 2019/01/02) ;;
  esac
  size=
  [ "$key" = pf ] && size=720x1000 && options+=(--from 2018/01/02)
  size=$size draw "$prefix$key" "$name" "${options[@]}"
done < <("${cli[@]}" chart --list)
