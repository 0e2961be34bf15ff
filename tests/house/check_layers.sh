#!/usr/bin/env bash
# A folder includes only the folders below it; a window (ui/) may include all but the programs.
set -euo pipefail
cd "$1/src"

declare -A below=(
  [base]="base"
  [kernels]="kernels"
  [store]="base store"
  [indicators]="base kernels indicators"
  [analysis]="base kernels store indicators analysis"
  [screening]="base store analysis screening"
  [acquire]="base store acquire"
  [shell]="base store analysis screening acquire shell"
  [lists]="base store shell lists"
  [chart]="base store indicators analysis shell chart"
  [app]="base store indicators analysis screening acquire shell lists chart app"
)

wrong=0
for folder in */; do
  folder=${folder%/}
  allowed=${below[$folder]-}
  if [ -z "$allowed" ]; then
    echo "$folder: no rule says what it may include"
    wrong=1
    continue
  fi
  while IFS=: read -r file line include; do
    other=${include#*\"}
    other=${other%%/*}
    case "$file" in
      */ui/*) [ "$other" != app ] && continue ;;
    esac
    case "$include" in
      *"/ui/"*) [ "$folder" != app ] && other="$other/ui" ;;
    esac
    case " $allowed " in
      *" $other "*) ;;
      *)
        echo "$file:$line: $folder must not include $other"
        wrong=1
        ;;
    esac
  done < <(grep -rnE '^#include "' "$folder" || true)
done
exit $wrong
