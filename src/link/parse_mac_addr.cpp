#include <orvex/parse.h>

#include <cstring>

#include "text/digits.h"
#include "text/error_text.h"
#include "text/hex_digits.h"
#include "text/target_numbers.h"
#include "text/text_writer.h"

namespace orvex {
namespace {

constexpr size_t mac_size = 6;
constexpr uint8_t mac_bits = 48;
constexpr uint8_t group_bit = 1;

struct PrefixOutputs {
    int *seen;        // may be null
    uint8_t *length;  // may be null

    void store(uint32_t value) const
    {
        if (seen != nullptr) *seen = 1;
        if (length != nullptr) *length = static_cast<uint8_t>(value);
    }
};

// "00:11:22:33:44:55"; moves `at` past the last group.
int read_groups(const char *&at, uint8_t *address, ErrorText error)
{
    const char *const text = at;
    if (read_hex_bytes(at, address, mac_size, '/') == mac_size) [[likely]]
        return 0;
    // "00:11" or "00:11/40"
    if (*at == '\0' || (*at == '/' && at != text && !is_group_separator(at[-1])))
        return refuse(error, not_this_form, "Incomplete mac address");
    return refuse(error, not_this_form, "Invalid character '%c'", *at);
}

// "48" after the "/"
int read_prefix_length(const char *text, uint32_t flags, PrefixOutputs outputs, ErrorText error)
{
    if ((flags & PARSE_MAC_PREFIX_OK) == 0)
        return refuse(error, rule_broken, "Address prefix not allowed");
    const auto number = convert<uint32_t>(text, Base::decimal);
    if (number.end == text) return refuse(error, not_this_form, "Missing mac prefix");
    if (*number.end != '\0') return refuse(error, not_this_form, "Unexpected trailing characters");
    if (number.value > mac_bits) return refuse(error, rule_broken, "Invalid mac prefix '%s'", text);
    outputs.store(number.value);
    return 0;
}

// What follows the six groups.
int read_rest(const char *at, uint32_t flags, PrefixOutputs outputs, ErrorText error)
{
    if (*at == '/') return read_prefix_length(at + 1, flags, outputs, error);
    if ((flags & PARSE_MAC_PREFIX_OK) != 0) outputs.store(mac_bits);
    if (*at != '\0') return refuse(error, not_this_form, "Unexpected characters");
    return 0;
}

int check_group_bit(const uint8_t *address, uint32_t flags, ErrorText error)
{
    const bool is_group = (address[0] & group_bit) != 0;
    if ((flags & PARSE_MAC_MULTICAST_ONLY) != 0 && !is_group)
        return refuse(error, rule_broken, "Invalid multicast mac address");
    if ((flags & PARSE_MAC_UNICAST_ONLY) != 0 && is_group)
        return refuse(error, rule_broken, "Invalid unicast mac address");
    return 0;
}

}  // namespace
}  // namespace orvex

int parse_mac_addr(const char *text, uint32_t flags, uint8_t *address, int *pfxseen,
                   uint8_t *pfxlen, char *errbuf, size_t errlen)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    std::memset(address, 0, mac_size);
    if (pfxseen != nullptr) *pfxseen = 0;
    const char *at = text;
    if (const int result = read_groups(at, address, error); result != 0) return result;
    if (const int result = read_rest(at, flags, {pfxseen, pfxlen}, error); result != 0)
        return result;
    return check_group_bit(address, flags, error);
}

int format_mac_addr(char *buf, size_t buflen, const uint8_t *address, int pfxseen, uint8_t pfxlen)
{
    using namespace orvex;
    constexpr size_t longest = sizeof "00:1b:2c:3d:4e:5f/255";
    static_assert(longest == FORMAT_MAC_BUFSIZE);
    const auto write = [=](char *at) {
        for (size_t i = 0; i < mac_size; ++i) {
            at = put_hex_byte(at, address[i]);
            *at++ = ':';
        }
        --at;
        if (pfxseen != 0) {
            *at = '/';
            return put_last_octet(at + 1, pfxlen);
        }
        *at = '\0';
        return at;
    };
    return static_cast<int>(write_text<longest>(buf, buflen, write));
}
