// VPN identifiers.
#include <orvex/parse.h>

#include <array>
#include <cstdio>

#include "command.h"
#include "options.h"
#include "parse_text.h"

namespace {

struct Distinguisher {
    uint32_t type = 0;
    uint32_t high = 0;
    uint32_t low = 0;
};

std::array<uint8_t, 8> bytes_of(const Distinguisher &rd)
{
    std::array<uint8_t, 8> bytes;
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t>((i < 4 ? rd.high : rd.low) >> (24 - 8 * (i % 4)));
    return bytes;
}

// The text that gives this value again: "65000:100", "10.1.1.1:7" or "4200000000L:1".
std::string text_of(const Distinguisher &rd)
{
    const std::array<uint8_t, 8> bytes = bytes_of(rd);
    const uint32_t administrator = rd.high << 16 | rd.low >> 16;
    const std::string number = ':' + std::to_string(rd.low & 0xffffU);
    switch (rd.high >> 16) {
        case 0: return std::to_string(rd.high & 0xffffU) + ':' + std::to_string(rd.low);
        case 1: break;
        default: return std::to_string(administrator) + 'L' + number;
    }
    std::string address;
    for (size_t i = 2; i < 6; ++i) address += (i > 2 ? "." : "") + std::to_string(bytes[i]);
    return address + number;
}

// ---- Route distinguishers ----

enum RdField : size_t { rd_text, rd_type, rd_bytes };
constexpr Field rd_fields[] = {{"rd"}, {"type"}, {"bytes"}};

void read_rd(const Text &text, Receiver &receiver)
{
    Distinguisher rd;
    const auto parse = [&](char *error, size_t size) {
        return parse_inetvpn_rd(text.value, &rd.type, &rd.high, &rd.low, error, size);
    };
    parse_text(text, receiver, 0, parse, [&rd](Record &record) {
        record.text(rd_text, text_of(rd));
        record.number(rd_type, rd.type);
        record.bytes(rd_bytes, bytes_of(rd));
    });
}

// ---- Ethernet Segment Identifiers ----

constexpr Field esi_fields[] = {{"esi"}, {"bytes"}};

int mode = PARSE_ESI_ANY;

void read_esi(const Text &text, Receiver &receiver)
{
    std::array<uint8_t, 10> esi;
    const auto parse = [&](char *error, size_t size) {
        return parse_esi(text.value, esi.data(), error, size, mode);
    };
    parse_text(text, receiver, 0, parse, [&esi](Record &record) {
        std::array<char, FORMAT_ESI_BUFSIZE> whole;
        format_esi(whole.data(), whole.size(), esi.data());
        record.text(0, whole.data());
        record.bytes(1, esi);
    });
}

void set_mode(const std::string &name)
{
    mode = PARSE_ESI_ANY;
    if (name == "user-defined") mode = PARSE_ESI_USER_DEFINED;
    if (name == "reserved-ok") mode = PARSE_ESI_RESERVED_OK;
}

void add_esi_options(Options &options)
{
    options.choice("--mode", "MODE",
                   "user-defined: the first octet must be 0; reserved-ok: all values; or any, "
                   "which is the default",
                   {"any", "user-defined", "reserved-ok"}, set_mode);
}

// ---- ATM VPN addresses ----

enum AtmvpnField : size_t {
    atmvpn_address_text,
    atmvpn_rd_bytes,
    atmvpn_type,
    atmvpn_address_bytes,
    atmvpn_prefix_length,
    atmvpn_prefix_length_raw,
};
constexpr Field atmvpn_fields[] = {
    {"address"},       {"rd_bytes"},      {"type"},
    {"address_bytes"}, {"prefix_length"}, {"prefix_length_raw", Audience::programs},
};

// The library's length counts the route distinguisher and the type too.
constexpr uint32_t key_bits_before_address = 72;
constexpr uint32_t no_length = 255;

// The text that gives this value again. Zeros at the end need not be given.
std::string text_of(const atmvpn_address &address, uint32_t length)
{
    size_t count = sizeof address.address;
    while (count > 1 && address.address[count - 1] == 0) --count;
    std::string text = text_of(Distinguisher{0, address.rd_high, address.rd_low}) +
                       "::" + std::to_string(address.type) + "::";
    for (size_t i = 0; i < count; ++i)
        text += (i > 0 ? ":" : "") + std::to_string(address.address[i]);
    if (length == no_length) return text;
    return text + '/' + std::to_string(length - key_bits_before_address);
}

void read_atmvpn(const Text &text, Receiver &receiver)
{
    atmvpn_address address{};
    uint32_t length = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_atmvpn(text.value, &address, &length, error, size);
    };
    parse_text(text, receiver, 0, parse, [&](Record &record) {
        record.text(atmvpn_address_text, text_of(address, length));
        record.bytes(atmvpn_rd_bytes, bytes_of({0, address.rd_high, address.rd_low}));
        record.number(atmvpn_type, address.type);
        record.bytes(atmvpn_address_bytes, address.address);
        if (length != no_length)
            record.number(atmvpn_prefix_length, length - key_bits_before_address);
        record.number(atmvpn_prefix_length_raw, length);
    });
}

}  // namespace

const Command rd_command = {
    .name = "rd",
    .summary = "BGP route distinguishers",
    .examples = "orvex-parse rd 65000:100 10.1.1.1:7\n",
    .fields = rd_fields,
    .read = read_rd,
};

const Command esi_command = {
    .name = "esi",
    .summary = "Ethernet Segment Identifiers",
    .examples = "orvex-parse esi --mode user-defined 00:11::99\n",
    .fields = esi_fields,
    .add_options = add_esi_options,
    .read = read_esi,
};

const Command atmvpn_command = {
    .name = "atmvpn",
    .summary = "ATM VPN addresses",
    .examples = "orvex-parse atmvpn 65000:1::5::10.1.2.3/32\n",
    .fields = atmvpn_fields,
    .read = read_atmvpn,
};
