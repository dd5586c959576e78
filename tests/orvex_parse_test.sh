#!/usr/bin/env bash
# Runs the command-line program as its users do: orvex_parse_test.sh PROGRAM
set -uo pipefail
program=$1
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
    fail "$name: exit $got, wanted $status"
    diff <(echo "$output") "$scratch/out"
    diff <(echo "$errors") "$scratch/err"
  fi
}

# Every flag changes what the library is asked: FLAGS | TEXT | status without | status with
while IFS='|' read -r flags text without with; do
  for run in ":$without" "$flags:$with"; do
    # shellcheck disable=SC2086 # several flags are several words
    "$program" ip ${run%:*} -- "$text" >/dev/null 2>&1
    got=$?
    [[ $got == "${run##*:}" ]] || fail "ip ${run%:*} $text: exit $got"
  done
done <<'ROWS'
--prefix|10.0.0.0/8|1|0
--prefix-required|10.0.0.0|0|1
--all-bytes|10.1|0|1
--mask|10.0.0.0/255.0.0.0|1|0
--default|default|1|0
--integer|167772161|1|0
--multicast|10.0.0.1|0|1
--any|any-unicast|1|0
--no-martian|127.0.0.1|0|1
--unicast|224.0.0.1|0|1
--family inet6|10.0.0.1|0|1
--family 73|::1|0|1
ROWS

expect 'a record for people' 0 'input:         10.1.0.0/16
family:        inet (2)
address:       10.1.0.0
prefix length: 16
class:         unicast
compressed:    10.1.0.0/16
fixed width:   010.001.000.000/016' '' ip --prefix --host-zero 10.1.0.0/16
expect 'the message' 1 '' 'host portion is not zero (10.0.0.0/8)' ip --prefix --host-zero 10.1.2.3/8
expect 'objects' 1 \
  '{"input":"127.0.0.1/255.0.255.0","family":2,"address":"127.0.0.1","address_bytes":"7f000001","mask":"255.0.255.0","mask_bytes":"ff00ff00","class":"unicast","martian":true,"compressed":"127.0.0.1/255.0.255.0","fixed_width":"127.000.000.001/255.000.255.000"}
{"input":"fe80::1/64","family":28,"address":"fe80::1","address_bytes":"fe800000000000000000000000000001","prefix_length":64,"class":"link-local","compressed":"fe80::1/64","fixed_width":"fe80:0000:0000:0000:0000:0000:0000:0001/0064"}
{"input":"::1/x","error":"missing or invalid prefix length '"'x'"' in address '"'::1/x'"'","code":-2,"errno":"EINVAL"}
{"input":"z:","error":"'"'z:'"' is not a valid ipv6 address","code":-1,"errno":null}' \
  "missing or invalid prefix length 'x' in address '::1/x'
'z:' is not a valid ipv6 address" ip --json --mask 127.0.0.1/255.0.255.0 fe80::1/64 ::1/x z:
expect 'prefix and keyword objects' 0 \
  '{"input":"10.1.0.0/16","family":2,"address":"10.1.0.0","address_bytes":"0a010000","prefix_length":16,"class":"unicast","martian":false,"compressed":"10.1.0.0/16","fixed_width":"010.001.000.000/016"}
{"input":"any-multicast","family":2,"address":"0.0.0.0","address_bytes":"00000000","mask":"any-multicast","mask_bytes":"02000000","class":"unspecified","martian":true,"compressed":"any-multicast","fixed_width":"any-multicast"}' \
  '' ip --prefix --any 10.1.0.0/16 any-multicast --json
"$program" ip --mask --any 10.0.0.0/1.0.0.0 | grep -q '^mask: *1\.0\.0\.0$' || fail 'a mask with the bytes of a keyword'
classes=$("$program" ip 0.0.0.0 255.255.255.255 239.1.1.1 240.0.0.1 :: ff02::1 fec0::1 2001:db8::1 |
  sed -n 's/^class: *//p' | paste -sd:)
[[ $classes == 'unspecified, martian:broadcast, martian:multicast, martian:unicast, martian:unspecified:multicast:site-local:other' ]] ||
  fail "classes: $classes"
expect 'every argument is a text as it stands' 1 '-4' "'[5]' is not an integer
'' is not an integer
'integer' is not an integer
'-x' is not an integer
'--json' is not an integer" integer '[5]' '' integer -- -x --json -4
expect 'numbers' 1 $'31\n-12' "'4x' is not an integer
'2147483648' is out of range" integer 0x1f -12 4x 2147483648
expect 'a bounded number' 1 '{"input":"9","value":9}
{"input":"10","error":"'"'10'"' is not a number from 0 to 9","code":0,"errno":null}' \
  "'10' is not a number from 0 to 9" number --limit 10 --json 9 10

printf '1\r\n2\0d\n%070000d\n\xff\n5' 0 >"$scratch/in"
zeros=$(printf '%064d' 0)
expect 'lines as objects' 1 "{\"input\":\"1\",\"value\":1}
{\"input\":\"2\\u0000d\",\"error\":\"the line holds a NUL character\",\"code\":-1,\"errno\":null}
{\"input\":\"$zeros\",\"error\":\"the line is too long\",\"code\":-1,\"errno\":null}
{\"input\":\"$(printf '\xef\xbf\xbd')\",\"error\":\"'$(printf '\xef\xbf\xbd')' is not an integer\",\"code\":-1,\"errno\":null}
{\"input\":\"5\",\"value\":5}" $'line 2: the line holds a NUL character\nline 3: the line is too long\nline 4: \'\xff\' is not an integer' integer --json -
{ printf '%065536d\r\n' 7; printf '%065537d' 7; } >"$scratch/in"
expect 'the longest line' 1 7 'line 2: the line is too long' number --limit 8
: >"$scratch/in"
expect 'no line' 0 '' '' ip
usage=$'\nRun orvex-parse --help to see how it is used.'
expect 'no subcommand' 2 '' "orvex-parse: A subcommand is required$usage"
expect 'no limit' 2 '' "orvex-parse: --limit is required$usage" number 1
expect 'an unknown option' 2 '' "orvex-parse: The following argument was not expected: --bad$usage" ip --bad
expect 'an unknown family' 2 '' "orvex-parse: --family: 'x' is not inet, inet6 or a code$usage" ip --family x ::1

yes 10.0.0.1 | head -n 100000 >"$scratch/in"
for disposition in - ''; do
  # shellcheck disable=SC2064 # each turn has its own
  (trap "$disposition" PIPE; exec "$program" ip --json) <"$scratch/in" 2>"$scratch/err" | head -n 1 >"$scratch/out"
  [[ ${PIPESTATUS[0]} == 0 && ! -s $scratch/err && -s $scratch/out ]] || fail "a closed pipe, SIGPIPE '$disposition'"
done
for arguments in 'ip 10.0.0.1' --help --version; do
  # shellcheck disable=SC2086 # several arguments are several words
  "$program" $arguments >"$scratch/out" 2>&1
  [[ $? == 0 && -s $scratch/out ]] || fail "$arguments"
  # shellcheck disable=SC2086
  "$program" $arguments >/dev/full 2>"$scratch/err"
  [[ $? == 1 && $(<"$scratch/err") == 'orvex-parse: cannot write: No space left on device' ]] || fail "$arguments, full device"
done

((failures == 0)) && echo 'all passed'
exit $((failures > 0))
