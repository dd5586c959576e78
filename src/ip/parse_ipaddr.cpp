#include <arpa/inet.h>
#include <orvex/parse.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <span>

#include "old/bytes.h"
#include "old/digits.h"
#include "text/error_text.h"
#include "text/insist.h"
#include "old/plain_numbers.h"
#include "old/target_numbers.h"

namespace orvex {
namespace {

constexpr const char *source = "parse_ipaddr";

constexpr size_t ipv4_size = 4;
constexpr size_t ipv6_size = 16;
constexpr uint32_t ipv4_bits = 32;
constexpr uint32_t ipv6_bits = 128;

// A text with a "/" must fit these work areas with its terminator.
constexpr size_t ipv4_text_size = 32;
constexpr size_t ipv6_text_size = 92;

// Where an address parser leaves what it read.
struct AddressOutputs {
    uint8_t *address;
    int &pfxseen;
    uint32_t &pfxlen;
    int &maskseen;
    uint8_t *mask;
};

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
    if (reading.is_mask) return rule_broken;
    while (*rest == '.' || digit_of<10>(*rest) < 10) ++rest;
    return *rest == '\0' ? rule_broken : not_this_form;
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
        if (number.value > 255) {
            return refuse(reading.error, EINVAL, result_of_large_group(reading, rest),
                          "invalid value '%lu' in %s: '%s'",
                          static_cast<unsigned long>(number.value), reading.subject, reading.text);
        }
        reading.bytes[count++] = static_cast<uint8_t>(number.value);
        if (*rest != '.' || count == reading.bytes.size()) return end_bytes(reading, rest, count);
        group = rest + 1;
        if (*group == '\0') return end_bytes(reading, group, count);
    }
}

// Reads dotted decimal groups, one hexadecimal number or one decimal integer into `len` bytes.
int parse_ipaddr_bytes(const char *str, uint32_t flags, uint8_t *bytes, size_t len, bool is_mask,
                       ErrorText error)
{
    const ByteReading reading{
        str, is_mask ? "ip netmask" : "ip address", is_mask, flags, {bytes, len}, error};
    if (*str == '\0')
        return refuse(error, EINVAL, not_this_form, "%s is not specified", reading.subject);
    std::fill(reading.bytes.begin(), reading.bytes.end(), uint8_t{0});
    return str[0] == '0' && str[1] == 'x' ? read_hexadecimal_form(reading)
                                          : read_group_form(reading);
}

// ---- Suffixes and checks that both families share ----

int read_prefix_length(const char *suffix, const char *str, Base base, uint32_t bits,
                       const AddressOutputs &out, ErrorText error)
{
    const auto number = convert_unsigned(suffix, base);
    out.pfxlen = number.value;
    if (number.end == suffix) {
        const bool quoted = *suffix != '\0';
        return refuse(error, EINVAL, rule_broken,
                      "missing or invalid prefix length %s%s%sin address '%s'", quoted ? "'" : "",
                      suffix, quoted ? "' " : "", str);
    }
    if (*number.end != '\0')
        return refuse(error, EINVAL, rule_broken, "invalid input at '%s' in address '%s'",
                      number.end, str);
    if (number.value > bits) {
        return refuse(error, EINVAL, rule_broken,
                      "prefix length '%lu' is larger than %u in address '%s'",
                      static_cast<unsigned long>(number.value), bits, str);
    }
    out.pfxseen = 1;
    return 0;
}

int refuse_mask(const char *suffix, const char *str, ErrorText error)
{
    return refuse(error, EINVAL, rule_broken, "invalid input at '%c%s' in address '%s'", '/',
                  suffix, str);
}

int check_required(const char *str, uint32_t flags, bool seen, ErrorText error)
{
    if ((flags & PARSE_IPADDR_PREFIX_REQUIRED) == 0 || seen) return 0;
    return refuse(error, EINVAL, rule_broken, "missing required prefix length %sin address '%s'",
                  (flags & PARSE_IPADDR_MASK_OK) != 0 ? "or mask " : "", str);
}

