#!/usr/bin/env bash
# Completes command lines in those of bash, fish and zsh that are installed: orvex_parse_completion_test.sh PROGRAM
# shellcheck disable=SC2317 # the functions are called by name
# shellcheck source=tests/orvex_parse_support.sh
source "$(dirname "$0")/orvex_parse_support.sh" "$1"
PATH=$(dirname "$program"):$PATH
completion=$PWD/tools/completion
mkdir "$scratch/here"
cd "$scratch/here" || exit
: >'chassis one.toml'

# What each shell offers for the last word of a line, between spaces.
in_bash() {
  local words=()
  read -ra words <<<"$1"
  [[ $1 != *' ' ]] || words+=('')
  bash --norc -c 'source /usr/share/bash-completion/bash_completion; source "$1"; shift
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMP_LINE="$*" COMP_POINT=$(printf %s "$*" | wc -c)
    compopt() { :; }; _orvex_parse; echo "${COMPREPLY[@]}"' - "$completion/orvex-parse.bash" "${words[@]}"
}
in_fish() { HOME=$scratch fish --no-config -c "source '$completion/orvex-parse.fish'; complete -C '$1'" | cut -f 1 | paste -sd ' '; }
# zsh completes at a terminal only. There the matches are printed instead of added.
cat >"$scratch/in_zsh" <<'ZSH'
zmodload zsh/zpty
zpty terminal 'zsh -f -i'
zpty -w terminal "PS1=; unsetopt prompt_cr prompt_sp; fpath=(${(q)1} \$fpath); autoload -Uz compinit; compinit -u -D"
zpty -w terminal 'compadd() {
  [[ ${@[1,(i)(-|--)]} == *-(O|A|D)* ]] && { builtin compadd "$@"; return }
  local -a matches; builtin compadd -A matches "$@"; (( $#matches )) && print -r -- "<$matches>" }'
zpty -w terminal 'print rea""dy'
zpty -r -m terminal output '*ready*'
zpty -w -n terminal "$2"$'\t'
zpty -r -m terminal output '*>*'
print -r -- "$output"
sleep 0.2
zpty -r -m -t terminal output '*>*' && print -r -- "$output"
ZSH
in_zsh() { timeout 20 zsh -f "$scratch/in_zsh" "$completion" "$1" | sed -n 's/.*<\(.*\)>.*/\1/p' | tr -d "\\\\" | paste -sd ' '; }

shells=()
[[ -r /usr/share/bash-completion/bash_completion ]] && shells+=(in_bash)
command -v fish >/dev/null && shells+=(in_fish)
command -v zsh >/dev/null && shells+=(in_zsh)
echo "shells: ${shells[*]}"

# LINE: OFFERED
while IFS=: read -r line offered; do
  for shell in "${shells[@]}"; do
    got=$("$shell" "$line")
    [[ $(tr ' ' '\n' <<<"$got" | sort | paste -sd ' ') == "$offered" ]] || fail "$shell '$line': $got"
  done
done <<'ROWS'
orvex-parse in:integer interface
orvex-parse alias :find is
orvex-parse help du:duration
orvex-parse --p:--profile
orvex-parse ip --json --pre:--prefix --prefix-required
orvex-parse esi --mode u:user-defined
orvex-parse ip --field address:address address_bytes
orvex-parse interface --profile c:chassis one.toml
ROWS
# All options that the help text has are offered.
for command in ip interface 'alias find' 'profile show'; do
  # shellcheck disable=SC2086 # a name may have two words
  diff <("$program" help $command | grep -o '^  \(-., \)\?--[a-z0-9-]*' | grep -o -- '--.*') \
    <("$program" complete $command -- | cut -f 1) || fail "options of $command"
done

finish
