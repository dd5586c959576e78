#!/usr/bin/env bash
# Makes first inputs for the fuzzers of the texts in the tests: make_seeds.sh FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
seeds=$1
for family in duration interface ip iso link number text vpn; do
  rm -rf "${seeds:?}/$family" && mkdir -p "$seeds/$family"
  # The bytes before a text draw its flags in some fuzzers, those after it in the others.
  number=0
  while IFS= read -r text; do
    number=$((number + 1))
    printf '\0\377\17%b' "$text" >"$seeds/$family/$number-before"
    printf '%b\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0' "$text" >"$seeds/$family/$number-after"
  done < <(grep -ohP '"\K([^"\\%]|\\.)+(?=")' tests/"$family"/*_test.cpp | sort -u)
done
