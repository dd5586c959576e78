#include <orvex/parse.h>

#include <array>

#include "commands.h"
#include "parse_text.h"

namespace {

struct Flag {
    const char *option;
    uint32_t bits;
    const char *help;
};

constexpr std::array<Flag, 11> flags = {{
    {"--prefix", PARSE_IPADDR_PREFIX_OK, "A prefix length may follow: 10.0.0.0/8"},
    {"--prefix-required", PARSE_IPADDR_PREFIX_REQUIRED, "A prefix length or a mask must be given"},
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

struct IpOptions : Options {
    uint32_t flags = 0;
    uint32_t family = 0;
};

struct IpValue {
    uint32_t af = 0;
    uint32_t base = 0;  // PARSE_AF_INET or PARSE_AF_INET6
    size_t size = 0;
    std::array<uint8_t, 16> address{};
    std::array<uint8_t, 16> mask{};
    int pfxseen = 0;
    int maskseen = 0;
    uint32_t pfxlen = 0;
};

std::string bare_text(const IpValue &value, const uint8_t *bytes)
{
    std::array<char, FORMAT_IPADDR_BUFSIZE> text;
    format_ipaddr(static_cast<int>(value.base), bytes, 0, 0, 0, 0, nullptr, text.data(),
                  text.size());
    return text.data();
}

std::string whole_text(const IpValue &value, uint8_t full_form)
{
    std::array<char, FORMAT_IPADDR_BUFSIZE> text;
    format_ipaddr(static_cast<int>(value.base), value.address.data(), full_form, value.pfxseen,
                  value.pfxlen, value.maskseen, value.mask.data(), text.data(), text.size());
    return text.data();
}

// The mask, or its keyword: both can have the same bytes, but only a mask follows a "/".
std::string mask_text(const std::string &input, const IpValue &value)
{
    const bool keyword = input.find('/') == std::string::npos;
    return keyword ? input : bare_text(value, value.mask.data());
}

bool is_martian(const std::string &address)
{
    uint32_t af = PARSE_AF_INET;
    return parse_ipaddr(&af, address.c_str(), PARSE_IPADDR_NO_MARTIAN, nullptr, 0, nullptr, nullptr,
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

std::string family_text(const IpValue &value)
{
    const bool ipv4 = value.base == PARSE_AF_INET;
    const std::string code = std::to_string(value.af);
    if (value.af == value.base) return std::string(ipv4 ? "inet" : "inet6") + " (" + code + ")";
    return code + (ipv4 ? " (IPv4-based)" : " (IPv6-based)");
}

std::vector<Field> fields_of(const std::string &input, const IpValue &value)
{
    const bool ipv4 = value.base == PARSE_AF_INET;
    const std::string address = bare_text(value, value.address.data());
    const bool martian = ipv4 && is_martian(address);
    const std::string whole = whole_text(value, 0);
    const std::string fixed = whole_text(value, 1);
    std::vector<Field> fields = {
        {"input", nullptr, input},
        {"family", value.af, family_text(value)},
        {"address", address, address},
        {"address_bytes", hexadecimal(value.address.data(), value.size), {}},
    };
    if (value.pfxseen == 1)
        fields.push_back({"prefix_length", value.pfxlen, std::to_string(value.pfxlen)});
    if (value.maskseen == 1) {
        const std::string mask = mask_text(input, value);
        fields.push_back({"mask", mask, mask});
        fields.push_back({"mask_bytes", hexadecimal(value.mask.data(), value.size), {}});
    }
    const std::string name = class_name(value);
    fields.push_back({"class", name, martian ? name + ", martian" : name});
    if (ipv4) fields.push_back({"martian", martian, {}});
    fields.push_back({"compressed", whole, whole});
    fields.push_back({"fixed_width", fixed, fixed});
    return fields;
}

// Whether a family code that the library accepts is IPv6-based.
bool is_ipv6_based(uint32_t af)
{
    return af == PARSE_AF_INET6 || af == 121 || af == 131 || af == 141;
}

Outcome read_ip(const std::string &text, const IpOptions &options)
{
    IpValue value;
    value.af = options.family;
    const auto parse = [&](char *error, size_t size) {
        return parse_ipaddr(&value.af, text.c_str(), options.flags, value.address.data(),
                            value.address.size(), &value.pfxseen, &value.pfxlen, &value.maskseen,
                            value.mask.data(), value.mask.size(), error, size);
    };
    return parse_text(text, 0, parse, [&] {
        const bool ipv6 = is_ipv6_based(value.af);
        value.base = ipv6 ? PARSE_AF_INET6 : PARSE_AF_INET;
        value.size = ipv6 ? 16 : 4;
        return fields_of(text, value);
    });
}

// "inet", "inet6" or a code
void set_family(const std::string &name, uint32_t &family)
{
    int32_t code = 0;
    if (name == "inet")
        family = PARSE_AF_INET;
    else if (name == "inet6")
        family = PARSE_AF_INET6;
    else if (!name.empty() && parse_number(name.c_str(), &code, INT32_MAX) == 1)
        family = static_cast<uint32_t>(code);
    else
        throw CLI::ValidationError("--family", "'" + name + "' is not inet, inet6 or a code");
}

}  // namespace

void add_ip_command(CLI::App &app, Job &job)
{
    static IpOptions options;
    CLI::App *const ip =
        add_command(app, "ip", "IPv4 and IPv6 addresses, prefixes and masks", options);
    for (const Flag &flag : flags)
        ip->add_flag_callback(
            flag.option, [&flag] { options.flags |= flag.bits; }, flag.help);
    ip->add_option_function<std::string>(
          "--family", [](const std::string &name) { set_family(name, options.family); },
          "Read texts of one family only: inet, inet6 or a family code")
        ->type_name("FAMILY");
    ip->callback([&job] {
        job = [] {
            return run_texts(options, Style::record,
                             [](const std::string &text) { return read_ip(text, options); });
        };
    });
}
