#include <arpa/inet.h>
#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "old/bytes.h"
#include "text/error_text.h"
#include "old/plain_numbers.h"
#include "old/target_numbers.h"
#include "vpn/parse_inetvpn_rd.h"

static_assert(sizeof(atmvpn_address) == 36);
static_assert(offsetof(atmvpn_address, type) == 12);

namespace orvex {
namespace {

constexpr int refused = 1;

constexpr size_t address_size = sizeof(atmvpn_address::address);

// The bits of the key in front of the address: the route distinguisher and the type.
constexpr uint32_t key_bits = 72;

// The address bits of a key without a prefix length.
constexpr uint32_t most_bits = 183;

using WorkText = std::array<char, work_text_length + 1>;

// The bytes of an address, and where a gap stands among them. More bytes than fit are counted.
struct Address {
    std::array<uint8_t, address_size> bytes{};
    size_t count = 0;
    size_t gap = 0;
    bool has_gap = false;

    void store(uint8_t byte)
    {
        if (count < bytes.size()) bytes[count] = byte;
        ++count;
    }
};

// The next character of a kind, or the text's end. Byte by byte: the texts are short, and the one
// in the work area was only just written.
template <typename Text>
Text find(Text at, char wanted)
{
    while (*at != wanted && *at != '\0') ++at;
    return at;
}

// The next "::", or null.
template <typename Text>
Text find_colons(Text at)
{
    for (at = find(at, ':'); *at != '\0'; at = find(at + 1, ':'))
        if (at[1] == ':') return at;
    return nullptr;
}

// Cuts the text at its first "/" and reads the number behind it; false when that is none.
bool cut_prefix(char *text, uint32_t &bits)
{
    bits = most_bits;
    char *const slash = find(text, '/');
    if (*slash == '\0') return true;
    *slash = '\0';
    const auto number = convert<uint32_t>(slash + 1, Base::decimal);
    bits = number.value;
    return *number.end == '\0' && number.value <= most_bits;
}

// Cuts the text at its first "::"; answers what stands behind it, or null.
char *cut_at_colons(char *text)
{
    char *const colons = find_colons(text);
    if (colons == nullptr) return nullptr;
    *colons = '\0';
    return colons + 2;
}

int read_type(const char *text, uint8_t &type, ErrorText error)
{
    const auto number = convert<uint32_t>(text, Base::from_prefix);
    if (*number.end != '\0')
        return refuse(error, keep_errno, refused, "Invalid address type '%s'", text);
    type = static_cast<uint8_t>(number.value);
    return check_value_range("Address type", number.value, 1, UINT8_MAX, error);
}

// "10.1.2.3" or "0x1f"
bool read_component(const char *text, Address &address)
{
    if (*find(text, '.') == '.') {
        in_addr ipv4{};
        if (inet_aton(text, &ipv4) == 0) return false;
        std::array<uint8_t, sizeof ipv4> bytes;
        std::memcpy(bytes.data(), &ipv4, sizeof ipv4);
        for (const uint8_t byte : bytes) address.store(byte);
        return true;
    }
    const auto number = convert<uint32_t>(text, Base::from_prefix);
    if (*number.end != '\0' || number.value > UINT8_MAX) return false;
    address.store(static_cast<uint8_t>(number.value));
    return true;
}

// Components joined by ":"; an empty one is the gap, unless it ends the text.
int read_components(char *at, Address &address, ErrorText error)
{
    for (bool is_last = false; !is_last;) {
        char *const end = find(at, ':');
        is_last = *end == '\0';
        *end = '\0';
        if (end != at) {
            if (!read_component(at, address))
                return refuse(error, keep_errno, refused, "Invalid address component '%s'", at);
            at = end + 1;
            continue;
        }
        if (address.has_gap)
            return refuse(error, keep_errno, refused, "Too many double colons in address");
        if (is_last) break;
        address.has_gap = true;
        address.gap = address.count;
        // Three colons in a row make one gap.
        at = end[1] == ':' ? end + 2 : end + 1;
    }
    if (address.count <= address_size) return 0;
    return refuse(error, keep_errno, refused, "Invalid address length");
}

// Whether every bit behind the first `bits` is zero.
bool is_host_zero(const Address &address, uint32_t bits)
{
    const size_t whole = bits / 8;
    if (whole < address_size && (address.bytes[whole] & 0xffU >> bits % 8) != 0) return false;
    const auto rest = address.bytes.begin() + std::min(whole + 1, address_size);
    return std::all_of(rest, address.bytes.end(), [](uint8_t byte) { return byte == 0; });
}

int read_atmvpn(char *text, atmvpn_address &record, uint32_t &bits, ErrorText error)
{
    if (!cut_prefix(text, bits)) return refuse(error, keep_errno, refused, "Invalid prefix length");
    char *const type = cut_at_colons(text);
    if (type == nullptr) return refused;
    uint32_t rd_type = 0;
    uint32_t high = 0;
    uint32_t low = 0;
    if (parse_inetvpn_rd(text, &rd_type, &high, &low, error.buf, error.len) != 0) return refused;
    char *const components = cut_at_colons(type);
    if (components == nullptr) return refused;
    uint8_t address_type = 0;
    if (read_type(type, address_type, error) != 0) return refused;
    record.rd_high = high;
    record.rd_low = low;
    record.type = address_type;

    Address address;
    const int result = read_components(components, address, error);
    if (result == 0 && address.has_gap) fill_gap(address.bytes, address.gap, address.count);
    std::copy(address.bytes.begin(), address.bytes.end(), record.address);
    if (result != 0) return result;
    if (!is_host_zero(address, bits))
        return refuse(error, keep_errno, refused, "Address does not match prefix");
    return 0;
}

// "10.1.2.3" or "31", and the same joined by ":"
const char *read_plain_components(const char *at, Address &address)
{
    for (;; ++at) {
        uint32_t value = 0;
        if (!read_plain_octet<LeadingZeros::octal>(at, value)) return nullptr;
        if (*at != '.') {
            address.store(static_cast<uint8_t>(value));
        } else {
            if (!read_plain_rest<LeadingZeros::octal>(at, value)) return nullptr;
            for (uint32_t shift = 32; shift > 0; shift -= 8)
                address.store(static_cast<uint8_t>(value >> (shift - 8)));
        }
        if (*at != ':') return at;
        if (address.count + sizeof value > address_size) return nullptr;
    }
}

// Reads "65000:1::5::10.1.2.3/32" as nearly all are written: plain numbers in range and no gap,
// which never fill the work area. read_atmvpn reads these to the same.
bool read_plain_atmvpn(const char *at, atmvpn_address &record, uint32_t &bits)
{
    RouteDistinguisher rd{};
    at = read_plain_rd(at, rd);
    if (at == nullptr || at[0] != ':' || at[1] != ':') return false;
    uint32_t type = 0;
    at += 2;
    if (!read_plain_octet<LeadingZeros::octal>(at, type) || type == 0) return false;
    if (at[0] != ':' || at[1] != ':') return false;
    Address address;
    at = read_plain_components(at + 2, address);
    if (at == nullptr) return false;
    bits = most_bits;
    if (*at == '/') {
        bits = 0;
        if (!read_plain_octet<LeadingZeros::octal>(++at, bits) || bits > most_bits) return false;
    }
    if (*at != '\0' || !is_host_zero(address, bits)) return false;
    record.rd_high = rd.high;
    record.rd_low = rd.low;
    record.type = static_cast<uint8_t>(type);
    std::copy(address.bytes.begin(), address.bytes.end(), record.address);
    return true;
}

// Reads any text, cut to the work area.
int read_any_atmvpn(const char *text, atmvpn_address &record, uint32_t &bits, ErrorText error)
{
    if (parse_is_atmvpn(text) == 0)
        return refuse(error, keep_errno, refused, "Invalid ATM VPN address '%s'", text);
    WorkText work;
    const size_t length = strnlen(text, work_text_length);
    std::memcpy(work.data(), text, length);
    work[length] = '\0';
    return read_atmvpn(work.data(), record, bits, error);
}

}  // namespace
}  // namespace orvex

int parse_is_atmvpn(const char *text)
{
    // A "::" at the very start does not count.
    int count = 0;
    if (*text == '\0') return 0;
    for (++text; (text = orvex::find_colons(text)) != nullptr; text += 2) ++count;
    return count == 2 || count == 3 ? 1 : 0;
}

int parse_atmvpn(const char *text, atmvpn_address *record, uint32_t *pfxlen, char *errbuf,
                 size_t errlen)
{
    using namespace orvex;
    atmvpn_address spare;
    atmvpn_address &out = record != nullptr ? *record : spare;
    uint32_t bits = 0;
    if (!read_plain_atmvpn(text, out, bits)) {
        const int result = read_any_atmvpn(text, out, bits, {errbuf, errlen});
        if (result != 0) return result;
    }
    if (pfxlen != nullptr) *pfxlen = key_bits + bits;
    return 0;
}
