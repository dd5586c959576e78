#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "old/digits.h"
#include "text/error_text.h"
#include "old/target_numbers.h"
#include "old/text_writer.h"

namespace orvex {
namespace {

constexpr size_t longest_text = 60;
constexpr size_t spare_size = 21;
constexpr size_t least_nsap = 8;
constexpr size_t most_nsap = 20;
constexpr size_t sysid_size = 6;
constexpr size_t selector_size = 1;
constexpr uint32_t most_bits = 152;

bool is_hex_digit(char character) { return digit_value(character) < 16; }

// What is read, and where to.
struct Reading {
    const char *noun;
    uint8_t *bytes;
    size_t capacity;
    size_t nibbles;
    ErrorText error;

    [[nodiscard]] size_t count() const { return (nibbles + 1) / 2; }
};

int refuse_character(const Reading &reading)
{
    return refuse(reading.error, keep_errno, not_this_form, "Unexpected character in %s",
                  reading.noun);
}

// "49.0001.2": bytes of two digits with "." between them; a last digit may stand alone. Moves
// `text` to where they end.
int read_bytes(Reading &reading, const char *&text)
{
    uint8_t *const bytes = reading.bytes;
    const size_t capacity = reading.capacity;
    const char *at = text;
    size_t stored = 0;
    size_t odd = 0;
    while (stored < capacity) {
        if (*at == '.' && *++at == '.')
            return refuse(reading.error, keep_errno, not_this_form, "consecutive '.' not allowed");
        const unsigned high = digit_value(at[0]);
        if (high >= 16) break;
        const unsigned low = digit_value(at[1]);
        if (low >= 16) {
            if (*++at == '.') {
                return refuse(reading.error, keep_errno, not_this_form,
                              "'.' character not on byte boundary");
            }
            bytes[stored++] = static_cast<uint8_t>(high << 4);
            odd = 1;
            break;
        }
        bytes[stored++] = static_cast<uint8_t>(high << 4 | low);
        at += 2;
    }
    if (*at != '\0' && *at != '/') return refuse_character(reading);
    if (stored < capacity) std::memset(bytes + stored, 0, capacity - stored);
    reading.nibbles = 2 * stored - odd;
    text = at;
    return 0;
}

bool is_zero(const uint8_t *first, const uint8_t *last)
{
    return std::all_of(first, last, [](uint8_t byte) { return byte == 0; });
}

// A complete address: area address, system identifier, selector.
int check_nsap(const Reading &reading, const char *rest)
{
    const size_t count = reading.count();
    if (*rest == '/') {
        return refuse(reading.error, keep_errno, not_this_form,
                      "ISO address should not have prefix length");
    }
    if (count < least_nsap || reading.nibbles % 2 != 0) {
        return refuse(reading.error, keep_errno, not_this_form,
                      "%s should be at least 8 bytes with even number of nibbles\n", reading.noun);
    }
    if (count > most_nsap)
        return refuse(reading.error, keep_errno, not_this_form, "%s too long", reading.noun);
    const uint8_t *const sysid = reading.bytes + count - selector_size - sysid_size;
    if (is_zero(reading.bytes, sysid)) {
        return refuse(reading.error, keep_errno, rule_broken, "Invalid area address in %s",
                      reading.noun);
    }
    if (is_zero(sysid, sysid + sysid_size))
        return refuse(reading.error, keep_errno, rule_broken, "Invalid system-id in %s",
                      reading.noun);
    return 0;
}

// Bits behind the given bytes count as zero.
bool is_host_zero(const Reading &reading, uint32_t length)
{
    const size_t count = reading.count();
    const size_t whole = length / 8;
    if (whole >= count) return true;
    const unsigned host_bits = 0xffU >> length % 8;
    return (reading.bytes[whole] & host_bits) == 0 &&
           is_zero(reading.bytes + whole + 1, reading.bytes + count);
}

// "/24"
int read_prefix(const Reading &reading, const char *rest, int *pfxseen, uint16_t *pfxlen)
{
    const auto bits = static_cast<uint32_t>(reading.nibbles * 4);
    if (*rest != '/')
        return refuse(reading.error, keep_errno, not_this_form, "Missing prefix length");
    if (bits > most_bits)
        return refuse(reading.error, keep_errno, rule_broken, "%s too long", reading.noun);
    if (pfxlen != nullptr) *pfxlen = static_cast<uint16_t>(bits);
    const auto length = convert<uint32_t>(rest + 1, Base::decimal);
    if (*length.end != '\0')
        return refuse(reading.error, keep_errno, not_this_form, "Invalid prefix length");
    if (length.value > most_bits)
        return refuse(reading.error, keep_errno, rule_broken, "Prefix length too long");
    if (!is_host_zero(reading, length.value))
        return refuse(reading.error, keep_errno, not_this_form, "host portion is not all zeroes");
    if (pfxseen != nullptr) *pfxseen = 1;
    if (pfxlen != nullptr) *pfxlen = static_cast<uint16_t>(length.value);
    return 0;
}

}  // namespace
}  // namespace orvex

