#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "text/digits.h"
#include "text/dotted_quad.h"
#include "text/error_text.h"
#include "text/hex_digits.h"

namespace orvex {
namespace {

constexpr int no_bytes = -2;

// Reads digits, or none. A value above 255 stays above it, however many digits follow.
uint32_t read_decimal_group(const char *&at)
{
    uint32_t value = 0;
    if (read_octet<LeadingZeros::allowed>(at, value) && !is_digit(*at)) [[likely]]
        return value;
    for (; is_digit(*at); ++at)
        value = std::min(value * 10 + decimal_value(*at), uint32_t{UINT8_MAX} + 1);
    return value;
}

// "10.1.2.3"; counts the bytes that it stored.
int read_decimal_groups(const char *text, uint8_t *bytes, uint32_t count, uint32_t &stored,
                        ErrorText error)
{
    // The terminator is within 4 characters a byte.
    const uint64_t longest = uint64_t{4} * count;
    for (const char *at = text;; ++at) {
        const uint32_t value = read_decimal_group(at);
        const char next = *at;
        if (static_cast<uint64_t>(at - text) >= longest)
            return refuse(error, not_this_form, "Unexpected characters");
        if (!is_group_separator(next) && next != '\0')
            return refuse(error, not_this_form, "Invalid character '%c'", next);
        if (value > UINT8_MAX) return refuse(error, not_this_form, "Address out-of-range");
        // "1.2.3.4."
        if (next != '\0' && stored + 1 == count)
            return refuse(error, not_this_form, "Unexpected character '%c'", next);
        bytes[stored++] = static_cast<uint8_t>(value);
        if (next == '\0') return 0;
    }
}

// Writes each byte and a delimiter after it, a NUL after the last one, as far as they fit with a
// terminator. Returns the length of all. `put` writes a byte: at most `longest`
// characters with its delimiter.
template <char *put(char *, uint8_t), size_t longest>
uint64_t write_bytes(char *buf, size_t buflen, const uint8_t *bytes, char delimiter, uint32_t count)
{
    // Any bytes fit.
    if (uint64_t{longest} * count < buflen) [[likely]] {
        char *at = buf;
        for (uint32_t i = 0; i < count; ++i) {
            at = put(at, bytes[i]);
            *at++ = delimiter;
        }
        at[-1] = '\0';
        *at = '\0';
        return static_cast<uint64_t>(at - buf);
    }
    uint64_t length = 0;
    for (uint32_t i = 0; i < count; ++i) {
        std::array<char, longest> element;
        char *const end = put(element.data(), bytes[i]);
        *end = i + 1 < count ? delimiter : '\0';
        for (const char *at = element.data(); at <= end; ++at, ++length)
            if (length < buflen) buf[length] = *at;
    }
    if (buflen > 0) buf[std::min<uint64_t>(length, buflen - 1)] = '\0';
    return length;
}

}  // namespace
}  // namespace orvex

int parse_delim_dec_addr(const char *text, uint8_t *bytes, char *errbuf, size_t errlen,
                         uint32_t count)
{
    using namespace orvex;
    if (count == 0) return no_bytes;
    uint32_t stored = 0;
    const int result = read_decimal_groups(text, bytes, count, stored, {errbuf, errlen});
    if (stored != count) std::memset(bytes + stored, 0, count - stored);
    return result;
}

int parse_delim_hex_addr(const char *text, uint8_t *bytes, char *errbuf, size_t errlen,
                         uint32_t count)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    if (count == 0) return no_bytes;
    const char *at = text;
    const uint32_t stored = read_hex_bytes(at, bytes, count);
    if (stored != count) {
        std::memset(bytes + stored, 0, count - stored);
        if (*at == '\0') return refuse(error, not_this_form, "Incomplete delimited address");
        return refuse(error, not_this_form, "Invalid character '%c'", *at);
    }
    if (*at != '\0') return refuse(error, not_this_form, "Unexpected characters");
    return 0;
}

int format_delim_addr(char *buf, size_t buflen, const uint8_t *bytes, char delimiter,
                      uint32_t count, char style)
{
    using namespace orvex;
    if (count == 0) return 0;
    const auto write = style == 'x' ? write_bytes<put_hex_byte, sizeof "ff">
                                    : write_bytes<put_last_octet, sizeof "255">;
    return static_cast<int>(write(buf, buflen, bytes, delimiter, count));
}
