#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "text/bytes.h"
#include "text/digits.h"
#include "text/insist.h"
#include "text/ipv6_text.h"
#include "text/text_writer.h"

namespace orvex {
namespace {

// No compressed text is longer than a fixed-width one.
constexpr size_t fixed_width_room = sizeof "2001:0db8:0000:0000:0000:0000:0000:0001";
constexpr size_t fixed_width_mask_room = sizeof "/0000:0000:0000:0000:0000:0000:0000:0000";
constexpr size_t prefix_room = sizeof "/4294967295";

// What is printed of a value.
struct Ipv6Value {
    const uint8_t *address;
    bool pfxseen;
    uint32_t pfxlen;
    const uint8_t *mask;  // null: none
};

// Writes an address in the fixed-width form, and a terminator.
char *put_fixed_width(char *at, const uint8_t *address)
{
    for (size_t byte = 0; byte < ipv6_size; byte += 2) {
        at = put_hex_byte(at, address[byte]);
        at = put_hex_byte(at, address[byte + 1]);
        *at++ = ':';
    }
    *--at = '\0';
    return at;
}

size_t format_fixed_width(const Ipv6Value &value, char *buf, size_t buflen)
{
    size_t length = write_text<fixed_width_room>(
        buf, buflen, [value](char *at) { return put_fixed_width(at, value.address); });
    if (length >= buflen) return out_of_room();
    if (value.pfxseen) {
        length = append_after_slash<prefix_room>(
            buf, buflen, length, [value](char *at) { return put_decimal(at, value.pfxlen, 4); });
    } else if (value.mask != nullptr) {
        length = append_after_slash<fixed_width_mask_room>(
            buf, buflen, length, [value](char *at) { return put_fixed_width(at, value.mask); });
    }
    if (length >= buflen) return out_of_room();
    std::memset(buf + length, 0, buflen - length);
    return length;
}

// Writes an address in the compressed form, whole or, where it does not fit, as an empty text.
// Returns the length of what it wrote.
size_t write_whole_ipv6(char *buf, size_t buflen, const uint8_t *address)
{
    std::array<char, fixed_width_room> text;
    if (buflen >= text.size()) [[likely]]
        return static_cast<size_t>(put_ipv6(buf, address) - buf);
    auto length = static_cast<size_t>(put_ipv6(text.data(), address) - text.data());
    if (length >= buflen) length = 0;
    std::memcpy(buf, text.data(), length);
    buf[length] = '\0';
    return length;
}

size_t format_compressed(const Ipv6Value &value, char *buf, size_t buflen)
{
    size_t length = write_whole_ipv6(buf, buflen, value.address);
    if (length == 0) return out_of_room();
    if (value.pfxseen) {
        length = append_after_slash<prefix_room>(
            buf, buflen, length, [value](char *at) { return put_decimal(at, value.pfxlen); });
    } else if (value.mask != nullptr) {
        if (length + 1 == buflen) return out_of_room();
        buf[length++] = '/';
        const size_t mask_length = write_whole_ipv6(buf + length, buflen - length, value.mask);
        if (mask_length == 0) return out_of_room();
        length += mask_length;
    }
    return length < buflen ? length : out_of_room();
}

}  // namespace
}  // namespace orvex

size_t _format_ipv6addr(const void *address, uint8_t full_form, int pfxseen, uint32_t pfxlen,
                        int maskseen, const void *mask, char *buf, size_t buflen)
{
    using namespace orvex;

    const bool has_address = insist(address != nullptr, "_format_ipv6addr", "address != NULL");
    if (buf == nullptr || buflen == 0) return out_of_room();
    if (!has_address) {
        *buf = '\0';
        errno = EINVAL;
        return 0;
    }
    const Ipv6Value value{static_cast<const uint8_t *>(address), pfxseen != 0, pfxlen,
                          maskseen != 0 ? static_cast<const uint8_t *>(mask) : nullptr};
    return full_form != 0 ? format_fixed_width(value, buf, buflen)
                          : format_compressed(value, buf, buflen);
}

size_t format_ipv6addr_partial(const void *prefix, uint32_t pfxlen, uint8_t pfxseen, char *buf,
                               size_t buflen)
{
    using namespace orvex;

    if (pfxlen > ipv6_bits) {
        if (buf != nullptr && buflen != 0) *buf = '\0';
        errno = EINVAL;
        return 0;
    }
    std::array<uint8_t, ipv6_size> address{};
    if (pfxlen != 0) {
        const size_t bytes = (pfxlen + 7) / 8;
        std::memcpy(address.data(), prefix, bytes);
        if (pfxlen % 8 != 0)
            address[bytes - 1] = static_cast<uint8_t>(address[bytes - 1] & ~(0xffU >> pfxlen % 8));
    }
    return _format_ipv6addr(address.data(), 0, pfxseen, pfxlen, 0, nullptr, buf, buflen);
}
