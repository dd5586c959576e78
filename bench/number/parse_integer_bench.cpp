#include <orvex/parse.h>

#include <cstdio>
#include <cstdlib>

#include "bench.h"

namespace bench {
namespace {

// A decimal number from a VLAN to an AS number or a bandwidth, now and then negative.
std::string decimal_text(Random &random)
{
    const std::string digits = std::to_string(random() >> (1 + below(random, 20)));
    return below(random, 8) == 0 ? '-' + digits : digits;
}

std::string unsigned_text(Random &random)
{
    return std::to_string(below(random, below(random, 2) == 0 ? 4096 : 1000000));
}

std::string hexadecimal_text(Random &random)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", random() >> (1 + below(random, 20)));
    return text;
}

std::string quad_text(Random &random)
{
    const uint64_t word = uint64_t{random()} << 31 | random();
    return std::to_string(word >> below(random, 60));
}

}  // namespace

void add_parse_integer_rows()
{
    const auto integer = [](const std::string &text) {
        int32_t value = 0;
        benchmark::DoNotOptimize(parse_integer(text.c_str(), &value));
        benchmark::DoNotOptimize(value);
    };
    const auto quad = [](const std::string &text) {
        int64_t value = 0;
        benchmark::DoNotOptimize(parse_quad(text.c_str(), &value));
        benchmark::DoNotOptimize(value);
    };
    const auto number = [](const std::string &text) {
        int32_t value = 0;
        benchmark::DoNotOptimize(parse_number(text.c_str(), &value, 1000000));
        benchmark::DoNotOptimize(value);
    };
    const auto strtol_base = [](int base) {
        return [base](const std::string &text) {
            char *end = nullptr;
            benchmark::DoNotOptimize(std::strtol(text.c_str(), &end, base));
            benchmark::DoNotOptimize(end);
        };
    };
    const auto strtoll_0 = [](const std::string &text) {
        char *end = nullptr;
        benchmark::DoNotOptimize(std::strtoll(text.c_str(), &end, 0));
        benchmark::DoNotOptimize(end);
    };
    add_row("parse_integer_decimal", {0.5, 0.5}, decimal_text, integer, strtol_base(0));
    add_row("parse_integer_hexadecimal", {0.5, 0.5}, hexadecimal_text, integer, strtol_base(0));
    add_row("parse_quad", {0.5, 0.5}, quad_text, quad, strtoll_0);
    add_row("parse_number", {0.5, 0.5}, unsigned_text, number, strtol_base(10));
}

}  // namespace bench
