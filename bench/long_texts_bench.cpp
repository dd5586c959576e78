// What a hostile text costs a parser per byte, at three lengths: the figures must stay alike, as
// the cost is linear.
#include <orvex/parse.h>

#include <string>
#include <vector>

#include "bench.h"

namespace bench {
namespace {

struct LongText {
    const char *parser;
    std::string start;
    std::string piece;  // repeated to the length
    void (*parse)(const std::string &text);
};

char message[1024];
uint8_t bytes[4096];

template <uint32_t family>
void parse_address(const std::string &text)
{
    uint32_t af = family;
    int pfxseen = 0;
    int maskseen = 0;
    uint32_t length = 0;
    parse_ipaddr(&af, text.c_str(), PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK, bytes, 16,
                 &pfxseen, &length, &maskseen, bytes + 16, 16, message, sizeof message);
}

void parse_name(const std::string &text)
{
    parsed_interface record;
    parse_interface(text.c_str(), PARSE_IF_RANGES | PARSE_IF_WILDCARD, 0, &record, message,
                    sizeof message);
}

void parse_numbers(const std::string &text)
{
    int32_t value = 0;
    int64_t quad = 0;
    parse_integer(text.c_str(), &value);
    parse_quad(text.c_str(), &quad);
    parse_number(text.c_str(), &value, INT32_MAX);
}

void parse_duration(const std::string &text)
{
    uint64_t seconds = 0;
    decode_dhms(text.c_str(), 0, UINT64_MAX, &seconds, message, sizeof message);
}

void parse_vpn(const std::string &text)
{
    atmvpn_address record;
    uint32_t pfxlen = 0;
    uint32_t type = 0;
    uint32_t high = 0;
    uint32_t low = 0;
    parse_is_atmvpn(text.c_str());
    parse_atmvpn(text.c_str(), &record, &pfxlen, message, sizeof message);
    parse_inetvpn_rd(text.c_str(), &type, &high, &low, message, sizeof message);
}

void parse_segment(const std::string &text)
{
    parse_esi(text.c_str(), bytes, message, sizeof message, PARSE_ESI_ANY);
}

void parse_bytes(const std::string &text)
{
    int seen = 0;
    uint8_t length = 0;
    parse_mac_addr(text.c_str(), PARSE_MAC_PREFIX_OK, bytes, &seen, &length, message,
                   sizeof message);
    parse_delim_dec_addr(text.c_str(), bytes, message, sizeof message, sizeof bytes);
    parse_delim_hex_addr(text.c_str(), bytes, message, sizeof message, sizeof bytes);
}

void parse_iso(const std::string &text)
{
    auto count = uint8_t{20};
    uint16_t length = 0;
    parse_is_iso_addr(text.c_str());
    parse_is_iso_sysid(text.c_str());
    parse_iso_addr(text.c_str(), 0, bytes, &count, nullptr, &length, message, sizeof message);
    parse_iso_sysid(text.c_str(), bytes, 6, message, sizeof message);
}

void parse_prefix_and_alias(const std::string &text)
{
    const char *name = text.c_str();
    size_t length = 0;
    parse_4_level_chassis(&name, message, sizeof message, nullptr, 0, &length);
    is_interface_alias(text.c_str());
}

const std::vector<LongText> long_texts = {
    {"numbers/digits", "", "1", parse_numbers},
    {"numbers/space", "", " ", parse_numbers},
    {"ipv4/groups", "", "1.", parse_address<PARSE_AF_INET>},
    {"ipv4/mask", "10.0.0.0/", "255.", parse_address<PARSE_AF_INET>},
    {"ipv4/digits", "", "0", parse_address<PARSE_AF_INET>},
    {"ipv6/groups", "", "1:", parse_address<PARSE_AF_INET6>},
    {"ipv6/length", "::/", "0", parse_address<PARSE_AF_INET6>},
    {"interface/type", "", "a", parse_name},
    {"interface/list", "eth-[1", ",1", parse_name},
    {"interface/slashes", "eth-0", "/", parse_name},
    {"interface/channels", "eth-0/0/0", ":1", parse_name},
    {"chassis/colons", "", "a:-", parse_prefix_and_alias},
    {"mac, delimited/groups", "", "0:", parse_bytes},
    {"iso/bytes", "", "49.", parse_iso},
    {"rd, atmvpn/gaps", "", "::", parse_vpn},
    {"rd, atmvpn/digits", "1:1::1::", "0", parse_vpn},
    {"esi/zeros", "", "0", parse_segment},
    {"duration/pairs", "", "1s", parse_duration},
    {"duration/clocks", "", "1:2 ", parse_duration},
    {"duration/digits", "", "1", parse_duration},
};

void run_long_text(benchmark::State &state, const LongText &row)
{
    std::string text = row.start;
    while (text.size() < static_cast<size_t>(state.range(0))) text += row.piece;
    for ([[maybe_unused]] auto step : state) row.parse(text);
    state.counters["per_byte"] = benchmark::Counter(
        static_cast<double>(text.size()),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace

void add_long_text_rows()
{
    for (const LongText &row : long_texts) {
        const std::string name = std::string("long/") + row.parser;
        benchmark::RegisterBenchmark(name.c_str(),
                                     [&row](auto &state) { run_long_text(state, row); })
            ->Arg(1 << 10)
            ->Arg(32 << 10)
            ->Arg(1 << 20);
    }
}

}  // namespace bench
