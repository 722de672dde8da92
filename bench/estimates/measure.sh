#!/bin/sh
# How the estimates of 40 random configurations, none of which they were fitted to, compare with
# synthesis.
#
#   bench/estimates/measure.sh BUILD
set -eu
rows=$(mktemp)
trap 'rm -f "$rows"' EXIT
"$1/bench/bench_estimates" measure 2 0 40 >"$rows"
"$1/bench/bench_estimates" compare <"$rows"
