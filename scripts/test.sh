#!/usr/bin/env bash
# Builds everything and runs every check: the tests under the sanitizers, the fuzz targets for a
# few seconds each, then the tests of the optimised build with the format, lint and layering
# checks. Ends with CTest's summary; stops at the first stage that fails.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh --checks

for preset in asan fuzz dev; do
  echo "== $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done
