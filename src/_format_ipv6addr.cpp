#include <arpa/inet.h>
#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "support/digits.h"
#include "support/insist.h"
#include "support/text_writer.h"

namespace orvex
{
namespace
{

constexpr size_t ipv6_size = 16;
constexpr uint32_t ipv6_bits = 128;
constexpr size_t fixed_width_length = 39;

// What is printed of a value.
struct Ipv6Value {
    const uint8_t *address;
    bool pfxseen;
    uint32_t pfxlen;
    const uint8_t *mask;  // null: none
};

// "2001:0db8:0000:0000:0000:0000:0000:0001"
void put_fixed_width(TextWriter &out, const uint8_t *address)
{
    std::array<char, fixed_width_length + 1> text;
    char *at = text.data();
    for (size_t byte = 0; byte < ipv6_size; byte += 2) {
        at = put_hex_byte(at, address[byte]);
        at = put_hex_byte(at, address[byte + 1]);
        *at++ = ':';
    }
    out.put(text.data(), fixed_width_length);
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

// "/64", or "/0064" with a width of 4
void put_prefix_length(TextWriter &out, uint32_t pfxlen, size_t width)
{
    std::array<char, 1 + decimal_room> text;
    text[0] = '/';
    out.put(text.data(), static_cast<size_t>(put_decimal(&text[1], pfxlen, width) - text.data()));
}

void write_fixed_width(TextWriter &out, const Ipv6Value &value)
{
    put_fixed_width(out, value.address);
    if (value.pfxseen) {
        put_prefix_length(out, value.pfxlen, 4);
    } else if (value.mask != nullptr) {
        out.put('/');
        put_fixed_width(out, value.mask);
    }
}

bool write_compressed(TextWriter &out, const Ipv6Value &value)
{
    if (!put_compressed(out, value.address)) {
        *out.position() = '\0';
        return false;
    }
    if (value.pfxseen) {
        put_prefix_length(out, value.pfxlen, 1);
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
    TextWriter out(buf, buflen);
    if (full_form != 0) {
        std::memset(buf, 0, buflen);
        write_fixed_width(out, value);
    } else if (!write_compressed(out, value)) {
        return 0;
    }
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
