#include <arpa/inet.h>
#include <orvex/parse.h>

#include <array>
#include <cstring>

#include "bench.h"
#include "peers.h"

namespace bench {
namespace {

std::string as_rd_text(Random &random)
{
    return std::to_string(1 + below(random, 65535)) + ':' + std::to_string(below(random, 100000));
}

std::string ipv4_rd_text(Random &random)
{
    return ipv4_text(random) + ':' + std::to_string(below(random, 65536));
}

std::string atmvpn_text(Random &random)
{
    return as_rd_text(random) + "::" + std::to_string(1 + below(random, 255)) +
           "::" + ipv4_text(random) + "/32";
}

constexpr auto parse_rd = [](const std::string &text) {
    uint32_t rd[3];
    char error[bench::error_size];
    benchmark::DoNotOptimize(
        parse_inetvpn_rd(text.c_str(), &rd[0], &rd[1], &rd[2], error, sizeof error));
    benchmark::DoNotOptimize(rd);
};

constexpr auto strtoul_twice = [](const std::string &text) {
    uint32_t words[2] = {};
    char *end = nullptr;
    errno = 0;
    words[0] = static_cast<uint32_t>(std::strtoul(text.c_str(), &end, 10));
    if (*end == ':') words[1] = static_cast<uint32_t>(std::strtoul(end + 1, &end, 10));
    benchmark::DoNotOptimize(errno == 0 && *end == '\0');
    benchmark::DoNotOptimize(words);
};

uint32_t aton_up_to(const char *text, const char *end)
{
    char copy[64];
    const auto length = static_cast<size_t>(end - text);
    std::memcpy(copy, text, length);
    copy[length] = '\0';
    in_addr address{};
    benchmark::DoNotOptimize(inet_aton(copy, &address));
    return address.s_addr;
}

constexpr auto aton_and_strtoul = [](const std::string &text) {
    const char *const colon = std::strchr(text.c_str(), ':');
    char *end = nullptr;
    errno = 0;
    benchmark::DoNotOptimize(std::strtoul(colon + 1, &end, 10));
    benchmark::DoNotOptimize(aton_up_to(text.c_str(), colon));
};

constexpr auto parse_vpn = [](const std::string &text) {
    atmvpn_address record;
    uint32_t length = 0;
    char error[bench::error_size];
    benchmark::DoNotOptimize(parse_atmvpn(text.c_str(), &record, &length, error, sizeof error));
    benchmark::DoNotOptimize(record);
};

// The same numbers, read in place.
constexpr auto vpn_loop = [](const std::string &text) {
    unsigned long numbers[4] = {};
    char *end = nullptr;
    errno = 0;
    numbers[0] = std::strtoul(text.c_str(), &end, 10);
    if (*end == ':') numbers[1] = std::strtoul(end + 1, &end, 10);
    if (std::strncmp(end, "::", 2) == 0) numbers[2] = std::strtoul(end + 2, &end, 0);
    const char *const slash = std::strchr(end, '/');
    benchmark::DoNotOptimize(aton_up_to(end + 2, slash));
    numbers[3] = std::strtoul(slash + 1, &end, 10);
    benchmark::DoNotOptimize(errno == 0 && *end == '\0');
    benchmark::DoNotOptimize(numbers);
};

}  // namespace

void add_parse_inetvpn_rd_rows()
{
    add_row("parse_inetvpn_rd_as", {0.60, 0.60}, as_rd_text, parse_rd, strtoul_twice);
    add_row("parse_inetvpn_rd_ipv4", {0.50, 0.50}, ipv4_rd_text, parse_rd, aton_and_strtoul);
    add_row("parse_atmvpn", {0.5, 0.5}, atmvpn_text, parse_vpn, vpn_loop);
}

}  // namespace bench
