#!/usr/bin/env bash
# Every source file is as clang-format writes it.
set -euo pipefail
cd "$1"
find src tests bench fuzz \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 clang-format-14 --dry-run -Werror
