#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# What docs/boards/FAMILY.md says, up to place and route: its commands, with its design.
#
#   check_page.sh FAMILY CELL COUNT ...   the design with its analyzer has so many of each of these cells
#
# OXA is the program, DOCS the directory with boards/.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
page=$DOCS/boards/$1.md
shift
cd "$work"
PATH=$(dirname "$OXA"):$PATH
sed -n '/^```verilog/,/^```$/p' "$page" | sed '1d;$d' >counter.v
sed -n 's/^\$ \(oxa a\|yosys\)/\1/p' "$page" >commands
[ "$(wc -l <commands)" = 3 ]
counts=
while [ $# -gt 0 ]; do
    counts="$counts; select -assert-count $2 t:$1"
    shift 2
done
sed -i "s/^yosys.*[^']/&$counts; stat/" commands
sh -e commands >log 2>&1 || { cat commands log; exit 1; }
