#!/bin/sh
# The bounded cases of the README table: each test problem run by zemok
# with METHOD,SB inside its bounds, and by B-F-G-S and N-M, which ignore
# the bounds.  Prints evaluations, the value and the point reached.
#     bench/bounded_cases.sh [path of zemok]      (default build/zemok)
ZEMOK=$(realpath "${1:-build/zemok}")
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
cd "$WORK" || exit 1
: > zemok.inp

run() {  # problem, bound commands, method
    printf 'MESSAGE,0\nPROBLEM,TEST,%s\nMETHOD,%s\n%bRUN\nEXIT\n' "$1" "$3" "$2" > zemok.cmd
    printf 'MODE,AUTO\n' | "$ZEMOK" -C > out.txt 2>&1
    evaluations=$(sed -n 's/^ after *\([0-9]*\) function evaluations,/\1/p' out.txt)
    value=$(sed -n 's/^ Produced function minimum is equal to *//p' out.txt)
    point=$(sed -n '/^ at the point:/,/^ after/p' out.txt | sed '1d;$d' | tr -s ' \n' ' ')
    printf '%-30s %-8s %6s  %-14s %s\n' "$4" "$3" "$evaluations" "$value" "$point"
}

for method in SB B-F-G-S N-M; do
    run 1 'LOAD,,BU,1,0.5\n' "$method" "Rosenbrock, x1 <= 0.5"
    run 3 'LOAD,,BU,ALL,0.5\n' "$method" "Wood, every x(i) <= 0.5"
    run 7 'LOAD,,BU,1,1\n' "$method" "Frieden's quadratic, x1 <= 1"
done
