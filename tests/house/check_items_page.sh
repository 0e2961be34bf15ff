#!/usr/bin/env bash
# docs/items.md is what the program prints of its tables.
set -euo pipefail
if ! diff <("$2" items --markdown) "$1/docs/items.md"; then
  echo "docs/items.md is out of date: orin-cli items --markdown >docs/items.md"
  exit 1
fi
