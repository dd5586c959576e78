// No call of the library takes memory from the heap, neither on success nor on failure.
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*on_malloc)(const volatile void *,
                                                                           size_t),
                                                         void (*on_free)(const volatile void *));
#endif

namespace {
volatile bool counting = false;
volatile int allocations = 0;

void count()
{
    if (counting) allocations = allocations + 1;
}
}  // namespace

#if !defined(__SANITIZE_ADDRESS__)
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *old, size_t size);
void *malloc(size_t size)
{
    count();
    return __libc_malloc(size);
}
void *calloc(size_t members, size_t size)
{
    count();
    return __libc_calloc(members, size);
}
void *realloc(void *old, size_t size)
{
    count();
    return __libc_realloc(old, size);
}
}
#endif

namespace {

void watch_allocations()
{
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_install_malloc_and_free_hooks([](const volatile void *, size_t) { count(); },
                                              [](const volatile void *) {});
#endif
}

TEST(Heap, NoCallAllocates)
{
    watch_allocations();
    counting = true;
    void *volatile block = std::malloc(8);
    std::free(block);
    EXPECT_GT(allocations, 0) << "the count does not work";
    allocations = 0;

    static const char *const texts[] = {
        "10.1.2.3",      "10.1/8", "2001:db8::1/64", "::/ffff::", "1.2.3.256", "x",
        "10.1.2.3/0x55", "::1/x",  "default",        "077",       "-1",        ""};
    for (const char *const text : texts) {
        int32_t integer = 0;
        int64_t quad = 0;
        parse_integer(text, &integer);
        parse_quad(text, &quad);
        parse_number(text, &integer, 100);
        for (uint32_t flags = 0; flags < 0x1000; flags = flags * 2 + 1) {
            uint32_t af = 0;
            uint8_t address[16];
            uint8_t mask[16];
            uint32_t pfxlen = 0;
            int seen = 0;
            char buf[FORMAT_IPADDR_BUFSIZE];
            if (parse_ipaddr(&af, text, flags, address, 16, &seen, &pfxlen, nullptr, mask, 16, buf,
                             sizeof buf) != 0)
                continue;
            for (const size_t size : {sizeof buf, size_t{9}}) {
                for (const uint8_t full_form : {uint8_t{0}, uint8_t{1}})
                    format_ipaddr(static_cast<int>(af), address, full_form, seen, pfxlen, 1 - seen,
                                  mask, buf, size);
                if (af == PARSE_AF_INET6) format_ipv6addr_partial(address, pfxlen, 1, buf, size);
            }
        }
    }
    counting = false;
    EXPECT_EQ(allocations, 0);
}

}  // namespace
