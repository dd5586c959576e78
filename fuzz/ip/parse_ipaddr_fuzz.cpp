// Any text with any flags: plain texts read as the general reader reads them, and what was read
// prints and reads back as the same value.
#include <orvex/parse.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Value {
    uint32_t af = 0;
    int result = 0;
    int error = 0;
    uint8_t address[16] = {};
    uint8_t mask[16] = {};
    int pfxseen = 0;
    int maskseen = 0;
    uint32_t pfxlen = 0;
    char message[64] = {};

    Value(uint32_t family, const char *text, uint32_t flags) : af(family)
    {
        errno = 0;
        result = parse_ipaddr(&af, text, flags, address, sizeof address, &pfxseen, &pfxlen,
                              &maskseen, mask, sizeof mask, message, sizeof message);
        error = errno;
    }

    bool operator==(const Value &other) const
    {
        return result == other.result && error == other.error && pfxlen == other.pfxlen &&
               pfxseen == other.pfxseen && maskseen == other.maskseen &&
               std::strcmp(message, other.message) == 0 &&
               std::memcmp(address, other.address, sizeof address) == 0 &&
               std::memcmp(mask, other.mask, sizeof mask) == 0;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3) return 0;
    constexpr uint32_t families[] = {0, PARSE_AF_INET, PARSE_AF_INET, PARSE_AF_INET6, 141};
    const uint32_t family = families[data[0] % 5];
    const uint32_t flags = data[1] | static_cast<uint32_t>(data[2]) << 8;
    const std::string text(reinterpret_cast<const char *>(data + 3), size - 3);
    const Value value(family, text.c_str(), flags);
    const uint32_t plain_flags = flags & ~uint32_t{PARSE_IPADDR_ANY_OK};
    if (family == PARSE_AF_INET && text.find("any-") != 0 &&
        !(Value(family, text.c_str(), plain_flags) ==
          Value(family, text.c_str(), plain_flags | PARSE_IPADDR_ANY_OK)))
        std::abort();
    if (value.result != 0) return 0;

    for (const uint8_t full_form : {uint8_t{0}, uint8_t{1}}) {
        char printed[FORMAT_IPADDR_BUFSIZE];
        const bool ipv6 = value.af != PARSE_AF_INET;
        if (format_ipaddr(ipv6 ? PARSE_AF_INET6 : PARSE_AF_INET, value.address, full_form,
                          value.pfxseen, value.pfxlen, value.maskseen, value.mask, printed,
                          sizeof printed) != std::strlen(printed))
            std::abort();
        // The reader of IPv4 takes a padded prefix length for octal.
        if (full_form != 0 && value.pfxseen != 0) continue;
        // The masks 1.0.0.0 and 2.0.0.0 (or 0.0.0.1 and 0.0.0.2) look like a keyword's word.
        if (std::strncmp(printed, "any-", 4) == 0) continue;
        const Value back(value.af, printed,
                         PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK | PARSE_IPADDR_ANY_OK);
        if (back.result != 0 ||
            std::memcmp(back.address, value.address, sizeof back.address) != 0 ||
            back.pfxlen != value.pfxlen || back.maskseen != value.maskseen)
            std::abort();
    }
    return 0;
}
