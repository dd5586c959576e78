#!/usr/bin/env bash
# Runs the command-line program as its users do, and the examples of README.md: orvex_parse_test.sh PROGRAM
set -uo pipefail
program=$1
cd "$(dirname "$0")/.." || exit
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

# The examples of README.md print what is shown there: "    $ ./dev run …" and the lines after it, up to an empty line
# or another command.
examples=0 command='' shown=''
check_example() {
  [[ -n $command ]] || return
  examples=$((examples + 1))
  diff <(echo "$shown") <(eval "${command/.\/dev run/\"\$program\"}" 2>&1 </dev/null) || fail "$command"
}
while IFS= read -r line; do
  case $line in
    '    $ ./dev run '*) check_example; command=${line#'    $ '} shown='' ;;
    '    '*) shown+=${shown:+$'\n'}${line#'    '} ;;
    *) check_example; command='' shown='' ;;
  esac
done < <(cat README.md; echo)
((examples >= 15)) || fail "$examples examples"

# Every flag has an effect; README.md has examples of the others: COMMAND | FLAGS | TEXT | status without | status with
while IFS='|' read -r command flags text without with; do
  for run in ":$without" "$flags:$with"; do
    # shellcheck disable=SC2086 # several flags are several words
    "$program" $command ${run%:*} -- "$text" >/dev/null 2>&1
    got=$?
    [[ $got == "${run##*:}" ]] || fail "$command ${run%:*} $text: exit $got"
  done
done <<'ROWS'
ip|--prefix-required|10.0.0.0|0|1
ip|--all-bytes|10.1|0|1
ip|--default|default|1|0
ip|--integer|167772161|1|0
ip|--multicast|10.0.0.1|0|1
ip|--no-martian|127.0.0.1|0|1
ip|--unicast|224.0.0.1|0|1
ip|--family inet6|10.0.0.1|0|1
mac|--unicast|1:1:2:3:4:5|0|1
mac|--multicast|0:1:2:3:4:5|0|1
esi|--mode reserved-ok|::|1|0
esi|--mode user-defined|1::|0|1
duration|--min 60|59|0|1
duration|--max 60|61|0|1
interface|--mgmt|eth-1/2/3|0|1
interface|--no-slot|eth-0/0/0|0|1
interface|--need-fpc-pic-port|eth-0|0|1
interface|--no-unit|eth-0/0/0.1|0|1
interface|--all|all|1|0
interface|--need-channel|eth-0/0/0|0|1
interface|--rlsq|eth-1/2/3|0|1
interface|--ranges|eth-[0-3]/0/[1,2]|1|0
interface|--wide-fpc|eth-255/0/0|1|0
interface|--expansion-slot --no-slot|eth-1-2|1|0
interface|--port-first --no-slot|eth-47|1|0
interface|--profile profiles/product-169.toml --without at-unit-32767|at-0/0/0.32767|0|1
ROWS

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
expect 'every argument is a text, unchanged' 1 '-4' "'[5]' is not an integer
'' is not an integer
'integer' is not an integer
'-x' is not an integer
'--json' is not an integer" integer '[5]' '' integer -- -x --json -4
expect 'no canonical text' 1 '' "'49' is not an IPv6 address
'1::/0' is not an IPv6 address" canonical 49 1::/0
expect 'delimiters' 0 $'address:       10-1-2-3\nbytes:         0a010203' '' delimited --count 4 --delimiter - 10:1:2:3
expect 'an address of a prefix' 0 2001:db8:: '' prefix6 --address 2001:db8::/32
expect 'a number out of range' 1 '' "'2147483648' is out of range" integer 2147483648
expect 'a bounded number' 1 '{"input":"9","value":9}
{"input":"10","error":"'"'10'"' is not a number from 0 to 9","code":0,"errno":null}' \
  "'10' is not a number from 0 to 9" number --limit 10 --json 9 10

# How names are read with the profiles that README.md has no example of: PROFILE | NAME | FIELDS
while IFS='|' read -r profile name fields; do
  got=$("$program" --profile "profiles/$profile.toml" interface --json "$name" 2>&1)
  [[ $got == "{\"input\":\"$name\"$fields}" ]] || fail "$profile $name: $got"
done <<'ROWS'
single-chassis|eth-0/0/10-rx.7|,"type":"eth","fpc":0,"pic":0,"port":10,"direction":"rx","unit":7
line-card-chassis|eth-1/2/0/3|,"type":"eth","fpc":82,"pic":0,"port":3
container|eth-1/2/0:3.100|
product-169|at-0/0/0.4095|,"type":"at","fpc":0,"pic":0,"port":0,"unit":4095
ROWS
ORVEX_PROFILE=profiles/virtual-fpcs.toml "$program" interface eth-1050/0/0 >/dev/null || fail 'ORVEX_PROFILE'

# A bad profile is refused with the place of its fault: TOML | LINE:COLUMN and message
while IFS='|' read -r toml message; do
  printf '%b' "$toml" >"$scratch/bad.toml"
  expect "$toml" 1 '' "orvex-parse: $scratch/bad.toml:$message" --profile "$scratch/bad.toml" interface eth-0
