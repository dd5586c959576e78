#!/usr/bin/env bash
# Runs the command-line program as its users do, and the examples of README.md: orvex_parse_test.sh PROGRAM
# shellcheck source=tests/orvex_parse_support.sh
source "$(dirname "$0")/orvex_parse_support.sh" "$1"

# The examples of README.md print what is shown there: "    $ ./dev run …" and the indented lines after it, empty ones
# in between too, up to another command or text.
examples=0 command='' shown='' empty=''
check_example() {
  [[ -n $command ]] || return
  examples=$((examples + 1))
  diff <(echo "$shown") <(eval "${command//.\/dev run/\"\$program\"}" 2>&1 </dev/null) || fail "$command"
}
while IFS= read -r line; do
  case $line in
    '') empty=$'\n' ;;
    '    $ '*'./dev run '*) check_example; command=${line#'    $ '} shown='' empty='' ;;
    '    '*) shown+=${shown:+$'\n'}$empty${line#'    '} empty='' ;;
    *) check_example; command='' shown='' empty='' ;;
  esac
done < <(cat README.md; echo end)
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
ip|--prefix-required|10.0.0.0/8|1|0
ip|--all-bytes|10.1|0|1
ip|--default|default|1|0
ip|--integer|167772161|1|0
ip|--multicast|10.0.0.1|0|1
ip|--no-martian|127.0.0.1|0|1
ip|--unicast|224.0.0.1|0|1
ip|--family inet6|10.0.0.1|0|1
ip|--family=inet6|10.0.0.1|0|1
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
  '{"input":"127.0.0.1/255.0.255.0","argument":1,"family":2,"address":"127.0.0.1","address_bytes":"7f000001","mask":"255.0.255.0","mask_bytes":"ff00ff00","class":"unicast","martian":true,"compressed":"127.0.0.1/255.0.255.0","fixed_width":"127.000.000.001/255.000.255.000"}
{"input":"fe80::1/64","argument":2,"family":28,"address":"fe80::1","address_bytes":"fe800000000000000000000000000001","prefix_length":64,"class":"link-local","compressed":"fe80::1/64","fixed_width":"fe80:0000:0000:0000:0000:0000:0000:0001/0064"}
{"input":"::1/x","argument":3,"error":"missing or invalid prefix length '"'x'"' in address '"'::1/x'"'","code":-2,"errno":"EINVAL"}
{"input":"z:","argument":4,"error":"'"'z:'"' is not a valid ipv6 address","code":-1,"errno":null}' \
  '' ip --json --mask 127.0.0.1/255.0.255.0 fe80::1/64 ::1/x z:
expect 'prefix and keyword objects' 0 \
  '{"input":"10.1.0.0/16","argument":1,"family":2,"address":"10.1.0.0","address_bytes":"0a010000","prefix_length":16,"class":"unicast","martian":false,"compressed":"10.1.0.0/16","fixed_width":"010.001.000.000/016"}
{"input":"any-multicast","argument":2,"family":2,"address":"0.0.0.0","address_bytes":"00000000","mask":"any-multicast","mask_bytes":"02000000","class":"unspecified","martian":true,"compressed":"any-multicast","fixed_width":"any-multicast"}' \
  '' ip --prefix --any 10.1.0.0/16 any-multicast --json
expect 'a mask with the bytes of a keyword' 0 1.0.0.0 '' ip --mask --any 10.0.0.0/1.0.0.0 --field mask
classes=$("$program" ip 0.0.0.0 255.255.255.255 239.1.1.1 240.0.0.1 :: ff02::1 fec0::1 2001:db8::1 |
  sed -n 's/^class: *//p' | paste -sd:)
[[ $classes == 'unspecified, martian:broadcast, martian:multicast, martian:unicast, martian:unspecified:multicast:site-local:other' ]] ||
  fail "classes: $classes"
