#!/usr/bin/env bash
# Interface names and the profiles that describe routers: orvex_parse_profile_test.sh PROGRAM
# shellcheck source=tests/orvex_parse_support.sh
source "$(dirname "$0")/orvex_parse_support.sh" "$1"

# How names are read with the profiles that README.md has no example of: PROFILE | NAME | FIELDS
while IFS='|' read -r profile name fields; do
  got=$("$program" --profile "profiles/$profile.toml" interface --json "$name" 2>&1)
  [[ $got == "{\"input\":\"$name\",\"argument\":1$fields}" ]] || fail "$profile $name: $got"
done <<'ROWS'
single-chassis|eth-0/0/10-rx.7|,"type":"eth","fpc":0,"pic":0,"port":10,"direction":"rx","unit":7
line-card-chassis|eth-1/2/0/3|,"type":"eth","fpc":82,"pic":0,"port":3
container|eth-1/2/0:3.100|
product-169|at-0/0/0.4095|,"type":"at","fpc":0,"pic":0,"port":0,"unit":4095
ROWS
ORVEX_PROFILE=profiles/virtual-fpcs.toml "$program" interface eth-1050/0/0 >/dev/null || fail 'ORVEX_PROFILE'
expect 'a profile after the subcommand' 0 1050 '' interface --profile profiles/virtual-fpcs.toml --field fpc eth-1050/0/0
expect 'wildcards in channels' 0 '{"input":"ser-?/0/0:1:*.5","argument":1,"type":"ser","fpc":"?","pic":0,"port":0,"channels":[1,"*"],"unit":5}' '' \
  interface --json --wildcard 'ser-?/0/0:1:*.5'
expect 'wildcards for people' 0 '1:*' '' interface --field channels --wildcard 'ser-?/0/0:1:*.5'
expect 'a range' 0 '{"input":"ser-1/*/[0-3]","argument":1,"type":"ser","fpc":1,"pic":"*","port":"range"}' '' \
  interface --json --wildcard --ranges 'ser-1/*/[0-3]'

# Numbers below 0 are numbers, although the library has wildcards as such numbers.
printf '[virtual-fpcs]\nfirst = -5\nlast = -1\n' >"$scratch/below.toml"
expect 'numbers below 0' 0 $'-4\n-3\n-2\n-1\n?\n*' '' interface --wildcard --field fpc --profile "$scratch/below.toml" \
  eth--4/0/0 eth-4294967293/0/0 eth--2/0/0 eth--1/0/0 'eth-?/0/0' 'eth-*/0/0'
printf '[product]\nmulti-chassis-size = 3\n[chassis]\nkind = "switch"\nlcc-to-scc = { first = -2, slots-per-lcc = 1 }\n' >"$scratch/mapped.toml"
expect 'mapped below 0' 0 $'-2\n-1\n0' '' interface --field fpc --profile "$scratch/mapped.toml" eth-0/0/0/0 eth-0/1/0/0 eth-1/1/0/0

expect 'every name of two ranges' 1 $'eth-0/0/46\neth-0/0/47\neth-1/0/46\neth-1/0/47' \
  "port value outside range 0..47 for '48' in 'eth-0/0/48'
port value outside range 0..47 for '48' in 'eth-1/0/48'" interface --expand 'eth-[0-1]/0/[46,47-48]'
expect 'an expanded object' 0 '{"input":"eth-2/0/0.7","argument":1,"type":"eth","fpc":2,"pic":0,"port":0,"unit":7}' '' \
  interface --expand --json 'eth-[2]/0/0.[7]'
expect 'expanded names that are refused' 1 $'eth-0/0/48\neth-0/0/49' '' interface --expand --only refused 'eth-0/0/[46-49]'
[[ $("$program" interface --expand 'irb.[0-65535]' | sort -u | wc -l) == 65536 ]] || fail '65,536 names'
while IFS='|' read -r name message; do
  expect "$name" 1 '' "$message" interface --expand "$name"
