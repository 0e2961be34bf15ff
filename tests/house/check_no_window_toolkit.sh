#!/usr/bin/env bash
# The core neither includes nor links the window toolkit: only widgets, painting, windows and net/ may.
set -euo pipefail
cd "$1"
cli=$2

wrong=0
if grep -rnE '^#include <(Q[A-Z]|Qt)' src --include='*.h' --include='*.cpp' |
  grep -vE '^src/([^:]*/(ui|net)|widgets|painting|app/main_window|app/orin|app/orin_draw)/'; then
  echo "a core source includes the window toolkit"
  wrong=1
fi
libraries=$(ldd "$cli")
if grep -iE 'libQt|libX11|libwayland' <<<"$libraries"; then
  echo "$cli links the window toolkit"
  wrong=1
fi
exit $wrong
