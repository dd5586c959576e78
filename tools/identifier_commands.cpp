// Link-layer, OSI and VPN identifiers.
#include <orvex/parse.h>

#include <array>

#include "commands.h"
#include "parse_text.h"

namespace {

struct IdentifierOptions : Options {
    uint32_t flags = 0;
    int mode = PARSE_ESI_ANY;
    uint32_t count = 0;
    std::string delimiter = ".";
    bool hexadecimal = false;
};

IdentifierOptions options;

// The 8 bytes of a route distinguisher.
std::string rd_bytes(uint32_t high, uint32_t low)
{
    std::array<uint8_t, 8> bytes;
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t>((i < 4 ? high : low) >> (24 - 8 * (i % 4)));
    return hexadecimal(bytes.data(), bytes.size());
}

Outcome read_mac(const std::string &text)
{
    std::array<uint8_t, 6> address;
    int pfxseen = 0;
    uint8_t pfxlen = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_mac_addr(text.c_str(), options.flags, address.data(), &pfxseen, &pfxlen, error,
                              size);
    };
    return parse_text(text, 0, parse, [&] {
        std::array<char, FORMAT_MAC_BUFSIZE> whole;
        format_mac_addr(whole.data(), whole.size(), address.data(), pfxseen, pfxlen);
        std::vector<Field> fields = {text_field("address", whole.data()),
                                     text_field("bytes", hexadecimal(address.data(), 6))};
        if (pfxseen != 0) fields.push_back(number_field("prefix_length", uint32_t{pfxlen}));
        fields.push_back(text_field("class", (address[0] & 1) != 0 ? "multicast" : "unicast"));
        return fields;
    });
}

Outcome read_rd(const std::string &text)
{
    uint32_t type = 0;
    uint32_t high = 0;
    uint32_t low = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_inetvpn_rd(text.c_str(), &type, &high, &low, error, size);
    };
    return parse_text(text, 0, parse, [&] {
        return std::vector<Field>{number_field("type", type),
                                  text_field("bytes", rd_bytes(high, low))};
    });
}

Outcome read_esi(const std::string &text)
{
    std::array<uint8_t, 10> esi;
    const auto parse = [&](char *error, size_t size) {
        return parse_esi(text.c_str(), esi.data(), error, size, options.mode);
    };
    return parse_text(text, 0, parse, [&] {
        std::array<char, 30> whole;
        format_esi(whole.data(), whole.size(), esi.data());
        return std::vector<Field>{text_field("esi", whole.data()),
                                  text_field("bytes", hexadecimal(esi.data(), esi.size()))};
    });
}

Outcome read_iso(const std::string &text)
{
    std::array<uint8_t, 21> bytes;
    uint8_t count = bytes.size();
    int pfxseen = 0;
    uint16_t pfxlen = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_iso_addr(text.c_str(), options.flags, bytes.data(), &count, &pfxseen, &pfxlen,
                              error, size);
    };
    return parse_text(text, 0, parse, [&] {
        std::array<char, 80> whole;
        format_iso_addr(bytes.data(), count, pfxseen, pfxlen, whole.data(), whole.size());
        std::vector<Field> fields = {text_field("address", whole.data()),
                                     text_field("bytes", hexadecimal(bytes.data(), count))};
        if (pfxseen != 0) fields.push_back(number_field("prefix_length", uint32_t{pfxlen}));
        return fields;
    });
}

Outcome read_sysid(const std::string &text)
{
    std::array<uint8_t, 6> sysid;
    const auto parse = [&](char *error, size_t size) {
        return parse_iso_sysid(text.c_str(), sysid.data(), static_cast<int>(sysid.size()), error,
                               size);
    };
    return parse_text(text, 0, parse, [&] {
        std::array<char, 16> whole;
        format_iso_sysid(sysid.data(), whole.data(), whole.size());
        return std::vector<Field>{text_field("sysid", whole.data()),
                                  text_field("bytes", hexadecimal(sysid.data(), sysid.size()))};
    });
}

