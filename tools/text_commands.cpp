// Durations, and the forms of IPv6 text.
#include <orvex/parse.h>

#include <algorithm>
#include <array>

#include "command.h"
#include "options.h"
#include "parse_text.h"

namespace {

// ---- Durations ----

constexpr Field duration_fields[] = {{"seconds"}};

uint64_t min = 0;
uint64_t max = UINT64_MAX;

void read_duration(const Text &text, Receiver &receiver)
{
    uint64_t seconds = 0;
    const auto parse = [&](char *error, size_t size) {
        return decode_dhms(text.value, min, max, &seconds, error, size);
    };
    parse_text(text, receiver, 1, parse, [&seconds](Record &record) { record.number(0, seconds); });
}

void add_duration_options(Options &options)
{
    options.number("--min", "SECONDS", "The least number of seconds", 0, UINT64_MAX,
                   [](uint64_t number) { min = number; });
    options.number("--max", "SECONDS", "The greatest number of seconds", 0, UINT64_MAX,
                   [](uint64_t number) { max = number; });
}

const Command &prepare_duration(const Command &self)
{
    if (min > max)
        throw UsageError("--min " + std::to_string(min) + " is above --max " + std::to_string(max) +
                         ": no duration is between them");
    return self;
}

// ---- Canonical IPv6 text ----

constexpr Field canonical_fields[] = {{"canonical"}};

void read_canonical(const Text &text, Receiver &receiver)
{
    // The longest text of an address is shorter than the buffer that format_rfc5952 needs.
    std::array<char, FORMAT_RFC5952_BUFSIZE> buffer;
    const bool fits = text.length < buffer.size();
    if (fits) std::copy_n(text.value, text.length + 1, buffer.data());
    if (fits && format_rfc5952(buffer.data()) == 1) {
        receiver.begin(text).text(0, buffer.data());
        return receiver.end(text);
    }
    const std::string message = quoted(text) + " is not an IPv6 address";
    receiver.refuse(text, {.message = message});
}

// ---- Right-aligned IPv6 text ----

constexpr Field prefix6_fields[] = {{"prefix"}};

bool is_address_only = false;

void read_prefix6(const Text &text, Receiver &receiver)
{
    uint32_t af = PARSE_AF_INET6;
    std::array<uint8_t, 16> address;
    uint32_t length = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_ipaddr(&af, text.value, PARSE_IPADDR_PREFIX_OK, address.data(), address.size(),
                            nullptr, &length, nullptr, nullptr, 0, error, size);
    };
    parse_text(text, receiver, 0, parse, [&](Record &record) {
        std::array<char, FORMAT_IN6_BUFSIZE> buffer;
        const auto format = is_address_only ? format_in6_addr : format_in6_prefix;
        record.text(
            0, format(address.data(), static_cast<int>(length), buffer.data(), buffer.size(), 1));
    });
}

void add_prefix6_options(Options &options)
{
    options.flag("--address", "Leave the prefix length out", [] { is_address_only = true; });
}

}  // namespace

const Command duration_command = {
    .name = "duration",
    .summary = "Durations in seconds: 90, 1d2h30m, 1:30",
    .examples = "orvex-parse duration --max 86400 1h30m\n",
    .layout = Layout::values,
    .fields = duration_fields,
    .add_options = add_duration_options,
    .prepare = prepare_duration,
    .read = read_duration,
};

const Command canonical_command = {
    .name = "canonical",
    .summary = "IPv6 addresses in the canonical form of RFC 5952",
    .examples = "orvex-parse canonical 2001:DB8:0:0:0:0:0:1\n",
    .layout = Layout::values,
    .fields = canonical_fields,
    .read = read_canonical,
};

const Command prefix6_command = {
    .name = "prefix6",
    .summary = "IPv6 prefixes, showing only the groups within the prefix length",
    .examples = "orvex-parse prefix6 2001:db8:1::/48\n",
    .layout = Layout::values,
    .fields = prefix6_fields,
    .add_options = add_prefix6_options,
    .read = read_prefix6,
};
