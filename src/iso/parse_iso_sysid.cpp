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

constexpr size_t sysid_size = 6;
constexpr size_t group_size = 2;
constexpr size_t text_room = sizeof "0000.0000.0000";

int refuse_text(ErrorText error)
{
    return refuse(error, not_this_form, "Invalid system-id string");
}

constexpr bool ends_group(char character) { return character == '.' || character == '\0'; }

// "1921", and what else strtoul reads; moves `at` to the "." or the end after it.
int read_group(const char *&at, uint32_t &value, ErrorText error)
{
    const char *const start = at;
    if (read_hex_digits<4>(at, value) && ends_group(*at)) [[likely]]
        return 0;
    const auto number = convert_any<uint32_t>(start, Base::hexadecimal);
    if (number.end == start) return refuse_text(error);
    if (!ends_group(*number.end))
        return refuse(error, not_this_form, "Unexpected character in system-id '%c'", *number.end);
    if (number.value > UINT16_MAX)
        return refuse(error, not_this_form, "Unexpected number of hex characters in system-id");
    at = number.end;
    value = number.value;
    return 0;
}

// "1921.6800.1001"
int read_groups(const char *at, uint8_t *sysid, ErrorText error)
{
    for (uint8_t *group = sysid;; group += group_size, ++at) {
        uint32_t value{};
        if (const int result = read_group(at, value, error); result != 0) return result;
        store_be16(group, value);
        const bool is_third = group == sysid + 2 * group_size;
        // "1921.6800" or "1.2.3.4"
        if (is_third != (*at == '\0')) return refuse_text(error);
        if (is_third) return 0;
    }
}

}  // namespace
}  // namespace orvex

int parse_is_iso_sysid(const char *text)
{
    using namespace orvex;
    uint32_t group{};
    const char *at = text;
    if (!read_hex_digits<4>(at, group) || *at++ != '.') return 0;
    if (!read_hex_digits<4>(at, group) || *at++ != '.') return 0;
    return read_hex_digits<4>(at, group) && *at == '\0' ? 1 : 0;
}

int parse_iso_sysid(const char *text, uint8_t *sysid, int size, char *errbuf, size_t errlen)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    std::array<uint8_t, sysid_size> spare;
    if (sysid == nullptr) sysid = spare.data();
    if (strnlen(text, text_room) == text_room)
        return refuse(error, not_this_form, "Passed sysid string too large");
    if (size > 0 && size < int{sysid_size})
        return refuse(error, not_this_form, "Passed sysid size too small");
    if (const int result = read_groups(text, sysid, error); result != 0) return result;
    if (all_zero(sysid, sysid_size))
        return refuse(error, rule_broken, "system-id cannot be all zeros");
    return 0;
}

int format_iso_sysid(const uint8_t *sysid, char *buf, size_t buflen)
{
    using namespace orvex;
    const auto write = [=](char *at) {
        for (size_t i = 0; i < sysid_size; ++i) {
            at = put_hex_byte(at, sysid[i]);
            if (i % group_size != 0) *at++ = '.';
        }
        *--at = '\0';
        return at;
    };
    const size_t length = write_text<text_room>(buf, buflen, write);
    constexpr size_t last = sizeof "ff" - 1;
    return static_cast<int>(piece_result(length - last, last, buflen));
}
