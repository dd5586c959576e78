#include <orvex/parse.h>

#include <array>
#include <cstring>
#include <string_view>

#include "text/characters.h"
#include "text/error_text.h"
#include "text/target_numbers.h"

namespace orvex {
namespace {

constexpr int refused = 0;
constexpr int accepted = 1;

// ---- Units ----

// Fractions of a second are counted in ten-thousandths, so that every host reads the same.
constexpr uint32_t per_second = 10000;

struct Unit {
    char name[sizeof "cftn"];  // lower case
    uint32_t seconds;
    uint32_t ten_thousandths = 0;  // besides the whole seconds
};

// The first name that matches counts: "mftn" comes before "m". Tests hold the order.
constexpr std::array<Unit, 9> dhms_units = {{
    {"ftn", 1209600},
    {"w", 604800},
    {"cftn", 120960},
    {"d", 86400},
    {"h", 3600},
    {"mftn", 1209, 6000},
    {"uftn", 1, 2096},
    {"m", 60},
    {"s", 1},
}};

// Whether a text begins with a name, in any case. `| 0x20` makes letters of letters only.
constexpr bool begins_with(const char *text, const char *name)
{
    for (; *name != '\0'; ++name, ++text)
        if ((*text | 0x20) != *name) return false;
    return true;
}

// The seconds of the units whose name is one letter, by that letter.
constexpr std::array<uint32_t, 256> letter_seconds = [] {
    std::array<uint32_t, 256> seconds{};
    for (const Unit &unit : dhms_units)
        if (std::string_view(unit.name).size() == 1)
            seconds[static_cast<unsigned char>(unit.name[0])] = unit.seconds;
    return seconds;
}();

// Any unit, also in upper case.
[[gnu::cold, gnu::noinline]] const Unit *find_unit(const char *text)
{
    for (const Unit &unit : dhms_units)
        if (begins_with(text, unit.name)) return &unit;
    return nullptr;
}

// False when the sum leaves 64 bits.
bool add(uint64_t seconds, uint64_t &total)
{
    return !__builtin_add_overflow(total, seconds, &total);
}

// Makes a number of units one of seconds, cut to whole ones; false when they leave 64 bits.
bool multiply(uint64_t &number, const Unit &unit)
{
    const uint64_t rest = number % per_second * unit.ten_thousandths;
    const uint64_t fractions = number / per_second * unit.ten_thousandths + rest / per_second;
    if (__builtin_mul_overflow(number, uint64_t{unit.seconds}, &number)) return false;
    if (!add(fractions, number)) return false;
    return number != UINT64_MAX || rest % per_second == 0;
}

// ---- Tokens ----

// What can be wrong with a token.
enum class Fault { none, syntax, overflow };

bool is_token_end(char character) { return character == '\0' || is_space(character); }

const char *skip_space(const char *at)
{
    while (is_space(*at)) ++at;
    return at;
}

// Reads the unit of a number, and makes the number one of seconds. Only the first number of a token
// may do without a unit.
Fault read_unit(const char *&at, bool is_first, uint64_t &number)
{
    const uint32_t seconds = letter_seconds[static_cast<unsigned char>(*at)];
    // Another letter may make it a longer name: "mftn".
    if (seconds != 0 && !is_ascii_letter(at[1])) [[likely]] {
        ++at;
        return __builtin_mul_overflow(number, uint64_t{seconds}, &number) ? Fault::overflow
                                                                          : Fault::none;
    }
    if (is_first && is_token_end(*at)) return Fault::none;
    const Unit *const unit = find_unit(at);
    if (unit == nullptr) return Fault::syntax;
    at += std::strlen(unit->name);
    return multiply(number, *unit) ? Fault::none : Fault::overflow;
}

// "90", or pairs of a number and a unit: "1d2h30m"
Fault read_pairs(const char *&at, uint64_t &total)
{
    const char *const start = at;
    do {
        if (!is_digit(*at)) return Fault::syntax;
        const bool is_first = at == start;
        const auto number = convert<uint64_t>(at, Base::decimal);
        at = number.end;
        if (number.out_of_range) return Fault::overflow;
        uint64_t seconds = number.value;
        const Fault fault = read_unit(at, is_first, seconds);
        if (fault != Fault::none) return fault;
        if (!add(seconds, total)) return Fault::overflow;
    } while (!is_token_end(*at));
    return Fault::none;
}

// Reads the digits of a field, none of them for 0. The field wraps as 32-bit numbers do; false when
// it becomes smaller.
bool read_field(const char *&at, uint32_t &field)
{
    field = 0;
    for (; is_digit(*at); ++at) {
        const uint32_t longer = field * 10 + decimal_value(*at);
        if (longer < field) return false;
        field = longer;
    }
    return true;
}

// "1:30" or "1:02:03"
Fault read_clock(const char *&at, uint64_t &total)
{
    constexpr uint32_t most_hours = 23;
    constexpr uint32_t most_sixtieths = 59;
    uint32_t hours = 0;
    uint32_t minutes{};
    uint32_t seconds{};
    if (!read_field(at, minutes)) return Fault::overflow;
    if (*at != ':') return Fault::syntax;
    if (!read_field(++at, seconds)) return Fault::overflow;
    if (*at == ':') {
        hours = minutes;
        minutes = seconds;
        if (!read_field(++at, seconds)) return Fault::overflow;
    }
    if (!is_token_end(*at)) return Fault::syntax;
    if (hours > most_hours || minutes > most_sixtieths || seconds > most_sixtieths)
        return Fault::overflow;
    return add(hours * 3600 + minutes * 60 + seconds, total) ? Fault::none : Fault::overflow;
}

bool holds_colon(const char *at)
{
    while (*at != ':' && !is_token_end(*at)) ++at;
    return *at == ':';
}

// A ":" anywhere makes the whole token a clock; it nearly always comes after one character or two.
Fault read_token(const char *&at, uint64_t &total)
{
    const bool begins_clock = at[1] == ':' || (is_digit(at[1]) && at[2] == ':');
    if (!begins_clock) {
        const char *const start = at;
        const Fault fault = read_pairs(at, total);
        if (fault == Fault::none || !holds_colon(at)) return fault;
        // "1h:30", whose fault is that of a clock
        at = start;
    }
    return read_clock(at, total);
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
    if (*at == '\0') return refuse(error, refused, "Empty string");
    while (*at != '\0') {
        const Fault fault = read_token(at, total);
        if (fault == Fault::syntax) return refuse(error, refused, "Syntax error");
        if (fault == Fault::overflow) return refuse(error, refused, "Overflow");
        at = skip_space(at);
    }
    if (total < min)
        return refuse(error, refused, "Number must be greater than or equal to %ju",
                      uintmax_t{min});
    if (total > max)
        return refuse(error, refused, "Number must be less than or equal to %ju", uintmax_t{max});
    *seconds = total;
    return accepted;
}
