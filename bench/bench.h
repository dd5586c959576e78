// Rows of the benchmark: a library call and its peer, each on a small set of inputs, which a branch
// predictor can learn, and on a large one, which it cannot.
#ifndef ORVEX_BENCH_BENCH_H
#define ORVEX_BENCH_BENCH_H

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace bench {

// A generator of 32-bit words.
struct Random {
    explicit Random(uint32_t seed) : engine(seed) {}
    uint32_t operator()() { return static_cast<uint32_t>(engine()); }
    std::mt19937 engine;
};

constexpr size_t small_set = 512;
constexpr size_t large_set = 16384;

// Less than PARSE_ERROR_BUFSIZE: the compiler does not inline a call that needs so much of the
// stack, and the instructions of the call itself would count.
constexpr size_t error_size = 160;

// The highest accepted ratios of the library's time to its peer's.
struct Limits {
    double small;
    double large;
};

constexpr Limits no_limits{INFINITY, INFINITY};

// Remembers a row's limits for the table of ratios.
void declare_row(const std::string &name, Limits limits);

// Remembers a row's calls, one for each text, for the count of instructions.
void declare_calls(const std::string &name, size_t texts, std::function<void()> calls);

template <typename Item, typename Call>
void run(benchmark::State &state, const std::vector<Item> &items, const Call &call)
{
    size_t next = 0;
    for ([[maybe_unused]] auto step : state) {
        call(items[next]);
        if (++next == items.size()) next = 0;
    }
}

// Draws `size` different inputs.
template <typename Make>
auto draw(size_t size, Random &random, const Make &make)
{
    using Item = decltype(make(random));
    std::set<Item> seen;
    std::vector<Item> items;
    while (items.size() < size) {
        Item item = make(random);
        if (seen.insert(item).second) items.push_back(std::move(item));
    }
    return items;
}

// Adds a row: `make` draws one input; `ours` and `peer` each handle one.
template <typename Make, typename Ours, typename Peer>
void add_row(const std::string &name, Limits limits, const Make &make, const Ours &ours,
             const Peer &peer)
{
    declare_row(name, limits);
    for (const size_t size : {small_set, large_set}) {
        Random random(20261122);
        const auto items = draw(size, random, make);
        const std::string set = size == small_set ? "small" : "large";
        if (size == small_set) {
            declare_calls(name, size, [items, ours] {
                for (const auto &item : items) ours(item);
            });
        }
        benchmark::RegisterBenchmark((name + "/peer/" + set).c_str(),
                                     [items, peer](auto &state) { run(state, items, peer); });
        benchmark::RegisterBenchmark((name + "/ours/" + set).c_str(),
                                     [items, ours](auto &state) { run(state, items, ours); });
    }
}

inline uint32_t below(Random &random, uint32_t bound) { return random() % bound; }

// "10.1.2.3", octets of every length
inline std::string ipv4_text(Random &random)
{
    const uint32_t word = random();
    std::string text = std::to_string(word >> 24);
    for (const int shift : {16, 8, 0}) text += '.' + std::to_string(word >> shift & 0xff);
    return text;
}

// Each registers the rows of one family.
void add_parse_integer_rows();
void add_parse_mac_addr_rows();
void add_parse_delim_addr_rows();
void add_parse_iso_addr_rows();
void add_parse_inetvpn_rd_rows();
void add_parse_esi_rows();
void add_parse_dhms_rows();
void add_format_rfc5952_rows();
void add_parse_interface_rows();
void add_is_interface_alias_rows();
void add_parse_ipaddr_rows();
void add_format_ipv6addr_rows();
void add_format_ipaddr_rows();
void add_long_text_rows();

}  // namespace bench

#endif
