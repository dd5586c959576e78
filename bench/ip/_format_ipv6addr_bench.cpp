#include <arpa/inet.h>
#include <orvex/parse.h>

#include <array>
#include <cstdio>

#include "bench.h"

namespace bench {
namespace {

using Address = std::array<uint8_t, 16>;

Address random_address(Random &random)
{
    Address address = {0x20, 0x01, 0x0d, 0xb8};
    const uint32_t host = 2 + 2 * below(random, 6);
    for (size_t byte = 16 - host; byte < 16; ++byte) address[byte] = random() & 0xff;
    return address;
}

auto ours(uint8_t full_form)
{
    return [full_form](const Address &address) {
        char text[FORMAT_IPADDR_BUFSIZE];
        benchmark::DoNotOptimize(
            _format_ipv6addr(address.data(), full_form, 0, 0, 0, nullptr, text, sizeof text));
        benchmark::DoNotOptimize(text);
    };
}

constexpr auto ntop = [](const Address &address) {
    char text[FORMAT_IPADDR_BUFSIZE];
    benchmark::DoNotOptimize(inet_ntop(AF_INET6, address.data(), text, sizeof text));
    benchmark::DoNotOptimize(text);
};

constexpr auto print_groups = [](const Address &address) {
    char text[FORMAT_IPADDR_BUFSIZE];
    const auto group = [&address](size_t i) {
        return static_cast<unsigned>(address[2 * i] << 8 | address[2 * i + 1]);
    };
    benchmark::DoNotOptimize(
        std::snprintf(text, sizeof text, "%04x:%04x:%04x:%04x:%04x:%04x:%04x:%04x", group(0),
                      group(1), group(2), group(3), group(4), group(5), group(6), group(7)));
    benchmark::DoNotOptimize(text);
};

}  // namespace

void add_format_ipv6addr_rows()
{
    add_row("format_ipv6addr_compressed", {0.18, 0.2}, random_address, ours(0), ntop);
    add_row("format_ipv6addr_fixed_width", {0.05, 0.05}, random_address, ours(1), print_groups);
}

}  // namespace bench