done <<'ROWS'
[chassis]\nfpc-slots = "twelve"|2:13: fpc-slots: expected an integer from -2147483648 to 2147483647, found the string "twelve"
[chassis|1:9: Error while parsing table header: encountered end-of-file
[types.eth]\nflags = ["chanels"]|2:10: flags: expected a flag, such as "channels", found the string "chanels"
[types.eth]\nchannels = [1,2,3,4,5,6,7]|2:12: channels: expected a list of at most 6 bounds, found 7
product = 5|1:11: product: expected a table, found 5
[product]\ncontainer = 1.5|2:13: container: expected true or false, found a floating-point
[virtual-fpcs]\nfirst = 2\nlast = 1|1:1: virtual-fpcs: first is above last
[types]\neth-x = {}|2:1: expected names that an interface name can begin with, found the key "eth-x"
[types]\n-x = {}|2:1: expected names that an interface name can begin with, found the key "-x"
ROWS
# What cannot be a profile is refused as a whole; a pipe can be one.
ln -s / "$scratch/folder"
head -c 1048577 /dev/zero | tr '\0' '#' >"$scratch/large"
printf 'a = "\0"' >"$scratch/nul"
while IFS='|' read -r file message; do
  expect "profile $file" 1 '' "orvex-parse: $scratch/$file$message" --profile "$scratch/$file" interface eth-0
done <<'ROWS'
folder|: Is a directory
missing|: No such file or directory
large|: a profile has at most 1 MiB
nul|: a profile holds no NUL characters
ROWS
{ printf '#\na'; printf '.a%.0s' {1..33}; printf ' = 1'; } >"$scratch/deep"
expect 'a deep key' 1 '' "orvex-parse: $scratch/deep:2:1: a line has at most 32 dots" --profile "$scratch/deep" interface eth-0
expect 'a profile from a pipe' 0 '{"input":"eth-1050/0/0","type":"eth","fpc":1050,"pic":0,"port":0}' '' \
  --profile <(cat profiles/virtual-fpcs.toml) interface --json eth-1050/0/0
printf 'builtin-types = false\n[types.mt]\nports = 1\npic-slots = 1\nproducts = [65]\n' >"$scratch/own.toml"
expect 'types of its own' 1 '{"input":"mt-0/0/0","type":"mt","fpc":0,"pic":0,"port":0}
{"input":"eth-0","error":"invalid interface type in '"'eth-0'"'","code":-1,"errno":null}' \
  "invalid interface type in 'eth-0'" --profile "$scratch/own.toml" interface --json mt-0/0/0 eth-0
printf 'eth-0/0/0.0 uplink x\n' >"$scratch/map"
expect 'aliases found' 1 eth-0/0/0.0 "'up' is not in the alias map" alias find --map "$scratch/map" uplink up
expect 'no alias map' 1 '' 'orvex-parse: cannot open /dev/null/map: Not a directory' alias find --map /dev/null/map x
expect 'no alias' 1 no '' alias is eth-0/0/0

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
expect 'an unknown option' 2 '' "orvex-parse: The following argument was not expected: --bad$usage" ip --bad
expect 'an unknown family' 2 '' "orvex-parse: --family: 'x' is not inet, inet6 or a code$usage" ip --family x ::1

yes 10.0.0.1 | head -n 100000 >"$scratch/in"
for disposition in - ''; do
  # shellcheck disable=SC2064 # expanded now, for each turn
  (trap "$disposition" PIPE; exec "$program" ip --json) <"$scratch/in" 2>"$scratch/err" | head -n 1 >"$scratch/out"
  [[ ${PIPESTATUS[0]} == 0 && ! -s $scratch/err && -s $scratch/out ]] || fail "a closed pipe, SIGPIPE '$disposition'"
done
yes 7x | timeout 10 "$program" integer 2>&1 >/dev/null | head -n 1 >"$scratch/out"
[[ ${PIPESTATUS[1]} == 1 && -s $scratch/out ]] || fail 'standard error is closed'
# A text cannot give orders to the terminal that shows it; files get it as it is.
bell=$'\e[31m\ax'
shown=$(script -qec "'$program' integer '$bell'" /dev/null)
[[ $shown == "'\\x1b[31m\\x07x' is not an integer"$'\r' ]] || fail "on a terminal: $shown"
# 8-bit ones too, but not the bytes of letters.
one_byte=$'\x80\x9bx' two_bytes=$'\xc2\x9b'
shown=$(script -qec "'$program' integer '$one_byte' '$two_bytes' 'é—'" /dev/null | tr -d '\r')
[[ $shown == "'\\x80\\x9bx' is not an integer
'\\xc2\\x9b' is not an integer
'é—' is not an integer" ]] || fail "8-bit controls on a terminal: $shown"
expect 'control characters in a file' 1 '' "'$bell' is not an integer" integer "$bell"
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
