# Completion for bash: the program itself knows its words.
# shellcheck shell=bash
_orvex_parse() {
  local line word
  # Words as the shell reads them, but not split at "=" and ":".
  local words=() cword=0 cur=''
  _get_comp_words_by_ref -n =: words cword cur 2>/dev/null || return
  COMPREPLY=()
  while IFS= read -r line; do
    if [[ $line == :files ]]; then
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$cur")
      return
    fi
    word=${line%%$'\t'*}
    COMPREPLY+=("$word")
  done < <("${words[0]}" complete "${words[@]:1:cword}" 2>/dev/null)
}
complete -F _orvex_parse orvex-parse
