#include <orvex/parse.h>

#include <cstring>

#include "old/digits.h"
#include "text/error_text.h"
#include "old/hex_group.h"
#include "old/text_writer.h"

namespace orvex {
namespace {

constexpr size_t mac_size = 6;
constexpr uint8_t mac_bits = 48;
constexpr uint8_t group_bit = 1;

// Reads up to six groups, or up to the one that a "/" ends, and counts them. Moves `at` behind the
// last one and its separator, or to a character that should be a digit; `ended_by` stood behind the
// last one.
size_t read_groups(const char *&at, uint8_t *address, char &ended_by)
{
    size_t count = 0;
    while (count < mac_size && read_hex_group(at, address[count], '/')) {
        ++count;
        ended_by = *at;
        if (is_group_separator(ended_by)) [[likely]]
            ++at;
        else if (ended_by == '/')
            break;
    }
    return count;
}

void store_prefix(uint8_t length, int *pfxseen, uint8_t *pfxlen)
{
    if (pfxseen != nullptr) *pfxseen = 1;
    if (pfxlen != nullptr) *pfxlen = length;
}

// "48" behind the "/"
[[gnu::noinline]] int read_prefix(const char *text, uint32_t flags, int *pfxseen, uint8_t *pfxlen,
                                  ErrorText error)
{
    if ((flags & PARSE_MAC_PREFIX_OK) == 0)
        return refuse(error, keep_errno, rule_broken, "Address prefix not allowed");
    const auto number = convert<uint32_t>(text, Base::decimal);
    if (number.end == text) return refuse(error, keep_errno, not_this_form, "Missing mac prefix");
    if (*number.end != '\0')
        return refuse(error, keep_errno, not_this_form, "Unexpected trailing characters");
    if (number.value > mac_bits)
        return refuse(error, keep_errno, rule_broken, "Invalid mac prefix '%s'", text);
    store_prefix(static_cast<uint8_t>(number.value), pfxseen, pfxlen);
    return 0;
}

int check_group_bit(const uint8_t *address, uint32_t flags, ErrorText error)
{
    const bool group = (address[0] & group_bit) != 0;
    if ((flags & PARSE_MAC_MULTICAST_ONLY) != 0 && !group)
        return refuse(error, keep_errno, rule_broken, "Invalid multicast mac address");
    if ((flags & PARSE_MAC_UNICAST_ONLY) != 0 && group)
        return refuse(error, keep_errno, rule_broken, "Invalid unicast mac address");
    return 0;
}

// "00:1b:2c:3d:4e:5f", and "/" with a prefix length, terminated; returns the length.
size_t write_mac(char *buf, const uint8_t *address, bool with_prefix, uint8_t pfxlen)
{
    char *at = buf;
    for (size_t i = 0; i < mac_size; ++i) {
        at = put_hex_byte(at, address[i]);
        *at++ = ':';
    }
    --at;
    if (with_prefix) {
        *at++ = '/';
        at = put_octet(at, pfxlen);
    }
    *at = '\0';
    return static_cast<size_t>(at - buf);
}

}  // namespace
}  // namespace orvex

int parse_mac_addr(const char *text, uint32_t flags, uint8_t *address, int *pfxseen,
                   uint8_t *pfxlen, char *errbuf, size_t errlen)
{
    const orvex::ErrorText error{errbuf, errlen};
    std::memset(address, 0, orvex::mac_size);
    if (pfxseen != nullptr) *pfxseen = 0;
    const char *at = text;
    char ended_by = '\0';
    if (orvex::read_groups(at, address, ended_by) < orvex::mac_size) {
        if (ended_by == '/' || *at == '\0')
            return refuse(error, orvex::keep_errno, orvex::not_this_form, "Incomplete mac address");
        return refuse(error, orvex::keep_errno, orvex::not_this_form, "Invalid character '%c'",
                      *at);
    }
    if (ended_by == '/') {
        const int result = orvex::read_prefix(at + 1, flags, pfxseen, pfxlen, error);
        if (result != 0) return result;
    } else {
        if ((flags & PARSE_MAC_PREFIX_OK) != 0)
            orvex::store_prefix(orvex::mac_bits, pfxseen, pfxlen);
        if (ended_by != '\0')
            return refuse(error, orvex::keep_errno, orvex::not_this_form, "Unexpected characters");
    }
    return orvex::check_group_bit(address, flags, error);
}

int format_mac_addr(char *buf, size_t buflen, const uint8_t *address, int pfxseen, uint8_t pfxlen)
{
    // The last octet's table entry is four bytes long.
    constexpr size_t longest = sizeof "00:1b:2c:3d:4e:5f/255" + 1;
    const auto write = [&](char *at) {
        return orvex::write_mac(at, address, pfxseen != 0, pfxlen);
    };
    return static_cast<int>(orvex::write_whole_text<longest>(buf, buflen, write));
}
