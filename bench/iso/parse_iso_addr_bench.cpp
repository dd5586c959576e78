#include <orvex/parse.h>

#include <array>
#include <cstring>

#include "bench.h"
#include "peers.h"

namespace bench {
namespace {

constexpr uint8_t nsap_size = 10;
using Nsap = std::array<uint8_t, nsap_size>;

Nsap nsap(Random &random)
{
    Nsap bytes = {0x49};
    for (size_t i = 1; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(random());
    return bytes;
}

std::string nsap_text(Random &random)
{
    const Nsap bytes = nsap(random);
    char text[32];
    format_iso_addr(bytes.data(), nsap_size, 0, 0, text, sizeof text);
    return text;
}

std::string sysid_text(Random &random)
{
    const Nsap bytes = nsap(random);
    char text[16];
    format_iso_sysid(bytes.data() + 3, text, sizeof text);
    return text;
}

constexpr auto parse_nsap = [](const std::string &text) {
    uint8_t bytes[20];
    uint8_t count = sizeof bytes;
    char error[bench::error_size];
    benchmark::DoNotOptimize(parse_iso_addr(text.c_str(), PARSE_ISO_NSAP, bytes, &count, nullptr,
                                            nullptr, error, sizeof error));
    benchmark::DoNotOptimize(bytes);
};

template <size_t count>
void strtoul_loop(const std::string &text)
{
    uint16_t groups[count];
    benchmark::DoNotOptimize(strtoul_groups(text.c_str(), 16, ".", 0xffff, groups, count));
    benchmark::DoNotOptimize(groups);
}

constexpr auto parse_sysid = [](const std::string &text) {
    uint8_t sysid[6];
    char error[bench::error_size];
    benchmark::DoNotOptimize(
        parse_iso_sysid(text.c_str(), sysid, sizeof sysid, error, sizeof error));
    benchmark::DoNotOptimize(sysid);
};

constexpr auto format_nsap = [](const Nsap &bytes) {
    char text[32];
    benchmark::DoNotOptimize(format_iso_addr(bytes.data(), nsap_size, 0, 0, text, sizeof text));
    benchmark::DoNotOptimize(text);
};

constexpr auto format_sysid = [](const Nsap &bytes) {
    char text[16];
    benchmark::DoNotOptimize(format_iso_sysid(bytes.data() + 3, text, sizeof text));
    benchmark::DoNotOptimize(text);
};

// "%02x" for every byte, and "." after each one at an odd place, or at an even one.
template <size_t first, size_t count, size_t odd>
void snprintf_loop(const Nsap &bytes)
{
    char text[32];
    snprintf_bytes<true>(text, sizeof text, bytes.data() + first, count,
                         [](size_t i) { return i % 2 == odd ? "." : ""; });
    benchmark::DoNotOptimize(text);
}

constexpr auto is_iso = [](const std::string &text) {
    benchmark::DoNotOptimize(parse_is_iso_addr(text.c_str()));
};

constexpr auto is_sysid = [](const std::string &text) {
    benchmark::DoNotOptimize(parse_is_iso_sysid(text.c_str()));
};

constexpr auto strspn_of = [](const std::string &text) {
    benchmark::DoNotOptimize(std::strspn(text.c_str(), "0123456789abcdefABCDEF./"));
};

}  // namespace

void add_parse_iso_addr_rows()
{
    add_row("parse_iso_addr", {0.2, 0.2}, nsap_text, parse_nsap, &strtoul_loop<6>);
    add_row("parse_iso_sysid", {0.2, 0.2}, sysid_text, parse_sysid, &strtoul_loop<3>);
    add_row("format_iso_addr", {0.05, 0.05}, nsap, format_nsap, &snprintf_loop<0, nsap_size, 0>);
    add_row("format_iso_sysid", {0.05, 0.05}, nsap, format_sysid, &snprintf_loop<3, 6, 1>);
    add_row("parse_is_iso_addr", {0.7, 0.7}, nsap_text, is_iso, strspn_of);
    add_row("parse_is_iso_sysid", {0.7, 0.7}, sysid_text, is_sysid, strspn_of);
}

}  // namespace bench
