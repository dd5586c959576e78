#!/usr/bin/env bash
# Compares what a library exports, needs and is named with the full lists, and that it allocates nothing:
# binary_interface_test.sh LIBRARY
set -euo pipefail
library=$1

functions='_format_ipv6addr decode_dhms format_delim_addr format_esi format_in6_addr format_in6_prefix
  format_ipaddr format_ipv6addr_partial format_iso_addr format_iso_sysid format_mac_addr
  format_rfc5952 get_fpc_picslots_byname ifalias_to_ifl ipv6_address_type is_interface_alias
  parse_4_level_chassis parse_atmvpn parse_delim_dec_addr parse_delim_hex_addr parse_esi
  parse_inetvpn_rd parse_integer parse_interface parse_ipaddr parse_ipaddr_is_unicast parse_is_atmvpn
  parse_is_iso_addr parse_is_iso_sysid parse_iso_addr parse_iso_sysid parse_mac_addr parse_number
  parse_quad'
exports=$(
  echo 'A ORVEX_PARSE_1'
  # shellcheck disable=SC2086 # one argument a name
  printf 'T %s@@ORVEX_PARSE_1\n' $functions
  printf '%s@@ORVEX_PARSE_1\n' 'D parse_pf_attrib' 'R sw_version'
)
diff <(sort <<<"$exports") <(nm -D --defined-only "$library" | cut -d ' ' -f 2- | sort)
# What it needs of a platform is what every platform library has.
for name in $(nm -D --undefined-only "$library" | sed -n 's/^ *U \([a-z][^@]*\)$/\1/p'); do
  grep -w "$name" "$(dirname "$0")/../platform/include/orvex/platform.h" >/dev/null
done
diff <(printf '%s\n' libc.so.6 liborvex-parse.so.1 liborvex-platform.so) \
  <(readelf -d "$library" | sed -n 's/.*(\(NEEDED\|SONAME\)).*\[\(.*\)\]/\2/p' | LC_ALL=C sort)

# A program may have functions of these names. The library calls its own all the same: only the
# record, which programs write, is looked up by name.
diff <(echo parse_pf_attrib@@ORVEX_PARSE_1) <(readelf -rW "$library" | grep -o '[^ ]*@@ORVEX_PARSE_1' | sort -u)

# Fails on input that holds the expression.
holds_no() {
  if grep -E "$1"; then exit 1; fi
}
# Neither memory nor IPv6 text or error texts come from libc.
nm -D --undefined-only "$library" |
  holds_no 'malloc|calloc|realloc|free|strdup|fopen| _Z|inet_pton|inet_ntop|strerror@.*'
readelf -d "$library" | holds_no 'STATIC_TLS|R(UN)?PATH.*(\[:|::|:\])'
# Hardened: addresses are found before the first call and read-only from then on, and stacks are guarded.
readelf -d "$library" | grep 'FLAGS.*BIND_NOW' >/dev/null
readelf -lW "$library" | grep GNU_RELRO >/dev/null
nm -D --undefined-only "$library" | grep -w __stack_chk_fail >/dev/null
# Maps above 2 GiB are read on 32-bit hosts as well.
nm -D --undefined-only "$library" | grep -w open64 >/dev/null
