#include <arpa/inet.h>
#include <orvex/parse.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench.h"

namespace bench {
namespace {

std::string ipv4_prefix_text(Random &random)
{
    return ipv4_text(random) + '/' + std::to_string(8 + below(random, 25));
}

// An address with one of the masks that networks have.
std::string ipv4_mask_text(Random &random)
{
    constexpr uint32_t lengths[] = {8, 16, 20, 22, 23, 24, 24, 24, 24, 24, 25, 26, 28, 29, 30, 32};
    const uint32_t mask = htonl(UINT32_MAX << (32 - lengths[below(random, 16)]));
    char text[INET_ADDRSTRLEN];
    inet_ntop(AF_INET, &mask, text, sizeof text);
    return ipv4_text(random) + '/' + text;
}

// An address with one octet above 255.
std::string refused_ipv4_text(Random &random)
{
    const uint32_t bad = below(random, 4);
    std::string text;
    for (uint32_t octet = 0; octet < 4; ++octet) {
        if (octet > 0) text += '.';
        text += std::to_string(octet == bad ? 256 + below(random, 700) : below(random, 256));
    }
    return text;
}

// A prefix with bits set after its length.
std::string host_bits_text(Random &random)
{
    return "10." + std::to_string(below(random, 256)) + '.' + std::to_string(below(random, 256)) +
           '.' + std::to_string(1 + below(random, 255)) + '/' +
           std::to_string(8 + below(random, 17));
}

// "2001:db8:1f:0:0:0:0:a7" as inet_ntop writes it, with two to eight groups
std::string ipv6_text(Random &random)
{
    uint8_t bytes[16] = {0x20, 0x01, 0x0d, 0xb8};
    const uint32_t groups = below(random, 3);
    for (uint32_t byte = 4; byte < 4 + 2 * groups; ++byte) bytes[byte] = random() & 0xff;
    const uint32_t host = 2 + 2 * below(random, 4);
    for (uint32_t byte = 16 - host; byte < 16; ++byte) bytes[byte] = random() & 0xff;
    char text[INET6_ADDRSTRLEN];
    inet_ntop(AF_INET6, bytes, text, sizeof text);
    return text;
}

std::string ipv6_prefix_text(Random &random)
{
    return ipv6_text(random) + '/' + std::to_string(32 + below(random, 97));
}

// An address alone.
auto address(uint32_t family)
{
    return [family](const std::string &text) {
        uint32_t af = family;
        uint8_t address[16];
        char error[bench::error_size];
        benchmark::DoNotOptimize(parse_ipaddr(&af, text.c_str(), 0, address, sizeof address,
                                              nullptr, nullptr, nullptr, nullptr, 0, error,
                                              sizeof error));
        benchmark::DoNotOptimize(address);
    };
}

// An address with what may follow it.
auto prefix(uint32_t family, uint32_t flags)
{
    return [family, flags](const std::string &text) {
        uint32_t af = family;
        uint8_t address[16];
        uint8_t mask[16];
        int pfxseen = 0;
        uint32_t pfxlen = 0;
        int maskseen = 0;
        char error[bench::error_size];
        benchmark::DoNotOptimize(parse_ipaddr(&af, text.c_str(), flags, address, sizeof address,
                                              &pfxseen, &pfxlen, &maskseen, mask, sizeof mask,
                                              error, sizeof error));
        benchmark::DoNotOptimize(address);
        benchmark::DoNotOptimize(pfxlen);
        benchmark::DoNotOptimize(mask);
    };
}

auto pton(int family)
{
    return [family](const std::string &text) {
        uint8_t address[16];
        benchmark::DoNotOptimize(inet_pton(family, text.c_str(), address));
        benchmark::DoNotOptimize(address);
    };
}

// What a program without the library does: cut a copy at the "/".
auto pton_prefix(int family)
{
    return [family](const std::string &text) {
        char copy[96];
        std::memcpy(copy, text.c_str(), text.size() + 1);
        char *const slash = std::strchr(copy, '/');
        *slash = '\0';
        uint8_t address[16];
        char *end = nullptr;
        benchmark::DoNotOptimize(inet_pton(family, copy, address));
        benchmark::DoNotOptimize(std::strtoul(slash + 1, &end, 10));
        benchmark::DoNotOptimize(address);
    };
}

constexpr auto pton_twice = [](const std::string &text) {
    char copy[96];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    char *const slash = std::strchr(copy, '/');
    *slash = '\0';
    uint8_t address[4];
    uint8_t mask[4];
    benchmark::DoNotOptimize(inet_pton(AF_INET, copy, address));
    benchmark::DoNotOptimize(inet_pton(AF_INET, slash + 1, mask));
    benchmark::DoNotOptimize(address);
    benchmark::DoNotOptimize(mask);
};

constexpr auto pton_and_message = [](const std::string &text) {
    char error[bench::error_size];
    uint8_t address[4];
    benchmark::DoNotOptimize(inet_pton(AF_INET, text.c_str(), address));
    std::snprintf(error, sizeof error, "invalid value '%lu' in %s: '%s'", 256UL, "ip address",
                  text.c_str());
    benchmark::DoNotOptimize(error);
};

constexpr auto pton_and_host_message = [](const std::string &text) {
    char error[bench::error_size];
    char copy[96];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    char *const slash = std::strchr(copy, '/');
    *slash = '\0';
    uint8_t address[4];
    benchmark::DoNotOptimize(inet_pton(AF_INET, copy, address));
    std::snprintf(error, sizeof error, "host portion is not zero (%s%c%lu)", copy, '/', 8UL);
    benchmark::DoNotOptimize(error);
};

}  // namespace

void add_parse_ipaddr_rows()
{
    constexpr uint32_t length = PARSE_IPADDR_PREFIX_OK;
    constexpr uint32_t mask = length | PARSE_IPADDR_MASK_OK;
    add_row("parse_ipaddr_ipv4", {0.55, 0.8}, ipv4_text, address(PARSE_AF_INET), pton(AF_INET));
    add_row("parse_ipaddr_ipv4_prefix", {0.45, 0.7}, ipv4_prefix_text,
            prefix(PARSE_AF_INET, length), pton_prefix(AF_INET));
    add_row("parse_ipaddr_ipv4_mask", {0.35, 0.7}, ipv4_mask_text, prefix(PARSE_AF_INET, mask),
            pton_twice);
    add_row("parse_ipaddr_ipv4_refused", {0.6, 0.6}, refused_ipv4_text, address(PARSE_AF_INET),
            pton_and_message);
    add_row("parse_ipaddr_ipv4_host_bits", {0.6, 0.6}, host_bits_text,
            prefix(PARSE_AF_INET, length | PARSE_IPADDR_HOST_ZERO), pton_and_host_message);
    add_row("parse_ipaddr_ipv6", {1.08, 1.08}, ipv6_text, address(PARSE_AF_INET6), pton(AF_INET6));
    add_row("parse_ipaddr_ipv6_prefix", {1.0, 1.0}, ipv6_prefix_text,
            prefix(PARSE_AF_INET6, length), pton_prefix(AF_INET6));
}

}  // namespace bench
