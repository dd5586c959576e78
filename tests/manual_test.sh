#!/usr/bin/env bash
# Checks that the manual is well formed, holds every public name, and has examples that print what
# their comments say: manual_test.sh LIBRARY C_COMPILER
set -euo pipefail
cd "$(dirname "$0")/.."
library=$1 compiler=$2
libraries=$(dirname "$library")
headers=(include/orvex/parse.h platform/include/orvex/platform.h platform/include/orvex/stand_in.h)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

pages=()
for page in man/man[135]/*; do
  read -r request target <"$page"
  if [[ $request == .so ]]; then test -f "man/$target"; else pages+=("$page"); fi
done
command -v mandoc >/dev/null || { echo 'mandoc is not installed' && exit 1; }
# Pages of libc need not be installed.
MANPATH=$PWD/man mandoc -T lint -W style "${pages[@]}" 2>/dev/null |
  grep -Ev 'not found: Xr (inet_aton|printf|strlen|strtol|strtoul) 3' >"$work/lint" || true
diff /dev/null "$work/lint"

cat "${pages[@]}" >"$work/manual"
# names EXPRESSION FILE…: what the expression finds must be in the manual, as whole words.
names() {
  local expression=$1 name
  shift
  grep -Eoh "$expression" "$@" | sed 's/^struct //' | sort -u >"$work/names"
  test -s "$work/names"
  while read -r name; do
    grep -qw -e "$name" "$work/manual" || { echo "not in the manual: $name" && exit 1; }
  done <"$work/names"
}
names '\b[A-Z][A-Z0-9]*_[A-Z0-9_]*[A-Z0-9]\b' <(cat "${headers[@]}" | grep -Evw '\w+_(H|API|LAYOUT)')
names 'struct [a-z_]+' "${headers[@]}"
names '^[a-z][a-z0-9-]+' profiles/*.toml
# A build that measures coverage exports names of its own.
names '\w+$' <(nm -D --defined-only "$libraries/liborvex-platform.so" | grep -Ev ' (__gcov.*|mangle_path)$')
for name in $(nm -D --defined-only "$library" | sed -n 's/.* [A-Z] \(.*\)@@.*/\1/p' | grep -v '^ORVEX_'); do
  read -r request target <"man/man3/$name.3"
  page=man/man3/$name.3
  if [[ $request == .so ]]; then page=man/$target; fi
  grep -Eq "^\.(Nm|Vt .*) $name( |$)" "$page" || { echo "$page does not describe $name" && exit 1; }
done

# The examples of the header follow "Example:", those of a page are in EXAMPLES; each becomes a block.
awk '/^ \* Example:/ { on = 1; print "EXAMPLE"; next }
  on && /^ \*     / { print substr($0, 8); next } { on = 0 }' "${headers[0]}" >"$work/examples"
cat man/man3/* | awk '/^\.Sh / { on = $2 == "EXAMPLES" }
  on && /^\.Bd -literal/ { code = 1; print "EXAMPLE"; next } /^\.Ed/ { code = 0 }
  code && on { gsub(/\\e/, "\\"); print }' >>"$work/examples"
{
  printf '#include <%s.h>\n' orvex/parse orvex/stand_in stdio string
  echo 'int main(void) {'
  awk '/^EXAMPLE/ { if (NR > 1) print "}"; print "orvex_platform_install(NULL);\n{"; next } { print }' \
    "$work/examples"
  echo '} return 0; }'
} >"$work/examples.c"
"$compiler" -std=c99 -Wall -Wextra -Werror -Iinclude -Iplatform/include "$work/examples.c" -o "$work/examples" \
  -L"$libraries" -lorvex-parse -lorvex-platform -Wl,-rpath,"$libraries"
diff <(sed -n 's|.*;  // ||p' "$work/examples.c") <("$work/examples")
