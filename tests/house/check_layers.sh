#!/usr/bin/env bash
# A folder includes only the folders below it. Windows (ui/) stand above every core folder and
# the toolkit's painting/ and widgets/, apart from each other; the programs in app/ stand above all.
set -euo pipefail
cd "$1/src"

declare -A below=(
  [base]="base"
  [kernels]="kernels"
  [store]="base store"
  [indicators]="base kernels indicators"
  [settings]="base store settings"
  [analysis]="base kernels store indicators analysis"
  [screening]="base store analysis screening"
  [acquire]="base store acquire"
  [shell]="base settings store analysis screening acquire shell"
  [lists]="base settings store shell lists"
  [chart]="base settings store indicators analysis chart"
  [painting]="base chart painting"
  [widgets]="base widgets"
)
core="base settings store indicators analysis screening acquire shell lists chart"

# The folders that files of folder $1 may include.
allowed_for() {
  case "$1" in
    app) echo "$core painting widgets app $(printf '%s/ui ' $core)" ;;
    */ui) echo "$core painting widgets $1" ;;
    *) echo "${below[$1]-}" ;;
  esac
}

# "shell/ui/start.h" -> "shell/ui", "store/check/sums.h" -> "store"
room_of() {
  case "$1" in
    */ui/*) echo "${1%%/*}/ui" ;;
    *) echo "${1%%/*}" ;;
  esac
}

wrong=0
while IFS=: read -r file line include; do
  room=$(room_of "$file")
  allowed=$(allowed_for "$room")
  if [ -z "$allowed" ]; then
    echo "$file: no rule says what $room may include"
    wrong=1
    continue
  fi
  path=${include#*\"}
  other=$(room_of "${path%\"*}")
  case " $allowed " in
    *" $other "*) ;;
    *)
      echo "$file:$line: $room must not include $other"
      wrong=1
      ;;
  esac
done < <(grep -rnE '^#include "' --include=*.h --include=*.cpp .| sed 's|^\./||')
exit $wrong
