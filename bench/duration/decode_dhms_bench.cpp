#include <orvex/parse.h>
#include <strings.h>

#include <cinttypes>
#include <cstdio>
#include <ctime>

#include "bench.h"
#include "peers.h"

namespace bench {
namespace {

std::string units_text(Random &random)
{
    return std::to_string(1 + below(random, 30)) + 'd' + std::to_string(below(random, 24)) + 'h' +
           std::to_string(below(random, 60)) + 'm';
}

// "07:30:59"
std::string clock_text(Random &random)
{
    char text[16];
    std::snprintf(text, sizeof text, "%02u:%02u:%02u", below(random, 24), below(random, 60),
                  below(random, 60));
    return text;
}

constexpr auto decode = [](const std::string &text) {
    uint64_t seconds = 0;
    char error[bench::error_size];
    benchmark::DoNotOptimize(
        decode_dhms(text.c_str(), 0, UINT64_MAX, &seconds, error, sizeof error));
    benchmark::DoNotOptimize(seconds);
};

struct Unit {
    const char *name;
    uint64_t seconds;
};

// The units in whole seconds, longer names first.
constexpr Unit units[] = {{"cftn", 120960}, {"ftn", 1209600}, {"w", 604800}, {"d", 86400},
                          {"h", 3600},      {"m", 60},        {"s", 1}};

uint64_t read_unit(const char *&at)
{
    for (const Unit &unit : units) {
        const size_t length = std::strlen(unit.name);
        if (strncasecmp(at, unit.name, length) != 0) continue;
        at += length;
        return unit.seconds;
    }
    return 0;
}

constexpr auto strtoumax_loop = [](const std::string &text) {
    uint64_t total = 0;
    const char *at = text.c_str();
    while (*at != '\0') {
        char *end = nullptr;
        errno = 0;
        const uintmax_t number = std::strtoumax(at, &end, 10);
        if (end == at || errno != 0) break;
        at = end;
        total += number * read_unit(at);
    }
    benchmark::DoNotOptimize(total);
};

constexpr auto strptime_clock = [](const std::string &text) {
    std::tm time{};
    benchmark::DoNotOptimize(strptime(text.c_str(), "%H:%M:%S", &time));
    benchmark::DoNotOptimize(time);
};

}  // namespace

void add_parse_dhms_rows()
{
    add_row("decode_dhms_units", {0.2, 0.35}, units_text, decode, strtoumax_loop);
    add_row("decode_dhms_clock", {0.5, 0.5}, clock_text, decode, strptime_clock);
}

}  // namespace bench
