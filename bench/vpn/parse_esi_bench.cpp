#include <orvex/parse.h>

#include <array>

#include "bench.h"
#include "peers.h"

namespace bench {
namespace {

using Esi = std::array<uint8_t, 10>;

Esi esi(Random &random)
{
    Esi bytes{};
    for (size_t i = 1; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(random());
    return bytes;
}

std::string esi_text(Random &random)
{
    const Esi bytes = esi(random);
    char text[FORMAT_ESI_BUFSIZE];
    format_esi(text, sizeof text, bytes.data());
    return text;
}

constexpr auto parse = [](const std::string &text) {
    Esi bytes;
    char error[bench::error_size];
    benchmark::DoNotOptimize(
        parse_esi(text.c_str(), bytes.data(), error, sizeof error, PARSE_ESI_ANY));
    benchmark::DoNotOptimize(bytes);
};

constexpr auto strtoul_loop = [](const std::string &text) {
    uint16_t groups[10];
    benchmark::DoNotOptimize(strtoul_groups(text.c_str(), 16, ":", 255, groups, 10));
    benchmark::DoNotOptimize(groups);
};

constexpr auto format = [](const Esi &bytes) {
    char text[FORMAT_ESI_BUFSIZE];
    benchmark::DoNotOptimize(format_esi(text, sizeof text, bytes.data()));
    benchmark::DoNotOptimize(text);
};

constexpr auto snprintf_loop = [](const Esi &bytes) {
    char text[FORMAT_ESI_BUFSIZE];
    benchmark::DoNotOptimize(snprintf_bytes<true>(text, sizeof text, bytes.data(), bytes.size(),
                                                  [](size_t) { return ":"; }));
    benchmark::DoNotOptimize(text);
};

}  // namespace

void add_parse_esi_rows()
{
    add_row("parse_esi", {0.15, 0.15}, esi_text, parse, strtoul_loop);
    add_row("format_esi", {0.05, 0.05}, esi, format, snprintf_loop);
}

}  // namespace bench