expect 'a table' 1 $'input\targument\taddress\tbytes\tprefix_length\tclass\terror
0:0:0:0:0:1\t1\t00:00:00:00:00:01/48\t000000000001\t48\tunicast\t
x\\ty\\\\\t2\t\t\t\t\tInvalid character \'x\'' '' mac --tsv --prefix 0:0:0:0:0:1 $'x\ty\\'
expect 'one field' 1 8 "argument 3: invalid input at 'x' in ip address: 'x'" ip --prefix --field prefix_length 10.0.0.0/8 ::1 x
expect 'every argument is a text, unchanged' 1 '-4' "argument 1: '[5]' is not an integer
argument 2: '' is not an integer
argument 3: 'integer' is not an integer
argument 5: '-x' is not an integer
argument 6: '--json' is not an integer" integer '[5]' '' integer -4 -- -x --json
expect 'the only argument' 1 '' "'1::/0' is not an IPv6 address" canonical 1::/0
expect 'delimiters' 0 $'address:       10-1-2-3\nbytes:         0a010203' '' delimited --count 4 --delimiter - 10:1:2:3
expect 'an address of a prefix' 0 2001:db8:: '' prefix6 --address 2001:db8::/32
expect 'a number out of range' 1 '' "'2147483648' is out of range" integer 2147483648
expect 'a bounded number' 1 '{"input":"9","argument":1,"value":9}
{"input":"10","argument":2,"error":"'"'10'"' is not a number from 0 to 9","code":0,"errno":null}' '' \
  number --limit 10 --json 9 10
# Numbers that not every reader of JSON keeps are texts.
expect 'the largest numbers' 0 '{"input":"9007199254740992","argument":1,"value":9007199254740992}
{"input":"9007199254740993","argument":2,"value":"9007199254740993"}
{"input":"-9007199254740993","argument":3,"value":"-9007199254740993"}' '' quad --json -- 9007199254740992 9007199254740993 -9007199254740993
expect 'a length of the text and of the library' 0 'address:       65000:1::5::10:1:2:3/32
rd bytes:      0000fde800000001
type:          5
address bytes: 0a01020300000000000000000000000000000000000000
prefix length: 32' '' atmvpn 65000:1::5::10.1.2.3/32
expect 'no length' 0 '{"input":"1:1::5::10","argument":1,"address":"1:1::5::10","rd_bytes":"0000000100000001","type":5,"address_bytes":"0a00000000000000000000000000000000000000000000","prefix_length_raw":255}' '' atmvpn --json 1:1::5::10
expect 'no text, no family' 1 '' "no family accepts ''" identify ''
expect 'canonical forms' 1 '{"input":"0x1F","argument":1,"integer":"31","quad":"31","ip":"0.0.0.31"}
{"input":"1.10:5","argument":2,"rd":"65546L:5"}
{"input":"001b2c3d4e5f","argument":3,"mac":"00:1b:2c:3d:4e:5f/48"}
{"input":"10.0.0.0/255.0.0.0","argument":4,"ip":"10.0.0.0/255.0.0.0"}
{"input":"eth-0/0/0.1","argument":5,"interface":"eth-0/0/0.1"}
{"input":"uplink-to-core","argument":6,"alias":"uplink-to-core"}
{"input":"1 d","argument":7,"error":"no family accepts '"'1 d'"'","code":0,"errno":null}' '' \
  identify --json 0x1F 1.10:5 001b2c3d4e5f 10.0.0.0/255.0.0.0 eth-0/0/0.1 uplink-to-core '1 d'

# A canonical form gives the same bytes again.
for text in 'rd 65000:100' 'rd 10.1.1.1:7' 'rd 1.10:1' 'rd 4200000000L:65535' 'atmvpn 65000:1::5::10.1.2.3/32' \
  'atmvpn 1:1::255::1:2:0:0:3' 'atmvpn 10.1.1.1:7::0x10::0/0' 'atmvpn 1:1::1::1::2'; do
  read -r family text <<<"$text"
  form=$("$program" "$family" --json "$text" | sed 's/.*"\(rd\|address\)":"\([^"]*\)".*/\2/')
  diff <("$program" "$family" "$text") <("$program" "$family" "$form") || fail "$family $text"
done

usage=$'\nRun orvex-parse --help to see how it is used.'
while IFS='|' read -r arguments message; do
  # shellcheck disable=SC2086 # several arguments are several words
  expect "usage: $arguments" 2 '' "orvex-parse: $message$usage" $arguments
