#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "support/digits.h"
#include "support/error_text.h"
#include "support/hex_group.h"

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

}  // namespace
}  // namespace orvex

int parse_delim_dec_addr(const char *text, uint8_t *bytes, char *errbuf, size_t errlen,
                         uint32_t count)
{
    using namespace orvex;
    // More digits do not bring a value back into range.
    constexpr uint32_t most_kept = 1000;
    const ErrorText error{errbuf, errlen};
    if (count == 0) return no_bytes;
    std::memset(bytes, 0, count);
    uint32_t value = 0;
    uint32_t groups = 0;
    const uint64_t longest = uint64_t{4} * count;
    for (uint64_t i = 0; i < longest; ++i) {
        const char character = text[i];
        const unsigned digit = digit_of<10>(character);
        if (digit <= 9) {
            if (value < most_kept) value = value * 10 + digit;
            continue;
        }
        if (!is_group_separator(character) && character != '\0')
            return refuse(error, keep_errno, not_this_form, "Invalid character '%c'", character);
        if (value > UINT8_MAX)
            return refuse(error, keep_errno, not_this_form, "Address out-of-range");
        if (character != '\0' && groups + 1 == count)
            return refuse(error, keep_errno, not_this_form, "Unexpected character '%c'", character);
        bytes[groups++] = static_cast<uint8_t>(value);
        if (character == '\0') return 0;
        value = 0;
    }
    return refuse(error, keep_errno, not_this_form, "Unexpected characters");
}

int parse_delim_hex_addr(const char *text, uint8_t *bytes, char *errbuf, size_t errlen,
                         uint32_t count)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    if (count == 0) return no_bytes;
    std::memset(bytes, 0, count);
    uint32_t groups = 0;
    char ended_by = *text;
    while (*text != '\0' && groups < count) {
        const HexGroup group = read_hex_group(text);
        if (!group.valid)
            return refuse(error, keep_errno, not_this_form, "Invalid character '%c'", *group.end);
        bytes[groups++] = group.byte;
        ended_by = *group.end;
        text = is_group_separator(ended_by) ? group.end + 1 : group.end;
    }
    if (groups < count)
        return refuse(error, keep_errno, not_this_form, "Incomplete delimited address");
    if (ended_by != '\0') return refuse(error, keep_errno, not_this_form, "Unexpected characters");
    return 0;
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
