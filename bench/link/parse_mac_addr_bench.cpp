#include <net/ethernet.h>
#include <netinet/ether.h>
#include <orvex/parse.h>

#include <array>

#include "bench.h"

namespace bench {
namespace {

using Mac = std::array<uint8_t, 6>;

Mac mac(Random &random)
{
    Mac bytes;
    for (uint8_t &byte : bytes) byte = static_cast<uint8_t>(random());
    return bytes;
}

// As people write them: most with two digits a group.
std::string mac_text(Random &random)
{
    const Mac bytes = mac(random);
    char text[FORMAT_MAC_BUFSIZE];
    format_mac_addr(text, sizeof text, bytes.data(), 0, 0);
    return text;
}

constexpr auto parse = [](const std::string &text) {
    Mac bytes;
    char error[bench::error_size];
    benchmark::DoNotOptimize(
        parse_mac_addr(text.c_str(), 0, bytes.data(), nullptr, nullptr, error, sizeof error));
    benchmark::DoNotOptimize(bytes);
};

constexpr auto aton = [](const std::string &text) {
    ether_addr address;
    benchmark::DoNotOptimize(ether_aton_r(text.c_str(), &address));
    benchmark::DoNotOptimize(address);
};

constexpr auto format = [](const Mac &bytes) {
    char text[FORMAT_MAC_BUFSIZE];
    benchmark::DoNotOptimize(format_mac_addr(text, sizeof text, bytes.data(), 0, 0));
    benchmark::DoNotOptimize(text);
};

constexpr auto ntoa = [](const Mac &bytes) {
    ether_addr address;
    std::copy(bytes.begin(), bytes.end(), address.ether_addr_octet);
    char text[FORMAT_MAC_BUFSIZE];
    benchmark::DoNotOptimize(ether_ntoa_r(&address, text));
    benchmark::DoNotOptimize(text);
};

}  // namespace

void add_parse_mac_addr_rows()
{
    add_row("parse_mac_addr", {0.6, 0.25}, mac_text, parse, aton);
    add_row("format_mac_addr", {0.07, 0.07}, mac, format, ntoa);
}

}  // namespace bench
