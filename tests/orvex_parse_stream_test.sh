#!/usr/bin/env bash
# How the command-line program reads and writes streams, pipes and terminals: orvex_parse_stream_test.sh PROGRAM
# shellcheck source=tests/orvex_parse_support.sh
source "$(dirname "$0")/orvex_parse_support.sh" "$1"

# A line in, a line out, before the next one comes.
coproc "$program" integer --json
for number in 1 2 3; do
  echo "$number" >&"${COPROC[1]}"
  answer=''
  read -r -t 10 answer <&"${COPROC[0]}"
  [[ $answer == "{\"input\":\"$number\",\"line\":$number,\"value\":$number}" ]] || fail "line $number: $answer"
done
eval "exec ${COPROC[1]}>&-"
wait

# Results and refusals keep the order of the input in one file, and many lines are written at once.
yes $'1\nx' | head -n 100000 >"$scratch/in"
"$program" integer <"$scratch/in" >"$scratch/out" 2>&1
diff <(awk 'NR % 2 { print 1 } !(NR % 2) { print "line " NR ": '\''x'\'' is not an integer" }' "$scratch/in") "$scratch/out" >/dev/null ||
  fail 'results and refusals are out of order'
"$program" integer <"$scratch/in" 2>&1 >/dev/null | head -n 1 >"$scratch/out"
[[ $(<"$scratch/out") == "line 2: 'x' is not an integer" ]] || fail 'the first refusal'

printf '1\r\n2\0d\n%070000d\n\xff\n5' 0 >"$scratch/in"
zeros=$(printf '%064d' 0)
replaced=$(printf '\xef\xbf\xbd')
expect 'lines as objects' 1 "{\"input\":\"1\",\"line\":1,\"value\":1}
{\"input\":\"2\\u0000d\",\"line\":2,\"error\":\"the line holds a NUL character\",\"code\":-1,\"errno\":null}
{\"input\":\"$zeros\",\"line\":3,\"error\":\"the line is too long\",\"code\":-1,\"errno\":null}
{\"input\":\"$replaced\",\"input_hex\":\"ff\",\"line\":4,\"error\":\"'$replaced' is not an integer\",\"code\":-1,\"errno\":null}
{\"input\":\"5\",\"line\":5,\"value\":5}" '' integer --json -
expect 'messages with the number of the line' 1 $'1\n5' $'line 2: the line holds a NUL character\nline 3: the line is too long\nline 4: \'\xff\' is not an integer' integer
expect 'the lines that are valid' 1 $'1\r\n5' 'line 3: the line is too long' integer --only valid
"$program" integer --only refused <"$scratch/in" 2>"$scratch/err" | cmp - <(printf '2\0d\n\xff\n')
[[ ${PIPESTATUS[1]} == 0 && $(<"$scratch/err") == 'line 3: the line is too long' ]] || fail 'the lines that are refused'
expect 'stopping at the first refusal' 1 1 'line 2: the line holds a NUL character' integer --fail-fast
expect 'the status alone' 1 '' '' integer --quiet
# What is not UTF-8 is replaced byte by byte; letters stay.
object=$("$program" integer --json $'é—😀"\\\t\xc0\xaf')
[[ $object == "{\"input\":\"é—😀\\\"\\\\\\t$replaced$replaced\",\"input_hex\":\"c3a9e28094f09f9880225c09c0af\",\"argument\":1,"* ]] || fail "$object"

{ printf '%065536d\r\n' 7; printf '%065537d\n' 7; printf '%0300000d\n7\r' 7; } >"$scratch/in"
expect 'the longest lines' 1 $'7\n7' $'line 2: the line is too long\nline 3: the line is too long' number --limit 8
printf '1\0x\r\0\n\0002' >"$scratch/in"
"$program" integer -0 <"$scratch/in" >"$scratch/out" 2>"$scratch/err"
printf '1\0002\0' | cmp - "$scratch/out" || fail 'NUL after each result'
[[ $(<"$scratch/err") == $'line 2: \'x\r\' is not an integer\nline 3: \'\n\' is not an integer' ]] || fail 'NUL after each text'
"$program" integer --null --only refused <"$scratch/in" >"$scratch/out" 2>&1
printf 'x\r\0\n\0' | cmp - "$scratch/out" || fail 'NUL after each refused text'
: >"$scratch/in"
expect 'no line' 0 '' '' ip
yes 10.0.0.1 | head -n 100 >"$scratch/in"
expect 'a filter' 0 "$(<"$scratch/in")" '' ip --only valid
expect 'the rest of a filter' 0 '' '' ip --only refused
expect 'accepted' 0 '' '' ip --quiet
printf 'uplink-a\neth-0/0/0\n' >"$scratch/in"
expect 'a "no" is refused by a filter' 1 eth-0/0/0 '' alias is --only refused

yes 10.0.0.1 | head -n 100000 >"$scratch/in"
for disposition in - ''; do
  # shellcheck disable=SC2064 # expanded now, for each turn
  (trap "$disposition" PIPE; exec "$program" ip --json) <"$scratch/in" 2>"$scratch/err" | head -n 1 >"$scratch/out"
  [[ ${PIPESTATUS[0]} == 0 && ! -s $scratch/err && -s $scratch/out ]] || fail "a closed pipe, SIGPIPE '$disposition'"
done
yes 7x | timeout 10 "$program" integer 2>&1 >/dev/null | head -n 1 >"$scratch/out"
[[ ${PIPESTATUS[1]} == 1 && -s $scratch/out ]] || fail 'standard error is closed'
"$program" integer <. >/dev/null 2>"$scratch/err"
[[ $? == 1 && $(<"$scratch/err") == 'orvex-parse: cannot read standard input' ]] || fail 'input that cannot be read'
for arguments in 'ip 10.0.0.1' --help --version 'profile show'; do
  # shellcheck disable=SC2086 # several arguments are several words
  "$program" $arguments >"$scratch/out" 2>&1
  [[ $? == 0 && -s $scratch/out ]] || fail "$arguments"
  # shellcheck disable=SC2086
  "$program" $arguments >/dev/full 2>"$scratch/err"
  [[ $? == 1 && $(<"$scratch/err") == 'orvex-parse: cannot write: No space left on device' ]] || fail "$arguments, full device"
done

# Memory stays the same however long the input and its lines are. A sanitizer needs much more.
peak() { ( ulimit -v 16384 && exec "$program" "$@" ) >/dev/null 2>&1; }
if ! grep -q __asan_init "$program"; then
  peak ip --json < <(yes 2001:db8::1 | head -n 300000) || fail 'memory of a long stream'
  peak integer --only valid < <(head -c 50000000 /dev/zero | tr '\0' 1; echo; echo 1)
  [[ $? == 1 ]] || fail 'memory of a long line'
fi

# A text cannot give orders to the terminal that shows it; files get it as it is.
on_terminal() { script -qec "$1" /dev/null | tr -d '\r'; }
bell=$'\e[31m\ax'
shown=$(on_terminal "'$program' integer '$bell'")
[[ $shown == "'\\x1b[31m\\x07x' is not an integer" ]] || fail "on a terminal: $shown"
# 8-bit ones too, but not the bytes of letters.
one_byte=$'\x80\x9bx' two_bytes=$'\xc2\x9b'
shown=$(on_terminal "'$program' integer '$one_byte' '$two_bytes' 'é—'")
[[ $shown == "argument 1: '\\x80\\x9bx' is not an integer
argument 2: '\\xc2\\x9b' is not an integer
argument 3: 'é—' is not an integer" ]] || fail "8-bit controls on a terminal: $shown"
for format in --json --tsv '--only refused'; do
  shown=$(on_terminal "'$program' integer $format '$bell$two_bytes'")
  [[ $shown != *$'\e'* && $shown != *$'\x9b'* && $shown == *31m* ]] || fail "$format on a terminal: $shown"
done
expect 'control characters in a file' 1 '' "'$bell' is not an integer" integer "$bell"

# Hints are for terminals.
hint='hint: --prefix accepts a prefix length after the address'
refused=$("$program" ip 10.0.0.0/8 2>&1)
[[ $(on_terminal "'$program' ip 10.0.0.0/8") == "$refused"$'\n'"$hint" && $refused != *hint* ]] || fail "hint: $refused"
[[ $(on_terminal "'$program' ip 10.0.0.0/x") != *hint* ]] || fail 'a hint that does not help'
[[ $(on_terminal "'$program' ip --prefix 10.0.0.0/255.0.0.0") == *--mask* ]] || fail 'no hint of --mask'
[[ $(on_terminal "'$program' mac 0:1:2:3:4:5/8") == *"$hint" ]] || fail 'no hint of mac'

finish
