#include <orvex/parse.h>

#include <array>
#include <cstring>

#include "text/bytes.h"
#include "text/digits.h"
#include "text/error_text.h"
#include "text/hex_digits.h"
#include "text/target_numbers.h"
#include "text/text_writer.h"

namespace orvex {
namespace {

constexpr size_t too_long = 61;
constexpr size_t spare_size = 21;
constexpr size_t least_nsap = 8;
constexpr size_t most_nsap = 20;
constexpr size_t sysid_size = 6;
constexpr size_t selector_size = 1;
constexpr uint32_t most_bits = 152;

// What is read, and where to.
struct Reading {
    const char *noun;
    uint8_t *bytes;
    size_t capacity;
    ErrorText error;
    size_t count{};    // bytes that were read
    size_t nibbles{};  // and their digits
};

int refuse_character(const Reading &reading)
{
    return refuse(reading.error, not_this_form, "Unexpected character in %s", reading.noun);
}

// "49.0001.2": bytes of two digits, with a "." before any of them; a last digit may be alone.
int read_bytes(const char *&at, Reading &reading)
{
    size_t count = 0;
    size_t nibbles = 0;
    while (count < reading.capacity) {
        if (*at == '.' && *++at == '.')
            return refuse(reading.error, not_this_form, "consecutive '.' not allowed");
        const unsigned high = hex_value(*at);
        if (high >= 16) break;
        const unsigned low = hex_value(*++at);
        if (low >= 16) {
            // "490.001"
            if (*at == '.')
                return refuse(reading.error, not_this_form, "'.' character not on byte boundary");
            reading.bytes[count++] = static_cast<uint8_t>(high << 4);
            ++nibbles;
            break;
        }
        reading.bytes[count++] = static_cast<uint8_t>(high << 4 | low);
        nibbles += 2;
        ++at;
    }
    if (*at != '\0' && *at != '/') return refuse_character(reading);
    // Without the test, g++ 12 clears these few bytes with "rep stos", which is slow.
    if (count != reading.capacity) std::memset(reading.bytes + count, 0, reading.capacity - count);
    reading.count = count;
    reading.nibbles = nibbles;
    return 0;
}

// A complete address: area address, system identifier, selector.
int check_nsap(const char *rest, const Reading &reading)
{
    if (*rest == '/')
        return refuse(reading.error, not_this_form, "ISO address should not have prefix length");
    if (reading.count < least_nsap || reading.nibbles % 2 != 0)
        return refuse(reading.error, not_this_form,
                      "%s should be at least 8 bytes with even number of nibbles\n", reading.noun);
    if (reading.count > most_nsap)
        return refuse(reading.error, not_this_form, "%s too long", reading.noun);
    const size_t area_size = reading.count - selector_size - sysid_size;
    if (all_zero(reading.bytes, area_size))
        return refuse(reading.error, rule_broken, "Invalid area address in %s", reading.noun);
    if (all_zero(reading.bytes + area_size, sysid_size))
        return refuse(reading.error, rule_broken, "Invalid system-id in %s", reading.noun);
    return 0;
}

void store_length(uint16_t *pfxlen, size_t length)
{
    if (pfxlen != nullptr) *pfxlen = static_cast<uint16_t>(length);
}

// "/24"
int read_prefix_length(const char *at, const Reading &reading, int *pfxseen, uint16_t *pfxlen)
{
    if (*at != '/') return refuse(reading.error, not_this_form, "Missing prefix length");
    const size_t bits = 4 * reading.nibbles;
    if (bits > most_bits) return refuse(reading.error, rule_broken, "%s too long", reading.noun);
    store_length(pfxlen, bits);
    const auto length = convert<uint32_t>(at + 1, Base::decimal);
    if (*length.end != '\0') return refuse(reading.error, not_this_form, "Invalid prefix length");
    if (length.value > most_bits)
        return refuse(reading.error, rule_broken, "Prefix length too long");
    if (!bits_after_are_zero(reading.bytes, reading.count, length.value))
        return refuse(reading.error, not_this_form, "host portion is not all zeroes");
    if (pfxseen != nullptr) *pfxseen = 1;
    store_length(pfxlen, length.value);
    return 0;
}

// The length of "0" or "49.0001.1921".
constexpr size_t bytes_length(size_t count) { return count == 0 ? 1 : 2 * count + count / 2; }

// Writes bytes with "." before every other one; "0" without bytes.
char *put_bytes(char *at, const uint8_t *bytes, size_t count)
{
    if (count == 0) *at++ = '0';
    for (size_t i = 0; i < count; ++i) {
        if (i % 2 != 0) *at++ = '.';
        at = put_hex_byte(at, bytes[i]);
    }
    return at;
}

}  // namespace
}  // namespace orvex

