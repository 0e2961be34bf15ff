# Read by the journeys: the program, the demo files, a fresh home directory, and what to expect.
set -uo pipefail
export LC_ALL=C.UTF-8
program=$1
demo=$2
home=$3
failures=0

cli() { "$program" --home "$home" "$@"; }

fresh_home() {
  chmod -R u+w "$home" 2>/dev/null
  rm -rf "$home"
  mkdir -p "$home"
  cp -r "$demo/." "$home"
  local analysis
  for analysis in "$home"/analysis/*.txt; do
    mkdir -p "$home/patrol/$(basename "$analysis" .txt)"
  done
}

# expect WHAT STATUS OUTPUT COMMAND...: the command's exit status, and a text its standard output
# and error together must contain (empty: any).
expect() {
  local what=$1 status=$2 text=$3 output got
  shift 3
  output=$("$@" 2>&1)
  got=$?
  if [ "$got" -ne "$status" ]; then
    echo "FAILED $what: status $got, expected $status: $output"
    failures=$((failures + 1))
  elif [[ "$output" != *"$text"* ]]; then
    echo "FAILED $what: expected “$text” in: $output"
    failures=$((failures + 1))
  fi
}

# expect_text WHAT EXPECTED GOT
expect_text() {
  if [ "$2" != "$3" ]; then
    echo "FAILED $1: expected “$2”, got “$3”"
    failures=$((failures + 1))
  fi
}

finish() {
  [ "$failures" -eq 0 ] && echo "every step as expected" && exit 0
  exit 1
}
