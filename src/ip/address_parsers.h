// The parsers that parse_ipaddr calls, and what they share.
#ifndef ORVEX_IP_ADDRESS_PARSERS_H
#define ORVEX_IP_ADDRESS_PARSERS_H

#include <orvex/parse.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "text/dotted_quad.h"
#include "text/error_text.h"
#include "text/target_numbers.h"

namespace orvex {

// A text to read, and what is read. After a failure the outputs hold what was read before it.
struct AddressRequest {
    const char *str;
    uint32_t flags;    // PARSE_IPADDR_ bits
    uint8_t *address;  // 4 or 16 bytes, as has the mask
    uint8_t *mask;
    ErrorText error;
    int pfxseen = 0;
    int maskseen = 0;
    uint32_t pfxlen{};

    [[nodiscard]] bool has(uint32_t flag) const { return (flags & flag) != 0; }
};

// Return 0, not_this_form or rule_broken.
int parse_ipv4_addr(AddressRequest &request);
int parse_ipv6_addr(AddressRequest &request);

// "default" and "all" are the zero prefix.
inline bool read_zero_prefix(AddressRequest &request, size_t address_size)
{
    if (std::strcmp(request.str, "default") != 0 && std::strcmp(request.str, "all") != 0)
        return false;
    std::memset(request.address, 0, address_size);
    request.pfxlen = 0;
    request.pfxseen = 1;
    return true;
}

// Whether a text with a "/" has `size` characters or more.
inline bool is_too_long(const AddressRequest &request, size_t size)
{
    return request.has(PARSE_IPADDR_PREFIX_OK) && strnlen(request.str, size) == size &&
           std::strchr(request.str, '/') != nullptr;
}

// Whether the address of the text ends at `at`.
inline bool ends_address(const AddressRequest &request, const char *at)
{
    return *at == '\0' || (*at == '/' && request.has(PARSE_IPADDR_PREFIX_OK));
}

// The text up to its suffix.
inline std::string_view address_text(const AddressRequest &request)
{
    const char *const slash =
        request.has(PARSE_IPADDR_PREFIX_OK) ? std::strchr(request.str, '/') : nullptr;
    if (slash == nullptr) return request.str;
    return {request.str, slash};
}

// Converts an unsigned number. A text that begins with "-" converts nothing.
inline Conversion<uint32_t> convert_unsigned(const char *text, Base base)
{
    if (!is_digit(*text) && !is_space(*text) && *text != '+') return {0, text, {}};
    return convert<uint32_t>(text, base);
}

// Converts the number of a prefix length, or the first one of a mask, which `mask_mark` follows.
inline Conversion<uint32_t> convert_suffix(const char *suffix, Base base, char mask_mark)
{
    uint32_t number{};
    const char *end = suffix;
    if (read_octet<LeadingZeros::refused>(end, number) && (*end == '\0' || *end == mask_mark))
        return {number, end, {}};
    return convert_unsigned(suffix, base);
}

// Whether a suffix is a mask: whether `mask_mark` is in what comes after its first number.
inline bool has_mask_mark(const char *rest, char mask_mark)
{
    return *rest == mask_mark || (*rest != '\0' && std::strchr(rest, mask_mark) != nullptr);
}

// Stores and checks a prefix length: `number` as converted from `suffix`.
inline int read_prefix_length(AddressRequest &request, const char *suffix,
                              Conversion<uint32_t> number, uint32_t bits)
{
    request.pfxlen = number.value;
    // "/", "/x", "/-1"
    if (number.end == suffix) {
        const bool quoted = *suffix != '\0';
        return refuse_invalid(request.error, rule_broken,
                              "missing or invalid prefix length %s%s%sin address '%s'",
                              quoted ? "'" : "", suffix, quoted ? "' " : "", request.str);
    }
    // "/8x"
    if (*number.end != '\0')
        return refuse_invalid(request.error, rule_broken, "invalid input at '%s' in address '%s'",
                              number.end, request.str);
    // "/33"
    if (number.value > bits) {
        return refuse_invalid(request.error, rule_broken,
                              "prefix length '%lu' is larger than %u in address '%s'",
                              static_cast<unsigned long>(number.value), bits, request.str);
    }
    request.pfxseen = 1;
    return 0;
}

inline int refuse_mask(const AddressRequest &request, const char *suffix)
{
    return refuse_invalid(request.error, rule_broken, "invalid input at '%c%s' in address '%s'",
                          '/', suffix, request.str);
}

inline int refuse_missing_prefix(const AddressRequest &request)
{
    return refuse_invalid(request.error, rule_broken,
                          "missing required prefix length %sin address '%s'",
                          request.has(PARSE_IPADDR_MASK_OK) ? "or mask " : "", request.str);
}

}  // namespace orvex

#endif
