#!/usr/bin/env bash
# Runs the examples of README.md as they are printed there: readme_test.sh PROGRAM
set -uo pipefail
program=$1
cd "$(dirname "$0")/.." || exit
unset ORVEX_PROFILE
failures=0
examples=0

# An example is "    $ ./dev run …" and the lines after it, up to an empty line or another command.
check() {
  [[ -n $command ]] || return
  examples=$((examples + 1))
  local got
  got=$(eval "${command/.\/dev run/\"\$program\"}" 2>&1 </dev/null)
  [[ $got == "$shown" ]] && return
  echo "FAILED: $command"
  diff <(echo "$shown") <(echo "$got")
  failures=$((failures + 1))
}

command='' shown=''
while IFS= read -r line; do
  case $line in
    '    $ ./dev run '*)
      check
      command=${line#'    $ '} shown=''
      ;;
    '    '*) shown+=${shown:+$'\n'}${line#'    '} ;;
    *)
      check
      command='' shown=''
      ;;
  esac
done < <(cat README.md; echo)
echo "$examples examples, $failures failures"
((failures == 0 && examples >= 15))
