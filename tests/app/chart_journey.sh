#!/usr/bin/env bash
# Charts as files and as values.
source "$(dirname "$0")/journey.sh"
fresh_home
cli init && cli update-csv --stocks "$home/stocks.csv" >/dev/null 2>&1
out=$home/out
mkdir -p "$out"

# The first bytes of a file, and of a picture its size.
kind() { head -c 4 "$1" | tr -d '\0'; }
size() { od -An -tu1 -j16 -N8 "$1" | awk '{ print $3 * 256 + $4 "x" $7 * 256 + $8 }'; }

expect "a picture" 0 "" cli chart AAPL -o "$out/a.png"
expect_text "it is a picture" $'\x89PNG' "$(kind "$out/a.png")"
expect_text "of the usual size" 1000x700 "$(size "$out/a.png")"
expect "all at once" 0 "" cli chart BA --period week --from 2017/01/01 --to 2019/06/30 --main bar \
  --axis log --volume overlay --compare ^DJI --sub rsi --sub 一目均衡表チャート --sub 5 \
  --size 640x480 --scale 1.5 --theme light -o "$out/b.png"
expect_text "size times scale" 960x720 "$(size "$out/b.png")"
expect "a pixel" 0 "" cli chart AAPL --size 1x1 -o "$out/c.png"
expect "a drawing" 0 "" cli chart AAPL --sub kagi -o "$out/a.svg"
expect_text "its texts are whole" 1 "$(grep -c '>銘柄：</text>' "$out/a.svg")"
expect "a page" 0 "" cli chart AAPL --ink pattern -o "$out/a.pdf"
expect_text "it is a page" %PDF "$(kind "$out/a.pdf")"
expect_text "equal charts are equal files" "$(cksum <"$out/a.png")" \
  "$(cli chart AAPL -o "$out/d.png" && cksum <"$out/d.png")"

