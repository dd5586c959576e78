#include "parse_ipaddr.h"

#include <arpa/inet.h>
#include <orvex/parse.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <span>

#include "support/bytes.h"
#include "support/digits.h"
#include "support/insist.h"
#include "support/target_numbers.h"

namespace orvex
{
namespace
{

constexpr const char *source = "parse_ipaddr";

constexpr size_t ipv4_size = 4;
constexpr size_t ipv6_size = 16;
constexpr uint32_t ipv4_bits = 32;
constexpr uint32_t ipv6_bits = 128;

// A text with a "/" must fit these work areas with its terminator.
constexpr size_t ipv4_text_size = 32;
constexpr size_t ipv6_text_size = 92;

bool is_zero_prefix_keyword(const char *str)
{
    return std::strcmp(str, "default") == 0 || std::strcmp(str, "all") == 0;
}

// An unsigned number that must not start with its sign: a "-" in front converts nothing.
Conversion<uint32_t> convert_unsigned(const char *text, Base base)
{
    if (*text == '-') return {0, text, false};
    return convert<uint32_t>(text, base);
}

void insist_outputs(const AddressOutputs &out)
{
    insist(out.address != nullptr, source, "address != NULL");
    insist(out.pfxseen != nullptr, source, "pfxseen != NULL");
    insist(out.pfxlen != nullptr, source, "pfxlen != NULL");
    insist(out.maskseen != nullptr, source, "maskseen != NULL");
    insist(out.mask != nullptr, source, "mask != NULL");
}

// ---- Bytes in dotted, hexadecimal or integer form ----

struct ByteReading {
    const char *text;
    const char *subject;
    bool is_mask;
    uint32_t flags;
    std::span<uint8_t> bytes;
    ErrorText error;
};

void store_right_aligned(std::span<uint8_t> bytes, uint32_t value)
{
    for (auto byte = bytes.rbegin(); byte != bytes.rend() && value != 0; ++byte, value >>= 8)
        *byte = static_cast<uint8_t>(value);
}

int end_bytes(const ByteReading &reading, const char *rest, size_t count)
{
    if (*rest != '\0')
        return refuse(reading.error, EINVAL, *rest == '/' ? rule_broken : not_this_form,
                      "invalid input at '%s' in %s '%s'", rest, reading.subject, reading.text);
    if ((reading.flags & PARSE_IPADDR_ALL_BYTES) != 0 && count != reading.bytes.size())
        return refuse(reading.error, EINVAL, rule_broken, "missing information in %s: '%s'",
                      reading.subject, reading.text);
    return 0;
}

// "0xffffff00": one number for all bytes.
int read_hexadecimal_form(const ByteReading &reading)
{
    const auto number = convert<uint32_t>(reading.text, Base::hexadecimal);
    const bool has_digits = digit_value(reading.text[2]) < 16;
    const bool all_ones = number.value == UINT32_MAX;
    // All ones is also what an overflow saturates to: only its plain spelling counts.
    if (!has_digits || (all_ones && strcasecmp(reading.text, "0xFFFFFFFF") != 0))
        return refuse(reading.error, EINVAL, not_this_form, "invalid hexadecimal %s: '%s'",
                      reading.subject, reading.text);
    store_right_aligned(reading.bytes, number.value);
    return end_bytes(reading, number.end, reading.bytes.size());
}

// A number above 255 still makes a text an address when nothing but digits and dots follow it.
int result_of_large_group(const ByteReading &reading, const char *rest)
{
    if (reading.is_mask || rest[std::strspn(rest, "0123456789.")] == '\0') return rule_broken;
    return not_this_form;
}

// "10.1.2.3", "10.1", "10." or, as an integer, "167772161".
int read_group_form(const ByteReading &reading)
{
    const char *group = reading.text;
    for (size_t count = 0;;) {
        const auto number = convert_unsigned(group, Base::decimal);
        const bool nothing = number.end == group;
        const bool overflow = number.value == UINT32_MAX && std::strcmp(group, "4294967295") != 0;
        if (nothing || overflow)
            return refuse(reading.error, EINVAL, not_this_form, "invalid input at '%s' in %s: '%s'",
                          group, reading.subject, reading.text);
        const char *const rest = number.end;
        if (count == 0 && (reading.flags & PARSE_IPADDR_INTEGER_OK) != 0 && *rest == '\0') {
            store_right_aligned(reading.bytes, number.value);
            return 0;
        }
        if (number.value > 255)
            return refuse(reading.error, EINVAL, result_of_large_group(reading, rest),
                          "invalid value '%lu' in %s: '%s'",
                          static_cast<unsigned long>(number.value), reading.subject, reading.text);
        reading.bytes[count++] = static_cast<uint8_t>(number.value);
        if (*rest != '.' || count == reading.bytes.size()) return end_bytes(reading, rest, count);
        group = rest + 1;
        if (*group == '\0') return end_bytes(reading, group, count);
    }
}

// ---- Suffixes and checks that both families share ----

int read_prefix_length(const char *suffix, const char *str, Base base, uint32_t bits,
                       const AddressOutputs &out, ErrorText error)
{
    const auto number = convert_unsigned(suffix, base);
    *out.pfxlen = number.value;
    if (number.end == suffix) {
        const bool quoted = *suffix != '\0';
        return refuse(error, EINVAL, rule_broken,
                      "missing or invalid prefix length %s%s%sin address '%s'", quoted ? "'" : "",
                      suffix, quoted ? "' " : "", str);
    }
    if (*number.end != '\0')
        return refuse(error, EINVAL, rule_broken, "invalid input at '%s' in address '%s'",
                      number.end, str);
    if (number.value > bits)
        return refuse(error, EINVAL, rule_broken,
                      "prefix length '%lu' is larger than %u in address '%s'",
                      static_cast<unsigned long>(number.value), bits, str);
    *out.pfxseen = 1;
    return 0;
}

int refuse_mask(const char *suffix, const char *str, ErrorText error)
{
    return refuse(error, EINVAL, rule_broken, "invalid input at '%c%s' in address '%s'", '/',
                  suffix, str);
}

int check_required(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error)
{
    if ((flags & PARSE_IPADDR_PREFIX_REQUIRED) == 0 || *out.pfxseen == 1 || *out.maskseen == 1)
        return 0;
    return refuse(error, EINVAL, rule_broken, "missing required prefix length %sin address '%s'",
                  (flags & PARSE_IPADDR_MASK_OK) != 0 ? "or mask " : "", str);
}

// A text split at its first "/": the address in a copy of its own, what follows in the text itself.
template <size_t size>
struct SplitText {
    std::array<char, size> address;
    const char *suffix;
};

// Splits at `slash`; false when the text is too long for the work area.
template <size_t size>
bool split_text(const char *str, const char *slash, SplitText<size> &split)
{
    const auto length = static_cast<size_t>(slash - str);
    if (length >= size || strnlen(slash, size - length) == size - length) return false;
    std::memcpy(split.address.data(), str, length);
    split.address[length] = '\0';
    split.suffix = slash + 1;
    return true;
}

// ---- IPv4 ----

// Reads one to three digits of a value up to 255.
bool read_plain_octet(const char *&at, uint32_t &octet)
{
    const auto digit = [&at](int place) { return static_cast<unsigned char>(at[place]) - 48U; };
    const uint32_t first = digit(0);
    if (first > 9) return false;
    const uint32_t second = digit(1);
    if (second > 9) {
        octet = first;
        at += 1;
        return true;
    }
    const uint32_t third = digit(2);
    if (third > 9) {
        octet = first * 10 + second;
        at += 2;
        return true;
    }
    octet = first * 100 + second * 10 + third;
    at += 3;
    return octet <= 255;
}

// Reads four plain octets joined by ".".
bool read_plain_quad(const char *&at, uint32_t &quad)
{
    uint32_t a = 0, b = 0, c = 0, d = 0;
    const char *p = at;
    if (!read_plain_octet(p, a) || *p != '.' || !read_plain_octet(++p, b) || *p != '.' ||
        !read_plain_octet(++p, c) || *p != '.' || !read_plain_octet(++p, d))
        return false;
    quad = a << 24 | b << 16 | c << 8 | d;
    at = p;
    return true;
}

// Reads a whole text that is four plain octets, alone or with a plain length or mask behind them:
// nearly all that is ever typed. Any other text, refused ones included, is left to
// read_general_form, which reads these texts to the same values; then nothing is written.
bool read_plain_form(const char *str, uint32_t flags, const AddressOutputs &out)
{
    uint32_t address = 0;
    if (!read_plain_quad(str, address)) return false;
    if (*str == '\0') {
        store_be32(out.address, address);
        return true;
    }
    if (*str != '/' || (flags & PARSE_IPADDR_PREFIX_OK) == 0) return false;
    ++str;

    uint32_t number = 0;
    const char *rest = str;
    const bool leading_zero = *str == '0';  // may be octal or hexadecimal
    if (!leading_zero && read_plain_octet(rest, number) && *rest == '\0' && number <= ipv4_bits) {
        store_be32(out.address, address);
        *out.pfxlen = number;
        *out.pfxseen = 1;
        return true;
    }
    if ((flags & PARSE_IPADDR_MASK_OK) == 0) return false;
    if (!read_plain_quad(str, number) || *str != '\0') return false;
    store_be32(out.address, address);
    store_be32(out.mask, number);
    *out.maskseen = 1;
    return true;
}

int read_ipv4_suffix(const char *suffix, const char *str, uint32_t flags, const AddressOutputs &out,
                     ErrorText error)
{
    if (std::strchr(suffix, '.') == nullptr)
        return read_prefix_length(suffix, str, Base::from_prefix, ipv4_bits, out, error);
    if ((flags & PARSE_IPADDR_MASK_OK) == 0) return refuse_mask(suffix, str, error);
    const int result = parse_ipaddr_bytes(suffix, flags, out.mask, ipv4_size, true, error);
    if (result == 0) *out.maskseen = 1;
    return result;
}

int read_general_form(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error)
{
    const char *const slash =
        (flags & PARSE_IPADDR_PREFIX_OK) != 0 ? std::strchr(str, '/') : nullptr;
    if (slash == nullptr)
        return parse_ipaddr_bytes(str, flags, out.address, ipv4_size, false, error);

    SplitText<ipv4_text_size> split;
    if (!split_text(str, slash, split))
        return refuse(error, EINVAL, not_this_form, "too long to be a valid ip address: '%s'", str);
    const int result =
        parse_ipaddr_bytes(split.address.data(), flags, out.address, ipv4_size, false, error);
    if (result != 0) return result;
    return read_ipv4_suffix(split.suffix, str, flags, out, error);
}

// "any-unicast" and "any-multicast" stand for address zero with a keyword in place of the mask.
bool read_any_keyword(const char *str, const AddressOutputs &out)
{
    std::memset(out.address, 0, ipv4_size);
    std::memset(out.mask, 0, ipv4_size);
    uint32_t word = 0;
    if (std::strcmp(str, "any-unicast") == 0) word = IPADDR_ANY_UNICAST;
    if (std::strcmp(str, "any-multicast") == 0) word = IPADDR_ANY_MULTICAST;
    if (word == 0) return false;
    std::memcpy(out.mask, &word, sizeof word);
    *out.maskseen = 1;
    return true;
}

struct DottedQuad {
    std::array<char, 16> text;

