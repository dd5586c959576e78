// Link-layer and delimited addresses.
#include <orvex/parse.h>

#include <array>
#include <vector>

#include "command.h"
#include "link_commands.h"
#include "options.h"
#include "parse_text.h"

namespace {

// ---- MAC addresses ----

uint32_t flags = 0;

enum MacField : size_t { mac_address, mac_bytes, mac_prefix_length, mac_class };
constexpr Field mac_fields[] = {{"address"}, {"bytes"}, {"prefix_length"}, {"class"}};

struct Mac {
    std::array<uint8_t, 6> address;
    int pfxseen = 0;
    uint8_t pfxlen = 0;
};

int parse_mac(const Text &text, uint32_t with_flags, Mac &mac, char *error, size_t size)
{
    return parse_mac_addr(text.value, with_flags, mac.address.data(), &mac.pfxseen, &mac.pfxlen,
                          error, size);
}

void write_mac(Record &record, const Mac &mac)
{
    std::array<char, FORMAT_MAC_BUFSIZE> whole;
    format_mac_addr(whole.data(), whole.size(), mac.address.data(), mac.pfxseen, mac.pfxlen);
    record.text(mac_address, whole.data());
    record.bytes(mac_bytes, mac.address);
    if (mac.pfxseen != 0) record.number(mac_prefix_length, mac.pfxlen);
    record.text(mac_class, (mac.address[0] & 1) != 0 ? "multicast" : "unicast");
}

// The option that would have let a refused text in.
std::string_view mac_hint(const Text &text)
{
    Mac mac;
    if ((flags & PARSE_MAC_PREFIX_OK) != 0) return {};
    if (text.view().find('/') == std::string_view::npos) return {};
    if (parse_mac(text, flags | PARSE_MAC_PREFIX_OK, mac, nullptr, 0) != 0) return {};
    return "--prefix accepts a prefix length after the address";
}

void read_mac(const Text &text, Receiver &receiver)
{
    Mac mac;
    parse_text(
        text, receiver, 0,
        [&](char *error, size_t size) { return parse_mac(text, flags, mac, error, size); },
        [&mac](Record &record) { write_mac(record, mac); }, [&text] { return mac_hint(text); });
}

void add_mac_options(Options &options)
{
    options.flag("--prefix", "A prefix length may follow; 48 without one",
                 [] { flags |= PARSE_MAC_PREFIX_OK; });
    options.flag("--unicast", "The group bit must be clear",
                 [] { flags |= PARSE_MAC_UNICAST_ONLY; });
    options.flag("--multicast", "The group bit must be set",
                 [] { flags |= PARSE_MAC_MULTICAST_ONLY; });
}

const Command &prepare_mac(const Command &self)
{
    constexpr uint32_t both = PARSE_MAC_UNICAST_ONLY | PARSE_MAC_MULTICAST_ONLY;
    if ((flags & both) == both)
        throw UsageError("no address is both: give --unicast or --multicast");
    return self;
}

// ---- Delimited addresses ----

constexpr Field delimited_fields[] = {{"address"}, {"bytes"}};
constexpr uint32_t most_bytes = 65536;

uint32_t count = 0;
char delimiter = '.';
bool is_hexadecimal = false;

void read_delimited(const Text &text, Receiver &receiver)
{
    static std::vector<uint8_t> bytes(count);
    static std::vector<char> whole(FORMAT_DELIM_BUFSIZE(count));
    const auto parse = [&](char *error, size_t size) {
        const auto reader = is_hexadecimal ? parse_delim_hex_addr : parse_delim_dec_addr;
        return reader(text.value, bytes.data(), error, size, count);
    };
    parse_text(text, receiver, 0, parse, [](Record &record) {
        format_delim_addr(whole.data(), whole.size(), bytes.data(), delimiter, count,
                          is_hexadecimal ? 'x' : 'd');
        record.text(0, whole.data());
        record.bytes(1, bytes);
    });
}

void add_delimited_options(Options &options)
{
    options.number("--count", "N", "The number of bytes; required", 1, most_bytes,
                   [](uint64_t number) { count = static_cast<uint32_t>(number); });
    options.flag("--hex", "The bytes are hexadecimal", [] { is_hexadecimal = true; });
    options.value(
        "--delimiter", "CHARACTER", "What is printed between the bytes",
        [](const std::string &text) {
            if (text.size() != 1)
                throw UsageError("--delimiter: expected one character, found '" + text + "'");
            delimiter = text.front();
        });
}

const Command &prepare_delimited(const Command &self)
{
    if (count == 0) throw UsageError("--count is required: the number of bytes");
    return self;
}

}  // namespace

void accept_mac_prefix() { flags |= PARSE_MAC_PREFIX_OK; }

const Command mac_command = {
    .name = "mac",
    .summary = "MAC addresses, with a prefix length",
    .examples =
        "orvex-parse mac 001b.2c3d.4e5f\n"
        "orvex-parse mac --prefix 0:1b:2c:3d:4e:5f/40\n",
    .fields = mac_fields,
    .add_options = add_mac_options,
    .prepare = prepare_mac,
    .read = read_mac,
};

const Command delimited_command = {
    .name = "delimited",
    .summary = "Bytes with . or : between them",
    .examples = "orvex-parse delimited --count 4 --hex 0a:1:2:3\n",
    .fields = delimited_fields,
    .add_options = add_delimited_options,
    .prepare = prepare_delimited,
    .read = read_delimited,
};