// A text split at its first "/": the address in a copy of its own, what follows in the text itself.
template <size_t size>
struct SplitText {
    std::array<char, size> address;
    const char *suffix;
    bool has_mask;
};

// Splits at `slash`; a suffix with a `mask_mark` in it is a mask. False when the text is too long
// for the work area.
template <size_t size>
bool split_text(const char *str, const char *slash, char mask_mark, SplitText<size> &split)
{
    const auto length = static_cast<size_t>(slash - str);
    split.suffix = slash + 1;
    split.has_mask = false;
    size_t total = length + 1;
    for (const char *at = split.suffix; *at != '\0' && total < size; ++at, ++total)
        split.has_mask |= *at == mask_mark;
    if (total >= size) return false;
    std::memcpy(split.address.data(), str, length);
    split.address[length] = '\0';
    return true;
}

// ---- IPv4 ----

int read_ipv4_suffix(const char *suffix, bool is_mask, const char *str, uint32_t flags,
                     const AddressOutputs &out, ErrorText error)
{
    if (!is_mask) return read_prefix_length(suffix, str, Base::from_prefix, ipv4_bits, out, error);
    if ((flags & PARSE_IPADDR_MASK_OK) == 0) return refuse_mask(suffix, str, error);
    const int result = parse_ipaddr_bytes(suffix, flags, out.mask, ipv4_size, true, error);
    if (result == 0) out.maskseen = 1;
    return result;
}

