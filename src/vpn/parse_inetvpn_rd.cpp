#include "vpn/parse_inetvpn_rd.h"

#include <arpa/inet.h>
#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "old/name_characters.h"
#include "old/plain_numbers.h"
#include "old/target_numbers.h"

namespace orvex {
namespace {

constexpr int refused = 1;

// The types of RFC 4364 section 4.2.
constexpr uint32_t type_as = 0;
constexpr uint32_t type_ipv4 = 1;
constexpr uint32_t type_wide_as = 2;

constexpr uint32_t most_plain = 0xffff;

struct Administrator {
    uint32_t type;
    uint32_t as;  // 0 for an IPv4 address
};

// Reads decimal digits, `most` at the most, up to the first other character; they saturate.
const char *read_decimal(const char *at, size_t most, uint32_t &value)
{
    // A number that left 32 bits needs no more digits.
    uint64_t number = 0;
    for (; most > 0 && is_digit(*at); ++at, --most)
        if (number <= UINT32_MAX) number = number * 10 + digit_of<10>(*at);
    value = static_cast<uint32_t>(std::min(number, uint64_t{UINT32_MAX}));
    return at;
}

// "65000", "1.10", or one of them and "L"; anything else is an IPv4 address.
Administrator read_administrator(const char *at, const char *end)
{
    constexpr Administrator ipv4{type_ipv4, 0};
    const char *const start = at;
    Administrator administrator{type_as, 0};
    at = read_decimal(at, static_cast<size_t>(end - at), administrator.as);
    if (at == end) return administrator;
    if (*at == '.') {
        const char *const digits = at + 1;
        uint32_t low = 0;
        at = read_decimal(digits, static_cast<size_t>(end - digits), low);
        if (at == digits) return ipv4;
        administrator = {type_wide_as, administrator.as << 16 | low};
        if (at == end) return administrator;
    }
    const bool is_wide = *at == 'L' && at + 1 == end && at != start;
    return is_wide ? Administrator{type_wide_as, administrator.as} : ipv4;
}

bool is_ipv4_address(std::string_view text, in_addr &address)
{
    std::array<char, work_text_length + 1> copy;
    std::memcpy(copy.data(), text.data(), text.size());
    copy[text.size()] = '\0';
    return inet_aton(copy.data(), &address) != 0;
}

RouteDistinguisher plain_as_rd(uint32_t as, uint32_t number)
{
    return {type_as, type_as << 16 | as, number};
}

RouteDistinguisher wide_rd(uint32_t type, uint32_t administrator, uint32_t number)
{
    return {type, type << 16 | administrator >> 16, administrator << 16 | number};
}

// Reads any text; `type` is known before the rest.
int read_rd(const char *text, uint32_t &type, RouteDistinguisher &rd, ErrorText error)
{
    size_t length = 0;
    while (length < work_text_length && text[length] != ':' && text[length] != '\0') ++length;
    if (length == work_text_length || text[length] == '\0')
        return refuse(error, keep_errno, refused, "Invalid RD format: '%s'", text);

    const char *const colon = text + length;
    const Administrator administrator = read_administrator(text, colon);
    type = administrator.type;
    if (type != type_ipv4) {
        const uint32_t most_as = type == type_as ? most_plain : no_maximum;
        if (check_value_range("autonomous system", administrator.as, 1, most_as, error) != 0)
            return refused;
    }
    uint32_t number = 0;
    const size_t room = work_text_length - length - 1;
    const char *const end = read_decimal(colon + 1, room, number);
    if (end != colon + 1 + room && *end != '\0')
        return refuse(error, keep_errno, refused, "Invalid route-distinguisher: %s", text);
    const uint32_t most_number = type == type_as ? no_maximum : most_plain;
    if (check_value_range("RD number", number, 0, most_number, error) != 0) return refused;

    if (type == type_as) {
        rd = plain_as_rd(administrator.as, number);
        return 0;
    }
    in_addr address{};
    if (type == type_ipv4 && !is_ipv4_address({text, length}, address)) {
        return refuse(error, keep_errno, refused, "Invalid IP address in route-distingusher: %s",
                      text);
    }
    rd = wide_rd(type, type == type_ipv4 ? ntohl(address.s_addr) : administrator.as, number);
    return 0;
}

}  // namespace

const char *read_plain_rd(const char *text, RouteDistinguisher &rd)
{
    uint32_t administrator = 0;
    const char *at = text;
    if (!read_plain_decimal(at, administrator)) return nullptr;
    const bool is_ipv4 = *at == '.';
    if (is_ipv4) {
        const PlainQuad quad = read_plain_quad<LeadingZeros::octal>(text);
        if (quad.end == nullptr) return nullptr;
        at = quad.end;
        administrator = quad.value;
    } else if (administrator == 0 || administrator > most_plain) {
        return nullptr;
    }
    uint32_t number = 0;
    if (*at != ':' || !read_plain_decimal(++at, number)) return nullptr;
    if (is_ipv4 && number > most_plain) return nullptr;
    rd = is_ipv4 ? wide_rd(type_ipv4, administrator, number) : plain_as_rd(administrator, number);
    return at;
}

int check_value_range(const char *noun, uint32_t value, uint32_t min, uint32_t max, ErrorText error)
{
    if (value >= min && value <= max) return 0;
    return refuse(error, keep_errno, 1, "Invalid %s value at '%u' not in range %u to %u", noun,
                  value, min, max);
}

}  // namespace orvex

int parse_inetvpn_rd(const char *text, uint32_t *type, uint32_t *high, uint32_t *low, char *errbuf,
                     size_t errlen)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    RouteDistinguisher rd{};
    const char *const plain_end = read_plain_rd(text, rd);
    if (plain_end == nullptr || *plain_end != '\0') {
        const int result = read_rd(text, *type, rd, error);
        if (result != 0) return result;
    }
    *type = rd.type;
    *high = rd.high;
    *low = rd.low;
    return 0;
}
