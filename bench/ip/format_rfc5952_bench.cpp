#include <arpa/inet.h>
#include <orvex/parse.h>

#include <array>
#include <cstdio>
#include <cstring>

#include "bench.h"

namespace bench {
namespace {

using Address = std::array<uint8_t, 16>;

// 2001:db8::/32 with one or two groups of a subnet and of a host
Address address(Random &random)
{
    Address bytes = {0x20, 0x01, 0x0d, 0xb8};
    for (const size_t byte : {4U, 5U, 6U, 14U, 15U}) bytes[byte] = static_cast<uint8_t>(random());
    return bytes;
}

// As people write them: upper case, every group.
std::string long_text(Random &random)
{
    const Address bytes = address(random);
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 2) {
        char group[8];
        std::snprintf(group, sizeof group, i == 0 ? "%X" : ":%X", bytes[i] << 8 | bytes[i + 1]);
        text += group;
    }
    return text;
}

constexpr auto canonical = [](const std::string &text) {
    char copy[INET6_ADDRSTRLEN + 1];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    benchmark::DoNotOptimize(format_rfc5952(copy));
    benchmark::DoNotOptimize(copy);
};

constexpr auto pton_and_ntop = [](const std::string &text) {
    char copy[INET6_ADDRSTRLEN + 1];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    Address bytes;
    if (inet_pton(AF_INET6, copy, bytes.data()) == 1)
        benchmark::DoNotOptimize(inet_ntop(AF_INET6, bytes.data(), copy, sizeof copy));
    benchmark::DoNotOptimize(copy);
};

constexpr auto right_aligned = [](const Address &bytes) {
    char text[FORMAT_IN6_BUFSIZE];
    benchmark::DoNotOptimize(format_in6_addr(bytes.data(), 128, text, sizeof text, 1));
    benchmark::DoNotOptimize(text);
};

constexpr auto right_aligned_prefix = [](const Address &bytes) {
    char text[FORMAT_IN6_BUFSIZE];
    benchmark::DoNotOptimize(format_in6_prefix(bytes.data(), 56, text, sizeof text, 1));
    benchmark::DoNotOptimize(text);
};

constexpr auto ntop = [](const Address &bytes) {
    char text[INET6_ADDRSTRLEN];
    benchmark::DoNotOptimize(inet_ntop(AF_INET6, bytes.data(), text, sizeof text));
    benchmark::DoNotOptimize(text);
};

}  // namespace

void add_format_rfc5952_rows()
{
    add_row("format_rfc5952", {0.3, 0.3}, long_text, canonical, pton_and_ntop);
    add_row("format_in6_addr", {0.15, 0.15}, address, right_aligned, ntop);
    add_row("format_in6_prefix", {0.15, 0.15}, address, right_aligned_prefix, ntop);
}

}  // namespace bench
