#include <arpa/inet.h>
#include <orvex/parse.h>

#include <array>
#include <cstdio>

#include "bench.h"

namespace bench {
namespace {

using Address = std::array<uint8_t, 4>;

Address random_address(Random &random)
{
    Address address{};
    for (uint8_t &byte : address) byte = random() & 0xff;
    return address;
}

auto ours(uint8_t full_form, int pfxseen)
{
    return [full_form, pfxseen](const Address &address) {
        char text[FORMAT_IPADDR_BUFSIZE];
        benchmark::DoNotOptimize(format_ipaddr(PARSE_AF_INET, address.data(), full_form, pfxseen,
                                               8U + address[3] % 25U, 0, nullptr, text,
                                               sizeof text));
        benchmark::DoNotOptimize(text);
    };
}

constexpr auto ntop = [](const Address &address) {
    char text[FORMAT_IPADDR_BUFSIZE];
    benchmark::DoNotOptimize(inet_ntop(AF_INET, address.data(), text, sizeof text));
    benchmark::DoNotOptimize(text);
};

constexpr auto ntop_prefix = [](const Address &address) {
    char text[FORMAT_IPADDR_BUFSIZE];
    char whole[FORMAT_IPADDR_BUFSIZE];
    inet_ntop(AF_INET, address.data(), text, sizeof text);
    benchmark::DoNotOptimize(
        std::snprintf(whole, sizeof whole, "%s/%u", text, 8U + address[3] % 25U));
    benchmark::DoNotOptimize(whole);
};

}  // namespace

void add_format_ipaddr_rows()
{
    add_row("format_ipaddr_ipv4", {0.06, 0.06}, random_address, ours(0, 0), ntop);
    add_row("format_ipaddr_ipv4_prefix", {0.06, 0.06}, random_address, ours(0, 1), ntop_prefix);
}

}  // namespace bench
