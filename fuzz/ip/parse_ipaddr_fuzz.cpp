// Any text with any flags: an address reads the same before a suffix as alone, libc's addresses
// read as libc reads them, and what was read prints and reads back as the same value.
#include <arpa/inet.h>
#include <orvex/parse.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Value {
    uint32_t af = 0;
    int result = 0;
    uint8_t address[16] = {};
    uint8_t mask[16] = {};
    int pfxseen = 0;
    int maskseen = 0;
    uint32_t pfxlen = 0;
    char message[512] = {};

    Value(uint32_t family, const char *text, uint32_t flags) : af(family)
    {
        result = parse_ipaddr(&af, text, flags, address, sizeof address, &pfxseen, &pfxlen,
                              &maskseen, mask, sizeof mask, message, sizeof message);
    }

    [[nodiscard]] bool same_address(const void *other) const
    {
        return std::memcmp(address, other, sizeof address) == 0;
    }
};

void require(bool holds)
{
    if (!holds) std::abort();
}

void check_suffix(uint32_t family, const std::string &text, uint32_t flags)
{
    const Value alone(family, text.c_str(), flags);
    const Value prefix(family, (text + "/8").c_str(), flags | PARSE_IPADDR_PREFIX_OK);
    require(prefix.result == alone.result && prefix.same_address(alone.address));
    require(std::strcmp(prefix.message, alone.message) == 0);
    require(alone.result != 0 || (prefix.pfxseen == 1 && prefix.pfxlen == 8));
}

void check_against_libc(uint32_t family, const std::string &text)
{
    uint8_t address[16] = {};
    const bool ipv6 = family == PARSE_AF_INET6;
    const bool libc = inet_pton(ipv6 ? AF_INET6 : AF_INET, text.c_str(), address) == 1;
    const Value value(family, text.c_str(), 0);
    require(!libc || (value.result == 0 && value.same_address(address)));
    require(!ipv6 || libc == (value.result == 0));
}

void check_round_trip(const Value &value, uint8_t full_form)
{
    char printed[FORMAT_IPADDR_BUFSIZE];
    const bool ipv6 = value.af != PARSE_AF_INET;
    require(format_ipaddr(ipv6 ? PARSE_AF_INET6 : PARSE_AF_INET, value.address, full_form,
                          value.pfxseen, value.pfxlen, value.maskseen, value.mask, printed,
                          sizeof printed) == std::strlen(printed));
    char again[FORMAT_IPADDR_BUFSIZE];
    if (ipv6) {
        _format_ipv6addr(value.address, full_form, value.pfxseen, value.pfxlen, value.maskseen,
                         value.mask, again, sizeof again);
        require(std::strcmp(again, printed) == 0);
    }
    // The reader of IPv4 takes a padded prefix length for octal.
    if (full_form != 0 && value.pfxseen != 0) return;
    // The masks 1.0.0.0 and 2.0.0.0 (or 0.0.0.1 and 0.0.0.2) look like a keyword's word.
    if (std::strncmp(printed, "any-", 4) == 0) return;
    const Value back(value.af, printed,
                     PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK | PARSE_IPADDR_ANY_OK);
    require(back.result == 0 && back.same_address(value.address));
    require(back.pfxlen == value.pfxlen && back.maskseen == value.maskseen);
}

// The classes that the flags name are those of the functions that ask for them.
void check_class(const Value &value, uint32_t flags)
{
    const bool ipv6 = value.af == PARSE_AF_INET6;
    const int type = ipv6_address_type(value.address);
    require(type >= IPV6_ADDRESS_TYPE_NONE && type <= IPV6_ADDRESS_TYPE_OTHER);
    if (value.result != 0) return;
    const bool unicast = parse_ipaddr_is_unicast(value.af, value.address) != 0;
    require((flags & PARSE_IPADDR_UNICAST) == 0 || unicast || value.af > PARSE_AF_INET6);
    require(!ipv6 || (flags & PARSE_IPADDR_MULTICAST) == 0 || type == IPV6_ADDRESS_TYPE_MULTICAST);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3) return 0;
    constexpr uint32_t families[] = {0, PARSE_AF_INET, PARSE_AF_INET, PARSE_AF_INET6, 141};
    const uint32_t family = families[data[0] % 5];
    const uint32_t flags = data[1] | static_cast<uint32_t>(data[2]) << 8;
    const std::string text(reinterpret_cast<const char *>(data + 3), size - 3);

    const Value value(family, text.c_str(), flags);
    check_class(value, flags);
    if (value.result == 0)
        for (const uint8_t full_form : {uint8_t{0}, uint8_t{1}}) check_round_trip(value, full_form);

    const std::string address = text.substr(0, std::strcspn(text.c_str(), "/"));
    if (address.empty() || address.size() > 29 || family == 0) return 0;
    check_suffix(family, address, flags & (PARSE_IPADDR_ALL_BYTES | PARSE_IPADDR_INTEGER_OK));
    check_against_libc(family == 141 ? PARSE_AF_INET6 : family, address);
    return 0;
}
