#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "support/digits.h"
#include "support/error_text.h"
#include "support/target_numbers.h"
#include "support/text_writer.h"

namespace orvex {
namespace {

constexpr size_t sysid_size = 6;
constexpr size_t longest_text = sizeof "xxxx.xxxx.xxxx" - 1;
constexpr size_t group_count = 3;
constexpr uint32_t most_in_group = 0xffff;
constexpr size_t most_digits = 4;

int refuse_text(ErrorText error)
{
    return refuse(error, keep_errno, not_this_form, "Invalid system-id string");
}

// A group of up to four digits needs no general conversion, which reads it to the same.
Conversion<uint32_t> read_group(const char *at)
{
    uint32_t value = 0;
    size_t length = 0;
    for (unsigned digit = 0; length < most_digits; ++length) {
        digit = digit_value(at[length]);
        if (digit >= 16) break;
        value = value << 4 | digit;
    }
    const char next = at[length];
    if (length > 0 && (next == '.' || next == '\0')) return {value, at + length, false};
    return convert_general<uint32_t>(at, Base::hexadecimal);
}

int read_groups(const char *at, uint8_t *sysid, ErrorText error)
{
    for (size_t group = 0;; ++group) {
        const auto number = read_group(at);
        if (number.end == at) return refuse_text(error);
        const char next = *number.end;
        if (next != '\0' && next != '.') {
            return refuse(error, keep_errno, not_this_form,
                          "Unexpected character in system-id '%c'", next);
        }
        if (number.value > most_in_group) {
            return refuse(error, keep_errno, not_this_form,
                          "Unexpected number of hex characters in system-id");
        }
        sysid[2 * group] = static_cast<uint8_t>(number.value >> 8);
        sysid[2 * group + 1] = static_cast<uint8_t>(number.value);
        const bool is_third = group + 1 == group_count;
        if (is_third != (next == '\0')) return refuse_text(error);
        if (is_third) return 0;
        at = number.end + 1;
    }
}

}  // namespace
}  // namespace orvex

int parse_is_iso_sysid(const char *text)
{
    size_t dots = 0;
    for (;; ++text) {
        size_t digits = 0;
        for (; orvex::digit_value(*text) < 16; ++text) ++digits;
        if (digits == 0 || digits > orvex::most_digits) return 0;
        if (*text != '.') break;
        ++dots;
    }
    return *text == '\0' && dots + 1 == orvex::group_count ? 1 : 0;
}

int parse_iso_sysid(const char *text, uint8_t *sysid, int size, char *errbuf, size_t errlen)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    std::array<uint8_t, sysid_size> spare;
    if (strnlen(text, longest_text + 1) > longest_text)
        return refuse(error, keep_errno, not_this_form, "Passed sysid string too large");
    if (size > 0 && size < static_cast<int>(sysid_size))
        return refuse(error, keep_errno, not_this_form, "Passed sysid size too small");
    if (sysid == nullptr) sysid = spare.data();
    const int result = read_groups(text, sysid, error);
    if (result != 0) return result;
    if (std::all_of(sysid, sysid + sysid_size, [](uint8_t byte) { return byte == 0; }))
        return refuse(error, keep_errno, rule_broken, "system-id cannot be all zeros");
    return 0;
}

int format_iso_sysid(const uint8_t *sysid, char *buf, size_t buflen)
{
    orvex::TextWriter writer(buf, buflen);
    size_t last = 0;
    for (size_t i = 0; i < orvex::sysid_size; ++i) {
        last = writer.put(orvex::hex_byte_texts[sysid[i]].data(), 2);
        if (i == 1 || i == 3) writer.put('.');
    }
    return static_cast<int>(last);
}
