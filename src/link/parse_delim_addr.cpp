#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "old/digits.h"
#include "text/error_text.h"
#include "old/hex_group.h"

namespace orvex {
namespace {

constexpr int no_bytes = -2;

// Room for "255" and a delimiter, as the digit tables write them.
using Element = std::array<char, 4>;

// Writes a byte and the delimiter; returns the length.
size_t put_element(char *at, uint8_t byte, char delimiter, bool hexadecimal)
{
    char *const end = hexadecimal ? put_hex_byte(at, byte) : put_octet(at, byte);
    *end = delimiter;
    return static_cast<size_t>(end - at) + 1;
}

// Appends a byte and its delimiter at `length` of the text so far, as far as they and a terminator
// fit; returns the length of both.
size_t append_element(char *buf, size_t buflen, size_t length, uint8_t byte, char delimiter,
                      bool hexadecimal)
{
    Element element;
    if (length + element.size() < buflen) {
        const size_t size = put_element(buf + length, byte, delimiter, hexadecimal);
        buf[length + size] = '\0';
        return size;
    }
    const size_t size = put_element(element.data(), byte, delimiter, hexadecimal);
    if (length < buflen) {
        const size_t taken = std::min(size, buflen - length - 1);
        std::memcpy(buf + length, element.data(), taken);
        buf[length + taken] = '\0';
    }
    return size;
}

// Reads digits, none too. A value above 255 stays above it, however many digits follow.
const char *read_decimal_group(const char *at, uint32_t &value)
{
    value = 0;
    unsigned digit = 0;
#pragma GCC unroll 3
    for (int place = 0; place < 3; ++place, ++at) {
        digit = digit_of<10>(*at);
        if (digit > 9) return at;
        value = value * 10 + digit;
    }
    for (; (digit = digit_of<10>(*at)) <= 9; ++at)
        if (value <= UINT8_MAX) value = value * 10 + digit;
    return at;
}

// The readers of groups count those that they stored.
int read_decimal_groups(const char *text, uint8_t *bytes, uint32_t count, uint32_t &groups,
                        ErrorText error)
{
    // The terminator must stand within 4 characters a byte.
    const uint64_t longest = uint64_t{4} * count;
    const char *at = text;
    for (;; ++at) {
        uint32_t value = 0;
        at = read_decimal_group(at, value);
        const char behind = *at;
        if (static_cast<uint64_t>(at - text) >= longest)
            return refuse(error, keep_errno, not_this_form, "Unexpected characters");
        if (!is_group_separator(behind) && behind != '\0')
            return refuse(error, keep_errno, not_this_form, "Invalid character '%c'", behind);
        if (value > UINT8_MAX)
            return refuse(error, keep_errno, not_this_form, "Address out-of-range");
        if (behind != '\0' && groups + 1 == count)
            return refuse(error, keep_errno, not_this_form, "Unexpected character '%c'", behind);
        bytes[groups++] = static_cast<uint8_t>(value);
        if (behind == '\0') return 0;
    }
}

int read_hex_groups(const char *at, uint8_t *bytes, uint32_t count, uint32_t &groups,
                    ErrorText error)
{
    char ended_by = '\0';
    while (groups < count) {
        if (!read_hex_group(at, bytes[groups])) {
            if (*at == '\0')
                return refuse(error, keep_errno, not_this_form, "Incomplete delimited address");
            return refuse(error, keep_errno, not_this_form, "Invalid character '%c'", *at);
        }
        ++groups;
        ended_by = *at;
        if (is_group_separator(ended_by)) [[likely]]
            ++at;
    }
    if (ended_by != '\0') return refuse(error, keep_errno, not_this_form, "Unexpected characters");
    return 0;
}

using GroupReader = int(const char *, uint8_t *, uint32_t, uint32_t &, ErrorText);

// Reads groups, and clears the bytes that they left.
template <GroupReader read>
int parse_groups(const char *text, uint8_t *bytes, uint32_t count, ErrorText error)
{
    if (count == 0) return no_bytes;
    uint32_t groups = 0;
    const int result = read(text, bytes, count, groups, error);
    if (groups < count) std::memset(bytes + groups, 0, count - groups);
    return result;
}

}  // namespace
}  // namespace orvex

int parse_delim_dec_addr(const char *text, uint8_t *bytes, char *errbuf, size_t errlen,
                         uint32_t count)
{
    return orvex::parse_groups<orvex::read_decimal_groups>(text, bytes, count, {errbuf, errlen});
}

int parse_delim_hex_addr(const char *text, uint8_t *bytes, char *errbuf, size_t errlen,
                         uint32_t count)
{
    return orvex::parse_groups<orvex::read_hex_groups>(text, bytes, count, {errbuf, errlen});
}

int format_delim_addr(char *buf, size_t buflen, const uint8_t *bytes, char delimiter,
                      uint32_t count, char style)
{
    size_t length = 0;
    for (uint32_t i = 0; i < count; ++i) {
        // The last byte has a NUL in place of the delimiter, which counts.
        const char follows = i + 1 < count ? delimiter : '\0';
        length += orvex::append_element(buf, buflen, length, bytes[i], follows, style == 'x');
    }
    return static_cast<int>(length);
}