Outcome read_atmvpn(const std::string &text)
{
    atmvpn_address record{};
    uint32_t pfxlen = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_atmvpn(text.c_str(), &record, &pfxlen, error, size);
    };
    return parse_text(text, 0, parse, [&] {
        return std::vector<Field>{
            text_field("rd_bytes", rd_bytes(record.rd_high, record.rd_low)),
            number_field("type", uint32_t{record.type}),
            text_field("address_bytes", hexadecimal(record.address, sizeof record.address)),
            number_field("prefix_length", pfxlen),
        };
    });
}

Outcome read_delimited(const std::string &text)
{
    std::vector<uint8_t> bytes(options.count);
    const auto parse = [&](char *error, size_t size) {
        const auto reader = options.hexadecimal ? parse_delim_hex_addr : parse_delim_dec_addr;
        return reader(text.c_str(), bytes.data(), error, size, options.count);
    };
    return parse_text(text, 0, parse, [&] {
        std::vector<char> whole(size_t{4} * options.count + 1);
        format_delim_addr(whole.data(), whole.size(), bytes.data(), options.delimiter.front(),
                          options.count, options.hexadecimal ? 'x' : 'd');
        return std::vector<Field>{text_field("address", whole.data()),
                                  text_field("bytes", hexadecimal(bytes.data(), bytes.size()))};
    });
}

CLI::App *add(CLI::App &app, Job &job, const char *name, const char *description,
              Outcome (*reader)(const std::string &))
{
    CLI::App *const command = add_command(app, name, description, options);
    command->callback(
        [&job, reader] { job = [reader] { return run_texts(options, Style::record, reader); }; });
    return command;
}

void add_flag(CLI::App *command, const char *option, uint32_t bit, const char *help)
{
    command->add_flag_callback(
        option, [bit] { options.flags |= bit; }, help);
}

}  // namespace

void add_identifier_commands(CLI::App &app, Job &job)
{
    CLI::App *const mac = add(app, job, "mac", "MAC addresses, with a prefix length", read_mac);
    add_flag(mac, "--prefix", PARSE_MAC_PREFIX_OK, "A prefix length may follow; 48 without one");
    add_flag(mac, "--unicast", PARSE_MAC_UNICAST_ONLY, "The group bit must be clear");
    add_flag(mac, "--multicast", PARSE_MAC_MULTICAST_ONLY, "The group bit must be set");

    add(app, job, "rd", "BGP route distinguishers", read_rd);

    static const std::map<std::string, int> modes = {{"any", PARSE_ESI_ANY},
                                                     {"user-defined", PARSE_ESI_USER_DEFINED},
                                                     {"reserved-ok", PARSE_ESI_RESERVED_OK}};
    add(app, job, "esi", "Ethernet Segment Identifiers", read_esi)
        ->add_option("--mode", options.mode, "any, user-defined or reserved-ok")
        ->type_name("MODE")
        ->transform(CLI::Transformer(modes));

    add_flag(add(app, job, "iso", "ISO prefixes and NSAP addresses", read_iso), "--nsap",
             PARSE_ISO_NSAP, "The text is a complete address, not a prefix");

    add(app, job, "sysid", "ISO system identifiers", read_sysid);
    add(app, job, "atmvpn", "ATM VPN addresses", read_atmvpn);

    CLI::App *const delimited =
        add(app, job, "delimited", "Bytes with . or : between them", read_delimited);
    delimited->add_option("--count", options.count, "The number of bytes")
        ->required()
        ->check(CLI::Range(1, 65536));
    delimited->add_flag("--hex", options.hexadecimal, "The bytes are hexadecimal");
    delimited->add_option("--delimiter", options.delimiter, "What is printed between the bytes")
        ->type_name("CHARACTER")
        ->check([](const std::string &text) {
            return text.size() == 1 ? std::string() : "'" + text + "' is not one character";
        });
}
