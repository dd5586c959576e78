#include "vpn/parse_inetvpn_rd.h"

#include <orvex/parse.h>

#include <algorithm>
#include <cstring>

#include "text/characters.h"
#include "text/dotted_quad.h"
#include "text/target_numbers.h"

namespace orvex {
namespace {

constexpr int refused = 1;

// The types of RFC 4364 section 4.2, by their administrator.
constexpr uint32_t type_as = 0;
constexpr uint32_t type_ipv4 = 1;
constexpr uint32_t type_wide_as = 2;

// The characters that are read.
struct Work {
    const char *text;
    ptrdiff_t most;

    [[nodiscard]] bool ends_at(const char *at) const { return *at == '\0' || at - text == most; }
};

struct Administrator {
    uint32_t type;
    uint32_t value;
    bool is_valid;  // false for an IPv4 address that is none
};

// Converts decimal digits, as many as there are; a number that does not fit gives the maximum.
[[gnu::noinline]] uint32_t convert_digits(const char *at, const char *end)
{
    uint64_t value = 0;
    for (; at != end; ++at) value = std::min(value * 10 + decimal_value(*at), uint64_t{UINT32_MAX});
    return static_cast<uint32_t>(value);
}

// Reads decimal digits and moves `at` past them. Returns the number, 0 without a digit.
uint32_t read_decimal(const char *&at, Work work)
{
    const char *const first = at;
    const uint64_t value = read_wrapping_digits<10>(at);
    const bool is_past_end = at - work.text > work.most;
    if (!is_past_end && at - first <= most_decimal_digits && value <= UINT32_MAX) [[likely]]
        return static_cast<uint32_t>(value);
    if (is_past_end) at = work.text + work.most;
    return convert_digits(first, at);
}

// Reads "65000", "1.10", ".10", or one of them and "L"; anything else is an IPv4 address. Moves
// `at` to the ":" after it, or to the end when there is none.
Administrator read_administrator(const char *&at, Work work)
{
    uint32_t value = read_decimal(at, work);
    if (*at == ':' || work.ends_at(at)) return {type_as, value, true};

    bool is_as = at != work.text;
    if (*at == '.') {
        const char *quad_end = work.text;
        if (read_dotted_quad(quad_end, value) && *quad_end == ':') {
            at = quad_end;
            return {type_ipv4, value, true};
        }
        const char *const low = ++at;
        value = value << 16 | read_decimal(at, work);
        is_as = at != low;
    }
    if (*at == 'L' && !work.ends_at(at)) ++at;
    if (*at == ':' && is_as) return {type_wide_as, value, true};

    while (*at != ':' && !work.ends_at(at)) ++at;
    const bool is_valid = read_by_inet_aton({work.text, at}, value);
    return {type_ipv4, value, is_valid};
}

// The administrator has two bytes and the number four, or the other way round.
uint64_t assemble(uint32_t type, uint32_t administrator, uint32_t number)
{
    const unsigned number_bits = type == type_as ? 32 : 16;
    return uint64_t{type} << 48 | uint64_t{administrator} << number_bits | number;
}

// The precision of a "%.*s" that quotes a text.
int quoted(const char *text, size_t size) { return precision({text, strnlen(text, size)}); }

}  // namespace

int read_rd(const char *text, size_t size, uint32_t &type, uint32_t &high, uint32_t &low,
            ErrorText error)
{
    const Work work{text, static_cast<ptrdiff_t>(std::min(size, longest_vpn_text))};
    const char *at = text;
    const Administrator administrator = read_administrator(at, work);
    // "100"
    if (work.ends_at(at))
        return refuse(error, refused, "Invalid RD format: '%.*s'", quoted(text, size), text);
    type = administrator.type;
    const bool is_narrow = administrator.type == type_as;
    if (administrator.type != type_ipv4 &&
        check_value_range("autonomous system", administrator.value, 1,
                          is_narrow ? UINT16_MAX : no_maximum, error) != 0)
        return refused;

    const uint32_t number = read_decimal(++at, work);
    // "100:5:6"
    if (!work.ends_at(at))
        return refuse(error, refused, "Invalid route-distinguisher: %.*s", quoted(text, size),
                      text);
    if (check_value_range("RD number", number, 0, is_narrow ? no_maximum : UINT16_MAX, error) != 0)
        return refused;

    // "10.1.1.1.1:7"
    if (!administrator.is_valid)
        return refuse(error, refused, "Invalid IP address in route-distingusher: %.*s",
                      quoted(text, size), text);
    const uint64_t rd = assemble(administrator.type, administrator.value, number);
    high = static_cast<uint32_t>(rd >> 32);
    low = static_cast<uint32_t>(rd);
    return 0;
}

}  // namespace orvex

int parse_inetvpn_rd(const char *text, uint32_t *type, uint32_t *high, uint32_t *low, char *errbuf,
                     size_t errlen)
{
    return orvex::read_rd(text, SIZE_MAX, *type, *high, *low, {errbuf, errlen});
}