    explicit DottedQuad(uint32_t value)
    {
        std::array<uint8_t, ipv4_size> bytes;
        store_be32(bytes.data(), value);
        *put_dotted_quad<put_octet>(text.data(), bytes.data()) = '\0';
    }
};

int check_ipv4_host_bits(const char *str, const AddressOutputs &out, ErrorText error)
{
    const uint32_t address = load_be32(out.address);
    if (*out.maskseen == 1) {
        const uint32_t mask = load_be32(out.mask);
        if ((address & ~mask) == 0) return 0;
        return refuse(error, EINVAL, rule_broken, "masked bits are not zero (%s%c%s)",
                      DottedQuad(address & mask).text.data(), '/', DottedQuad(mask).text.data());
    }
    const uint32_t pfxlen = *out.pfxlen;
    if (pfxlen == ipv4_bits) return 0;
    if (pfxlen == 0) {
        if (address == 0) return 0;
        return refuse(error, EINVAL, rule_broken, "host portion is not zero (%s)", str);
    }
    const uint32_t netmask = ~(UINT32_MAX >> pfxlen);
    if ((address & ~netmask) == 0) return 0;
    return refuse(error, EINVAL, rule_broken, "host portion is not zero (%s%c%lu)",
                  DottedQuad(address & netmask).text.data(), '/',
                  static_cast<unsigned long>(pfxlen));
}

// ---- IPv6 ----

// Reads an address or a mask of RFC 4291 section 2.2.
bool read_ipv6_text(const char *text, uint8_t *bytes, const char *&colon, const char *&reason)
{
    const int answer = inet_pton(AF_INET6, text, bytes);
    colon = answer < 0 ? ": " : "";
    reason = answer < 0 ? std::strerror(errno) : "";
    return answer == 1;
}

int read_ipv6_suffix(const char *suffix, const char *str, uint32_t flags, const AddressOutputs &out,
                     ErrorText error)
{
    if (std::strchr(suffix, ':') == nullptr)
        return read_prefix_length(suffix, str, Base::decimal, ipv6_bits, out, error);
    if ((flags & PARSE_IPADDR_MASK_OK) == 0) return refuse_mask(suffix, str, error);
    const char *colon = nullptr;
    const char *reason = nullptr;
    if (!read_ipv6_text(suffix, out.mask, colon, reason))
        return refuse(error, keep_errno, rule_broken, "'%s' is not a valid ipv6 mask%s%s", suffix,
                      colon, reason);
    *out.maskseen = 1;
    return 0;
}

// Whether the address has a bit behind its first `pfxlen` bits.
bool has_host_bits(const uint8_t *address, uint32_t pfxlen)
{
    if (pfxlen >= ipv6_bits) return false;
    size_t byte = pfxlen / 8;
    if ((address[byte] & (0xffU >> pfxlen % 8)) != 0) return true;
    while (++byte < ipv6_size)
        if (address[byte] != 0) return true;
    return false;
}

bool has_masked_bits(const uint8_t *address, const uint8_t *mask)
{
    for (size_t byte = 0; byte < ipv6_size; ++byte)
        if ((address[byte] & ~mask[byte]) != 0) return true;
    return false;
}

int check_ipv6_host_bits(const char *str, const AddressOutputs &out, ErrorText error)
{
    if (*out.maskseen == 1) {
        if (!has_masked_bits(out.address, out.mask)) return 0;
        return refuse(error, EINVAL, rule_broken, "masked bits of '%s' must be zero", str);
    }
    if (!has_host_bits(out.address, *out.pfxlen)) return 0;
    return refuse(error, EINVAL, rule_broken, "host portion of '%s' must be zero", str);
}

// ---- Families and class rules ----

struct Family {
    uint32_t code;
    uint32_t base;  // whose text and class rules it follows
};

constexpr std::array<Family, 9> families = {{
    {PARSE_AF_INET, PARSE_AF_INET},
    {PARSE_AF_INET6, PARSE_AF_INET6},
    {73, PARSE_AF_INET},
    {119, PARSE_AF_INET},
    {121, PARSE_AF_INET6},
    {129, PARSE_AF_INET},
    {131, PARSE_AF_INET6},
    {139, PARSE_AF_INET},
    {141, PARSE_AF_INET6},
}};

// The base family of a code, 0 for an unsupported one.
uint32_t base_family(uint32_t code)
{
    for (const Family &family : families)
        if (family.code == code) return family.base;
    return 0;
}

bool is_ipv4_multicast(uint32_t address) { return address >> 28 == 0xe; }

bool is_multicast(uint32_t base, const uint8_t *address)
{
    return base == PARSE_AF_INET ? is_ipv4_multicast(load_be32(address)) : address[0] == 0xff;
}

int check_class(uint32_t base, const char *str, uint32_t flags, const uint8_t *address,
                ErrorText error)
{
    if ((flags & PARSE_IPADDR_MULTICAST) != 0 && !is_multicast(base, address))
        return refuse(error, keep_errno, rule_broken, "invalid multicast address - '%s'", str);
    if ((flags & PARSE_IPADDR_NO_MARTIAN) != 0 && parse_ipaddr_is_martian(base, address))
        return refuse(error, keep_errno, rule_broken, "martian address not allowed - '%s'", str);
    if ((flags & PARSE_IPADDR_UNICAST) != 0 && parse_ipaddr_is_unicast(base, address) == 0)
        return refuse(error, keep_errno, rule_broken, "invalid unicast address - '%s'", str);
    return 0;
}

}  // namespace

int parse_ipaddr_bytes(const char *str, uint32_t flags, uint8_t *bytes, size_t len, bool is_mask,
                       ErrorText error)
{
    insist(str != nullptr, source, "str != NULL");
    insist(bytes != nullptr, source, "bytes != NULL");
    const ByteReading reading{
        str, is_mask ? "ip netmask" : "ip address", is_mask, flags, {bytes, len}, error};
    if (*str == '\0')
        return refuse(error, EINVAL, not_this_form, "%s is not specified", reading.subject);
    std::fill(reading.bytes.begin(), reading.bytes.end(), uint8_t{0});
    return str[0] == '0' && str[1] == 'x' ? read_hexadecimal_form(reading)
                                          : read_group_form(reading);
}

int parse_ipv4_addr(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error)
{
    insist(str != nullptr, source, "str != NULL");
    insist_outputs(out);
    *out.pfxseen = 0;
    *out.maskseen = 0;
    *out.pfxlen = ipv4_bits;
    if ((flags & PARSE_IPADDR_DEFAULT_OK) != 0 && is_zero_prefix_keyword(str)) {
        std::memset(out.address, 0, ipv4_size);
        *out.pfxlen = 0;
        *out.pfxseen = 1;
        return 0;
    }
    if ((flags & PARSE_IPADDR_ANY_OK) != 0 && read_any_keyword(str, out)) return 0;
    if (!read_plain_form(str, flags, out)) {
        const int result = read_general_form(str, flags, out, error);
        if (result != 0) return result;
    }
    const int result = check_required(str, flags, out, error);
    if (result != 0) return result;
    if ((flags & PARSE_IPADDR_HOST_ZERO) == 0) return 0;
    return check_ipv4_host_bits(str, out, error);
}

int parse_ipv6_addr(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error)
{
    insist(str != nullptr, source, "str != NULL");
    insist_outputs(out);
    *out.pfxseen = 0;
    *out.maskseen = 0;
    *out.pfxlen = ipv6_bits;
    if (*str == '\0') return refuse(error, EINVAL, not_this_form, "ip address is not specified");
    if ((flags & PARSE_IPADDR_DEFAULT_OK) != 0 && is_zero_prefix_keyword(str)) {
        std::memset(out.address, 0, ipv6_size);
        *out.pfxlen = 0;
        *out.pfxseen = 1;
        return 0;
    }

    SplitText<ipv6_text_size> split;
    const char *address_text = str;
    const char *const slash =
        (flags & PARSE_IPADDR_PREFIX_OK) != 0 ? std::strchr(str, '/') : nullptr;
    if (slash != nullptr) {
        if (!split_text(str, slash, split))
            return refuse(error, EINVAL, not_this_form, "too long to be a valid ipv6 address: '%s'",
                          str);
        address_text = split.address.data();
    }
    const char *colon = nullptr;
    const char *reason = nullptr;
    if (!read_ipv6_text(address_text, out.address, colon, reason))
        return refuse(error, keep_errno, not_this_form, "'%s' is not a valid ipv6 address%s%s",
                      address_text, colon, reason);
    if (slash != nullptr) {
        const int result = read_ipv6_suffix(split.suffix, str, flags, out, error);
        if (result != 0) return result;
    }
    const int result = check_required(str, flags, out, error);
    if (result != 0) return result;
    if ((flags & PARSE_IPADDR_HOST_ZERO) == 0) return 0;
    return check_ipv6_host_bits(str, out, error);
}

bool parse_ipaddr_is_martian(uint32_t af, const void *address)
{
    if (af != PARSE_AF_INET) return false;
    const uint32_t value = load_be32(static_cast<const uint8_t *>(address));
    const bool loopback = value >> 24 == 127;
    const bool ietf_assigned = value >> 8 == 0xc00000;  // 192.0.0.0/24
    const bool class_d_or_e = value >> 29 == 7;         // 224.0.0.0/4 and 240.0.0.0/4
    return value == 0 || loopback || ietf_assigned || class_d_or_e;
}

}  // namespace orvex

