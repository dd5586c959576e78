#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "old/bytes.h"
#include "old/digits.h"
#include "text/error_text.h"
#include "old/target_numbers.h"
#include "old/text_writer.h"

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

// Three groups of one to four digits, as nearly every text is; read_any_sysid reads them to the
// same.
[[gnu::always_inline]] inline bool read_plain_groups(const char *at, uint64_t &sysid)
{
    sysid = 0;
    for (size_t group = 0; group < group_count; ++group) {
        uint32_t value = digit_value(*at);
        if (value >= 16) return false;
        unsigned digit = 0;
        for (size_t length = 1; (digit = digit_value(*++at)) < 16; ++length) {
            if (length == most_digits) return false;
            value = value << 4 | digit;
        }
        sysid = sysid << 16 | value;
        if (*at != (group + 1 < group_count ? '.' : '\0')) return false;
        ++at;
    }
    return true;
}

int read_groups(const char *at, uint8_t *sysid, ErrorText error)
{
    for (size_t group = 0;; ++group) {
        const auto number = convert_general<uint32_t>(at, Base::hexadecimal);
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
        store_be16(sysid + 2 * group, number.value);
        const bool is_third = group + 1 == group_count;
        if (is_third != (next == '\0')) return refuse_text(error);
        if (is_third) return 0;
        at = number.end + 1;
    }
}

bool is_too_small(int size) { return size > 0 && size < static_cast<int>(sysid_size); }

int refuse_size(ErrorText error)
{
    return refuse(error, keep_errno, not_this_form, "Passed sysid size too small");
}

int refuse_zero(ErrorText error)
{
    return refuse(error, keep_errno, rule_broken, "system-id cannot be all zeros");
}

// Reads any text.
[[gnu::noinline]] int read_any_sysid(const char *text, uint8_t *sysid, int size, ErrorText error)
{
    if (strnlen(text, longest_text + 1) > longest_text)
        return refuse(error, keep_errno, not_this_form, "Passed sysid string too large");
    if (is_too_small(size)) return refuse_size(error);
    const int result = read_groups(text, sysid, error);
    if (result != 0) return result;
    const bool is_zero =
        std::all_of(sysid, sysid + sysid_size, [](uint8_t byte) { return byte == 0; });
    return is_zero ? refuse_zero(error) : 0;
}

}  // namespace
}  // namespace orvex

int parse_is_iso_sysid(const char *text)
{
    uint64_t sysid = 0;
    return orvex::read_plain_groups(text, sysid) ? 1 : 0;
}

int parse_iso_sysid(const char *text, uint8_t *sysid, int size, char *errbuf, size_t errlen)
{
    using namespace orvex;
    std::array<uint8_t, sysid_size> spare;
    if (sysid == nullptr) sysid = spare.data();
    uint64_t groups = 0;
    if (!read_plain_groups(text, groups))
        return read_any_sysid(text, sysid, size, {errbuf, errlen});
    if (is_too_small(size)) return refuse_size({errbuf, errlen});
    store_be32(sysid, static_cast<uint32_t>(groups >> 16));
    store_be16(sysid + 4, static_cast<uint32_t>(groups));
    return groups == 0 ? refuse_zero({errbuf, errlen}) : 0;
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
