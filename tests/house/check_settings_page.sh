#!/usr/bin/env bash
# docs/formats/settings.md is what the program prints of its tables.
set -euo pipefail
if ! diff <("$2" settings --markdown) "$1/docs/formats/settings.md"; then
  echo "docs/formats/settings.md is out of date: orin-cli settings --markdown >docs/formats/settings.md"
  exit 1
fi
