#include <orvex/parse.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench.h"

namespace bench {
namespace {

std::string number_below(Random &random, uint32_t bound)
{
    return std::to_string(below(random, bound));
}

std::string type_name(Random &random)
{
    constexpr const char *types[] = {"eth", "eth", "eth", "ser", "at"};
    return types[below(random, 5)];
}

std::string port_text(const std::string &type, Random &random)
{
    return type + '-' + number_below(random, 12) + '/' + number_below(random, 4) + '/' +
           number_below(random, 8);
}

// "eth-1/2/3.100"
std::string unit_text(Random &random)
{
    return port_text(type_name(random), random) + '.' + number_below(random, 4096);
}

// "ser-1/2/3:3:1.100"
std::string channel_text(Random &random)
{
    return port_text("ser", random) + ':' + number_below(random, 28) + ':' +
           number_below(random, 24) + '.' + number_below(random, 4096);
}

// "ae12.100"
std::string device_text(Random &random)
{
    return "ae" + number_below(random, 4092) + '.' + number_below(random, 4096);
}

// A name whose FPC the chassis does not have.
std::string refused_text(Random &random)
{
    return type_name(random) + '-' + std::to_string(12 + below(random, 90)) + '/' +
           number_below(random, 4) + '/' + number_below(random, 48);
}

constexpr auto parse = [](const std::string &name) {
    parsed_interface result;
    char error[bench::error_size];
    benchmark::DoNotOptimize(parse_interface(name.c_str(), 0, 0, &result, error, sizeof error));
    benchmark::DoNotOptimize(result);
};

// What a program without the library does: it takes the type off and reads number by number, with
// the checks that strtoul needs.
struct Numbers {
    char type[60];
    int32_t numbers[8];
    size_t count = 0;

    explicit Numbers(const std::string &name)
    {
        const char *at = name.c_str();
        const size_t length = std::strcspn(at, "-0123456789");
        if (length >= sizeof type) return;
        std::memcpy(type, at, length);
        type[length] = '\0';
        at += at[length] == '-' ? length + 1 : length;
        while (count < 8) {
            char *end = nullptr;
            errno = 0;
            const unsigned long number = std::strtoul(at, &end, 10);
            if (end == at || errno != 0 || number > INT32_MAX) return;
            numbers[count++] = static_cast<int32_t>(number);
            if (*end == '\0') return;
            if (std::strchr("/:.", *end) == nullptr) return;
            at = end + 1;
        }
    }
};

constexpr auto strtoul_loop = [](const std::string &name) {
    Numbers numbers(name);
    benchmark::DoNotOptimize(numbers);
};

constexpr auto strtoul_loop_and_message = [](const std::string &name) {
    Numbers numbers(name);
    char error[bench::error_size];
    std::snprintf(error, sizeof error, "%s value outside range %d..%d for '%s' in '%s'", "fpc", 0,
                  11, std::strchr(name.c_str(), '-') + 1, name.c_str());
    benchmark::DoNotOptimize(numbers);
    benchmark::DoNotOptimize(error);
};

}  // namespace

void add_parse_interface_rows()
{
    add_row("parse_interface_unit", {0.45, 0.45}, unit_text, parse, strtoul_loop);
    add_row("parse_interface_channels", {0.45, 0.45}, channel_text, parse, strtoul_loop);
    add_row("parse_interface_device", no_limits, device_text, parse, strtoul_loop);
    add_row("parse_interface_refused", {0.6, 0.6}, refused_text, parse, strtoul_loop_and_message);
}

}  // namespace bench