int parse_ipaddr_is_unicast(uint32_t af, const void *address)
{
    const auto *const bytes = static_cast<const uint8_t *>(address);
    if (af == PARSE_AF_INET) {
        const uint32_t value = orvex::load_be32(bytes);
        return value != 0 && value != UINT32_MAX && !orvex::is_ipv4_multicast(value) ? 1 : 0;
    }
    if (af == PARSE_AF_INET6) {
        const int type = ipv6_address_type(address);
        return type != IPV6_ADDRESS_TYPE_NONE && type != IPV6_ADDRESS_TYPE_MULTICAST ? 1 : 0;
    }
    return 0;
}

int ipv6_address_type(const void *address)
{
    constexpr std::array<uint8_t, orvex::ipv6_size> unspecified{};
    if (address == nullptr || std::memcmp(address, unspecified.data(), unspecified.size()) == 0)
        return IPV6_ADDRESS_TYPE_NONE;
    const auto *const bytes = static_cast<const uint8_t *>(address);
    if (bytes[0] == 0xff) return IPV6_ADDRESS_TYPE_MULTICAST;
    if (bytes[0] != 0xfe) return IPV6_ADDRESS_TYPE_OTHER;
    if (bytes[1] >> 6 == 2) return IPV6_ADDRESS_TYPE_LINK_LOCAL;
    if (bytes[1] >> 6 == 3) return IPV6_ADDRESS_TYPE_SITE_LOCAL;
    return IPV6_ADDRESS_TYPE_OTHER;
}