# Each plotted column is the series of the expression that heads it.
plotted() { cli chart AAPL --volume none "$@" --data; }
for period in day week month; do
  sub=$([ $period = day ] && echo bollinger || echo rci)
  heads=$(plotted --period $period --sub $sub | head -1)
  # Only commas outside brackets part columns.
  mapfile -t expressions < <(sed 's/,\([^()",]*([^)]*)\)/\n\1/g; s/"//g; s/\([^(]\),\([^0-9-]\)/\1\n\2/g' <<<"$heads" | grep '(')
  [ ${#expressions[@]} -ge 3 ] || expect_text "columns of $heads" "three or more" "${#expressions[@]}"
  columns=$(plotted --period $period --sub $sub | tail -n +2 | cut -d, -f1,7-)
  dates=$(cut -d, -f1 <<<"$columns")
  series=$(cli series --code AAPL "${expressions[@]}" | grep -F "$dates")
  expect_text "plotted values of $period" "$(cksum <<<"$series")" "$(cksum <<<"$columns")"
done
expect_text "a kagi line as a table" "番号,年月日,株価" \
  "$(plotted --sub kagi | grep -A1 かぎ足 | tail -1)"

before=$(cksum <"$out/a.png")
expect "no such sub-chart" 2 "サブチャート「xyz」はありません。" cli chart AAPL --sub xyz -o "$out/a.png"
expect "of other bars" 2 "「週足複合チャート１」は週足のチャートにだけ表示できます。" \
  cli chart AAPL --sub 週足複合チャート１ -o "$out/a.png"
for size in 0x10 10 x 10x-1 99999x2 20000x20000 10x10x10; do
  expect "size $size" 2 "--size「$size」" cli chart AAPL --size $size -o "$out/a.png"
done
expect "unknown kind of file" 2 "「$out/a.bmp」の種類は" cli chart AAPL -o "$out/a.bmp"
expect "no directory" 1 "$out/none/a.png" cli chart AAPL -o "$out/none/a.png"
expect "nothing to do" 2 "-o" cli chart AAPL
expect "no stock" 2 "CODE" cli chart -o "$out/a.png"
expect "unknown stock" 1 "銘柄コードが見つかりません。（XXXX）" cli chart XXXX -o "$out/a.png"
expect "unknown comparison" 1 "（YYYY）" cli chart AAPL --compare YYYY -o "$out/a.png"
expect "wrong date" 1 "「2020/13/01」" cli chart AAPL --from 2020/13/01 -o "$out/a.png"
expect "wrong scale" 2 "使い方" cli chart AAPL --scale 9 -o "$out/a.png"
expect_text "nothing was written over" "$before" "$(cksum <"$out/a.png")"

# The program that paints: what it is given may be damaged, and it may be missing or die.
draw=$(dirname "$program")/orin-draw
expect "a damaged picture" 1 "渡された図のデータが壊れています。" \
  sh -c 'printf "ODL1 and then rubbish" | "$1" "$2"' - "$draw" "$out/a.png"
expect "no picture at all" 1 "渡された図のデータが壊れています。" "$draw" "$out/a.png" </dev/null
expect "drawn as what" 1 "$out/a.bmp の種類は" "$draw" "$out/a.bmp" </dev/null
expect "no file" 2 "使い方は orin-draw --help" "$draw" </dev/null
expect "no number" 2 "使い方は orin-draw --help" "$draw" --scale nan "$out/a.png" </dev/null
expect "a name like an option" 0 "" sh -c 'cd "$1" && "$2" --home "$3" chart AAPL -o-x.png' - \
  "$out" "$(realpath "$program")" "$(realpath "$home")"
expect_text "it is drawn" $'\x89PNG' "$(kind "$out/-x.png")"
alone=$home/alone
mkdir -p "$alone"
cp "$program" "$alone/orin-cli"
chart_alone() { "$alone/orin-cli" --home "$home" chart AAPL -o "$out/a.png"; }
expect "no painter" 1 "orin-draw」が見つかりません。" chart_alone
printf '#!/bin/sh\nkill -9 $$\n' >"$alone/orin-draw"
expect "no right to run" 1 "orin-draw」を起動できません（アクセスが許可されていません）。" chart_alone
chmod +x "$alone/orin-draw"
expect "a killed painter" 1 "orin-draw」が途中で止められました（シグナル9）。" chart_alone
printf '#!/bin/sh\necho "no library" >&2\nexit 127\n' >"$alone/orin-draw"
expect "a painter that cannot start" 1 "orin-draw」が動きません（終了状態127）。" chart_alone
expect_text "of which only that is told" 1 "$(chart_alone 2>&1 | wc -l)"
# A file that may not grow stands for a full disk.
expect "no room" 1 "（ファイルが大きすぎます）。" sh -c 'trap "" XFSZ; ulimit -f 1; "$@"' - \
  "$program" --home "$home" chart AAPL -o "$out/a.png"
expect "no room for a new file" 1 "（ファイルが大きすぎます）。" sh -c 'trap "" XFSZ; ulimit -f 1; "$@"' - \
  "$program" --home "$home" chart AAPL -o "$out/new.png"
expect_text "nothing of it is left" "" "$(ls -A "$out" | grep -e new -e tmp)"
mkdir "$out/closed.png"
expect "a directory" 1 "$out/closed.png" cli chart AAPL -o "$out/closed.png"
expect_text "still nothing was written over" "$before" "$(cksum <"$out/a.png")"

cli settings set original3_analysis '移動平均(25,0' >/dev/null 2>&1 ||
  printf '[ChartDisplay]\r\noriginal3_analysis=%s\r\n' "$(printf '終値(0) *' | iconv -t CP932)" >>"$home/orin.ini"
expect "an expression that is none" 0 "【オリジナルチャート２】「ＭＡＣＤ」の式：" \
  cli chart AAPL --sub original2 -o "$out/e.png"
printf 'rubbish' >"$home/data/orint001.dat"
expect "rubbish for quotes within a day" 0 "日中足データがありません。" \
  cli chart AAPL --sub intraday -o "$out/f.png"
finish
