#!/usr/bin/env bash
# Builds everything and runs every check: the tests and, for a few seconds each, the fuzz targets
# under the sanitizers, then the tests of the optimised build with the format, lint and layering
# checks. Prints the time of each stage and ends with CTest's summary; stops at the first stage
# that fails.
set -euo pipefail
cd "$(dirname "$0")/.."

times=
# stage NAME COMMAND...: runs the command and keeps its time.
stage() {
  local name=$1 start=$SECONDS
  shift
  echo "== $name"
  "$@"
  times+=$(printf '%6d s  %s' $((SECONDS - start)) "$name")$'\n'
}
build() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1"
}

stage "packages" scripts/install-packages.sh --checks
stage "build with the sanitizers" build sanitize
stage "tests with the sanitizers" ctest --preset sanitize
stage "optimised build" build check
stage "lint" ctest --preset check -R '^house\.lint$'
printf '== times so far\n%s== tests of the optimised build\n' "$times"
# Its summary tells its own time.
ctest --preset check -E '^house\.lint$'
