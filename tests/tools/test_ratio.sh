#!/bin/sh
# Non-blank lines of C++ (.cpp, .h) in tests/ against src/, and their ratio.
# With a limit as second argument, fails when the ratio is above it.
root=${1:-$(dirname "$0")/../..}
count() { find "$1" \( -name '*.cpp' -o -name '*.h' \) -exec cat {} + | grep -cv '^[[:space:]]*$'; }
tests=$(count "$root/tests")
src=$(count "$root/src")
ratio=$(awk -v t="$tests" -v s="$src" 'BEGIN { printf "%.3f", t / s }')
echo "tests $tests / src $src = $ratio"
[ -z "$2" ] || awk -v r="$ratio" -v l="$2" 'BEGIN { exit !(r <= l) }'