int read_ipv4_text(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error)
{
    const char *const slash =
        (flags & PARSE_IPADDR_PREFIX_OK) != 0 ? std::strchr(str, '/') : nullptr;
    if (slash == nullptr)
        return parse_ipaddr_bytes(str, flags, out.address, ipv4_size, false, error);

    SplitText<ipv4_text_size> split;
    if (!split_text(str, slash, '.', split))
        return refuse(error, EINVAL, not_this_form, "too long to be a valid ip address: '%s'", str);
    const int result =
        parse_ipaddr_bytes(split.address.data(), flags, out.address, ipv4_size, false, error);
    if (result != 0) return result;
    return read_ipv4_suffix(split.suffix, split.has_mask, str, flags, out, error);
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
    out.maskseen = 1;
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

// What follows an IPv4 address.
struct Ipv4Suffix {
    enum class Kind : uint32_t { unreadable, none, length, mask } kind;
    uint32_t value;  // the length or the mask; 32 without either
};

int check_ipv4_host_bits(const char *str, uint32_t address, Ipv4Suffix suffix, ErrorText error)
{
    if (suffix.kind == Ipv4Suffix::Kind::mask) {
        const uint32_t mask = suffix.value;
        if ((address & ~mask) == 0) return 0;
        return refuse(error, EINVAL, rule_broken, "masked bits are not zero (%s%c%s)",
                      DottedQuad(address & mask).text.data(), '/', DottedQuad(mask).text.data());
    }
    const uint32_t pfxlen = suffix.value;
    if (pfxlen == ipv4_bits) return 0;
    if (pfxlen == 0) {
        if (address == 0) return 0;
        return refuse(error, EINVAL, rule_broken, "host portion is not zero (%s)", str);
    }
    const uint32_t host_bits = UINT32_MAX >> pfxlen;
    if ((address & host_bits) == 0) return 0;
    return refuse(error, EINVAL, rule_broken, "host portion is not zero (%s%c%lu)",
                  DottedQuad(address & ~host_bits).text.data(), '/',
                  static_cast<unsigned long>(pfxlen));
}

// The checks on an IPv4 text that was read.
[[gnu::noinline]] int check_ipv4(const char *str, uint32_t flags, uint32_t address,
                                 Ipv4Suffix suffix, ErrorText error)
{
    const bool seen = suffix.kind != Ipv4Suffix::Kind::none;
    const int result = check_required(str, flags, seen, error);
    if (result != 0) return result;
    if ((flags & PARSE_IPADDR_HOST_ZERO) == 0) return 0;
    return check_ipv4_host_bits(str, address, suffix, error);
}

int parse_ipv4_addr(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error)
{
    out.pfxseen = 0;
    out.maskseen = 0;
    out.pfxlen = ipv4_bits;
    if ((flags & PARSE_IPADDR_DEFAULT_OK) != 0 && is_zero_prefix_keyword(str)) {
        std::memset(out.address, 0, ipv4_size);
        out.pfxlen = 0;
        out.pfxseen = 1;
        return 0;
    }
    if ((flags & PARSE_IPADDR_ANY_OK) != 0 && read_any_keyword(str, out)) return 0;
    const int result = read_ipv4_text(str, flags, out, error);
    if (result != 0) return result;
    using enum Ipv4Suffix::Kind;
    const Ipv4Suffix suffix = out.maskseen == 1  ? Ipv4Suffix{mask, load_be32(out.mask)}
                              : out.pfxseen == 1 ? Ipv4Suffix{length, out.pfxlen}
                                                 : Ipv4Suffix{none, ipv4_bits};
    return check_ipv4(str, flags, load_be32(out.address), suffix, error);
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

int read_ipv6_suffix(const char *suffix, bool is_mask, const char *str, uint32_t flags,
                     const AddressOutputs &out, ErrorText error)
{
    if (!is_mask) return read_prefix_length(suffix, str, Base::decimal, ipv6_bits, out, error);
    if ((flags & PARSE_IPADDR_MASK_OK) == 0) return refuse_mask(suffix, str, error);
    const char *colon = nullptr;
    const char *reason = nullptr;
    if (!read_ipv6_text(suffix, out.mask, colon, reason))
        return refuse(error, keep_errno, rule_broken, "'%s' is not a valid ipv6 mask%s%s", suffix,
                      colon, reason);
    out.maskseen = 1;
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
    if (out.maskseen == 1) {
        if (!has_masked_bits(out.address, out.mask)) return 0;
        return refuse(error, EINVAL, rule_broken, "masked bits of '%s' must be zero", str);
    }
    if (!has_host_bits(out.address, out.pfxlen)) return 0;
    return refuse(error, EINVAL, rule_broken, "host portion of '%s' must be zero", str);
}

int parse_ipv6_addr(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error)
{
    out.pfxseen = 0;
    out.maskseen = 0;
    out.pfxlen = ipv6_bits;
    if (*str == '\0') return refuse(error, EINVAL, not_this_form, "ip address is not specified");
    if ((flags & PARSE_IPADDR_DEFAULT_OK) != 0 && is_zero_prefix_keyword(str)) {
        std::memset(out.address, 0, ipv6_size);
        out.pfxlen = 0;
        out.pfxseen = 1;
        return 0;
    }

    SplitText<ipv6_text_size> split;
    const char *address_text = str;
    const char *const slash =
        (flags & PARSE_IPADDR_PREFIX_OK) != 0 ? std::strchr(str, '/') : nullptr;
    if (slash != nullptr) {
        if (!split_text(str, slash, ':', split))
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
        const int result = read_ipv6_suffix(split.suffix, split.has_mask, str, flags, out, error);
        if (result != 0) return result;
    }
    const int result = check_required(str, flags, out.pfxseen == 1 || out.maskseen == 1, error);
    if (result != 0) return result;
    if ((flags & PARSE_IPADDR_HOST_ZERO) == 0) return 0;
    return check_ipv6_host_bits(str, out, error);
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

// Whether an IPv4 address may not appear as a source or destination; false for any family but
// PARSE_AF_INET.
bool parse_ipaddr_is_martian(uint32_t af, const void *address)
{
    if (af != PARSE_AF_INET) return false;
    const uint32_t value = load_be32(static_cast<const uint8_t *>(address));
    const bool loopback = value >> 24 == 127;
    const bool ietf_assigned = value >> 8 == 0xc00000;  // 192.0.0.0/24
    const bool class_d_or_e = value >> 29 == 7;         // 224.0.0.0/4 and 240.0.0.0/4
    return value == 0 || loopback || ietf_assigned || class_d_or_e;
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

namespace orvex {
namespace {

// What a caller wants written; any pointer may be null.
struct WantedOutputs {
    void *address;
    size_t address_len;
    int *pfxseen;
    uint32_t *pfxlen;
    int *maskseen;
    void *mask;
    size_t mask_len;
    ErrorText error;
};

// The whole front door: any text, any family, any flags.
[[gnu::noinline]] int parse_any_address(uint32_t *af, const char *str, uint32_t flags,
                                        const WantedOutputs &wanted)
{
    const ErrorText error = wanted.error;
    uint32_t private_af = 0;
    if (!insist(af != nullptr, source, "af != NULL")) af = &private_af;
    if (!insist(str != nullptr, source, "str != NULL")) str = "";

    if (*af == 0) *af = std::strchr(str, ':') != nullptr ? PARSE_AF_INET6 : PARSE_AF_INET;
    const uint32_t base = base_family(*af);
    if (base == 0)
        return refuse(error, PARSE_EAFNOSUPPORT, not_this_form, "unsupported address family");

    const size_t size = base == PARSE_AF_INET ? ipv4_size : ipv6_size;
    if (wanted.address != nullptr && wanted.address_len < size)
        return refuse(error, ENOSPC, rule_broken, "'address' not large enough to hold result");
    if (wanted.mask != nullptr && wanted.mask_len < size)
        return refuse(error, ENOSPC, rule_broken, "'mask' not large enough to hold result");

    std::array<uint8_t, ipv6_size> private_address;
    std::array<uint8_t, ipv6_size> private_mask;
    int private_seen = 0;
    uint32_t private_pfxlen = 0;
    int private_maskseen = 0;
    const AddressOutputs out{
        wanted.address != nullptr ? static_cast<uint8_t *>(wanted.address) : private_address.data(),
        wanted.pfxseen != nullptr ? *wanted.pfxseen : private_seen,
        wanted.pfxlen != nullptr ? *wanted.pfxlen : private_pfxlen,
        wanted.maskseen != nullptr ? *wanted.maskseen : private_maskseen,
        wanted.mask != nullptr ? static_cast<uint8_t *>(wanted.mask) : private_mask.data()};
    const int result = base == PARSE_AF_INET ? parse_ipv4_addr(str, flags, out, error)
                                             : parse_ipv6_addr(str, flags, out, error);
    if (result != 0) return result;
    return check_class(base, str, flags, out.address, error);
}

// ---- Plain IPv4 texts ----

// Four octets of one to three digits, alone or with a decimal length or four octets more behind a
// "/", are nearly all that is ever typed. They are read in one pass; whatever is not such a text,
// or not to be accepted as it stands, is left to parse_any_address, which reads these to the same.

// Reads what follows the address of a plain text.
Ipv4Suffix read_plain_suffix(const char *at, uint32_t flags)
{
    using Kind = Ipv4Suffix::Kind;
    constexpr Ipv4Suffix unreadable{Kind::unreadable, 0};
    if (*at == '\0') return {Kind::none, ipv4_bits};
    if (*at++ != '/' || (flags & PARSE_IPADDR_PREFIX_OK) == 0) return unreadable;
    const bool may_be_octal = *at == '0';
    uint32_t value = 0;
    if (!read_plain_octet<LeadingZeros::decimal>(at, value)) return unreadable;
    if (*at == '\0') {
        if (may_be_octal || value > ipv4_bits) return unreadable;
        return {Kind::length, value};
    }
    if ((flags & PARSE_IPADDR_MASK_OK) == 0) return unreadable;
    if (!read_plain_rest<LeadingZeros::decimal>(at, value) || *at != '\0') return unreadable;
    return {Kind::mask, value};
}

void store_plain(uint32_t address, Ipv4Suffix suffix, const WantedOutputs &wanted)
{
    const bool has_mask = suffix.kind == Ipv4Suffix::Kind::mask;
    if (wanted.address != nullptr) store_be32(static_cast<uint8_t *>(wanted.address), address);
    if (wanted.pfxseen != nullptr)
        *wanted.pfxseen = suffix.kind == Ipv4Suffix::Kind::length ? 1 : 0;
    if (wanted.pfxlen != nullptr) *wanted.pfxlen = has_mask ? ipv4_bits : suffix.value;
    if (wanted.maskseen != nullptr) *wanted.maskseen = has_mask ? 1 : 0;
    if (has_mask && wanted.mask != nullptr)
        store_be32(static_cast<uint8_t *>(wanted.mask), suffix.value);
}

// Reads on behind a plain address and checks the whole.
[[gnu::noinline]] int finish_plain_ipv4(uint32_t *af, const char *str, uint32_t flags,
                                        PlainQuad plain, const WantedOutputs &wanted)
{
    const Ipv4Suffix suffix = read_plain_suffix(plain.end, flags);
    if (suffix.kind == Ipv4Suffix::Kind::unreadable) [[unlikely]]
        return parse_any_address(af, str, flags, wanted);
    store_plain(plain.value, suffix, wanted);
    if ((flags & (PARSE_IPADDR_PREFIX_REQUIRED | PARSE_IPADDR_HOST_ZERO)) == 0) [[likely]]
        return 0;
    return check_ipv4(str, flags, plain.value, suffix, wanted.error);
}

// Flags that make a difference to a plain text beyond what the plain reader knows.
constexpr uint32_t special_flags =
    PARSE_IPADDR_ANY_OK | PARSE_IPADDR_MULTICAST | PARSE_IPADDR_NO_MARTIAN | PARSE_IPADDR_UNICAST;

}  // namespace
}  // namespace orvex

int parse_ipaddr(uint32_t *af, const char *str, uint32_t flags, void *address, size_t address_len,
                 int *pfxseen, uint32_t *pfxlen, int *maskseen, void *mask, size_t mask_len,
                 char *errbuf, size_t errlen)
{
    using namespace orvex;

    PlainQuad plain{nullptr, 0};
    if (af != nullptr && str != nullptr && *af == PARSE_AF_INET && (flags & special_flags) == 0 &&
        (address == nullptr || address_len >= ipv4_size) &&
        (mask == nullptr || mask_len >= ipv4_size)) [[likely]] {
        plain = read_plain_quad<LeadingZeros::decimal>(str);
        if (plain.end != nullptr && *plain.end == '\0' &&
            (flags & PARSE_IPADDR_PREFIX_REQUIRED) == 0) [[likely]] {
            store_plain(plain.value, {Ipv4Suffix::Kind::none, ipv4_bits},
                        {address, address_len, pfxseen, pfxlen, maskseen, mask, mask_len, {}});
            return 0;
        }
    }
    // Without flags, an IPv6 address needs nothing but inet_pton.
    if (flags == 0 && af != nullptr && str != nullptr && *af == PARSE_AF_INET6 &&
        address != nullptr && address_len >= ipv6_size &&
        (mask == nullptr || mask_len >= ipv6_size) && inet_pton(AF_INET6, str, address) == 1) {
        if (pfxseen != nullptr) *pfxseen = 0;
        if (pfxlen != nullptr) *pfxlen = ipv6_bits;
        if (maskseen != nullptr) *maskseen = 0;
        return 0;
    }
    const WantedOutputs wanted{address,  address_len, pfxseen,  pfxlen,
                               maskseen, mask,        mask_len, {errbuf, errlen}};
    return plain.end != nullptr ? finish_plain_ipv4(af, str, flags, plain, wanted)
                                : parse_any_address(af, str, flags, wanted);
}
