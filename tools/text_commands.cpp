// Durations, and the forms of IPv6 text.
#include <orvex/parse.h>

#include <algorithm>
#include <array>

#include "commands.h"
#include "parse_text.h"

namespace {

struct TextOptions : Options {
    uint64_t min = 0;
    uint64_t max = UINT64_MAX;
    bool address_only = false;
};

TextOptions options;

Outcome read_duration(const std::string &text)
{
    uint64_t seconds = 0;
    const auto parse = [&](char *error, size_t size) {
        return decode_dhms(text.c_str(), options.min, options.max, &seconds, error, size);
    };
    return parse_text(text, 1, parse,
                      [&] { return std::vector<Field>{number_field("seconds", seconds)}; });
}

Outcome read_canonical(const std::string &text)
{
    constexpr size_t least_room = 47;
    std::vector<char> buffer(std::max(least_room, text.size() + 1));
    std::copy(text.begin(), text.end(), buffer.begin());
    const auto parse = [&](char *, size_t) { return format_rfc5952(buffer.data()); };
    Outcome outcome = parse_text(
        text, 1, parse, [&] { return std::vector<Field>{text_field("canonical", buffer.data())}; });
    if (outcome.fields.empty()) outcome.message = "'" + text + "' is not an IPv6 address";
    return outcome;
}

Outcome read_prefix6(const std::string &text)
{
    uint32_t af = PARSE_AF_INET6;
    std::array<uint8_t, 16> address;
    uint32_t length = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_ipaddr(&af, text.c_str(), PARSE_IPADDR_PREFIX_OK, address.data(),
                            address.size(), nullptr, &length, nullptr, nullptr, 0, error, size);
    };
    return parse_text(text, 0, parse, [&] {
        std::array<char, FORMAT_IN6_BUFSIZE> buffer;
        const auto format = options.address_only ? format_in6_addr : format_in6_prefix;
        const char *const whole =
            format(address.data(), static_cast<int>(length), buffer.data(), buffer.size(), 1);
        return std::vector<Field>{text_field("prefix", whole)};
    });
}

CLI::App *add(CLI::App &app, Job &job, const char *name, const char *description,
              Outcome (*reader)(const std::string &))
{
    CLI::App *const command = add_command(app, name, description, options);
    command->callback(
        [&job, reader] { job = [reader] { return run_texts(options, Style::value, reader); }; });
    return command;
}

}  // namespace

void add_text_commands(CLI::App &app, Job &job)
{
    CLI::App *const duration =
        add(app, job, "duration", "Durations in seconds: 90, 1d2h30m, 1:30", read_duration);
    duration->add_option("--min", options.min, "The least number of seconds");
    duration->add_option("--max", options.max, "The greatest number of seconds");
    add(app, job, "canonical", "IPv6 addresses in the canonical form of RFC 5952", read_canonical);
    add(app, job, "prefix6", "IPv6 prefixes, showing only the groups within the prefix length",
        read_prefix6)
        ->add_flag("--address", options.address_only, "Leave the prefix length out");
}
