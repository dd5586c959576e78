// ISO addresses and system identifiers.
#include <orvex/parse.h>

#include <array>

#include "command.h"
#include "options.h"
#include "parse_text.h"

namespace {

uint32_t flags = 0;

enum IsoField : size_t { iso_address, iso_bytes, iso_prefix_length };
constexpr Field iso_fields[] = {{"address"}, {"bytes"}, {"prefix_length"}};
constexpr Field sysid_fields[] = {{"sysid"}, {"bytes"}};

void read_iso_as(const Text &text, Receiver &receiver, uint32_t with_flags)
{
    std::array<uint8_t, 21> bytes;
    uint8_t count = bytes.size();
    int pfxseen = 0;
    uint16_t pfxlen = 0;
    const auto parse = [&](char *error, size_t size) {
        return parse_iso_addr(text.value, with_flags, bytes.data(), &count, &pfxseen, &pfxlen,
                              error, size);
    };
    parse_text(text, receiver, 0, parse, [&](Record &record) {
        std::array<char, FORMAT_ISO_BUFSIZE> whole;
        format_iso_addr(bytes.data(), count, pfxseen, pfxlen, whole.data(), whole.size());
        record.text(iso_address, whole.data());
        record.bytes(iso_bytes, {bytes.data(), count});
        if (pfxseen != 0) record.number(iso_prefix_length, pfxlen);
    });
}

void read_sysid(const Text &text, Receiver &receiver)
{
    std::array<uint8_t, 6> sysid;
    const auto parse = [&](char *error, size_t size) {
        return parse_iso_sysid(text.value, sysid.data(), static_cast<int>(sysid.size()), error,
                               size);
    };
    parse_text(text, receiver, 0, parse, [&sysid](Record &record) {
        std::array<char, FORMAT_ISO_SYSID_BUFSIZE> whole;
        format_iso_sysid(sysid.data(), whole.data(), whole.size());
        record.text(0, whole.data());
        record.bytes(1, sysid);
    });
}

void add_iso_options(Options &options)
{
    options.flag("--nsap", "The text is a complete address, not a prefix",
                 [] { flags |= PARSE_ISO_NSAP; });
}

}  // namespace

const Command iso_command = {
    .name = "iso",
    .summary = "ISO prefixes and NSAP addresses",
    .examples =
        "orvex-parse iso 49.0001/24\n"
        "orvex-parse iso --nsap 49.0001.1921.6800.1001.00\n",
    .fields = iso_fields,
    .add_options = add_iso_options,
    .read = [](const Text &text, Receiver &receiver) { read_iso_as(text, receiver, flags); },
};

const Command nsap_command = {
    .name = "nsap",
    .summary = "ISO NSAP addresses",
    .fields = iso_fields,
    .read = [](const Text &text,
               Receiver &receiver) { read_iso_as(text, receiver, PARSE_ISO_NSAP); },
};

const Command sysid_command = {
    .name = "sysid",
    .summary = "ISO system identifiers",
    .examples = "orvex-parse sysid 1921.6800.1001\n",
    .fields = sysid_fields,
    .read = read_sysid,
};
