# Shared by the tests of the command-line program: source it with the program as the first argument.
# shellcheck shell=bash
set -uo pipefail
program=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit
unset ORVEX_PROFILE
export SHELL=/bin/sh  # the one that script uses
failures=0
fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# expect NAME STATUS OUTPUT ERRORS ARGUMENT…: standard input comes from $scratch/in.
: >"$scratch/in"
expect() {
  local name=$1 status=$2 output=$3 errors=$4 got
  "$program" "${@:5}" <"$scratch/in" >"$scratch/out" 2>"$scratch/err"
  got=$?
  if [[ $got != "$status" || $(<"$scratch/out") != "$output" || $(<"$scratch/err") != "$errors" ]]; then
    fail "$name: exit $got, expected $status"
    diff <(echo "$output") "$scratch/out"
    diff <(echo "$errors") "$scratch/err"
  fi
}

finish() {
  ((failures == 0)) && echo 'all passed'
  exit $((failures > 0))
}
