#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Compares the estimates of 40 random configurations with synthesis. They were not used for fitting.
#
#   bench/estimates/measure.sh BUILD
set -eu
rows=$(mktemp)
trap 'rm -f "$rows"' EXIT
"$1/bench/bench_estimates" measure 2 0 40 >"$rows"
"$1/bench/bench_estimates" compare <"$rows"
