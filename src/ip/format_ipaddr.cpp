#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "text/bytes.h"
#include "text/digits.h"
#include "text/insist.h"
#include "text/text_writer.h"

namespace orvex {
namespace {

// What is printed of a value.
struct Ipv4Value {
    const uint8_t *address;
    bool pfxseen;
    uint8_t pfxlen;
    const uint8_t *mask;  // null: none
};

struct Keyword {
    uint32_t word;
    std::string_view text;
};

constexpr std::array<Keyword, 2> keywords = {{
    {IPADDR_ANY_UNICAST, "any-unicast"},
    {IPADDR_ANY_MULTICAST, "any-multicast"},
}};

const Keyword *find_keyword(const uint8_t *mask)
{
    const auto word = load_native<uint32_t>(mask);
    for (const Keyword &keyword : keywords)
        if (keyword.word == word) return &keyword;
    return nullptr;
}

size_t write_keyword(const Keyword &keyword, char *buf, size_t buflen)
{
    const size_t length = keyword.text.size();
    if (buflen <= length) return out_of_room();
    std::memcpy(buf, keyword.text.data(), length);
    buf[length] = '\0';
    return length;
}

// "010.000.000.001" and a terminator
char *put_padded_quad(char *at, const uint8_t *bytes)
{
    for (size_t i = 0; i < ipv4_size; ++i) {
        at = put_padded_octet(at, bytes[i]);
        *at++ = '.';
    }
    *--at = '\0';
    return at;
}

// Writes a value with the two writers of its form. Returns the formatters' result.
template <char *put_quad(char *, const uint8_t *), char *put_length(char *, uint8_t)>
size_t write_ipv4(const Ipv4Value &value, char *buf, size_t buflen)
{
    size_t length = write_text<sizeof "255.255.255.255">(
        buf, buflen, [value](char *at) { return put_quad(at, value.address); });
    if (length >= buflen) return out_of_room();
    if (value.pfxseen) {
        length = append_after_slash<sizeof "/255">(
            buf, buflen, length, [value](char *at) { return put_length(at, value.pfxlen); });
    } else if (value.mask != nullptr) {
        length = append_after_slash<sizeof "/255.255.255.255">(
            buf, buflen, length, [value](char *at) { return put_quad(at, value.mask); });
    }
    return length < buflen ? length : out_of_room();
}

size_t format_ipv4addr(const Ipv4Value &value, bool full_form, char *buf, size_t buflen)
{
    if (buf == nullptr || buflen == 0) return out_of_room();
    if (full_form)
        std::memset(buf, 0, buflen);
    else
        *buf = '\0';
    if (value.mask != nullptr) {
        const Keyword *const keyword = find_keyword(value.mask);
        if (keyword != nullptr) return write_keyword(*keyword, buf, buflen);
    }
    if (!insist(value.address != nullptr, "format_ipaddr", "address != NULL")) {
        errno = EINVAL;
        return 0;
    }
    return full_form ? write_ipv4<put_padded_quad, put_padded_octet>(value, buf, buflen)
                     : write_ipv4<put_dotted_quad, put_last_octet>(value, buf, buflen);
}

}  // namespace
}  // namespace orvex

size_t format_ipaddr(int af, const void *address, uint8_t full_form, int pfxseen, uint32_t pfxlen,
                     int maskseen, const void *mask, char *buf, size_t buflen)
{
    if (af == PARSE_AF_INET6)
        return _format_ipv6addr(address, full_form, pfxseen, pfxlen, maskseen, mask, buf, buflen);
    if (af != PARSE_AF_INET) {
        errno = EINVAL;
        return 0;
    }
    const orvex::Ipv4Value value{static_cast<const uint8_t *>(address), pfxseen != 0,
                                 static_cast<uint8_t>(pfxlen),
                                 maskseen != 0 ? static_cast<const uint8_t *>(mask) : nullptr};
    return orvex::format_ipv4addr(value, full_form != 0, buf, buflen);
}
