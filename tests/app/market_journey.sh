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

# A ten-for-one split: older prices a tenth, the stored ones untouched, then written for good.
expect "add a split" 0 "AAPL" cli splits --add AAPL,10,2020/01/08
expect_text "adjusted" "30.3190" "$(cli bars AAPL | grep 2020/01/08 | cut -d, -f5)"
expect_text "not adjusted after the last day with rights" "309.6300" \
  "$(cli bars AAPL | grep 2020/01/09 | cut -d, -f5)"
expect_text "raw" "303.1900" "$(cli bars AAPL --raw | grep 2020/01/08 | cut -d, -f5)"
expect "write it into the stored prices" 0 "" cli splits --correct AAPL
expect_text "corrected" "30.3190" "$(cli bars AAPL --raw | grep 2020/01/08 | cut -d, -f5)"
expect "sound after the correction" 0 "異常はありません" cli check

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
