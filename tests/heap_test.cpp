// No call of the library takes memory from the heap, neither on success nor on failure.
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cstdlib>

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
    counting = false;
    EXPECT_EQ(allocations, 0);
}
