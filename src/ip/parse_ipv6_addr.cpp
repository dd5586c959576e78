#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "ip/address_parsers.h"
#include "text/bytes.h"
#include "text/error_text.h"
#include "text/ipv6_text.h"
#include "text/target_numbers.h"

namespace orvex {
namespace {

// A text with a "/" must be shorter.
constexpr size_t ipv6_text_size = 92;

// What follows the "/": "64" or "ffff:ffff::"
int read_suffix(AddressRequest &request, const char *suffix)
{
    const auto number = convert_suffix(suffix, Base::decimal, ':');
    if (!has_mask_mark(number.end, ':'))
        return read_prefix_length(request, suffix, number, ipv6_bits);
    if (!request.has(PARSE_IPADDR_MASK_OK)) return refuse_mask(request, suffix);
    const char *at = suffix;
    std::array<uint8_t, ipv6_size> mask;
    if (!read_ipv6(at, mask.data()) || *at != '\0')
        return refuse(request.error, rule_broken, "'%s' is not a valid ipv6 mask", suffix);
    std::memcpy(request.mask, mask.data(), ipv6_size);
    request.maskseen = 1;
    return 0;
}

bool masked_bits_are_zero(const uint8_t *address, const uint8_t *mask)
{
    return std::equal(address, address + ipv6_size, mask,
                      [](uint8_t byte, uint8_t mask_byte) { return (byte & ~mask_byte) == 0; });
}

int check_host_bits(const AddressRequest &request)
{
    if (request.maskseen != 0) {
        if (masked_bits_are_zero(request.address, request.mask)) return 0;
        return refuse_invalid(request.error, rule_broken, "masked bits of '%s' must be zero",
                              request.str);
    }
    if (bits_after_are_zero(request.address, ipv6_size, request.pfxlen)) return 0;
    return refuse_invalid(request.error, rule_broken, "host portion of '%s' must be zero",
                          request.str);
}

}  // namespace

int parse_ipv6_addr(AddressRequest &request)
{
    request.pfxlen = ipv6_bits;
    if (*request.str == '\0')
        return refuse_invalid(request.error, not_this_form, "ip address is not specified");
    if (request.has(PARSE_IPADDR_DEFAULT_OK) && read_zero_prefix(request, ipv6_size)) return 0;
    if (is_too_long(request, ipv6_text_size))
        return refuse_invalid(request.error, not_this_form,
                              "too long to be a valid ipv6 address: '%s'", request.str);

    const char *at = request.str;
    std::array<uint8_t, ipv6_size> address;
    if (!read_ipv6(at, address.data()) || !ends_address(request, at)) {
        const std::string_view text = address_text(request);
        return refuse(request.error, not_this_form, "'%.*s' is not a valid ipv6 address",
                      precision(text), text.data());
    }
    std::memcpy(request.address, address.data(), ipv6_size);
    if (*at == '/') {
        const int result = read_suffix(request, at + 1);
        if (result != 0) return result;
    } else if (request.has(PARSE_IPADDR_PREFIX_REQUIRED)) {
        return refuse_missing_prefix(request);
    }
    return request.has(PARSE_IPADDR_HOST_ZERO) ? check_host_bits(request) : 0;
}

}  // namespace orvex
