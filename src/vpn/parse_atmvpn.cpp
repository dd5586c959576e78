#include <orvex/parse.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "text/bytes.h"
#include "text/dotted_quad.h"
#include "text/error_text.h"
#include "text/target_numbers.h"
#include "vpn/parse_inetvpn_rd.h"

static_assert(sizeof(atmvpn_address) == 36);
static_assert(offsetof(atmvpn_address, type) == 12);

namespace orvex {
namespace {

constexpr int refused = 1;

constexpr size_t address_size = sizeof(atmvpn_address::address);

// The bits of the key before the address: the route distinguisher and the type.
constexpr uint32_t key_bits = 72;

// The address bits of a key without a prefix length.
constexpr uint32_t most_bits = 183;

// The "::" of a text, but for one at its very start.
struct Separators {
    const char *first = nullptr;
    const char *second = nullptr;
    size_t count = 0;
    const char *text_end = nullptr;
};

// Returns the next separator, or the end. Looks at every other character, as each separator has one
// of them.
const char *find_separator(const char *at, const char *end)
{
    for (const char *const last = end - 1; at < last; at += 2) {
        if (at[1] != ':') continue;
        if (at[0] == ':') return at;
        if (at[2] == ':') return at + 1;
    }
    return end;
}

// Of three colons in a row the first two count, of four each two.
Separators find_separators(const char *text)
{
    Separators separators;
    const char *const end = text + std::strlen(text);
    const char *at = text == end ? end : find_separator(text + 1, end);
    for (; at != end; at = find_separator(at + 2, end)) {
        if (separators.count == 0) separators.first = at;
        if (separators.count == 1) separators.second = at;
        ++separators.count;
    }
    separators.text_end = end;
    return separators;
}

bool is_atmvpn(const Separators &separators)
{
    return separators.count == 2 || separators.count == 3;
}

// What a text that is no number gives: above all of them.
constexpr uint64_t no_number = UINT64_MAX;

// Converts a whole text of at most longest_vpn_text characters; more digits may follow it.
[[gnu::noinline]] uint64_t convert_all(std::string_view text, Base base)
{
    const TerminatedCopy copy(text);
    const auto number = convert<uint32_t>(copy.text.data(), base);
    return *number.end == '\0' ? number.value : no_number;
}

// As convert_all; an octet without leading zeros is read here.
uint64_t read_number(const char *first, const char *end, Base base)
{
    const char *at = first;
    uint32_t octet{};
    if (read_octet<LeadingZeros::refused>(at, octet) && at == end) [[likely]]
        return octet;
    return convert_all({first, end}, base);
}

struct Component {
    uint32_t value;
    size_t size;  // bytes: 1, 4 of an IPv4 address, 0 of a text that is neither
};

// "0x1f", "10.1.2"
[[gnu::noinline]] Component convert_component(std::string_view text)
{
    if (text.find('.') == std::string_view::npos) {
        const uint64_t number = convert_all(text, Base::from_prefix);
        return {static_cast<uint32_t>(number), number <= UINT8_MAX ? size_t{1} : 0};
    }
    uint32_t ipv4{};
    const bool is_ipv4 = read_by_inet_aton(text, ipv4);
    return {ipv4, is_ipv4 ? ipv4_size : 0};
}

// False as well after the end, where `at` is when an octet goes on there.
bool ends_component(const char *at, const char *end)
{
    return at <= end && (at == end || *at == ':');
}

// Reads a component and moves `at` past it, also when it is refused. An octet and four of them,
// without leading zeros, are read here.
Component read_component(const char *&at, const char *end)
{
    const char *const first = at;
    uint32_t value{};
    if (read_octet<LeadingZeros::refused>(at, value) && ends_component(at, end)) return {value, 1};
    at = first;
    if (read_dotted_quad(at, value) && ends_component(at, end)) return {value, ipv4_size};
    at = std::find(first, end, ':');
    return convert_component({first, at});
}

// Stores a component after `count` bytes, as far as it fits. Returns the new count.
size_t store(Component component, uint8_t *bytes, size_t count)
{
    if (component.size == 1) {
        if (count < address_size) bytes[count] = static_cast<uint8_t>(component.value);
        return count + 1;
    }
    for (const int shift : {24, 16, 8, 0}) {
        if (count < address_size) bytes[count] = static_cast<uint8_t>(component.value >> shift);
        ++count;
    }
    return count;
}

// Components joined by ":"; an empty one is the gap, unless it ends the text.
int read_address(const char *at, const char *end, uint32_t bits, uint8_t *bytes, ErrorText error)
{
    constexpr size_t no_gap = SIZE_MAX;
    size_t count = 0;
    size_t gap = no_gap;
    std::memset(bytes, 0, address_size);
    for (;; ++at) {
        if (ends_component(at, end)) {
            // "1::2::3", "1::2:"
            if (gap != no_gap) return refuse(error, refused, "Too many double colons in address");
            if (at == end) break;
            gap = count;
            // Three colons in a row make one gap.
            if (at + 1 != end && at[1] == ':') ++at;
            continue;
        }
        const char *const first = at;
        const Component component = read_component(at, end);
        // "256", "1.2.3.x"
        if (component.size == 0)
            return refuse(error, refused, "Invalid address component '%.*s'",
                          precision({first, at}), first);
        count = store(component, bytes, count);
        if (at == end) break;
    }
    if (count > address_size) return refuse(error, refused, "Invalid address length");
    if (gap != no_gap) {
        fill_gap(bytes, address_size, gap, count);
        count = address_size;
    }
    // "1:2/14"
    if (!bits_after_are_zero(bytes, count, bits))
        return refuse(error, refused, "Address does not match prefix");
    return 0;
}

int read_type(const char *first, const char *end, uint8_t &type, ErrorText error)
{
    const uint64_t number = read_number(first, end, Base::from_prefix);
    // "5x"
    if (number == no_number)
        return refuse(error, refused, "Invalid address type '%.*s'", precision({first, end}),
                      first);
    type = static_cast<uint8_t>(number);
    return check_value_range("Address type", static_cast<uint32_t>(number), 1, UINT8_MAX, error);
}

// "65000:1::5::10.1.2.3/32"
int read_atmvpn(const char *text, atmvpn_address &record, uint32_t &bits, ErrorText error)
{
    const Separators separators = find_separators(text);
    if (!is_atmvpn(separators)) return refuse(error, refused, "Invalid ATM VPN address '%s'", text);

    const auto length = static_cast<size_t>(separators.text_end - text);
    const std::string_view work(text, std::min(length, longest_vpn_text));
    const size_t slash = work.find('/');
    const bool has_prefix = slash != std::string_view::npos;
    const char *const work_end = text + work.size();
    const char *const end = has_prefix ? text + slash : work_end;
    const uint64_t number = has_prefix ? read_number(end + 1, work_end, Base::decimal) : most_bits;
    // "…/184", "…/1x"
    if (number > most_bits) return refuse(error, refused, "Invalid prefix length");
    bits = static_cast<uint32_t>(number);

    // A separator at the very start leaves an empty route distinguisher.
    const char *const rd_end = std::memcmp(text, "::", 2) == 0 ? text : separators.first;
    // No "::" before the cut.
    if (end - rd_end < 2) return refused;
    uint32_t rd_type{};
    uint32_t high{};
    uint32_t low{};
    if (read_rd(text, static_cast<size_t>(rd_end - text), rd_type, high, low, error) != 0)
        return refused;

    const char *const type_end = separators.second;
    // One "::" before the cut.
    if (end - type_end < 2) return refused;
    uint8_t type{};
    if (read_type(rd_end + 2, type_end, type, error) != 0) return refused;

    record.rd_high = high;
    record.rd_low = low;
    record.type = type;
    return read_address(type_end + 2, end, bits, record.address, error);
}

}  // namespace
}  // namespace orvex

int parse_is_atmvpn(const char *text)
{
    return orvex::is_atmvpn(orvex::find_separators(text)) ? 1 : 0;
}

int parse_atmvpn(const char *text, atmvpn_address *record, uint32_t *pfxlen, char *errbuf,
                 size_t errlen)
{
    using namespace orvex;
    atmvpn_address spare;
    atmvpn_address &out = record != nullptr ? *record : spare;
    uint32_t bits{};
    const int result = read_atmvpn(text, out, bits, {errbuf, errlen});
    if (result != 0) return result;
    if (pfxlen != nullptr) *pfxlen = key_bits + bits;
    return 0;
}