done <<'ROWS'
irb.[0-65536]|'irb.[0-65536]' means more than 65536 names
eth-[0-255]/[0-255]/[0-1]|'eth-[0-255]/[0-255]/[0-1]' means more than 65536 names
irb.[0-999999999,0-999999999]|'irb.[0-999999999,0-999999999]' means more than 65536 names
eth-[0|'eth-[0' has no ] after its [
eth-[]|'[]' is no range: use [0-3] or [0,2,5-7] in 'eth-[]'
eth-[0-]|'[0-]' is no range: use [0-3] or [0,2,5-7] in 'eth-[0-]'
eth-[1,,2]|'[1,,2]' is no range: use [0-3] or [0,2,5-7] in 'eth-[1,,2]'
eth-[-1]|'[-1]' is no range: use [0-3] or [0,2,5-7] in 'eth-[-1]'
eth-[1234567890]|'[1234567890]' is no range: use [0-3] or [0,2,5-7] in 'eth-[1234567890]'
eth-[3-1]|the range 3-1 ends before it begins in 'eth-[3-1]'
ROWS

# A bad profile is refused with the place of each fault: TOML | LINE:COLUMN and message
while IFS='|' read -r toml message; do
  printf '%b' "$toml" >"$scratch/bad.toml"
  expect "$toml" 1 '' "orvex-parse: $scratch/bad.toml:$message" --profile "$scratch/bad.toml" interface eth-0
done <<'ROWS'
[chassis]\nfpc-slots = "twelve"|2:13: fpc-slots: expected an integer from -2147483648 to 2147483647, found the string "twelve"
[chassis|1:9: Error while parsing table header: encountered end-of-file
[types.eth]\nflags = ["chanels"]|2:10: flags: expected a flag, such as "channels", found the string "chanels", did you mean 'channels'?
[types.eth]\nchannels = [1,2,3,4,5,6,7]|2:12: channels: expected a list of at most 6 bounds, found 7
product = 5|1:11: product: expected a table, found 5
virtual-fpcs = 5|1:16: virtual-fpcs: expected a table, found 5
types = 5|1:9: types: expected a table, found 5
builtin-types = 5|1:17: builtin-types: expected true or false, found 5
[product]\ncontainer = 1.5|2:13: container: expected true or false, found a floating-point number
[product]\nid = 2020-01-01|2:6: id: expected an integer from 0 to 65535, found a date or a time
[virtual-fpcs]\nfirst = 2\nlast = 1|1:1: virtual-fpcs: first is above last
[types]\neth-x = {}|2:1: expected names that an interface name can begin with, found the key "eth-x"
[types]\n-x = {}|2:1: expected names that an interface name can begin with, found the key "-x"
ROWS
printf '[chasis]\n[product]\nid = 65536\nrecord = "pointers"\n' >"$scratch/bad.toml"
expect 'all faults at once' 1 '' "orvex-parse: $scratch/bad.toml:1:2: expected one of builtin-types, product, attributes, chassis, virtual-fpcs, types, found the key \"chasis\", did you mean 'chassis'?
$scratch/bad.toml:3:6: id: expected an integer from 0 to 65535, found 65536
$scratch/bad.toml:4:10: record: expected \"pointer\" or \"call\" or \"none\", found the string \"pointers\", did you mean 'pointer'?" \
  --profile "$scratch/bad.toml" profile show
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
expect 'a profile from a pipe' 0 '{"input":"eth-1050/0/0","argument":1,"type":"eth","fpc":1050,"pic":0,"port":0}' '' \
  --profile <(cat profiles/virtual-fpcs.toml) interface --json eth-1050/0/0
printf 'builtin-types = false\n[types.mt]\nports = 1\npic-slots = 1\nproducts = [65]\nflags = ["ranges", "wildcard"]\n' >"$scratch/own.toml"
expect 'types of its own' 1 '{"input":"mt-0/0/0","argument":1,"type":"mt","fpc":0,"pic":0,"port":0}
{"input":"eth-0","argument":2,"error":"invalid interface type in '"'eth-0'"'","code":-1,"errno":null}' '' \
  --profile "$scratch/own.toml" interface --json mt-0/0/0 eth-0
expect 'a list of types' 0 '{"type":"mt","flags":["wildcard","ranges"],"pic_slots":1,"virtual_pic_slots":0,"ports":1,"channels":[],"products":[1]}' '' \
  --profile "$scratch/own.toml" interface --list-types --json
expect 'a list of types for people' 0 'mt       PIC slots 1, ports 1, products 1, flags wildcard ranges' '' \
  --profile "$scratch/own.toml" interface --list-types

# A shown profile describes the same router.
printf 'virtual-fpcs.first = -7\nvirtual-fpcs.last = 7\n[types."a\\tb\\"."]\nproducts = [1, 63]\n[chassis]\nglobal-slots = "b"\n' >"$scratch/odd.toml"
for profile in profiles/*.toml "$scratch/own.toml" "$scratch/below.toml" "$scratch/odd.toml"; do
  "$program" --profile "$profile" profile show >"$scratch/shown.toml" || fail "profile show: $profile"
  "$program" --profile "$scratch/shown.toml" profile show | diff "$scratch/shown.toml" - || fail "shown: $profile"
  grep -q '^types.*.ports = ' "$scratch/shown.toml" || fail "no types: $profile"
done
[[ $("$program" profile show --json | head -n 1) == '{"key":"builtin-types","value":"false"}' ]] || fail 'profile show --json'

finish
