#include <orvex/parse.h>

#include <array>
#include <string_view>

#include "text/error_text.h"
#include "old/name_characters.h"
#include "old/target_numbers.h"

namespace orvex {
namespace {

constexpr int refused = 0;
constexpr int accepted = 1;

// Fractions of a second are counted in ten-thousandths, so that every host reads the same.
constexpr uint32_t per_second = 10000;

struct Unit {
    char name[5];            // lower case
    uint32_t whole_seconds;  // 0: a fraction
    uint32_t ten_thousandths;
};

// The first name that matches counts; names with the same first letter stand together. No name
// begins as the last entry does.
constexpr std::array<Unit, 10> dhms_units = {{
    {"cftn", 120960, 0},
    {"d", 86400, 0},
    {"ftn", 1209600, 0},
    {"h", 3600, 0},
    {"mftn", 0, 12096000},
    {"m", 60, 0},
    {"s", 1, 0},
    {"uftn", 0, 12096},
    {"w", 604800, 0},
    {"", 0, 0},
}};

constexpr bool hides_a_later_name()
{
    for (size_t i = 0; i + 1 < dhms_units.size(); ++i)
        for (size_t j = i + 1; j < dhms_units.size(); ++j)
            if (std::string_view(dhms_units[j].name).starts_with(dhms_units[i].name)) return true;
    return false;
}
static_assert(!hides_a_later_name());

// Where the names with each letter begin.
constexpr std::array<uint8_t, 26> first_units = [] {
    std::array<uint8_t, 26> first{};
    first.fill(dhms_units.size() - 1);
    for (size_t i = dhms_units.size() - 1; i-- > 0;)
        first[static_cast<size_t>(dhms_units[i].name[0] - 'a')] = static_cast<uint8_t>(i);
    return first;
}();

// What can be wrong with a token.
enum class Fault { none, syntax, overflow };

// A letter in lower case; no other character becomes one.
constexpr char lower(char character) { return static_cast<char>(character | 0x20); }

// Moves `at` behind the unit's name.
const Unit *find_unit(const char *&at)
{
    const char first = lower(*at);
    if (!is_ascii_lower(first)) return nullptr;
    const Unit *unit = &dhms_units[first_units[static_cast<size_t>(first - 'a')]];
    for (; unit->name[0] == first; ++unit) {
        size_t length = 1;
        while (unit->name[length] != '\0' && lower(at[length]) == unit->name[length]) ++length;
        if (unit->name[length] != '\0') continue;
        at += length;
        return unit;
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
[[gnu::noinline]] bool multiply_fraction(uint64_t number, uint32_t ten_thousandths,
                                         uint64_t &seconds)
{
    const uint64_t rest = number % per_second * ten_thousandths;
    if (__builtin_mul_overflow(number / per_second, uint64_t{ten_thousandths}, &seconds))
        return false;
    if (!dhms_add(rest / per_second, seconds)) return false;
    return seconds != UINT64_MAX || rest % per_second == 0;
}

bool multiply(uint64_t number, const Unit &unit, uint64_t &seconds)
{
    if (unit.whole_seconds != 0)
        return !__builtin_mul_overflow(number, uint64_t{unit.whole_seconds}, &seconds);
    return multiply_fraction(number, unit.ten_thousandths, seconds);
}

// Reads decimal digits; false when they leave 64 bits.
bool read_number(const char *&at, uint64_t &number)
{
    constexpr uint64_t safe = (UINT64_MAX - 9) / 10;
    number = 0;
    for (; is_digit(*at); ++at) {
        const unsigned digit = digit_of<10>(*at);
        if (number > safe && (number > UINT64_MAX / 10 || number * 10 > UINT64_MAX - digit))
            return false;
        number = number * 10 + digit;
    }
    return true;
}

bool is_token_end(char character) { return character == '\0' || is_space(character); }

// The readers of a token move the cursor behind it.

constexpr uint32_t most_hours = 23;
constexpr uint32_t most_sixtieths = 59;

// "1:30" or "1:02:03"; an empty field is 0.
Fault decode_hhmmss(const char *&at, uint64_t &total)
{
    constexpr int most_colons = 2;
    uint32_t hours = 0;
    uint32_t minutes = 0;
    uint32_t seconds = 0;
    int colons = 0;
    const char *cursor = at;
    for (;; ++cursor) {
        const unsigned digit = digit_of<10>(*cursor);
        if (digit <= 9) {
            // The fields wrap as 32-bit numbers do.
            const uint32_t longer = seconds * 10 + digit;
            if (longer < seconds) return Fault::overflow;
            seconds = longer;
            continue;
        }
        if (*cursor != ':') break;
        if (++colons > most_colons) return Fault::syntax;
        hours = minutes;
        minutes = seconds;
        seconds = 0;
    }
    if (!is_token_end(*cursor)) return Fault::syntax;
    at = cursor;
    if (hours > most_hours || minutes > most_sixtieths || seconds > most_sixtieths)
        return Fault::overflow;
    return dhms_add(hours * 3600 + minutes * 60 + seconds, total) ? Fault::none : Fault::overflow;
}

// Reads one or two digits.
[[gnu::always_inline]] inline bool read_short_field(const char *&at, uint32_t &value)
{
    value = digit_of<10>(*at);
    if (value > 9) return false;
    const unsigned digit = digit_of<10>(*++at);
    if (digit > 9) return true;
    value = value * 10 + digit;
    ++at;
    return true;
}

// "1:30" or "1:02:03" with short fields in range, as nearly every time is; decode_hhmmss reads it
// to the same.
bool read_plain_clock(const char *&at, uint64_t &total)
{
    uint32_t hours = 0;
    uint32_t minutes = 0;
    uint32_t seconds = 0;
    const char *cursor = at;
    if (!read_short_field(cursor, minutes) || *cursor != ':') return false;
    if (!read_short_field(++cursor, seconds)) return false;
    if (*cursor == ':') {
        hours = minutes;
        minutes = seconds;
        if (!read_short_field(++cursor, seconds)) return false;
    }
    if (!is_token_end(*cursor)) return false;
    if (hours > most_hours || minutes > most_sixtieths || seconds > most_sixtieths) return false;
    if (!dhms_add(hours * 3600 + minutes * 60 + seconds, total)) return false;
    at = cursor;
    return true;
}

// "90", or pairs of a number and a unit: "1d2h30m".
Fault decode_pairs(const char *&at, uint64_t &total)
{
    for (bool is_first = true; is_first || !is_token_end(*at); is_first = false) {
        if (!is_digit(*at)) return Fault::syntax;
        uint64_t value = 0;
        if (!read_number(at, value)) return Fault::overflow;
        if (is_token_end(*at)) {
            if (!is_first) return Fault::syntax;
        } else {
            const Unit *const unit = find_unit(at);
            if (unit == nullptr) return Fault::syntax;
            if (!multiply(value, *unit, value)) return Fault::overflow;
        }
        if (!dhms_add(value, total)) return Fault::overflow;
    }
    return Fault::none;
}

bool holds_colon(const char *at)
{
    while (!is_token_end(*at) && *at != ':') ++at;
    return *at == ':';
}

// A token with a ":" anywhere is a time; no pairs have one, so that they are tried first.
Fault decode_dhms_token(const char *&at, uint64_t &total)
{
    if (read_plain_clock(at, total)) return Fault::none;
    uint64_t sum = total;
    const char *behind = at;
    const Fault fault = decode_pairs(behind, sum);
    if (fault != Fault::none) return holds_colon(at) ? decode_hhmmss(at, total) : fault;
    at = behind;
    total = sum;
    return Fault::none;
}

const char *skip_space(const char *at)
{
    while (is_space(*at)) ++at;
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
        const Fault fault = decode_dhms_token(at, total);
        if (fault == Fault::syntax) return refuse(error, keep_errno, refused, "Syntax error");
        if (fault == Fault::overflow) return refuse(error, keep_errno, refused, "Overflow");
        at = skip_space(at);
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
