/* A program that has functions of the library's names: the library must call its own. */
#include <dlfcn.h>
#include <orvex/parse.h>
#include <stdio.h>
#include <stdlib.h>

#define OWN(name)                         \
    void own_##name(void) __asm__(#name); \
    void own_##name(void)                 \
    {                                     \
        puts("the program's own " #name); \
        exit(1);                          \
    }
#define OWN_4(a, b, c, d) OWN(a) OWN(b) OWN(c) OWN(d)
OWN_4(_format_ipv6addr, decode_dhms, format_delim_addr, format_esi)
OWN_4(format_in6_addr, format_in6_prefix, format_ipaddr, format_ipv6addr_partial)
OWN_4(format_iso_addr, format_iso_sysid, format_mac_addr, format_rfc5952)
OWN_4(get_fpc_picslots_byname, ifalias_to_ifl, ipv6_address_type, is_interface_alias)
OWN_4(parse_4_level_chassis, parse_atmvpn, parse_delim_dec_addr, parse_delim_hex_addr)
OWN_4(parse_esi, parse_inetvpn_rd, parse_integer, parse_interface)
OWN_4(parse_ipaddr, parse_ipaddr_is_unicast, parse_is_atmvpn, parse_is_iso_addr)
OWN_4(parse_is_iso_sysid, parse_iso_addr, parse_iso_sysid, parse_mac_addr)
OWN(parse_number)
OWN(parse_quad)

#define FOUND(name) ((__typeof__(&(name)))dlsym(library, #name))

int main(int argc, char **argv)
{
    const uint8_t address[16] = {0x20, 0x01};
    struct parsed_interface name;
    uint8_t unicast[4];
    uint32_t af = PARSE_AF_INET;
    char text[FORMAT_IPADDR_BUFSIZE];
    void *const library = dlopen(argv[argc - 1], RTLD_NOW | RTLD_GLOBAL);
    if (library == NULL) return 2;
    if (FOUND(parse_ipaddr)(&af, "10.0.0.1", PARSE_IPADDR_UNICAST, unicast, 4, NULL, NULL, NULL, NULL, 0, NULL, 0) != 0)
        return 3;
    if (FOUND(format_ipaddr)(PARSE_AF_INET6, address, 0, 0, 0, 0, NULL, text, sizeof text) != 6) return 4;
    if (FOUND(format_ipv6addr_partial)(address, 16, 1, text, sizeof text) != 9) return 5;
    if (FOUND(is_interface_alias)("fe80::1:2") != 0 || FOUND(is_interface_alias)("uplink:core") != 1) return 6;
    if (FOUND(parse_interface)("node1:mgmt-0", 0, 0, &name, NULL, 0) != 0) return 7;
    return FOUND(parse_atmvpn)("65000:1::5::10.1.2.3/32", NULL, NULL, NULL, 0) == 0 ? 0 : 8;
}