int parse_is_iso_addr(const char *text)
{
    constexpr size_t least_digits = 16;
    constexpr size_t least_dots = 4;
    size_t digits = 0;
    size_t dots = 0;
    size_t slashes = 0;
    for (; *text != '\0'; ++text) {
        if (orvex::is_hex_digit(*text))
            ++digits;
        else if (*text == '.')
            ++dots;
        else if (*text == '/')
            ++slashes;
        else
            return 0;
    }
    return slashes <= 1 && dots >= least_dots && digits >= least_digits ? 1 : 0;
}

int parse_iso_addr(const char *text, uint32_t flags, uint8_t *bytes, uint8_t *count, int *pfxseen,
                   uint16_t *pfxlen, char *errbuf, size_t errlen)
{
    using namespace orvex;
    const bool is_nsap = (flags & PARSE_ISO_NSAP) != 0;
    std::array<uint8_t, spare_size> spare;
    Reading reading{
        is_nsap ? "ISO NSAP" : "ISO prefix", spare.data(), spare.size(), 0, {errbuf, errlen}};
    if (pfxseen != nullptr) *pfxseen = 0;
    if (*text == '\0')
        return refuse(reading.error, keep_errno, not_this_form, "Invalid %s", reading.noun);
    if (!is_hex_digit(*text)) return refuse_character(reading);
    if (bytes != nullptr) {
        if (count == nullptr) return not_this_form;
        reading.bytes = bytes;
        reading.capacity = *count;
    }
    if (strnlen(text, longest_text + 1) > longest_text) {
        return refuse(reading.error, keep_errno, not_this_form, "Invalid %s --- too long",
                      reading.noun);
    }
    const int result = read_bytes(reading, text);
    if (result != 0) return result;
    if (count != nullptr) *count = static_cast<uint8_t>(reading.count());
    return is_nsap ? check_nsap(reading, text) : read_prefix(reading, text, pfxseen, pfxlen);
}

int format_iso_addr(const uint8_t *bytes, uint8_t count, int pfxseen, uint16_t pfxlen, char *buf,
                    size_t buflen)
{
    using namespace orvex;
    TextWriter writer(buf, buflen);
    if (pfxseen != 0 && pfxlen == 0) return static_cast<int>(writer.put("0/0", 3));
    size_t last = count == 0 ? writer.put('0') : 0;
    for (size_t i = 0; i < count; ++i) {
        last = writer.put(hex_byte_texts[bytes[i]].data(), 2);
        if (i % 2 == 0 && i + 1 < count) writer.put('.');
    }
    if (pfxseen != 0) {
        std::array<char, 1 + decimal_room> prefix{'/'};
        const char *const end = put_decimal(prefix.data() + 1, pfxlen);
        last = writer.put(prefix.data(), static_cast<size_t>(end - prefix.data()));
    }
    return static_cast<int>(last);
}
