// No call of the library takes memory from the heap, neither on success nor on failure.
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cstdlib>
#include <cstring>

namespace {
volatile bool counting = false;
volatile int allocations = 0;

void count()
{
    if (counting) allocations = allocations + 1;
}
}  // namespace

#define COUNTED(name, parameters, arguments) \
    void *__libc_##name parameters;          \
    void *name parameters                    \
    {                                        \
        count();                             \
        return __libc_##name arguments;      \
    }
extern "C" {
COUNTED(malloc, (size_t size), (size))
COUNTED(calloc, (size_t members, size_t size), (members, size))
COUNTED(realloc, (void *old, size_t size), (old, size))
}

TEST(Heap, NoCallAllocates)
{
    counting = true;
    void *volatile block = std::malloc(8);
    std::free(block);
    EXPECT_GT(allocations, 0) << "the count does not work";
    allocations = 0;

    for (const char *const text : {"10.1.2.3", "10.1/8", "2001:db8::1/64", "::/ffff::", "1.2.3.256", "077", "-1", ""}) {
        int32_t integer = 0;
        int64_t quad = 0;
        parse_integer(text, &integer);
        parse_quad(text, &quad);
        parse_number(text, &integer, 100);
        for (uint32_t flags = 0; flags < 0x1000; flags = flags * 2 + 1) {
            uint32_t af = 0;
            uint8_t address[16] = {};
            uint8_t mask[16] = {};
            char buf[FORMAT_IPADDR_BUFSIZE];
            parse_ipaddr(&af, text, flags, address, 16, nullptr, nullptr, nullptr, mask, 16, buf, sizeof buf);
            for (const uint8_t full_form : {uint8_t{0}, uint8_t{1}}) {
                format_ipaddr(static_cast<int>(af), address, full_form, 0, 0, 1, mask, buf, sizeof buf);
                format_ipaddr(static_cast<int>(af), address, full_form, 1, 8, 0, mask, buf, 9);
            }
            format_ipv6addr_partial(address, 64, 1, buf, sizeof buf);
        }
    }
    for (const char *const text : {"eth-0/0/0:1.5", "eth-[0-3]/[0/0", "lcc0:mgmt-0", "uplink-to-core"}) {
        parsed_interface interface;
        char buf[200];
        parse_interface(text, PARSE_IF_RANGES, 0, &interface, buf, sizeof buf);
        parse_interface(text, 0, 0, &interface, buf, sizeof buf);
        is_interface_alias(text);
        ifalias_to_ifl(text, buf, sizeof buf, 0, nullptr);
    }
    for (const char *const text :
         {"65000:1::5::10.1.2.3/32", "0:1:2:3:4:5/8", "49.0001.1921.6800.1001.00", "1d2h", "2001:DB8::1.2.3.4", "x"}) {
        uint8_t bytes[24] = {};
        uint8_t count = sizeof bytes;
        uint32_t words[4];
        uint64_t seconds = 0;
        char buf[200];
        parse_mac_addr(text, 1, bytes, nullptr, nullptr, buf, sizeof buf);
        parse_delim_dec_addr(text, bytes, buf, sizeof buf, 6);
        parse_delim_hex_addr(text, bytes, buf, sizeof buf, 6);
        parse_iso_addr(text, parse_is_iso_addr(text) ? PARSE_ISO_NSAP : 0, bytes, &count, nullptr, nullptr, buf,
                       sizeof buf);
        parse_iso_sysid(text, bytes, parse_is_iso_sysid(text), buf, sizeof buf);
        parse_inetvpn_rd(text, &words[0], &words[1], &words[2], buf, sizeof buf);
        parse_atmvpn(text, nullptr, words, buf, sizeof buf);
        parse_esi(text, bytes, buf, sizeof buf, PARSE_ESI_ANY);
        decode_dhms(text, 0, UINT64_MAX, &seconds, buf, sizeof buf);
        for (const size_t size : {size_t{9}, sizeof buf}) {
            format_mac_addr(buf, size, bytes, 1, 48);
            format_delim_addr(buf, size, bytes, ':', 8, 'x');
            format_iso_addr(bytes, 10, 1, 80, buf, size);
            format_iso_sysid(bytes, buf, size);
            format_esi(buf, size, bytes);
            format_in6_prefix(bytes, 128, buf, size, 1);
        }
        strcpy(buf, text);
        format_rfc5952(buf);
    }
    counting = false;
    EXPECT_EQ(allocations, 0);
}
