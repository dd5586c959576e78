#include <arpa/inet.h>
#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "old/digits.h"
#include "text/insist.h"
#include "old/text_writer.h"

namespace orvex {
namespace {

constexpr size_t ipv6_size = 16;
constexpr uint32_t ipv6_bits = 128;
// Two fixed-width texts of 39 characters, the "/" between them and the terminator
constexpr size_t longest_fixed_width_text = 80;

// What is printed of a value.
struct Ipv6Value {
    const uint8_t *address;
    bool pfxseen;
    uint32_t pfxlen;
    const uint8_t *mask;  // null: none
};

// Writes "2001:0db8:0000:0000:0000:0000:0000:0001" and one byte more, which what follows replaces;
// answers the position behind the text.
char *put_fixed_width(char *at, const uint8_t *address)
{
    for (size_t byte = 0; byte < ipv6_size; byte += 2) {
        at = put_hex_byte(at, address[byte]);
        at = put_hex_byte(at, address[byte + 1]);
        *at++ = ':';
    }
    return at - 1;
}

// Writes what inet_ntop makes of an address, or nothing at all when it does not fit.
bool put_compressed(TextWriter &out, const uint8_t *address)
{
    // inet_ntop takes 32-bit sizes; no text needs more than this.
    const auto room = static_cast<socklen_t>(std::min<size_t>(out.room(), INET6_ADDRSTRLEN));
    if (inet_ntop(AF_INET6, address, out.position(), room) == nullptr) return false;
    out.advance(std::strlen(out.position()));
    return true;
}

// Writes the whole text and its terminator; returns its length.
size_t write_fixed_width(char *text, const Ipv6Value &value)
{
    char *at = put_fixed_width(text, value.address);
    if (value.pfxseen) {
        *at = '/';
        at = put_decimal(at + 1, value.pfxlen, 4);
    } else if (value.mask != nullptr) {
        *at = '/';
        at = put_fixed_width(at + 1, value.mask);
    }
    *at = '\0';
    return static_cast<size_t>(at - text);
}

size_t format_fixed_width(const Ipv6Value &value, char *buf, size_t buflen)
{
    const size_t length = write_whole_text<longest_fixed_width_text>(
        buf, buflen, [&value](char *text) { return write_fixed_width(text, value); });
    if (length >= buflen) {
        errno = ENOSPC;
        return 0;
    }
    std::memset(buf + length, 0, buflen - length);
    return length;
}

bool write_compressed(TextWriter &out, const Ipv6Value &value)
{
    if (!put_compressed(out, value.address)) {
        *out.position() = '\0';
        return false;
    }
    if (value.pfxseen) {
        std::array<char, 1 + decimal_room> text;
        text[0] = '/';
        const char *const end = put_decimal(&text[1], value.pfxlen);
        out.put(text.data(), static_cast<size_t>(end - text.data()));
    } else if (value.mask != nullptr) {
        out.put('/');
        if (!put_compressed(out, value.mask)) {
            if (!out.overflowed()) *out.position() = '\0';
            return false;
        }
    }
    return true;
}

}  // namespace
}  // namespace orvex

size_t _format_ipv6addr(const void *address, uint8_t full_form, int pfxseen, uint32_t pfxlen,
                        int maskseen, const void *mask, char *buf, size_t buflen)
{
    using namespace orvex;

    const bool has_address = insist(address != nullptr, "_format_ipv6addr", "address != NULL");
    if (buf == nullptr || buflen == 0) {
        errno = ENOSPC;
        return 0;
    }
    if (!has_address) {
        *buf = '\0';
        errno = EINVAL;
        return 0;
    }
    const Ipv6Value value{static_cast<const uint8_t *>(address), pfxseen != 0, pfxlen,
                          maskseen != 0 ? static_cast<const uint8_t *>(mask) : nullptr};
    if (full_form != 0) return format_fixed_width(value, buf, buflen);
    TextWriter out(buf, buflen);
    if (!write_compressed(out, value)) return 0;
    if (out.overflowed()) {
        errno = ENOSPC;
        return 0;
    }
    return out.length();
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
