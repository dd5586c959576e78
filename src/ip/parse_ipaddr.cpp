#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "ip/address_parsers.h"
#include "text/bytes.h"
#include "text/error_text.h"
#include "text/insist.h"

namespace orvex {
namespace {

constexpr const char *source = "parse_ipaddr";

// ---- Families ----

struct Family {
    uint32_t code;
    uint32_t base;  // the family whose texts and class rules it has
};

constexpr auto families = std::to_array<Family>({
    {PARSE_AF_INET, PARSE_AF_INET},
    {PARSE_AF_INET6, PARSE_AF_INET6},
    {PARSE_AF_INET_73, PARSE_AF_INET},
    {PARSE_AF_INET_119, PARSE_AF_INET},
    {PARSE_AF_INET6_121, PARSE_AF_INET6},
    {PARSE_AF_INET_129, PARSE_AF_INET},
    {PARSE_AF_INET6_131, PARSE_AF_INET6},
    {PARSE_AF_INET_139, PARSE_AF_INET},
    {PARSE_AF_INET6_141, PARSE_AF_INET6},
});

// The base family of a code, 0 for an unsupported one.
uint32_t base_family(uint32_t code)
{
    for (const Family &family : families)
        if (family.code == code) return family.base;
    return 0;
}

// ---- Address classes ----

// The classes of fe00::/8, by the top two bits of the second byte.
constexpr auto fe00_types =
    std::to_array<uint8_t>({IPV6_ADDRESS_TYPE_OTHER, IPV6_ADDRESS_TYPE_OTHER,
                            IPV6_ADDRESS_TYPE_LINK_LOCAL, IPV6_ADDRESS_TYPE_SITE_LOCAL});

int ipv6_type(const uint8_t *address)
{
    switch (address[0]) {
        case 0x00:
            return all_zero(address, ipv6_size) ? IPV6_ADDRESS_TYPE_NONE : IPV6_ADDRESS_TYPE_OTHER;
        case 0xfe: return fe00_types[address[1] >> 6];
        case 0xff: return IPV6_ADDRESS_TYPE_MULTICAST;
        default: return IPV6_ADDRESS_TYPE_OTHER;
    }
}

bool is_ipv4_multicast(uint32_t address) { return address >> 28 == 0xe; }

bool is_multicast(uint32_t family, const uint8_t *address)
{
    return family == PARSE_AF_INET ? is_ipv4_multicast(load_be32(address)) : address[0] == 0xff;
}

// Whether an IPv4 address may not be a source or destination; false for any other family.
bool is_martian(uint32_t family, const uint8_t *address)
{
    if (family != PARSE_AF_INET) return false;
    const uint32_t value = load_be32(address);
    const bool loopback = value >> 24 == 127;
    const bool ietf_assigned = value >> 8 == 0xc00000;  // 192.0.0.0/24
    const bool class_d_or_e = value >> 29 == 7;         // 224.0.0.0/4 and 240.0.0.0/4
    return value == 0 || loopback || ietf_assigned || class_d_or_e;
}

bool is_unicast(uint32_t family, const uint8_t *address)
{
    if (family == PARSE_AF_INET) {
        const uint32_t value = load_be32(address);
        return value != 0 && value != UINT32_MAX && !is_ipv4_multicast(value);
    }
    if (family != PARSE_AF_INET6) return false;
    const int type = ipv6_type(address);
    return type != IPV6_ADDRESS_TYPE_NONE && type != IPV6_ADDRESS_TYPE_MULTICAST;
}

constexpr uint32_t class_flags =
    PARSE_IPADDR_MULTICAST | PARSE_IPADDR_NO_MARTIAN | PARSE_IPADDR_UNICAST;

int check_class(uint32_t family, const AddressRequest &request)
{
    const uint8_t *const address = request.address;
    if (request.has(PARSE_IPADDR_MULTICAST) && !is_multicast(family, address))
        return refuse(request.error, rule_broken, "invalid multicast address - '%s'", request.str);
    if (request.has(PARSE_IPADDR_NO_MARTIAN) && is_martian(family, address))
        return refuse(request.error, rule_broken, "martian address not allowed - '%s'",
                      request.str);
    if (request.has(PARSE_IPADDR_UNICAST) && !is_unicast(family, address))
        return refuse(request.error, rule_broken, "invalid unicast address - '%s'", request.str);
    return 0;
}

int refuse_size(const AddressRequest &request, const char *output)
{
    errno = ENOSPC;
    return refuse(request.error, rule_broken, "'%s' not large enough to hold result", output);
}

}  // namespace
}  // namespace orvex

int ipv6_address_type(const void *address)
{
    if (address == nullptr) return IPV6_ADDRESS_TYPE_NONE;
    return orvex::ipv6_type(static_cast<const uint8_t *>(address));
}

int parse_ipaddr_is_unicast(uint32_t af, const void *address)
{
    return orvex::is_unicast(af, static_cast<const uint8_t *>(address)) ? 1 : 0;
}

int parse_ipaddr(uint32_t *af, const char *str, uint32_t flags, void *address, size_t address_len,
                 int *pfxseen, uint32_t *pfxlen, int *maskseen, void *mask, size_t mask_len,
                 char *errbuf, size_t errlen)
{
    using namespace orvex;

    AddressRequest request{.str = str,
                           .flags = flags,
                           .address = static_cast<uint8_t *>(address),
                           .mask = static_cast<uint8_t *>(mask),
                           .error = {errbuf, errlen}};
    uint32_t own_af = 0;
    if (!insist(af != nullptr, source, "af != NULL")) af = &own_af;
    if (!insist(str != nullptr, source, "str != NULL")) request.str = "";

    if (*af == 0) [[unlikely]]
        *af = std::strchr(request.str, ':') != nullptr ? PARSE_AF_INET6 : PARSE_AF_INET;
    const uint32_t family = base_family(*af);
    if (family == 0) {
        errno = PARSE_EAFNOSUPPORT;
        return refuse(request.error, not_this_form, "unsupported address family");
    }

    const size_t size = family == PARSE_AF_INET ? ipv4_size : ipv6_size;
    if (request.address != nullptr && address_len < size) return refuse_size(request, "address");
    if (request.mask != nullptr && mask_len < size) return refuse_size(request, "mask");

    // Used in place of the outputs that a caller leaves null.
    std::array<uint8_t, ipv6_size> own_address;
    std::array<uint8_t, ipv6_size> own_mask;
    if (request.address == nullptr) request.address = own_address.data();
    if (request.mask == nullptr) request.mask = own_mask.data();

    const int result =
        family == PARSE_AF_INET ? parse_ipv4_addr(request) : parse_ipv6_addr(request);
    if (pfxseen != nullptr) *pfxseen = request.pfxseen;
    if (pfxlen != nullptr) *pfxlen = request.pfxlen;
    if (maskseen != nullptr) *maskseen = request.maskseen;
    if (result != 0 || !request.has(class_flags)) return result;
    return check_class(family, request);
}
