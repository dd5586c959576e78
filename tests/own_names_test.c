/* A program that has functions of the library's names: the library must call its own. */
#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define OWN(name)                                   \
    extern void name(void);                         \
    void name(void)                                 \
    {                                               \
        puts("the program's " #name " was called"); \
        exit(1);                                    \
    }
OWN(_format_ipv6addr)
OWN(decode_dhms)
OWN(format_delim_addr)
OWN(format_esi)
OWN(format_in6_addr)
OWN(format_in6_prefix)
OWN(format_ipaddr)
OWN(format_ipv6addr_partial)
OWN(format_iso_addr)
OWN(format_iso_sysid)
OWN(format_mac_addr)
OWN(format_rfc5952)
OWN(get_fpc_picslots_byname)
OWN(ifalias_to_ifl)
OWN(ipv6_address_type)
OWN(is_interface_alias)
OWN(parse_4_level_chassis)
OWN(parse_atmvpn)
OWN(parse_delim_dec_addr)
OWN(parse_delim_hex_addr)
OWN(parse_esi)
OWN(parse_inetvpn_rd)
OWN(parse_integer)
OWN(parse_interface)
OWN(parse_ipaddr)
OWN(parse_ipaddr_is_unicast)
OWN(parse_is_atmvpn)
OWN(parse_is_iso_addr)
OWN(parse_is_iso_sysid)
OWN(parse_iso_addr)
OWN(parse_iso_sysid)
OWN(parse_mac_addr)
OWN(parse_number)
OWN(parse_quad)

enum { inet = 2, inet6 = 28, prefix_ok = 0x1, unicast = 0x800 };

static void *library;

static void *find(const char *name)
{
    void *const function = dlsym(library, name);
    if (function == NULL) exit(2);
    return function;
}

static void require(int holds, const char *what)
{
    if (holds) return;
    puts(what);
    exit(3);
}

int main(int argc, char **argv)
{
    uint32_t af = 0;
    uint32_t words[9];
    uint8_t address[16] = {0x20, 0x01};
    char text[128] = "";
    library = dlopen(argv[argc - 1], RTLD_NOW | RTLD_GLOBAL);
    require(library != NULL, "the library does not load");

    int (*const parse)(uint32_t *, const char *, uint32_t, void *, size_t, int *, uint32_t *, int *, void *, size_t,
                       char *, size_t) = find("parse_ipaddr");
    af = inet;
    require(parse(&af, "10.0.0.1/8", prefix_ok | unicast, address, 4, 0, 0, 0, 0, 0, 0, 0) == 0, "parse_ipaddr");
    af = inet6;
    require(parse(&af, "2001:db8::1", unicast, address, 16, 0, 0, 0, 0, 0, 0, 0) == 0, "parse_ipaddr, IPv6");

    size_t (*const format)(int, const void *, uint8_t, int, uint32_t, int, const void *, char *, size_t) =
        find("format_ipaddr");
    require(format(inet6, address, 0, 0, 0, 0, 0, text, sizeof text) == 11, "format_ipaddr");
    size_t (*const partial)(const void *, uint32_t, uint8_t, char *, size_t) = find("format_ipv6addr_partial");
    require(partial(address, 32, 1, text, sizeof text) == 13, "format_ipv6addr_partial");

    int (*const is_alias)(const char *) = find("is_interface_alias");
    require(is_alias("fe80::1:2") == 0 && is_alias("uplink:core") == 1, "is_interface_alias");
    int (*const interface)(const char *, uint32_t, uint32_t, void *, char *, size_t) = find("parse_interface");
    char record[120];
    require(interface("node1:mgmt-0", 0, 0, record, text, sizeof text) == 0, "parse_interface");
    require(interface("eth-1/2/0:3.100", 0, 0, record, text, sizeof text) == 0, "parse_interface with numbers");

    int (*const atmvpn)(const char *, void *, uint32_t *, char *, size_t) = find("parse_atmvpn");
    require(atmvpn("65000:1::5::10.1.2.3/32", words, &af, text, sizeof text) == 0, "parse_atmvpn");
    require(atmvpn("65000:1::5x::1", words, &af, text, sizeof text) == 1, "parse_atmvpn, refused");
    return 0;
}
