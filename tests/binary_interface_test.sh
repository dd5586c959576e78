#!/usr/bin/env bash
# Holds what a library exports and needs against the whole list: binary_interface_test.sh LIBRARY
set -euo pipefail
library=$1

exports="\
A ORVEX_PARSE_1
T _format_ipv6addr@@ORVEX_PARSE_1
T decode_dhms@@ORVEX_PARSE_1
T format_delim_addr@@ORVEX_PARSE_1
T format_esi@@ORVEX_PARSE_1
T format_in6_addr@@ORVEX_PARSE_1
T format_in6_prefix@@ORVEX_PARSE_1
T format_ipaddr@@ORVEX_PARSE_1
T format_ipv6addr_partial@@ORVEX_PARSE_1
T format_iso_addr@@ORVEX_PARSE_1
T format_iso_sysid@@ORVEX_PARSE_1
T format_mac_addr@@ORVEX_PARSE_1
T format_rfc5952@@ORVEX_PARSE_1
T get_fpc_picslots_byname@@ORVEX_PARSE_1
T ifalias_to_ifl@@ORVEX_PARSE_1
T ipv6_address_type@@ORVEX_PARSE_1
T is_interface_alias@@ORVEX_PARSE_1
T parse_4_level_chassis@@ORVEX_PARSE_1
T parse_atmvpn@@ORVEX_PARSE_1
T parse_delim_dec_addr@@ORVEX_PARSE_1
T parse_delim_hex_addr@@ORVEX_PARSE_1
T parse_esi@@ORVEX_PARSE_1
T parse_inetvpn_rd@@ORVEX_PARSE_1
T parse_integer@@ORVEX_PARSE_1
T parse_interface@@ORVEX_PARSE_1
T parse_ipaddr@@ORVEX_PARSE_1
T parse_ipaddr_is_unicast@@ORVEX_PARSE_1
T parse_is_atmvpn@@ORVEX_PARSE_1
T parse_is_iso_addr@@ORVEX_PARSE_1
T parse_is_iso_sysid@@ORVEX_PARSE_1
T parse_iso_addr@@ORVEX_PARSE_1
T parse_iso_sysid@@ORVEX_PARSE_1
T parse_mac_addr@@ORVEX_PARSE_1
T parse_number@@ORVEX_PARSE_1
D parse_pf_attrib@@ORVEX_PARSE_1
T parse_quad@@ORVEX_PARSE_1
R sw_version@@ORVEX_PARSE_1"
needed="\
libc.so.6
liborvex-platform.so"

diff <(echo "$exports") <(nm -D --defined-only "$library" | LC_ALL=C sort -k 3 | cut -d ' ' -f 2-)
diff <(echo "$needed") <(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | LC_ALL=C sort)
