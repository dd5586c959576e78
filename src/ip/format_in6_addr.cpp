#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "text/bytes.h"
#include "text/digits.h"
#include "text/ipv6_text.h"

namespace orvex {
namespace {

constexpr int bits_before_last_group = 112;
constexpr unsigned groups_before_tail = 0x3f;  // as zero_groups counts them

constexpr size_t longest = sizeof "2001:0db8:0000:0000:0000:0000:0000:0001/128";

// An IPv4-compatible address, but for :: and ::1, or an IPv4-mapped one.
bool has_ipv4_tail(const uint8_t *address)
{
    if (!all_zero(address, 10)) return false;
    const uint32_t group5 = load_be16(address + 10);
    return group5 == 0xffff || (group5 == 0 && load_be32(address + 12) > 1);
}

// The last run of two or more zero groups.
ZeroRun last_zero_run(unsigned zeros)
{
    const unsigned pairs = zeros & zeros >> 1;  // a bit for each zero group before another
    if (pairs == 0) return {};
    const auto last = static_cast<unsigned>(std::bit_width(pairs));
    const auto count = static_cast<unsigned>(std::countl_one(zeros << (31 - last)));
    return {last + 1 - count, last + 1};
}

char *put_prefix(char *at, const uint8_t *address, int pfxlen)
{
    std::array<uint8_t, ipv6_size> prefix{};
    std::memcpy(prefix.data(), address, static_cast<size_t>(pfxlen + 7) / 8);
    const unsigned zeros = zero_groups(prefix.data());
    if (pfxlen > bits_before_last_group && has_ipv4_tail(address))
        return put_ipv6_with_quad(at, prefix.data(), last_zero_run(zeros & groups_before_tail));
    return put_ipv6_groups(at, prefix.data(), last_zero_run(zeros));
}

char *format(const void *address, int pfxlen, bool with_length, char *buf, size_t buflen,
             bool terminate)
{
    const int length = std::clamp(pfxlen, 0, static_cast<int>(ipv6_bits));
    std::array<char, longest> text;
    char *at = put_prefix(text.data(), static_cast<const uint8_t *>(address), length);
    if (with_length) {
        *at++ = '/';
        at = put_decimal(at, static_cast<uint32_t>(length));
    }
    char *end = buf + buflen;
    if (terminate && buflen > 0) *--end = '\0';
    const auto size =
        std::min(static_cast<size_t>(at - text.data()), static_cast<size_t>(end - buf));
    end -= size;
    std::memcpy(end, at - size, size);
    return end;
}

}  // namespace
}  // namespace orvex

char *format_in6_addr(const void *address, int pfxlen, char *buf, size_t buflen, int terminate)
{
    return orvex::format(address, pfxlen, false, buf, buflen, terminate != 0);
}

char *format_in6_prefix(const void *address, int pfxlen, char *buf, size_t buflen, int terminate)
{
    return orvex::format(address, pfxlen, true, buf, buflen, terminate != 0);
}
