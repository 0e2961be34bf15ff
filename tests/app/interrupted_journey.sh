#!/usr/bin/env bash
# An import that is killed anywhere leaves a sound store, and running it again completes it.
source "$(dirname "$0")/journey.sh"
fresh_home
cli init && cli update-csv --stocks "$home/stocks.csv" >/dev/null 2>&1
content() { { cli bars AAPL --raw; cli bars ^IXIC --raw; cli master; } | cksum; }
whole=$(content)

for delay in 0.002 0.005 0.01 0.02 0.03 0.05 0.08 0.12 0.2; do
  rm -rf "$home"/data "$home"/orin.sys "$home"/orin.ind "$home"/orin.add "$home"/orin.del
  cli init
  "$program" --home "$home" update-csv --stocks "$home/stocks.csv" >/dev/null 2>&1 &
  victim=$!
  sleep "$delay"
  kill -KILL "$victim" 2>/dev/null
  wait "$victim" 2>/dev/null
  cli update-csv --dir /no/such >/dev/null 2>&1  # opens for writing, which recovers
  expect "sound after a kill at $delay s" 0 "異常はありません" cli check
  expect "completed after a kill at $delay s" 0 "43,43,1013" cli update-csv --stocks "$home/stocks.csv"
  expect_text "complete after a kill at $delay s" "$whole" "$(content)"
done

if [ "$(id -u)" -ne 0 ]; then
  chmod a-w "$home/patrol/新高値"
  expect "read-only result directory" 1 "新高値" cli screen "$home/analysis/新高値.txt"
  chmod u+w "$home/patrol/新高値"
fi
finish
