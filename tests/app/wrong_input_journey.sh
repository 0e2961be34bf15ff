#!/usr/bin/env bash
# Wrong input gets one clear sentence and loses nothing.
source "$(dirname "$0")/journey.sh"
fresh_home

for command in init update-csv master bars eval series signals explain items screen check checksums splits chart; do
  expect "$command --help" 0 "使い方" cli "$command" --help
done
expect "no command" 2 "使い方" cli
expect "unknown command" 2 "使い方" cli rubbish
expect "unknown option" 2 "使い方" cli check --rubbish
expect "no store" 1 "orin.sys" cli master

cli init && cli update-csv --stocks "$home/stocks.csv" >/dev/null 2>&1
before=$(cat "$home"/data/*.dat "$home"/orin.* | cksum)

mkdir "$home/user"
printf '[OrinSimulation]\r\nsim_start_date=2010/2/3\r\n' >"$home/user/orinsim.ini"
elsewhere() { "$program" --home "$home/nowhere" --ini "$home/user/orin.ini" "$@"; }
expect "simulation settings that cannot be copied" 0 "user/orinsim.ini」のものを使います。" elsewhere settings
expect "simulation settings in use" 0 "sim_start_date,2010/02/03" elsewhere settings
expect_text "a command without simulation settings" "" "$(elsewhere items 終値 2>&1 | grep orinsim.ini)"
rm -r "$home/user"

expect "unknown code" 1 "銘柄コードが見つかりません。" cli bars XXXX
expect "code that leaves the directory" 1 "..\\X" cli bars '..\X'
expect "wrong date" 1 "2020/02/30" cli eval --code AAPL --date 2020/02/30 1
expect "holiday" 1 "2020/01/11" cli eval --code AAPL --date 2020/01/11 1
expect "before the first day" 1 "1999/01/04" cli eval --code AAPL --date 1999/01/04 1
expect "not a system file" 1 "orin.xyzはシステムファイルではありません。" cli system-file orin.xyz
expect "wrong period" 2 "使い方" cli bars AAPL --period year
for scale in nan inf 0 -1 1e99 0.4 x; do
  expect "scale $scale" 2 "「--scale」" cli chart AAPL --data --scale="$scale"
done
for number in nan 0 -1 1e99 1000; do
  expect "first file $number" 2 "「--first-file」" cli screen --first-file="$number" "$home/analysis/新高値.txt"
done
bad=$'\xff\x1b[31m\xe3\x81'
for arguments in "bars $bad" "$bad" "eval --code AAPL --date $bad 1" "series --code AAPL $bad" \
  "explain --code AAPL $bad" "screen $bad" "signals --market $bad 1" "chart AAPL --size $bad -o x.png"; do
  # shellcheck disable=SC2086
  output=$(cli $arguments 2>&1)
  expect_text "shown bytes of $arguments" "" "$(LC_ALL=C grep -aP '[\x1b\xff]' <<<"$output")"
done
cp -r "$home" "$home$bad" && rm "$home$bad/orin.ind"
for command in check checksums; do
  output=$("$program" --home "$home$bad" $command 2>&1)
  expect "findings of $command" 0 '\xFF\x1B[31m' echo "$output"
  expect_text "shown bytes of the findings of $command" "" "$(LC_ALL=C grep -aP '[\x1b\xff]' <<<"$output")"
done
rm -r "$home$bad"
expect "offset before the first day" 0 "fail" cli eval --code AAPL '終値(-5000)'
for extreme in '終値(0) > 終値(-2147483648)' '移動平均(25,0) > 移動平均(25,-2147483648)' \
    '移動平均(2147483647,0) > 終値(2147483647)' '終値(99999999999999999999) > 終値(0)'; do
  expect "eval $extreme" 0 "false" cli eval --code AAPL "$extreme"
  expect "series $extreme" 0 "2020/01/10,false" cli series --code AAPL "$extreme"
  expect "signals $extreme" 0 "0" cli signals --count "$extreme"
  expect "explain $extreme" 0 "選ばれません。" cli explain --code AAPL "$extreme"
  printf 'タイトル：x\n分析結果格納場所：patrol\\\n分析項目：%s\n' "$extreme" >"$home/extreme.txt"
  expect "screen $extreme" 0 $'\t0' cli screen "$home/extreme.txt"
done
rm "$home"/patrol/k*.txt
expect "future" 0 "fail" cli eval --code AAPL '終値(1)'
expect "series without expressions" 2 "EXPR" cli series --code AAPL
expect "series of an expression beyond the limits" 2 "の698文字目：" \
  cli series --code AAPL 1 "$(printf '1=1 Or %.0s' {1..101})1=1"
expect "a range without trading days" 1 "2020/01/11 から 2020/01/12 までの取引日がありません" \
  cli series --code AAPL --from 2020/01/11 --to 2020/01/12 1
expect "a range that ends before it begins" 1 "より後です" \
  cli signals --from 2020/01/10 --to 2020/01/09 '1 = 1'
expect "a range from no date" 1 "「きのう」" cli signals --from きのう '1 = 1'
expect "several conditions" 2 "条件は一つだけです。" cli signals 終値\(0\) '>' 1
expect "unknown market" 1 "「東証」という市場はありません。" cli signals --market 東証 '1 = 1'
expect "signals of a value" 0 "比較演算子" cli signals --count '終値(0)'
expect "explanation of what cannot be compiled" 2 "文字目：" cli explain --code AAPL '1<2<3<4<5<6'
expect "explanation of a misspelt item" 0 "「ＲＳＩ」ではありませんか" cli explain --code AAPL 'RSI(14,0) > 3'
expect "explanation without the second stock" 0 "第二銘柄がありません。" cli explain --code AAPL 'さや(0) > 0'
for code in NONE TOOLONGCODE; do
  expect "eval with the second stock $code" 0 "「$code」" \
    cli eval --code AAPL --second $code '第二銘柄終値(0)' 'さや(0) > 0' '終値(0) > 0'
  expect_text "values with the second stock $code" $'fail\nfalse\ntrue' \
    "$(cli eval --code AAPL --second $code '第二銘柄終値(0)' 'さや(0) > 0' '終値(0) > 0' 2>/dev/null)"
  expect "series with the second stock $code" 0 "「$code」" cli series --code AAPL --second $code 'さや(0)'
  expect "signals with the second stock $code" 0 "「$code」" \
    cli signals --count --second $code '終値(0) > 0 Or さや(0) > 0'
  expect "explanation with the second stock $code" 0 "「$code」" \
    cli explain --code AAPL --second $code '第二銘柄終値(0) > 0'
  printf 'タイトル：x\n分析結果格納場所：patrol\\\n第二銘柄コード：%s\n分析項目：%s\n' \
    $code '終値(0) > 0 Or さや(0) > 0' >"$home/second.txt"
  expect "screening with the second stock $code" 0 "「$code」" cli screen "$home/second.txt"
done
rm "$home"/patrol/k*.txt
expect "no such item" 1 "名前に「ＸＹＺ」を含む分析項目はありません。" cli items ＸＹＺ
expect "two ways to list items" 2 "使い方" cli items --markdown --count
expect "missing directory" 1 "/no/such" cli update-csv --dir /no/such
expect "missing list" 1 "nolist.csv" cli update-csv --stocks "$home/nolist.csv"
expect "missing analysis file" 1 "none.txt" cli screen "$home/none.txt"
expect "nothing to screen" 2 "使い方" cli screen
expect "first file too high" 1 "データファイルは４ファイル以上必要です。" cli screen --first-file 9 "$home/analysis/新高値.txt"
expect "first file past the files" 1 "99" cli screen --first-file 99 "$home/analysis/新高値.txt"

printf 'タイトル：x\n分析結果格納場所：nowhere\\\n分析項目：終値(0) > 1\n' >"$home/bad.txt"
expect "missing result directory" 1 "nowhere" cli screen "$home/bad.txt"
sed -i 's/：nowhere.*/：patrol\\/; $a分析日付：2020/01/11' "$home/bad.txt"
expect "date without trade" 1 "2020/01/11" cli screen "$home/bad.txt"
expect_text "no list is left of a failed run" "" "$(find "$home/patrol" -name 'k*')"
head -c 5000 /dev/urandom >"$home/noise.txt"
expect "garbage as analysis file" 1 "noise.txt" cli screen "$home/noise.txt"
expect_text "nothing was lost" "$before" "$(cat "$home"/data/*.dat "$home"/orin.* | cksum)"

mkdir -p "$home/mixed"
cp "$home/brand/^DJI.csv" "$home/brand/AAPL.csv" "$home/mixed/"
sed -i '5s/,[0-9.]*,/,abc,/; 6s/^[0-9/]*/2016\/13\/01/' "$home/mixed/AAPL.csv"
cp "$home/brand/AAPL.csv" "$home/mixed/株.csv"
head -c 3000 /dev/urandom >"$home/mixed/NOISE.csv"
expect "wrong lines are told, the rest goes on" 0 "件の問題" cli update-csv --dir "$home/mixed"
log=$(iconv -f CP932 -t UTF-8 "$home"/data/K20200110.LOG)
for told in "AAPL.csv 5行目：" "「abc」" "AAPL.csv 6行目：" "「2016/13/01」" "株.csv" "NOISE.csv 1行目："; do
  expect "the log tells $told" 0 "$told" echo "$log"
done

rm "$home/data/K20200110.LOG"
mkdir "$home/data/K20200110.LOG"
expect "update without its log" 1 "に更新の記録を書き込めません。" cli update-csv --dir "$home/mixed"
expect "update without its log names the directory" 1 "$home/data " cli update-csv --dir "$home/mixed"
rmdir "$home/data/K20200110.LOG"
expect "end of a run with a failed file" 1 "株価チェックが終了しました。" cli screen "$home/none.txt"

expect "missing company list" 1 "none.csv" cli company "$home/none.csv"
expect "company list without a heading" 1 "noise.txt 1行目" cli company "$home/noise.txt"
printf garbage >"$home/orin.fin"
expect "damaged company data" 1 "orin.fin" cli eval --code AAPL '時価総額'
expect "damaged company data, checked" 1 "orin.fin" cli check
rm "$home/orin.fin"

cp "$home/data/orin003.dat" "$home/orin003.good"
printf '\x01' | dd of="$home/data/orin003.dat" bs=1 seek=$((4 * 4000 + 50 * 40 + 32)) conv=notrunc status=none
expect "a volume that has changed" 1 "orin003.dat」の銘柄AAPLの銘柄レコード5" cli check
expect "the right file again" 0 "43,43,1013" cli update-csv
expect "sound again" 0 "異常はありません" cli check
cp "$home/orin003.good" "$home/data/orin003.dat"
rm "$home/data/orinc003.dat"
expect "missing checksums" 1 "orinc003.dat」がありません" cli check
cp "$home/data/orin005.dat" "$home/orin005.good"
printf '\x01' | dd of="$home/data/orin005.dat" bs=1 seek=$((4 * 4000 + 50 * 40 + 32)) conv=notrunc status=none
expect "a missing file of checksums beside a changed volume" 1 "の銘柄AAPLの銘柄レコード5" cli checksums
expect "the changed volume is still known" 1 "orin005.dat」の銘柄AAPLの銘柄レコード5" cli check
cp "$home/orin005.good" "$home/data/orin005.dat"
expect "checksums" 0 "チェックサムを作りました" cli checksums
expect "sound with them" 0 "異常はありません" cli check
printf 'x' | dd of="$home/orin.ind" bs=1 seek=30 conv=notrunc status=none
expect "a changed name index" 1 "orin-cli checksums --force で" cli checksums
expect "a changed name index, forced" 0 "orin-cli checksums --force で" cli checksums --force
expect "sound with the new name index" 0 "異常はありません" cli check
rm "$home/orin.sum" "$home"/data/orinc*.dat
expect "older store" 0 "orin-cli checksums で作れます" cli check
expect "impossible bars" 0 "" dd if=/dev/zero of="$home/data/orin003.dat" bs=1 seek=16000 count=40 conv=notrunc status=none
expect "no checksums of what is wrong" 1 "チェックサムを作りません" cli checksums
expect "older store still" 1 "orin-cli checksums で作れます" cli check
expect "unless forced" 0 "株価が0です" cli checksums --force
cp "$home/orin003.good" "$home/data/orin003.dat"
expect "a restored file that differs from its checksums" 1 "チェックサムを作りません" cli checksums
expect "checksums for the restored file" 0 "チェックサムを作りました" cli checksums --force

cp "$home/orin.sys" "$home/orin.sys.good"
for damage in "head -c 40" "head -c 120" "head -c 2200"; do
  $damage "$home/orin.sys.good" >"$home/orin.sys"
  expect "check finds a master cut by $damage" 1 "orin.sys" cli check
done
{ head -c 12 "$home/orin.sys.good" && printf '\xc8\x00' && tail -c +15 "$home/orin.sys.good"; } >"$home/orin.sys"
expect "header past the files" 1 "。" cli bars AAPL
expect "header past the files, checked" 1 "orin" cli check
head -c 5000 /dev/urandom >"$home/orin.sys"
expect "random master" 1 "orin.sys" cli check
expect "a file beside the random master" 1 "APPLE,APPLE,AAPL" cli system-file orin.ind
expect "a file beside the random master, with the reason" 1 "「$home/orin.sys」" cli system-file orin.ind
cp "$home/orin.sys.good" "$home/orin.sys"
truncate -s 5000 "$home/data/orin003.dat"
expect "short price file" 1 "orin003.dat" cli bars AAPL
expect "short price file, checked" 1 "orin003.dat" cli check
finish
