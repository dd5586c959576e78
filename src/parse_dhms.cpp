#include <orvex/parse.h>

#include <array>
#include <cstring>
#include <string_view>

#include "support/error_text.h"
#include "support/name_characters.h"
#include "support/target_numbers.h"

namespace orvex {
namespace {

constexpr int refused = 0;
constexpr int accepted = 1;

// Fractions of a second are counted in ten-thousandths, so that every host reads the same.
constexpr uint32_t per_second = 10000;

struct Unit {
    std::string_view name;   // lower case
    uint32_t whole_seconds;  // 0: a fraction
    uint32_t ten_thousandths;
};

// The first name that matches counts.
constexpr std::array<Unit, 9> dhms_units = {{
    {"ftn", 1209600, 0},
    {"w", 604800, 0},
    {"cftn", 120960, 0},
    {"d", 86400, 0},
    {"h", 3600, 0},
    {"mftn", 0, 12096000},
    {"uftn", 0, 12096},
    {"m", 60, 0},
    {"s", 1, 0},
}};

constexpr bool hides_a_later_name()
{
    for (size_t i = 0; i < dhms_units.size(); ++i)
        for (size_t j = i + 1; j < dhms_units.size(); ++j)
            if (dhms_units[j].name.starts_with(dhms_units[i].name)) return true;
    return false;
}
static_assert(!hides_a_later_name());

int refuse_syntax(ErrorText error) { return refuse(error, keep_errno, refused, "Syntax error"); }

int refuse_overflow(ErrorText error) { return refuse(error, keep_errno, refused, "Overflow"); }

constexpr char lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 'a' - 'A')
                                                : character;
}

const Unit *find_unit(const char *at)
{
    for (const Unit &unit : dhms_units) {
        size_t length = 0;
        while (length < unit.name.size() && lower(at[length]) == unit.name[length]) ++length;
        if (length == unit.name.size()) return &unit;
    }
    return nullptr;
}

// Adds to the total; false, with the total unchanged, when the sum leaves 64 bits.
bool dhms_add(uint64_t value, uint64_t &total)
{
    uint64_t sum = 0;
    if (__builtin_add_overflow(total, value, &sum)) return false;
    total = sum;
    return true;
}

// The seconds of a number of units, cut to whole ones; false when the product leaves 64 bits.
bool multiply(uint64_t number, const Unit &unit, uint64_t &seconds)
{
    if (unit.whole_seconds != 0)
        return !__builtin_mul_overflow(number, uint64_t{unit.whole_seconds}, &seconds);
    const uint64_t rest = number % per_second * unit.ten_thousandths;
    if (__builtin_mul_overflow(number / per_second, uint64_t{unit.ten_thousandths}, &seconds))
        return false;
    if (!dhms_add(rest / per_second, seconds)) return false;
    return seconds != UINT64_MAX || rest % per_second == 0;
}

// Reads decimal digits; false when they leave 64 bits.
bool read_number(const char *&at, uint64_t &number)
{
    bool fits = true;
    number = 0;
    for (; is_digit(*at); ++at) {
        fits &= !__builtin_mul_overflow(number, uint64_t{10}, &number);
        fits &= !__builtin_add_overflow(number, uint64_t{digit_of<10>(*at)}, &number);
    }
    return fits;
}

// "1:30" or "1:02:03"; an empty field is 0.
int decode_hhmmss(const char *at, const char *end, uint64_t &total, ErrorText error)
{
    constexpr uint32_t most_hours = 23;
    constexpr uint32_t most_sixtieths = 59;
    std::array<uint32_t, 3> fields{};
    size_t colons = 0;
    for (; at != end; ++at) {
        if (*at == ':') {
            if (++colons == fields.size()) return refuse_syntax(error);
            continue;
        }
        if (!is_digit(*at)) return refuse_syntax(error);
        // The fields wrap as 32-bit numbers do.
        const uint32_t value = fields[colons] * 10 + digit_of<10>(*at);
        if (value < fields[colons]) return refuse_overflow(error);
        fields[colons] = value;
    }
    if (colons == 1) fields = {0, fields[0], fields[1]};
    const auto [hours, minutes, seconds] = fields;
    if (hours > most_hours || minutes > most_sixtieths || seconds > most_sixtieths)
        return refuse_overflow(error);
    if (!dhms_add(hours * 3600 + minutes * 60 + seconds, total)) return refuse_overflow(error);
    return accepted;
}

// "90", or pairs of a number and a unit: "1d2h30m".
int decode_pairs(const char *at, const char *end, uint64_t &total, ErrorText error)
{
    for (bool is_first = true; at != end; is_first = false) {
        if (!is_digit(*at)) return refuse_syntax(error);
        uint64_t value = 0;
        if (!read_number(at, value)) return refuse_overflow(error);
        if (at == end) {
            if (!is_first) return refuse_syntax(error);
        } else {
            const Unit *const unit = find_unit(at);
            if (unit == nullptr) return refuse_syntax(error);
            if (!multiply(value, *unit, value)) return refuse_overflow(error);
            at += unit->name.size();
        }
        if (!dhms_add(value, total)) return refuse_overflow(error);
    }
    return accepted;
}

int decode_dhms_token(const char *token, const char *end, uint64_t &total, ErrorText error)
{
    const bool is_clock = std::memchr(token, ':', static_cast<size_t>(end - token)) != nullptr;
    return is_clock ? decode_hhmmss(token, end, total, error)
                    : decode_pairs(token, end, total, error);
}

const char *skip_space(const char *at)
{
    while (is_space(*at)) ++at;
    return at;
}

// The first white space, or the text's end.
const char *dhms_find_space(const char *at)
{
    while (*at != '\0' && !is_space(*at)) ++at;
    return at;
}

}  // namespace
}  // namespace orvex

int decode_dhms(const char *text, uint64_t min, uint64_t max, uint64_t *seconds, char *errbuf,
                size_t errlen)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    uint64_t total = 0;
    const char *at = skip_space(text);
    if (*at == '\0') return refuse(error, keep_errno, refused, "Empty string");
    while (*at != '\0') {
        const char *const end = dhms_find_space(at);
        if (decode_dhms_token(at, end, total, error) != accepted) return refused;
        at = skip_space(end);
    }
    if (total < min) {
        return refuse(error, keep_errno, refused, "Number must be greater than or equal to %ju",
                      uintmax_t{min});
    }
    if (total > max) {
        return refuse(error, keep_errno, refused, "Number must be less than or equal to %ju",
                      uintmax_t{max});
    }
    *seconds = total;
    return accepted;
}
