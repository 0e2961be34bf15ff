#!/usr/bin/env bash
# From nothing to result lists, as a user's first evening goes.
source "$(dirname "$0")/journey.sh"
fresh_home

expect "init" 0 "" cli init
expect "init twice" 1 "orin.sys" cli init
expect "an empty store is sound" 0 "異常はありません" cli check
expect_text "import" "43,43,1013" "$(cli update-csv --stocks "$home/stocks.csv" 2>/dev/null)"
expect "check" 0 "異常はありません" cli check
before=$(cat "$home"/data/*.dat "$home"/orin.* | cksum)
expect_text "import again" "43,43,1013" "$(cli update-csv 2>/dev/null)"
expect_text "importing again changes nothing" "$before" "$(cat "$home"/data/*.dat "$home"/orin.* | cksum)"

expect_text "master" "5,AAPL" "$(cli master AAPL | sed -n 2p | cut -d, -f1,2)"
expect_text "stored bars are the file's" \
  "$(tail -1 "$home/brand/AAPL.csv" | tr -d '\r' | cut -d, -f1-5)" \
  "$(cli bars AAPL --raw | tail -1 | cut -d, -f1-5)"
expect_text "name index in syllabary order" "44 ABBVIE" \
  "$(cli system-file orin.ind | wc -l) $(cli system-file orin.ind | sed -n 2p | cut -d, -f1)"
expect_text "header" "20200110,1,1,11,13,0,0" "$(cli system-file orin.sys | sed -n 2p)"
expect_text "added stocks" "^DJI,NYダウ工業株30種,2,0" "$(cli system-file orin.add | sed -n 2p)"
expect_text "days" "1014" "$(cli bars ^DJI | wc -l)"

expect_text "values and conditions" "310.3300
true
fail
-5.0000
0.3333" "$(cli eval --code AAPL --date 2020/01/10 '終値(0)' '10 < 終値(0) < 400' '終値(0) / 0' '-{2 + 3}' '1 / 3')"
expect_text "expressions from standard input" "false
4.0000" "$(printf '終値(0) < 1\r\n-2 ^ 2\n' | cli eval --code AAPL)"
expect "notes do not change the result" 0 "true" cli eval --code AAPL '{終値(0) > 1'
expect "an expression beyond the limits" 2 "error: " cli eval --code AAPL "$(printf '1=1 Or %.0s' {1..101})1=1"

expect_text "a series" '年月日,終値(0),"移動平均(25,0)","移動平均(25,0) > 286",第二銘柄終値(0)
2020/01/09,309.6300,283.6888,false,3274.7000
2020/01/10,310.3300,285.6324,false,3265.3501' \
  "$(cli series --code AAPL --from 2020/01/09 --second ^GSPC '終値(0)' '移動平均(25,0)' '移動平均(25,0) > 286' '第二銘柄終値(0)')"
expect_text "a series has the keywords of a run on each of its days" "年月日,終値(analysisdate1-1)
2020/01/09,$(cli eval --code AAPL --date 2020/01/09 '終値(analysisdate1-1)')
2020/01/10,$(cli eval --code AAPL --date 2020/01/10 '終値(-1)')" \
  "$(cli series --code AAPL --from 2020/01/09 '終値(analysisdate1-1)')"
expect_text "a series has every day, empty where there is no value" "1014 2016/01/04," \
  "$(cli series --code AAPL '終値(-1)' | wc -l) $(cli series --code AAPL --to 2016/01/04 '終値(-1)' | tail -1)"

# Each new high of the year, also the one that the screening of that day finds.
expect_text "signals" "年月日,銘柄コード
2020/01/10,GOOG
2020/01/10,LLY
2020/01/10,MA" "$(cli signals '終値(0) > 最高値(250,-1)' --from 2020/01/10)"
expect_text "signals of a market" "2020/01/10,GOOG" \
  "$(cli signals --market ＮＡ市場銘柄 '終値(0) > 最高値(250,-1)' --from 2020/01/10 | tail -n +2)"
expect_text "number of signals" "$(cli signals '終値(0) > 最高値(250,-1)' | tail -n +2 | wc -l)" \
  "$(cli signals --count '終値(0) > 最高値(250,-1)')"
expect_text "signals in order" "" "$(cli signals '終値(0) > 最高値(250,-1)' | tail -n +2 | cut -d, -f1 | sort -c 2>&1)"

expect_text "explained miss" "AAPL（APPLE）は 2020/01/10 に選ばれません。1番目の条件「終値(0) > 最高値(250,-1)」が成り立たないからです（左 310.3300、右 310.4300、0.1000（0.03％）足りません）。

1番目の条件「終値(0) > 最高値(250,-1)」：成り立たない
  左  終値(0)                 310.3300  2020/01/10
  右  最高値(250,-1)          310.4300  2019/01/14～2020/01/09（250本）
  差                           -0.1000  右の -0.03％
2番目の条件「週間終値(0) > 始値(0)」：調べていない（調べても成り立たない）
  左  週間終値(0)             310.3300  2020/01/06～2020/01/10 の週
  右  始値(0)                 310.6000  2020/01/10
  差                           -0.2700  右の -0.09％" \
  "$(cli explain --code AAPL '終値(0) > 最高値(250,-1) And 週間終値(0) > 始値(0)')"
for code in GOOG LLY MA; do
  expect "explained hit $code" 0 "に選ばれます。" cli explain --code $code '終値(0) > 最高値(250,-1)'
done
expect "explained value" 0 "「終値(0) / 3」は 103.4433 です。" cli explain --code AAPL '終値(0) / 3'
expect "explained failure" 0 "日足が足りません（2001本必要ですが、1013本しかありません）。" \
  cli explain --code AAPL '終値(-2000) > 1'
expect "explained with the compiler's notes" 0 "9文字目：「{」に対応する「}」がありません。" \
  cli explain --code AAPL '終値(0) > {1'

expect_text "items by part of a name" "■ 株価と指標
  日足      移動平均乖離率(移動平均乖離日数,何日前(前日のとき－１を指定）)
  週間      週間移動平均乖離率(移動平均乖離週数,何週前(前週のとき－１を指定）)
  月間      月間移動平均乖離率(移動平均乖離月数,何月前(前月のとき－１を指定）)
  第二銘柄  第二銘柄移動平均乖離率(移動平均乖離日数,何日前(前日のとき－１を指定）)" "$(cli items 乖離)"
expect "items without regard to width and kana" 0 "かぎ足転換数" cli items ｶｷﾞ足転換
expect_text "as many items as counted" "$(cli items --count | tail -1 | cut -d, -f6)" \
  "$(cli items | grep -c '^  ')"

# A ten-for-one split: older prices a tenth, the stored ones untouched, then written for good.
expect "add a split" 0 "AAPL" cli splits --add AAPL,10,2020/01/08
expect_text "adjusted" "30.3190" "$(cli bars AAPL | grep 2020/01/08 | cut -d, -f5)"
expect_text "not adjusted after the last day with rights" "309.6300" \
  "$(cli bars AAPL | grep 2020/01/09 | cut -d, -f5)"
expect_text "raw" "303.1900" "$(cli bars AAPL --raw | grep 2020/01/08 | cut -d, -f5)"
expect "write it into the stored prices" 0 "" cli splits --correct AAPL
expect_text "corrected" "30.3190" "$(cli bars AAPL --raw | grep 2020/01/08 | cut -d, -f5)"
expect "sound after the correction" 0 "異常はありません" cli check

printf '銘柄コード,株価収益率,連結売上高\nAAPL,25.5,"260,174.5"\nXXXX,1,2\nBA,-,x\n' >"$home/company.csv"
expect_text "company data" "3,2,2" "$(cli company "$home/company.csv" 2>/dev/null)"
expect "what is wrong with the list" 0 "company.csv 4行目：連結売上高「x」" cli company "$home/company.csv"
expect_text "company items" "25.5000
260174.5000
25.5000
fail
false" "$(cli eval --code AAPL --second AAPL '株価収益率' '連結売上高(0)' '第二銘柄株価収益率(0)' '決算月' '決算月 < 13')"
cli company >"$home/company_list.csv"
expect_text "the list reads back" "1,1,0" "$(cli company "$home/company_list.csv")"
expect "sound with company data" 0 "異常はありません" cli check

expect_text "group" "3" "$(cli screen --group "$home/orin.chk" 2>/dev/null | wc -l)"
list=$home/patrol/新高値/k20200110.txt
expect_text "result list" "T:新高値
D:2020/01/10" "$(iconv -f CP932 -t UTF-8 "$list" | tr -d '\r' | head -2)"
count=$(cli screen "$home/analysis/新高値.txt" 2>/dev/null | cut -f2)
expect_text "count of the list" "$count" "$(($(wc -l <"$list") - 2))"
expect_text "a shorter history is enough" "$count" \
  "$(cli screen --first-file 6 "$home/analysis/新高値.txt" 2>/dev/null | cut -f2)"
expect "day file" 0 "analysisday.txt" cli screen --day-file "$home/analysis/新高値.txt"
expect_text "day file's text" "analysis_day：2020/01/10" \
  "$(iconv -f CP932 -t UTF-8 "$home/analysis/analysisday.txt" | tr -d '\r')"
finish
