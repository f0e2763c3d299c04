#!/usr/bin/env bash
# Fails when a file of src/<layer>/ includes a header of a layer above it.
# The layers from the bottom up:
layers=(platform core textfile numlib objective methods scatter monitor app)
src="${1:-$(dirname "$0")/../../src}"
declare -A rank
for i in "${!layers[@]}"; do rank[${layers[$i]}]=$i; done
bad=0
for dir in "$src"/*/; do
    layer=$(basename "$dir")
    if [[ -z "${rank[$layer]+x}" ]]; then
        echo "unknown layer: src/$layer"; bad=1; continue
    fi
    while IFS=: read -r file line inc; do
        target=${inc#*\"}; target=${target%%/*}
        if [[ -z "${rank[$target]+x}" ]]; then
            echo "$file:$line: unknown layer in $inc"; bad=1
        elif (( rank[$target] > rank[$layer] )); then
            echo "$file:$line: $layer includes the higher layer $target: $inc"; bad=1
        fi
    done < <(grep -n '^#include "' "$dir"* | sed 's/^\([^:]*\):\([0-9]*\):/\1:\2:/')
done
exit $bad
