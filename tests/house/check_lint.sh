#!/usr/bin/env bash
# clang-tidy finds nothing in the program's own sources. A source that has passed is not looked at
# again while it, the headers of this tree that it includes, the checks and clang-tidy stay the
# same; what the build found out about includes says which headers those are.
set -euo pipefail
cd "$1"
build=$2
passed=${XDG_CACHE_HOME:-$HOME/.cache}/orin-lint
mkdir -p "$passed"
find "$passed" -type f -mtime +60 -delete

rules=$({ cat .clang-tidy; clang-tidy-14 --version; } | sha256sum | cut -c1-64)
hashes=$(find src -name '*.cpp' -o -name '*.h' | sort | xargs sha256sum)

# "source dependency" for each object of the build, both relative to the tree.
includes=$(ninja -C "$build" -t deps | awk -v tree="$PWD/" '
  /^[^ ]/ { source = ""; next }
  NF == 1 {
    path = $1
    # What the build makes lies below its own src/.
    if (index(path, tree) == 1) path = substr(path, length(tree) + 1)
    else if (!sub(/^(\.\.\/)+/, "", path)) next
    if (path !~ /^src\//) next
    if (source == "") source = path
    print source, path
  }' | sort -u)

# "key source" for each source; one that was never built gets a key of its own content.
keys=$(awk -v rules="$rules" '
  NR == FNR { hash[$2] = $1; next }
  { told[$1] = told[$1] " " hash[$2] }
  END {
    for (path in hash)
      if (path ~ /\.cpp$/) print path, rules, hash[path] told[path]
  }' <(echo "$hashes") <(echo "$includes") | sort | while read -r path text; do
  echo "$(sha256sum <<<"$path $text" | cut -c1-64) $path"
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
