#include <orvex/parse.h>

#include <array>

#include "bench.h"
#include "peers.h"

namespace bench {
namespace {

constexpr uint32_t count = 8;
using Bytes = std::array<uint8_t, count>;

Bytes bytes_of(Random &random)
{
    Bytes bytes;
    for (uint8_t &byte : bytes) byte = static_cast<uint8_t>(random());
    return bytes;
}

std::string text_of(Random &random, char style)
{
    const Bytes bytes = bytes_of(random);
    char text[FORMAT_DELIM_BUFSIZE(count)];
    format_delim_addr(text, sizeof text, bytes.data(), style == 'x' ? ':' : '.', count, style);
    return text;
}

template <int parse(const char *, uint8_t *, char *, size_t, uint32_t)>
void ours(const std::string &text)
{
    Bytes bytes;
    char error[bench::error_size];
    benchmark::DoNotOptimize(parse(text.c_str(), bytes.data(), error, sizeof error, count));
    benchmark::DoNotOptimize(bytes);
}

template <int base>
void peer(const std::string &text)
{
    uint16_t groups[count];
    benchmark::DoNotOptimize(strtoul_groups(text.c_str(), base, ".:", 255, groups, count));
    benchmark::DoNotOptimize(groups);
}

constexpr auto format = [](const Bytes &bytes) {
    char text[FORMAT_DELIM_BUFSIZE(count)];
    benchmark::DoNotOptimize(format_delim_addr(text, sizeof text, bytes.data(), '.', count, 'd'));
    benchmark::DoNotOptimize(text);
};

constexpr auto snprintf_loop = [](const Bytes &bytes) {
    char text[FORMAT_DELIM_BUFSIZE(count)];
    benchmark::DoNotOptimize(
        snprintf_bytes<false>(text, sizeof text, bytes.data(), count, [](size_t) { return "."; }));
    benchmark::DoNotOptimize(text);
};

}  // namespace

void add_parse_delim_addr_rows()
{
    add_row(
        "parse_delim_dec_addr", {0.2, 0.5}, [](Random &random) { return text_of(random, 'd'); },
        &ours<parse_delim_dec_addr>, &peer<10>);
    add_row(
        "parse_delim_hex_addr", {0.13, 0.13}, [](Random &random) { return text_of(random, 'x'); },
        &ours<parse_delim_hex_addr>, &peer<16>);
    add_row("format_delim_addr", {0.05, 0.05}, bytes_of, format, snprintf_loop);
}

}  // namespace bench