done <<'ROWS'
|a subcommand is missing
itneger 1|unknown subcommand 'itneger', did you mean 'integer'?
help nothing-like-it|unknown subcommand 'nothing-like-it'
alias|after alias comes is or find
alias fnid x|after alias comes is or find, found 'fnid', did you mean 'find'?
ip --prefx 1|unknown option --prefx, did you mean '--prefix'?
ip --bad|unknown option --bad
ip --json=1 ::1|--json takes no value
ip --family|--family needs a value
ip --family x ::1|--family: expected inet, inet6 or a family code, found 'x'
ip --unicast --multicast 1|no address is both: give --unicast or --multicast
mac --unicast --multicast 1|no address is both: give --unicast or --multicast
ip --json --tsv ::1|--tsv: only one of --json, --tsv, --field, --only and --quiet can be given
ip --field adress ::1|--field: expected family, address, address_bytes, prefix_length, mask, mask_bytes, class, martian, compressed or fixed_width, found 'adress', did you mean 'address'?
number 1|--limit is required: every number must be below it
number --limit -5 1|--limit: expected a number from 1 to 2147483647, found '-5'
delimited 1|--count is required: the number of bytes
delimited --count 4 --delimiter ab 1|--delimiter: expected one character, found 'ab'
duration --min 10 --max 5 7|--min 10 is above --max 5: no duration is between them
duration --max -1 7|--max: expected a number from 0 to 18446744073709551615, found '-1'
esi --mode user ::|--mode: expected any, user-defined or reserved-ok, found 'user', did you mean 'user-defined'?
interface --without ranged x|--without: expected mgmt, channels, no-slot, need-fpc-pic-port, no-unit, all, wildcard, default-unit, need-channel, no-unit-max, rlsq, at-unit-32767, ranges, wide-fpc, expansion-slot or port-first, found 'ranged', did you mean 'ranges'?
alias find --map x --alternate y|there is one map to read: give --map or --alternate
profile show x|no text is read, found 'x'
interface --list-types eth-0|no text is read, found 'eth-0'
interface --list-types --field fpc|--field: expected type, flags, pic_slots, virtual_pic_slots, ports, channels or products, found 'fpc'
interface --list-types --only valid|--only: there are no texts to print
ROWS

printf 'eth-0/0/0.0 uplink x\n' >"$scratch/map"
expect 'aliases found' 1 eth-0/0/0.0 "argument 2: 'up' is not in the alias map" alias find --map "$scratch/map" uplink up
expect 'no alias map' 1 '' 'orvex-parse: cannot open /dev/null/map: Not a directory' alias find --map /dev/null/map x
expect 'no alias' 1 no '' alias is eth-0/0/0

# Each subcommand's help shows its own examples, which run.
"$program" help | sed -n 's/^  \([a-z0-9]*\( [a-z]*\)\?\)   *[A-Z].*/\1/p' >"$scratch/commands"
[[ $(wc -l <"$scratch/commands") == 20 ]] || fail "$(wc -l <"$scratch/commands") subcommands in the help text"
printf 'eth-0 uplink-to-core x\n' >"$scratch/my-map"
echo ::1 >"$scratch/addresses"
while read -r command; do
  [[ $command == help ]] && continue
  # shellcheck disable=SC2086 # a name may have two words
  "$program" help $command >"$scratch/help" || fail "help $command"
  # shellcheck disable=SC2086
  diff "$scratch/help" <("$program" $command --help) || fail "$command --help"
  grep -q "^  orvex-parse .*$command" "$scratch/help" || fail "no example of $command"
  if grep '^  orvex-parse ' "$scratch/help" | grep -v -- "$command"; then fail "foreign examples of $command"; fi
  if grep '.\{81\}' "$scratch/help"; then fail "a long line in the help of $command"; fi
  while read -r example; do
    example=${example//my-map/$scratch/my-map}
    (cd profiles && eval "${example//<addresses/<\"\$scratch/addresses\"}" >/dev/null) || fail "$example"
  done < <(sed -n "s|^  orvex-parse |'$program' |p" "$scratch/help")
done <"$scratch/commands"
for arguments in 'help alias' 'alias --help' 'alias -h'; do
  # shellcheck disable=SC2086 # several words
  expect "$arguments" 0 'Subcommands:
  alias is    Whether words mean interface aliases: yes or no
  alias find  The interface names of aliases, from the alias map

Run orvex-parse help alias is to see how one is used.' '' $arguments
done
diff <("$program" help help) <("$program" --help) || fail 'help help'
[[ $("$program" -V) == "$("$program" --version)" && $("$program" -V) == 'orvex-parse '[0-9]* ]] || fail 'version'

finish