int parse_is_iso_addr(const char *text)
{
    using namespace orvex;
    constexpr size_t least_digits = 16;
    constexpr size_t least_dots = 4;
    size_t dots = 0;
    size_t slashes = 0;
    const char *at = text;
    uint32_t group{};
    while (read_hex_digits<4>(at, group) || *at == '.' || *at == '/') {
        if (*at == '.') [[likely]] {
            ++dots;
            ++at;
        } else if (*at == '/') {
            ++slashes;
            ++at;
        }
    }
    if (*at != '\0') return 0;
    const size_t digits = static_cast<size_t>(at - text) - dots - slashes;
    return slashes <= 1 && dots >= least_dots && digits >= least_digits ? 1 : 0;
}

int parse_iso_addr(const char *text, uint32_t flags, uint8_t *bytes, uint8_t *count, int *pfxseen,
                   uint16_t *pfxlen, char *errbuf, size_t errlen)
{
    using namespace orvex;
    const bool is_nsap = (flags & PARSE_ISO_NSAP) != 0;
    std::array<uint8_t, spare_size> spare;
    Reading reading{.noun = is_nsap ? "ISO NSAP" : "ISO prefix",
                    .bytes = spare.data(),
                    .capacity = spare.size(),
                    .error = {errbuf, errlen}};
    if (pfxseen != nullptr) *pfxseen = 0;
    if (*text == '\0') return refuse(reading.error, not_this_form, "Invalid %s", reading.noun);
    if (!is_hex_digit(*text)) return refuse_character(reading);
    if (bytes != nullptr) {
        if (count == nullptr) return not_this_form;
        reading.bytes = bytes;
        reading.capacity = *count;
    }
    if (strnlen(text, too_long) == too_long)
        return refuse(reading.error, not_this_form, "Invalid %s --- too long", reading.noun);
    const char *at = text;
    if (const int result = read_bytes(at, reading); result != 0) return result;
    if (count != nullptr) *count = static_cast<uint8_t>(reading.count);
    return is_nsap ? check_nsap(at, reading) : read_prefix_length(at, reading, pfxseen, pfxlen);
}

int format_iso_addr(const uint8_t *bytes, uint8_t count, int pfxseen, uint16_t pfxlen, char *buf,
                    size_t buflen)
{
    using namespace orvex;
    const bool is_default = pfxseen != 0 && pfxlen == 0;
    if (is_default) count = 0;
    const auto write = [=](char *at) {
        at = put_bytes(at, bytes, count);
        if (pfxseen != 0) {
            *at++ = '/';
            return put_decimal(at, pfxlen);
        }
        *at = '\0';
        return at;
    };
    constexpr size_t prefix_room = sizeof "/65535";
    constexpr size_t longest = bytes_length(UINT8_MAX) + prefix_room;
    const size_t before_prefix = bytes_length(count);
    const size_t length = write_text<longest>(buf, buflen, write, before_prefix + prefix_room);
    // The last piece is the prefix length, all of "0/0", or a byte.
    size_t last = before_prefix - (count == 0 ? 1 : 2);
    if (pfxseen != 0 && !is_default) last = before_prefix;
    return static_cast<int>(piece_result(last, length - last, buflen));
}
