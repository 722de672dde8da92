#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Fits the estimate of look-up tables and registers to the current cores and synthesis: measures 80
# random configurations, about 15 minutes on two processors, and writes
# oxautils/resource/logic_costs.h.
#
#   bench/estimates/refit.sh BUILD      a build with OXA_BUILD_BENCH=ON
set -eu
cd "$(dirname "$0")/../.."
estimates=$1/bench/bench_estimates
rows=$(mktemp -d)
trap 'rm -rf "$rows"' EXIT
"$estimates" measure 1 0 40 >"$rows/1" &
"$estimates" measure 1 40 80 >"$rows/2"
wait $!
cat "$rows/1" "$rows/2" | "$estimates" fit >"$rows/costs.h"
clang-format --style=file --assume-filename=oxautils/resource/logic_costs.h <"$rows/costs.h" \
    >oxautils/resource/logic_costs.h