int parse_ipaddr(uint32_t *af, const char *str, uint32_t flags, void *address, size_t address_len,
                 int *pfxseen, uint32_t *pfxlen, int *maskseen, void *mask, size_t mask_len,
                 char *errbuf, size_t errlen)
{
    using namespace orvex;

    uint32_t private_af = 0;
    if (!insist(af != nullptr, source, "af != NULL")) af = &private_af;
    if (!insist(str != nullptr, source, "str != NULL")) str = "";
    const ErrorText error{errbuf, errlen};

    if (*af == 0) *af = std::strchr(str, ':') != nullptr ? PARSE_AF_INET6 : PARSE_AF_INET;
    const uint32_t base = base_family(*af);
    if (base == 0)
        return refuse(error, PARSE_EAFNOSUPPORT, not_this_form, "unsupported address family");

    const size_t size = base == PARSE_AF_INET ? ipv4_size : ipv6_size;
    if (address != nullptr && address_len < size)
        return refuse(error, ENOSPC, rule_broken, "'address' not large enough to hold result");
    if (mask != nullptr && mask_len < size)
        return refuse(error, ENOSPC, rule_broken, "'mask' not large enough to hold result");

    int private_pfxseen = 0;
    uint32_t private_pfxlen = 0;
    int private_maskseen = 0;
    std::array<uint8_t, ipv6_size> private_address;
    std::array<uint8_t, ipv6_size> private_mask;
    const AddressOutputs out{
        address != nullptr ? static_cast<uint8_t *>(address) : private_address.data(),
        pfxseen != nullptr ? pfxseen : &private_pfxseen,
        pfxlen != nullptr ? pfxlen : &private_pfxlen,
        maskseen != nullptr ? maskseen : &private_maskseen,
        mask != nullptr ? static_cast<uint8_t *>(mask) : private_mask.data()};
    const int result = base == PARSE_AF_INET ? parse_ipv4_addr(str, flags, out, error)
                                             : parse_ipv6_addr(str, flags, out, error);
    if (result != 0) return result;
    return check_class(base, str, flags, out.address, error);
}
