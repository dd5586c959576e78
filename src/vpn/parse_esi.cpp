#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "text/bytes.h"
#include "text/digits.h"
#include "text/error_text.h"
#include "text/hex_digits.h"
#include "text/text_writer.h"

namespace orvex {
namespace {

constexpr size_t esi_size = 10;
constexpr size_t longest_text = 3 * esi_size;

using Esi = std::array<uint8_t, esi_size>;

constexpr size_t no_gap = SIZE_MAX;

// The message of a check that fails, or null.
using Refusal = const char *;

constexpr Refusal unexpected_colon = "Unexpected ':' character";
constexpr Refusal unexpected_character = "Invalid non-hexidecimal character found in ESI";

bool ends_octet(const char *at) { return *at == ':' || *at == '\0'; }

// Reads the digits of an octet after the first two, which are leading zeros: "000a".
Refusal read_more_digits(const char *&at, uint32_t &octet)
{
    for (; is_hex_digit(*at); ++at) {
        octet = octet << 4 | hex_value(*at);
        // "100"
        if (octet > UINT8_MAX)
            return "Values delimited by ':' characters must be in the range 0 to 0xff";
    }
    return ends_octet(at) ? nullptr : unexpected_character;
}

// Reads a ":" where an octet could be.
Refusal read_gap(const char *&at, size_t count, size_t &gap)
{
    if (*at != ':') return unexpected_character;
    // "1::2::3", "1:::2"
    if (gap != no_gap)
        return "Only one '::' sequence can appear in the ESI and it may not follow a ':' character";
    gap = count;
    ++at;
    return nullptr;
}

// Fills the gap with zeros.
Refusal expand(Esi &esi, size_t gap, size_t count)
{
    const bool is_full = count == esi_size;
    if (gap == no_gap)
        return is_full ? nullptr : "ESI is too short; length must be exactly 10 octets";
    if (is_full) return "Unexpected '::' sequence";
    fill_gap(esi.data(), esi_size, gap, count);
    return nullptr;
}

Refusal read_esi(const char *at, Esi &esi)
{
    size_t count = 0;
    size_t gap = no_gap;
    // ":1"
    if (*at == ':' && *++at != ':') return unexpected_colon;
    while (*at != '\0') {
        uint32_t octet{};
        if (!read_hex_digits<2>(at, octet)) {
            const Refusal refusal = read_gap(at, count, gap);
            if (refusal != nullptr) return refusal;
            continue;
        }
        if (!ends_octet(at)) [[unlikely]] {
            const Refusal refusal = read_more_digits(at, octet);
            if (refusal != nullptr) return refusal;
        }
        if (count == esi_size) return "ESI is too long; length must be exactly 10 octets";
        esi[count++] = static_cast<uint8_t>(octet);
        if (*at == '\0') break;
        // "1:2:"
        if (*++at == '\0') return unexpected_colon;
    }
    return expand(esi, gap, count);
}

// All zeros, or all ones.
bool is_reserved(const Esi &esi)
{
    const uint8_t first = esi.front();
    if (first != 0 && first != UINT8_MAX) return false;
    return std::all_of(esi.begin(), esi.end(), [first](uint8_t octet) { return octet == first; });
}

Refusal check_mode(const Esi &esi, int mode)
{
    if (is_reserved(esi)) return mode == PARSE_ESI_RESERVED_OK ? nullptr : "ESI value is reserved";
    if (mode == PARSE_ESI_USER_DEFINED && esi[0] != 0)
        return "The first octet of a user-defined ESI must be 0";
    return nullptr;
}

}  // namespace
}  // namespace orvex

int parse_esi(const char *text, uint8_t *esi, char *errbuf, size_t errlen, int mode)
{
    using namespace orvex;
    Esi work;
    Refusal refusal = read_esi(text, work);
    if (refusal == nullptr) refusal = check_mode(work, mode);
    if (refusal != nullptr) return refuse({errbuf, errlen}, -1, "%s", refusal);
    std::memcpy(esi, work.data(), esi_size);
    return 0;
}

int format_esi(char *buf, size_t buflen, const uint8_t *esi)
{
    using namespace orvex;
    const size_t length = write_text<longest_text>(buf, buflen, [esi](char *at) {
        for (size_t i = 0; i < esi_size; ++i) {
            at = put_hex_byte(at, esi[i]);
            *at++ = ':';
        }
        *--at = '\0';
        return at;
    });
    return static_cast<int>(piece_result(0, length, buflen));
}
