#include <orvex/parse.h>

#include <array>
#include <charconv>
#include <cstring>

#include "command.h"
#include "ip_command.h"
#include "options.h"
#include "parse_text.h"

namespace {

struct Flag {
    const char *option;
    uint32_t bits;
    const char *help;
};

constexpr std::array<Flag, 11> flags = {{
    {"--prefix", PARSE_IPADDR_PREFIX_OK, "A prefix length may follow: 10.0.0.0/8"},
    {"--prefix-required", PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_PREFIX_REQUIRED,
     "A prefix length, or with --mask a mask, must follow"},
    {"--all-bytes", PARSE_IPADDR_ALL_BYTES, "IPv4: all four bytes must be given"},
    {"--mask", PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK,
     "As --prefix, and a mask may follow: 10.0.0.0/255.0.0.0"},
    {"--default", PARSE_IPADDR_DEFAULT_OK, "\"default\" and \"all\" mean 0.0.0.0/0 or ::/0"},
    {"--integer", PARSE_IPADDR_INTEGER_OK, "IPv4: one decimal number is the whole address"},
    {"--host-zero", PARSE_IPADDR_HOST_ZERO, "Bits after the prefix or outside the mask must be 0"},
    {"--multicast", PARSE_IPADDR_MULTICAST, "The address must be multicast"},
    {"--any", PARSE_IPADDR_ANY_OK, "IPv4: accept \"any-unicast\" and \"any-multicast\""},
    {"--no-martian", PARSE_IPADDR_NO_MARTIAN, "Martian IPv4 addresses are refused"},
    {"--unicast", PARSE_IPADDR_UNICAST, "The address must be unicast"},
}};

uint32_t chosen_flags = 0;
uint32_t chosen_family = 0;

enum IpField : size_t {
    field_input,
    field_family,
    field_address,
    field_address_bytes,
    field_prefix_length,
    field_mask,
    field_mask_bytes,
    field_class,
    field_martian,
    field_compressed,
    field_fixed_width,
};

constexpr Field fields[] = {
    {"input", Audience::people},
    {"family"},
    {"address"},
    {"address_bytes", Audience::programs},
    {"prefix_length"},
    {"mask"},
    {"mask_bytes", Audience::programs},
    {"class"},
    {"martian", Audience::programs},
    {"compressed"},
    {"fixed_width"},
};
static_assert(std::size(fields) == field_fixed_width + 1);

struct IpValue {
    uint32_t af = 0;
    int base = 0;  // PARSE_AF_INET or PARSE_AF_INET6
    size_t size = 0;
    std::array<uint8_t, 16> address;
    std::array<uint8_t, 16> mask;
    int pfxseen = 0;
    int maskseen = 0;
    uint32_t pfxlen = 0;
};

using AddressText = std::array<char, FORMAT_IPADDR_BUFSIZE>;

std::string_view bare_text(const IpValue &value, const uint8_t *bytes, AddressText &room)
{
    const size_t length =
        format_ipaddr(value.base, bytes, 0, 0, 0, 0, nullptr, room.data(), room.size());
    return {room.data(), length};
}

std::string_view whole_text(const IpValue &value, uint8_t full_form, AddressText &room)
{
    const size_t length =
        format_ipaddr(value.base, value.address.data(), full_form, value.pfxseen, value.pfxlen,
                      value.maskseen, value.mask.data(), room.data(), room.size());
    return {room.data(), length};
}

// The mask, or its keyword: both can have the same bytes, but only a mask follows a "/".
std::string_view mask_text(const Text &text, const IpValue &value, AddressText &room)
{
    const bool is_keyword = text.view().find('/') == std::string_view::npos;
    return is_keyword ? text.view() : bare_text(value, value.mask.data(), room);
}

bool is_martian(const char *address)
{
    uint32_t af = PARSE_AF_INET;
    return parse_ipaddr(&af, address, PARSE_IPADDR_NO_MARTIAN, nullptr, 0, nullptr, nullptr,
                        nullptr, nullptr, 0, nullptr, 0) != 0;
}

const char *class_name(const IpValue &value)
{
    static constexpr std::array<const char *, 5> ipv6_names = {"unspecified", "link-local",
                                                               "site-local", "multicast", "other"};
    const uint8_t *const address = value.address.data();
    if (value.base == PARSE_AF_INET6)
        return ipv6_names[static_cast<size_t>(ipv6_address_type(address))];
    if (parse_ipaddr_is_unicast(PARSE_AF_INET, address) != 0) return "unicast";
    if (address[0] == 0) return "unspecified";
    return address[0] == 255 ? "broadcast" : "multicast";
}

void write_family(Record &record, const IpValue &value)
{
    if (!record.is_for_people()) return record.number(field_family, value.af);
    const bool is_ipv4 = value.base == PARSE_AF_INET;
    const std::string code = std::to_string(value.af);
    if (static_cast<int>(value.af) == value.base)
        record.text(field_family, (is_ipv4 ? "inet (" : "inet6 (") + code + ')');
    else
        record.text(field_family, code + (is_ipv4 ? " (IPv4-based)" : " (IPv6-based)"));
}

void write_class(Record &record, const IpValue &value, const char *address)
{
    const char *const name = class_name(value);
    if (value.base == PARSE_AF_INET6) return record.text(field_class, name);
    const bool martian = is_martian(address);
    if (martian && record.is_for_people())
        record.text(field_class, std::string(name) + ", martian");
    else
        record.text(field_class, name);
    record.truth(field_martian, martian);
}

void write_record(Record &record, const Text &text, const IpValue &value)
{
    AddressText address_room;
    AddressText room;
    const std::string_view address = bare_text(value, value.address.data(), address_room);
    const bool is_bare = value.pfxseen == 0 && value.maskseen == 0;
    record.text(field_input, text.view());
    write_family(record, value);
    record.text(field_address, address);
    record.bytes(field_address_bytes, {value.address.data(), value.size});
    if (value.pfxseen == 1) record.number(field_prefix_length, value.pfxlen);
    if (value.maskseen == 1) {
        record.text(field_mask, mask_text(text, value, room));
        record.bytes(field_mask_bytes, {value.mask.data(), value.size});
    }
    write_class(record, value, address.data());
    record.text(field_compressed, is_bare ? address : whole_text(value, 0, room));
    record.text(field_fixed_width, whole_text(value, 1, room));
}

// Whether a family code that the library accepts is IPv6-based.
bool is_ipv6_based(uint32_t af)
{
    return af == PARSE_AF_INET6 || af == PARSE_AF_INET6_121 || af == PARSE_AF_INET6_131 ||
           af == PARSE_AF_INET6_141;
}

int parse_ip(const Text &text, uint32_t with_flags, IpValue &value, char *error, size_t size)
{
    value.af = chosen_family;
    return parse_ipaddr(&value.af, text.value, with_flags, value.address.data(),
                        value.address.size(), &value.pfxseen, &value.pfxlen, &value.maskseen,
                        value.mask.data(), value.mask.size(), error, size);
}

// The option that would have let a refused text in.
std::string_view hint_for(const Text &text)
{
    if (text.view().find('/') == std::string_view::npos) return {};
    constexpr uint32_t prefix = PARSE_IPADDR_PREFIX_OK;
    constexpr uint32_t mask = PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK;
    IpValue value;
    if ((chosen_flags & prefix) == 0 &&
        parse_ip(text, chosen_flags | prefix, value, nullptr, 0) == 0)
        return "--prefix accepts a prefix length after the address";
    if ((chosen_flags & mask) != mask &&
        parse_ip(text, chosen_flags | mask, value, nullptr, 0) == 0)
        return "--mask accepts a mask after the address";
    return {};
}

void read_ip(const Text &text, Receiver &receiver)
{
    IpValue value;
    const auto parse = [&](char *error, size_t size) {
        return parse_ip(text, chosen_flags, value, error, size);
    };
    const auto write = [&](Record &record) {
        const bool is_ipv6 = is_ipv6_based(value.af);
        value.base = is_ipv6 ? PARSE_AF_INET6 : PARSE_AF_INET;
        value.size = is_ipv6 ? 16 : 4;
        write_record(record, text, value);
    };
    parse_text(text, receiver, 0, parse, write, [&text] { return hint_for(text); });
}

// "inet", "inet6" or a code
void set_family(const std::string &name)
{
    int32_t code = 0;
    if (name == "inet")
        chosen_family = PARSE_AF_INET;
    else if (name == "inet6")
        chosen_family = PARSE_AF_INET6;
    else if (!name.empty() && parse_number(name.c_str(), &code, INT32_MAX) == 1)
        chosen_family = static_cast<uint32_t>(code);
    else
        throw UsageError("--family: expected inet, inet6 or a family code, found '" + name + "'");
}

void add_options(Options &options)
{
    for (const Flag &flag : flags)
        options.flag(flag.option, flag.help, [&flag] { chosen_flags |= flag.bits; });
    options.value("--family", "FAMILY", "Texts of one family only: inet, inet6 or a family code",
                  set_family);
}

const Command &prepare(const Command &self)
{
    constexpr uint32_t both = PARSE_IPADDR_UNICAST | PARSE_IPADDR_MULTICAST;
    if ((chosen_flags & both) == both)
        throw UsageError("no address is both: give --unicast or --multicast");
    return self;
}

}  // namespace

void add_ip_flags(uint32_t more) { chosen_flags |= more; }

const Command ip_command = {
    .name = "ip",
    .summary = "IPv4 and IPv6 addresses, prefixes and masks",
    .examples =
        "orvex-parse ip 2001:db8::1\n"
        "orvex-parse ip --prefix --host-zero 10.1.0.0/16\n"
        "orvex-parse ip --mask --field mask 10.0.0.0/255.0.0.0\n"
        "orvex-parse ip --json <addresses\n",
    .fields = fields,
    .add_options = add_options,
    .prepare = prepare,
    .read = read_ip,
};
