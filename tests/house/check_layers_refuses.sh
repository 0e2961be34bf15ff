#!/usr/bin/env bash
# check_layers.sh must refuse an include that goes up the house. Usage: <check_layers.sh>
set -euo pipefail
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT

# refuses file include: a tree with just this include must fail, and the message name the file.
refuses() {
  rm -rf "$tree/src"
  mkdir -p "$tree/src/$(dirname "$1")"
  echo "#include \"$2\"" > "$tree/src/$1"
  if message=$("$check" "$tree"); then
    echo "accepted: $1 includes $2"
    exit 1
  fi
  grep -qF "$1:1:" <<< "$message"
}

check=$1
refuses base/text.cpp store/price_files.h
refuses chart/layout.cpp shell/start_up.h
refuses chart/layout.cpp widgets/look.h
refuses widgets/look.cpp chart/chart.h
refuses painting/picture_painter.cpp settings/settings.h
refuses widgets/look.cpp painting/picture_painter.h
refuses widgets/table_view.h lists/stock_tables.h
refuses lists/ui/pricelist_form.cpp screening/ui/check2_form.h
refuses shell/ui/logo_form.cpp app/main_window/main_form.h
