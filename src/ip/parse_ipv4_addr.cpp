#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <string_view>

#include "ip/address_parsers.h"
#include "text/bytes.h"
#include "text/characters.h"
#include "text/digits.h"
#include "text/dotted_quad.h"
#include "text/error_text.h"
#include "text/target_numbers.h"

namespace orvex {
namespace {

// A text with a "/" must be shorter.
constexpr size_t ipv4_text_size = 32;

// ---- Four bytes in dotted, hexadecimal or integer form ----

// The part of a text that gives four bytes: the address, or the mask after the "/".
struct BytesText {
    const AddressRequest &request;
    std::string_view whole;

    [[nodiscard]] bool is_mask() const { return whole.data() != request.str; }
    [[nodiscard]] const char *subject() const { return is_mask() ? "ip netmask" : "ip address"; }
    // What messages say between a part and the whole.
    [[nodiscard]] std::string_view after_part() const
    {
        return is_mask() ? "' in ip netmask: '" : "' in ip address: '";
    }
    [[nodiscard]] bool ends_at(const char *at) const { return at == whole.data() + whole.size(); }
    [[nodiscard]] std::string_view from(const char *at) const
    {
        // substr may throw, which needs the C++ run-time library.
        return {at, static_cast<size_t>(whole.data() + whole.size() - at)};
    }
};

int refuse_rest(const BytesText &text, const char *at)
{
    return refuse_invalid_pieces(
        text.request.error, *at == '/' ? rule_broken : not_this_form,
        {"invalid input at '", text.from(at), "' in ", text.subject(), " '", text.whole, "'"});
}

int refuse_whole(const BytesText &text, int result, std::string_view fault)
{
    return refuse_invalid_pieces(text.request.error, result,
                                 {fault, text.subject(), ": '", text.whole, "'"});
}

int refuse_part(const BytesText &text, int result, std::string_view fault, std::string_view part)
{
    return refuse_invalid_pieces(text.request.error, result,
                                 {fault, part, text.after_part(), text.whole, "'"});
}

// "0xffffff00"
int read_hexadecimal(const BytesText &text, const char *&at, uint8_t *bytes)
{
    const auto number = convert<uint32_t>(at, Base::hexadecimal);
    // All ones may be what an overflow saturates to: they count in their shortest spelling only.
    const bool is_shortest = text.from(at + 2).size() == 2 * sizeof number.value;
    // "0x", "0x0ffffffff", "0x100000000"
    if (!is_hex_digit(at[2]) || (number.value == UINT32_MAX && !is_shortest))
        return refuse_whole(text, not_this_form, "invalid hexadecimal ");
    store_be32(bytes, number.value);
    at = number.end;
    return text.ends_at(at) ? 0 : refuse_rest(text, at);
}

// Converts a group in any spelling: white space, "+", any number of digits.
Conversion<uint32_t> convert_group(const BytesText &text, const char *at)
{
    auto number = convert_unsigned(at, Base::decimal);
    // All ones may be what an overflow saturates to: they count in their shortest spelling only.
    if (number.value == UINT32_MAX && text.from(at) != "4294967295") number.end = at;
    return number;
}

// "167772161"
bool read_integer(const BytesText &text, const char *&at, uint8_t *bytes)
{
    const auto number = convert_group(text, at);
    if (number.end == at || !text.ends_at(number.end)) return false;
    store_be32(bytes, number.value);
    at = number.end;
    return true;
}

// A text of digits and dots alone is an address, though a wrong one.
int result_of_large_group(const BytesText &text, const char *at)
{
    if (text.is_mask()) return rule_broken;
    while (*at == '.' || is_digit(*at)) ++at;
    return text.ends_at(at) ? rule_broken : not_this_form;
}

int read_group(const BytesText &text, const char *&at, uint8_t &byte)
{
    const char *const start = at;
    uint32_t octet{};
    if (read_octet<LeadingZeros::allowed>(at, octet) && !is_digit(*at)) {
        byte = static_cast<uint8_t>(octet);
        return 0;
    }
    at = start;
    const auto number = convert_group(text, at);
    // "x", "1..2", "-1", "99999999999"
    if (number.end == at)
        return refuse_part(text, not_this_form, "invalid input at '", text.from(at));
    // "256"
    if (number.value > UINT8_MAX) {
        std::array<char, decimal_room> value;
        const auto end = std::to_chars(value.data(), value.data() + value.size(), number.value);
        return refuse_part(text, result_of_large_group(text, number.end), "invalid value '",
                           {value.data(), end.ptr});
    }
    byte = static_cast<uint8_t>(number.value);
    at = number.end;
    return 0;
}

// Reads the octets that a "." follows, and the fourth one when the address or mask ends there.
// Moves `at` past them, and returns how many there are.
inline size_t read_octets(const AddressRequest &request, const char *&at, uint8_t *bytes)
{
    const bool is_mask = at != request.str;
    for (size_t count = 0;; ++count) {
        const char *end = at;
        uint32_t octet{};
        if (!read_octet<LeadingZeros::allowed>(end, octet)) return count;
        const bool is_last = count == ipv4_size - 1;
        if (is_last ? !(is_mask ? *end == '\0' : ends_address(request, end)) : *end != '.')
            return count;
        bytes[count] = static_cast<uint8_t>(octet);
        at = is_last ? end : end + 1;
        if (is_last) return ipv4_size;
    }
}

// The groups after the first `count` of "10.1", "10." or "1. 2.+3.0004"
int read_groups(const BytesText &text, const char *&at, uint8_t *bytes, size_t count)
{
    for (; count < ipv4_size && !text.ends_at(at); ++at) {
        const int result = read_group(text, at, bytes[count++]);
        if (result != 0) return result;
        if (count == ipv4_size || *at != '.') break;
    }
    // "1.2.3.4.", "1.2.3.4.5", "1x", "10.0.0.0/8"
    if (!text.ends_at(at)) return refuse_rest(text, at);
    // "10.1"
    if (text.request.has(PARSE_IPADDR_ALL_BYTES) && count < ipv4_size)
        return refuse_whole(text, rule_broken, "missing information in ");
    return 0;
}

// What comes after the first `count` groups of an address or a mask in any form.
[[gnu::noinline]] int read_any_bytes(const BytesText &text, const char *&at, uint8_t *bytes,
                                     size_t count)
{
    // "", "/8"
    if (text.whole.empty())
        return refuse_invalid(text.request.error, not_this_form, "%s is not specified",
                              text.subject());
    std::memset(bytes + count, 0, ipv4_size - count);
    if (count == 0 && at[0] == '0' && at[1] == 'x') return read_hexadecimal(text, at, bytes);
    if (count == 0 && text.request.has(PARSE_IPADDR_INTEGER_OK) && read_integer(text, at, bytes))
        return 0;
    return read_groups(text, at, bytes, count);
}

// Reads an address or a mask, and moves `at` to its end.
inline int read_bytes(const AddressRequest &request, const char *&at, uint8_t *bytes)
{
    const char *const first = at;
    const size_t count = read_octets(request, at, bytes);
    if (count == ipv4_size) [[likely]]
        return 0;
    const auto whole = first == request.str ? address_text(request) : std::string_view(first);
    return read_any_bytes({request, whole}, at, bytes, count);
}

// ---- The whole text ----

// "any-unicast" and "any-multicast" are address zero with a keyword's word in place of the mask.
bool read_any_keyword(AddressRequest &request)
{
    std::memset(request.address, 0, ipv4_size);
    std::memset(request.mask, 0, ipv4_size);
    uint32_t word = 0;
    if (std::strcmp(request.str, "any-unicast") == 0) word = IPADDR_ANY_UNICAST;
    if (std::strcmp(request.str, "any-multicast") == 0) word = IPADDR_ANY_MULTICAST;
    if (word == 0) return false;
    std::memcpy(request.mask, &word, sizeof word);
    request.maskseen = 1;
    return true;
}

int read_mask(AddressRequest &request, const char *suffix)
{
    if (!request.has(PARSE_IPADDR_MASK_OK)) return refuse_mask(request, suffix);
    const int result = read_bytes(request, suffix, request.mask);
    if (result != 0) return result;
    request.maskseen = 1;
    return 0;
}

// What follows the "/": "8", "010", "0x18" or "255.0.0.0"
int read_suffix(AddressRequest &request, const char *suffix)
{
    const auto number = convert_suffix(suffix, Base::from_prefix, '.');
    if (has_mask_mark(number.end, '.')) return read_mask(request, suffix);
    return read_prefix_length(request, suffix, number, ipv4_bits);
}

struct DottedQuad {
    std::array<char, sizeof "255.255.255.255"> text;

