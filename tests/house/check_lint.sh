#!/usr/bin/env bash
# clang-tidy finds nothing in the program's own sources. A source that has passed is not looked at
# again while it, the headers of this tree that it includes, the checks and clang-tidy stay the
# same. Usage: check_lint.sh SOURCE_TREE BUILD_TREE; it configures a build of its own below
# BUILD_TREE, because clang-tidy wants each source as a compilation of its own.
set -euo pipefail
cd "$1"
build=$2/lint
passed=${XDG_CACHE_HOME:-$HOME/.cache}/orin-lint
mkdir -p "$passed"
find "$passed" -type f -mtime +60 -delete
cmake --preset dev -B "$build" >/dev/null

rules=$({ cat .clang-tidy CMakePresets.json cmake/orin.cmake; clang-tidy-14 --version; } | sha256sum | cut -c1-64)

# "path hash" for every source and header, and "path included" for each of their includes.
hashes=$(find src -name '*.cpp' -o -name '*.h' | xargs sha256sum | awk '{ print $2, $1 }')
includes=$(find src -name '*.cpp' -o -name '*.h' | xargs grep -H '^#include "' |
  sed -E 's|^([^:]*):#include "([^"]*)".*|\1 src/\2|')

# "key path" for each source; the key is made from its own hash and those of all it includes.
keys=$(awk -v rules="$rules" '
  FNR == NR { hash[$1] = $2; next }
  { includes[$1] = includes[$1] " " $2 }
  function visit(path,    list, count, i) {
    if (path in seen || !(path in hash)) return
    seen[path] = 1
    found[++total] = hash[path]
    count = split(includes[path], list, " ")
    for (i = 1; i <= count; ++i) visit(list[i])
  }
  END {
    for (path in hash) {
      if (path !~ /\.cpp$/) continue
      split("", seen)
      total = 0
      visit(path)
      text = path " " rules
      for (i = 1; i <= total; ++i) text = text " " found[i]
      print path, text
    }
  }' <(echo "$hashes") <(echo "$includes") | sort | while read -r path text; do
  echo "$(sha256sum <<<"$text" | cut -c1-64) $path"
done)

# The compiler that made the compilation database knows warnings that clang-tidy's does not.
check() {
  clang-tidy-14 -p "$1" --quiet --extra-arg=-Wno-unknown-warning-option "$4" 2>/dev/null
  touch "$2/$3"
}
export -f check
while read -r key path; do
  [ -e "$passed/$key" ] || echo "$key $path"
done <<<"$keys" |
  xargs -r -L 1 -P "$(nproc)" bash -euc 'check "$@"' check "$build" "$passed"
