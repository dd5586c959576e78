#!/usr/bin/env bash
# Measures the command-line program beside others, in one run: the processor time for a million lines of each family
# beside that of grepcidr for a million addresses, and that of starting 1,000 processes beside that of ipcalc-ng.
# shellcheck disable=SC2317 # functions are called by name
# usage: tool.sh ORVEX_PARSE
set -euo pipefail
program=$(realpath "$1")
lines=1000000
rounds=3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

# The processor time of a command, in milliseconds.
cpu_time() {
  local user system TIMEFORMAT='%U %S'
  read -r user system < <({ time "$@" >/dev/null 2>&1 || true; } 2>&1)
  awk "BEGIN { print ($user + $system) * 1000 }"
}
least() { printf '%s\n' "$@" | sort -n | head -n 1; }
# The least of a few times: the machine may be busy.
least_time() {
  local round times=()
  for ((round = 0; round < rounds; ++round)); do times+=("$(cpu_time "$@")"); done
  least "${times[@]}"
}
read_lines() { "${@:2}" <"$1"; }

# row NAME TIME TIME_OF_THE_PEER LIMIT
row() {
  awk -v name="$1" -v own="$2" -v peer="$3" -v limit="$4" 'BEGIN {
    printf "%-28s %7.0f ms %9.0f ms %7.2f times, at most %s%s\n", name, own, peer, own / peer, limit,
      (own > limit * peer) ? "  MISSED" : ""
    exit (own > limit * peer) }' || failed=1
}

# A million different addresses, IPv4 and IPv6 in turns, always the same.
awk -v lines=$lines 'BEGIN {
  srand(1)
  for (i = 0; i < lines; ++i)
    if (i % 2) printf "%d.%d.%d.%d\n", rand() * 256, rand() * 256, rand() * 256, rand() * 256
    else if (i % 4) printf "2001:db8:%x:%x::%x\n", rand() * 65536, rand() * 65536, rand() * 65536
    else printf "fd%02x:%x:%x:%x:%x:%x:%x:%x\n", rand() * 256, rand() * 65536, rand() * 65536, rand() * 65536,
      rand() * 65536, rand() * 65536, rand() * 65536, rand() * 65536
}' >"$scratch/addresses"

printf '%-28s %10s %12s\n' 'a million lines' orvex-parse grepcidr
grepcidr=$(least_time grepcidr 192.0.2.0/24 "$scratch/addresses")
row 'ip --json' "$(least_time read_lines "$scratch/addresses" "$program" ip --json)" "$grepcidr" 5
row 'ip' "$(least_time read_lines "$scratch/addresses" "$program" ip)" "$grepcidr" 3
while IFS='|' read -r command text; do
  yes -- "$text" 2>/dev/null | head -n $lines >"$scratch/lines" || true
  # shellcheck disable=SC2086 # options are words
  row "$command --json" "$(least_time read_lines "$scratch/lines" "$program" $command --json)" "$grepcidr" 5
done <<'ROWS'
integer|0x1f
quad|-9223372036854775808
number --limit 4096|100
interface|eth-1/2/0:3.100
alias is|uplink-to-core
mac --prefix|0:1b:2c:3d:4e:5f/40
rd|10.1.1.1:7
esi|00:11::99
iso --nsap|49.0001.1921.6800.1001.00
sysid|1921.6800.1001
atmvpn|65000:1::5::10.1.2.3/32
delimited --count 4 --hex|0a:1:2:3
duration|1d 01:00:00
canonical|2001:DB8:0:0:0:0:0:1
prefix6|2001:db8:1::/48
ROWS

start() { local i; for ((i = 0; i < 1000; ++i)); do "$@"; done; }
# By turns, since a busy machine slows down what runs at the time.
own=() peer=()
for ((round = 0; round < rounds; ++round)); do
  own+=("$(cpu_time start "$program" ip --prefix 10.0.0.0/8)")
  peer+=("$(cpu_time start ipcalc-ng -n 10.0.0.0/8)")
done
printf '\n%-28s %10s %12s\n' 'starting' orvex-parse ipcalc-ng
row '1,000 processes' "$(least "${own[@]}")" "$(least "${peer[@]}")" 1.2
exit "$failed"