    explicit DottedQuad(uint32_t value)
    {
        std::array<uint8_t, ipv4_size> bytes;
        store_be32(bytes.data(), value);
        put_dotted_quad(text.data(), bytes.data());
    }
};

int check_host_bits(const AddressRequest &request)
{
    const uint32_t address = load_be32(request.address);
    if (request.maskseen != 0) {
        const uint32_t mask = load_be32(request.mask);
        if ((address & ~mask) == 0) return 0;
        return refuse_invalid(request.error, rule_broken, "masked bits are not zero (%s%c%s)",
                              DottedQuad(address & mask).text.data(), '/',
                              DottedQuad(mask).text.data());
    }
    const uint32_t pfxlen = request.pfxlen;
    if (pfxlen == ipv4_bits) return 0;
    const uint32_t host_bits = UINT32_MAX >> pfxlen;
    if ((address & host_bits) == 0) return 0;
    if (pfxlen == 0)
        return refuse_invalid(request.error, rule_broken, "host portion is not zero (%s)",
                              request.str);
    return refuse_invalid(request.error, rule_broken, "host portion is not zero (%s%c%lu)",
                          DottedQuad(address & ~host_bits).text.data(), '/',
                          static_cast<unsigned long>(pfxlen));
}

}  // namespace

int parse_ipv4_addr(AddressRequest &request)
{
    request.pfxlen = ipv4_bits;
    if (request.has(PARSE_IPADDR_DEFAULT_OK) && read_zero_prefix(request, ipv4_size)) return 0;
    if (request.has(PARSE_IPADDR_ANY_OK) && read_any_keyword(request)) return 0;
    if (is_too_long(request, ipv4_text_size))
        return refuse_invalid(request.error, not_this_form,
                              "too long to be a valid ip address: '%s'", request.str);

    const char *at = request.str;
    int result = read_bytes(request, at, request.address);
    if (result != 0) return result;
    if (*at == '/')
        result = read_suffix(request, at + 1);
    else if (request.has(PARSE_IPADDR_PREFIX_REQUIRED))
        result = refuse_missing_prefix(request);
    if (result != 0 || !request.has(PARSE_IPADDR_HOST_ZERO)) return result;
    return check_host_bits(request);
}

}  // namespace orvex
