#!/bin/sh
# Evaluations that the first-order methods 1 to 11 spend on Rosenbrock (2
# variables), Wood (4) and Powell-Wood (4) from their standard starts, in
# auto mode, with the adaptive finite-difference gradient (scheme 0) and
# with the analytical one (scheme 3).  A run that stops on its iteration or
# evaluation limit is continued (CONTINUE, up to 3 times), so the counts are
# those to convergence.  Prints a Markdown table: function evaluations (all
# of them, the differences of the gradient included) / gradient evaluations,
# and the value reached.
#
#     bench/first_order_evaluations.sh [path/to/zemok]     (default build/zemok)
set -eu
zemok=$(cd "$(dirname "${1:-build/zemok}")" && pwd)/$(basename "${1:-build/zemok}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Auto mode opens the data file; an empty one holds nothing to load.
: > "$work/zemok.inp"
: > "$work/zeminp.txt"

# A CONTINUE after a search that ended by its own tests starts it again
# from where it stopped; that costs a few evaluations more, so CONTINUE is
# kept only while the last stop was a limit.
run_to_convergence() {  # problem method scheme
    {
        echo "MODE,AUTO"
        echo "PROBLEM,TEST,$1"
        echo "METHOD,$2"
        echo "SET,GRADIENT,$3"
        echo "RUN"
    } > "$work/run.cmd"
    for k in 1 2 3; do
        (cd "$work" && printf 'EXIT\n' | cat run.cmd - > try.cmd && "$zemok" /C=try.cmd < /dev/null > out.txt 2>&1) || true
        last=$(grep -A1 "Search stopped. The reason:" "$work/out.txt" | tail -1)
        case "$last" in
            *"ITERATION COUNT"*|*"EVALUATIONS COUNT"*) echo "CONTINUE" >> "$work/run.cmd" ;;
            *) break ;;
        esac
    done
    awk '
        /Produced function minimum is equal to/ { f = $NF }
        /function evaluations,$/ { nfe = $2 }
        /gradient evaluations,$/ { nge = $1 }
        /Search stopped/ { calls++ }
        END { printf "%s/%s %s (%d)", nfe, nge, f, calls }' "$work/out.txt"
}

for scheme in 0 3; do
    echo
    echo "Gradient scheme $scheme: function/gradient evaluations, value reached (RUN and CONTINUE calls)"
    echo
    echo "| method | Rosenbrock (2) | Wood (4) | Powell-Wood (4) |"
    echo "|---|---|---|---|"
    for method in F-R P-R B-P P-S D-F-P B-F-G-S BR FL O-L O-S; do
        row="| $method"
        for problem in 1 3 2; do
            row="$row | $(run_to_convergence $problem $method $scheme)"
        done
        echo "$row |"
    done
done
