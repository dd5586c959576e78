#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "old/digits.h"
#include "text/insist.h"
#include "old/text_writer.h"

namespace orvex {
namespace {

// "255.255.255.255/255.255.255.255" and its terminator
constexpr size_t longest_ipv4_text = 32;

struct Keyword {
    uint32_t word;
    size_t length;
    const char *text;
};

constexpr std::array<Keyword, 2> keywords = {{
    {IPADDR_ANY_UNICAST, 11, "any-unicast"},
    {IPADDR_ANY_MULTICAST, 13, "any-multicast"},
}};

const Keyword *find_keyword(const uint8_t *mask)
{
    uint32_t word = 0;
    std::memcpy(&word, mask, sizeof word);
    for (const Keyword &keyword : keywords)
        if (keyword.word == word) return &keyword;
    return nullptr;
}

size_t out_of_room()
{
    errno = ENOSPC;
    return 0;
}

size_t write_keyword(const Keyword &keyword, char *buf, size_t buflen)
{
    if (buflen <= keyword.length) return out_of_room();
    std::memcpy(buf, keyword.text, keyword.length + 1);
    return keyword.length;
}

// Writes the text and its terminator into longest_ipv4_text bytes; returns its length. Either
// writer leaves a "." behind each octet, which what follows replaces.
template <char *put(char *, uint8_t)>
size_t write_ipv4(char *text, const uint8_t *address, bool pfxseen, uint8_t pfxlen,
                  const uint8_t *mask)
{
    char *at = put_dotted_quad<put>(text, address);
    if (pfxseen) {
        *at = '/';
        at = put(at + 1, pfxlen);
    } else if (mask != nullptr) {
        *at = '/';
        at = put_dotted_quad<put>(at + 1, mask);
    }
    *at = '\0';
    return static_cast<size_t>(at - text);
}

size_t format_ipv4addr(const uint8_t *address, bool full_form, bool pfxseen, uint8_t pfxlen,
                       const uint8_t *mask, char *buf, size_t buflen)
{
    if (buf == nullptr || buflen == 0) return out_of_room();
    if (full_form)
        std::memset(buf, 0, buflen);
    else
        *buf = '\0';
    if (mask != nullptr) {
        const Keyword *const keyword = find_keyword(mask);
        if (keyword != nullptr) return write_keyword(*keyword, buf, buflen);
    }
    if (!insist(address != nullptr, "format_ipaddr", "address != NULL")) {
        *buf = '\0';
        errno = EINVAL;
        return 0;
    }

    const size_t length = write_whole_text<longest_ipv4_text>(buf, buflen, [&](char *text) {
        return full_form ? write_ipv4<put_padded_octet>(text, address, pfxseen, pfxlen, mask)
                         : write_ipv4<put_octet>(text, address, pfxseen, pfxlen, mask);
    });
    return length < buflen ? length : out_of_room();
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
    return orvex::format_ipv4addr(static_cast<const uint8_t *>(address), full_form != 0,
                                  pfxseen != 0, static_cast<uint8_t>(pfxlen),
                                  maskseen != 0 ? static_cast<const uint8_t *>(mask) : nullptr, buf,
                                  buflen);
}
