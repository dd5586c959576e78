#include <arpa/inet.h>
#include <orvex/parse.h>

#include <cctype>
#include <cstdio>
#include <cstring>

#include "bench.h"

namespace bench {
namespace {

// "uplink-to-core17"
std::string alias_text(Random &random)
{
    constexpr const char *roles[] = {"uplink", "customer", "peering", "core", "backup"};
    constexpr const char *places[] = {"-to-core", "_berlin.", "-lab-", "-rack", ".floor-"};
    return roles[below(random, 5)] + std::string(places[below(random, 5)]) +
           std::to_string(below(random, 100000));
}

constexpr auto ask = [](const std::string &text) {
    benchmark::DoNotOptimize(is_interface_alias(text.c_str()));
};

bool has_alias_characters(const char *text)
{
    if (std::isalpha(static_cast<unsigned char>(*text)) == 0) return false;
    for (; *text != '\0'; ++text) {
        if (std::isalnum(static_cast<unsigned char>(*text)) == 0 &&
            std::strchr("_.:/-", *text) == nullptr)
            return false;
    }
    return true;
}

constexpr auto isalnum_loop = [](const std::string &text) {
    uint8_t address[16];
    benchmark::DoNotOptimize(has_alias_characters(text.c_str()) &&
                             inet_pton(AF_INET6, text.c_str(), address) != 1);
};

// A map of many lines, of which the last is asked for.
constexpr size_t map_lines = 200000;

FILE *write_map()
{
    FILE *const map = std::tmpfile();
    for (size_t line = 1; line <= map_lines; ++line)
        std::fprintf(map, "eth-%zu/%zu/%zu.%zu customer-%zu up\n", line % 12, line % 4, line % 48,
                     line, line);
    std::fflush(map);
    return map;
}

const std::string last_alias = "customer-" + std::to_string(map_lines);

void look_up(benchmark::State &state)
{
    FILE *const map = write_map();
    char name[64];
    for ([[maybe_unused]] auto step : state)
        if (ifalias_to_ifl(last_alias.c_str(), name, sizeof name, 0, map) != 1)
            state.SkipWithError("the alias was not found");
    std::fclose(map);
}

bool scan_map(FILE *map)
{
    char name[IFALIAS_NAME_BUFSIZE];
    char alias[129];
    char third[65];
    std::rewind(map);
    while (std::fscanf(map, "%60s %128s %64s", name, alias, third) == 3)
        if (last_alias == alias) return true;
    return false;
}

void fscanf_loop(benchmark::State &state)
{
    FILE *const map = write_map();
    for ([[maybe_unused]] auto step : state)
        if (!scan_map(map)) state.SkipWithError("the alias was not found");
    std::fclose(map);
}

}  // namespace

void add_is_interface_alias_rows()
{
    add_row("is_interface_alias", {0.3, 0.3}, alias_text, ask, isalnum_loop);
    // One map: there is no small one.
    declare_row("ifalias_to_ifl", {0.12, 0.12});
    benchmark::RegisterBenchmark("ifalias_to_ifl/peer/large", fscanf_loop);
    benchmark::RegisterBenchmark("ifalias_to_ifl/ours/large", look_up);
}

}  // namespace bench
