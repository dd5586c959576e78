#!/usr/bin/env bash
# Counts the instructions that the library and what it calls spend on a text of each family, under
# callgrind: a figure without noise. Compares it with the last accepted one.
# usage: count.sh ORVEX_BENCH [--accept]
set -euo pipefail
bench=$1
accepted=$(dirname "$0")/instructions.tsv
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

# The same variants of libc's string functions on every x86-64 machine.
GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX512VL,-ERMS,-FSRM \
  valgrind --tool=callgrind --collect-atstart=no --callgrind-out-file="$out/count" \
  "$bench" --count >"$out/log" 2>&1 || { cat "$out/log" >&2 && exit 1; }

awk '/^desc: Trigger: Client Request: / { row = $5; texts = $6 }
     /^totals: / { if (row != "") printf "%s\t%.1f\n", row, $2 / texts; row = "" }' \
  "$out"/count.* | sort >"$out/counted"
[[ -s $out/counted ]] || { echo "count.sh: nothing was counted" >&2 && exit 1; }

if [[ ${2-} == --accept ]]; then
  cp "$out/counted" "$accepted"
  cat "$accepted"
  exit
fi
# A row that costs more than 5 % above its accepted figure fails; so does one that has none.
join -t $'\t' -a 1 -a 2 -e - -o 0,1.2,2.2 "$accepted" "$out/counted" |
  awk -F '\t' '{ note = "" }
    $2 == "-" || $3 == "-" { note = "only in one list"; failed = 1 }
    note == "" && $3 > $2 * 1.05 { note = "more than 5 % above"; failed = 1 }
    { printf "%-34s %9s accepted %9s  %s\n", $1, $3, $2, note }
    END { exit failed }' || { echo 'rows cost more than accepted: mend them, or ./dev count --accept' >&2 && exit 1; }
