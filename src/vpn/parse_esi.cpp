#include <orvex/parse.h>

#include <array>

#include "old/bytes.h"
#include "old/digits.h"
#include "text/error_text.h"
#include "old/target_numbers.h"
#include "old/text_writer.h"

namespace orvex {
namespace {

constexpr size_t esi_size = 10;

// Octets as they are read, and where a "::" stands among them.
struct Octets {
    std::array<uint8_t, esi_size> bytes{};
    size_t count = 0;
    size_t gap = esi_size + 1;  // not seen

    [[nodiscard]] bool has_gap() const { return gap <= esi_size; }
    [[nodiscard]] bool full() const { return count == esi_size; }
};

constexpr const char *unexpected_colon = "Unexpected ':' character";

// The readers answer a message, or null.
using Refusal = const char *;

// A group without digits.
Refusal mark_gap(Octets &octets)
{
    if (octets.has_gap())
        return "Only one '::' sequence can appear in the ESI and it may not follow a ':' character";
    octets.gap = octets.count;
    return nullptr;
}

// Reads the digits of a group and the ":" behind them; `at` moves to the next group or to the end.
Refusal read_group(const char *&at, Octets &octets)
{
    unsigned value = 0;
    for (unsigned digit = 0; (digit = digit_value(*at)) < 16; ++at) {
        value = value * 16 + digit;
        if (value > 0xff)
            return "Values delimited by ':' characters must be in the range 0 to 0xff";
    }
    if (*at != ':' && *at != '\0') return "Invalid non-hexidecimal character found in ESI";
    if (octets.full()) return "ESI is too long; length must be exactly 10 octets";
    if (*at == ':' && *++at == '\0') return unexpected_colon;
    octets.bytes[octets.count++] = static_cast<uint8_t>(value);
    return nullptr;
}

Refusal read_octets(const char *at, Octets &octets)
{
    if (at[0] == ':') {
        if (at[1] != ':') return unexpected_colon;
        ++at;
    }
    Refusal refusal = nullptr;
    while (*at != '\0' && refusal == nullptr) {
        if (digit_value(*at) < 16) {
            refusal = read_group(at, octets);
        } else if (*at == ':') {
            ++at;
            refusal = mark_gap(octets);
        } else {
            refusal = "Invalid non-hexidecimal character found in ESI";
        }
    }
    return refusal;
}

// Has zeros stand for a "::".
Refusal expand(Octets &octets)
{
    if (!octets.has_gap())
        return octets.full() ? nullptr : "ESI is too short; length must be exactly 10 octets";
    if (octets.full()) return "Unexpected '::' sequence";
    fill_gap(octets.bytes, octets.gap, octets.count);
    return nullptr;
}

// The octets as numbers, most significant first.
struct EsiWords {
    uint64_t first;  // eight octets
    uint32_t last;   // two
};

// Ten octets of two digits, as nearly every text is; parse_any_esi reads it to the same.
bool read_plain_esi(const char *at, EsiWords &esi)
{
    esi = {0, 0};
    for (size_t i = 0; i < esi_size; ++i, at += 3) {
        const unsigned high = digit_value(at[0]);
        if (high >= 16) return false;
        const unsigned low = digit_value(at[1]);
        if (low >= 16 || at[2] != (i + 1 < esi_size ? ':' : '\0')) return false;
        if (i < sizeof esi.first)
            esi.first = esi.first << 8 | high << 4 | low;
        else
            esi.last = esi.last << 8 | high << 4 | low;
    }
    return true;
}

Refusal check_mode(EsiWords esi, int mode)
{
    const bool all_zeros = esi.first == 0 && esi.last == 0;
    const bool all_ones = esi.first == UINT64_MAX && esi.last == UINT16_MAX;
    if (all_zeros || all_ones)
        return mode == PARSE_ESI_RESERVED_OK ? nullptr : "ESI value is reserved";
    return mode == PARSE_ESI_USER_DEFINED && esi.first >> 56 != 0
               ? "The first octet of a user-defined ESI must be 0"
               : nullptr;
}

void store(uint8_t *bytes, EsiWords esi)
{
    store_be64(bytes, esi.first);
    store_be16(bytes + sizeof esi.first, esi.last);
}

// Reads any text.
[[gnu::noinline]] int parse_any_esi(const char *text, uint8_t *esi, int mode, ErrorText error)
{
    Octets octets;
    Refusal refusal = read_octets(text, octets);
    if (refusal == nullptr) refusal = expand(octets);
    const uint8_t *const bytes = octets.bytes.data();
    const EsiWords words{load_be64(bytes), uint32_t{bytes[8]} << 8 | bytes[9]};
    if (refusal == nullptr) refusal = check_mode(words, mode);
    if (refusal != nullptr) return refuse(error, keep_errno, -1, "%s", refusal);
    store(esi, words);
    return 0;
}

}  // namespace
}  // namespace orvex

int parse_esi(const char *text, uint8_t *esi, char *errbuf, size_t errlen, int mode)
{
    using namespace orvex;
    EsiWords words;
    if (!read_plain_esi(text, words) || check_mode(words, mode) != nullptr)
        return parse_any_esi(text, esi, mode, {errbuf, errlen});
    store(esi, words);
    return 0;
}

int format_esi(char *buf, size_t buflen, const uint8_t *esi)
{
    orvex::TextWriter writer(buf, buflen);
    for (size_t i = 0; i < orvex::esi_size; ++i) {
        std::array<char, 3> piece = {'0', '0', ':'};
        orvex::put_hex_byte(piece.data(), esi[i]);
        writer.put(piece.data(), i + 1 < orvex::esi_size ? 3 : 2);
    }
    return static_cast<int>(writer.length());
}
