#include "text/ipv6_text.h"

#include <algorithm>
#include <bit>

#include "text/bytes.h"
#include "text/digits.h"
#include "text/dotted_quad.h"
#include "text/hex_digits.h"

namespace orvex {
namespace {

constexpr unsigned groups_before_quad = 6;

// What is read of an address so far.
struct Groups {
    std::array<uint8_t, ipv6_size> bytes{};
    size_t count = 0;  // bytes
    size_t gap = no_gap;

    static constexpr size_t no_gap = SIZE_MAX;
};

// Whether the groups and the "::" make a whole address.
bool is_complete(const Groups &groups)
{
    return (groups.gap == Groups::no_gap) == (groups.count == ipv6_size);
}

// "1.2.3.4"
bool read_quad(const char *&at, Groups &groups)
{
    uint32_t quad{};
    if (groups.count > ipv6_size - ipv4_size || !read_dotted_quad(at, quad)) return false;
    store_be32(&groups.bytes[groups.count], quad);
    groups.count += ipv4_size;
    return true;
}

// "1:2:3", "1::" or "1:2:3.4.5.6", also nothing at all after a "::"
bool read_groups(const char *&at, Groups &groups)
{
    while (groups.count < ipv6_size) {
        const char *const start = at;
        uint32_t value{};
        if (!read_hex_digits<4>(at, value)) return true;
        if (*at == '.') [[unlikely]] {
            at = start;
            return read_quad(at, groups);
        }
        store_be16(&groups.bytes[groups.count], value);
        groups.count += 2;
        if (*at != ':') return true;
        if (at[1] == ':' && groups.gap == Groups::no_gap) {
            groups.gap = groups.count;
            at += 2;
        } else if (!is_hex_digit(*++at)) {
            return false;
        }
    }
    return true;
}

// The longest run of two or more zero groups, the first of equal ones.
ZeroRun longest_zero_run(const uint8_t *bytes)
{
    ZeroRun longest;
    for (unsigned zeros = zero_groups(bytes); zeros != 0;) {
        const auto first = static_cast<unsigned>(std::countr_zero(zeros));
        const auto end = first + static_cast<unsigned>(std::countr_one(zeros >> first));
        if (end - first > std::max(longest.end - longest.first, 1U)) longest = {first, end};
        zeros = zeros >> end << end;
    }
    return longest;
}

// Writes the groups from `first` up to `end`, and a ":" after each.
char *put_groups_between(char *at, const uint8_t *bytes, unsigned first, unsigned end)
{
    for (size_t group = first; group < end; ++group) {
        at = put_hex_group(at, load_be16(bytes + 2 * group));
        *at++ = ':';
    }
    return at;
}

// Writes the first `count` groups with their "::", and a ":" after each.
char *put_groups(char *at, const uint8_t *bytes, ZeroRun run, unsigned count)
{
    at = put_groups_between(at, bytes, 0, std::min(run.first, count));
    if (run.first >= count) return at;
    // The ":" after the group before it is the first of the "::".
    if (run.first == 0) *at++ = ':';
    *at++ = ':';
    return put_groups_between(at, bytes, run.end, count);
}

// Whether an address is IPv4-compatible, but for "::" and "::x", or IPv4-mapped.
bool has_ipv4_part(const uint8_t *bytes, ZeroRun run)
{
    if (run.first != 0) return false;
    return run.end == groups_before_quad ||
           (run.end == groups_before_quad - 1 && load_be16(bytes + 10) == 0xffff);
}

}  // namespace

bool read_ipv6(const char *&at, uint8_t *bytes)
{
    Groups groups;
    const char *cursor = at;
    if (*cursor == ':') {
        if (cursor[1] != ':') return false;
        groups.gap = 0;
        cursor += 2;
    }
    if (!read_groups(cursor, groups) || !is_complete(groups)) return false;
    if (groups.gap != Groups::no_gap)
        fill_gap(groups.bytes.data(), ipv6_size, groups.gap, groups.count);
    std::memcpy(bytes, groups.bytes.data(), ipv6_size);
    at = cursor;
    return true;
}

char *put_ipv6_groups(char *at, const uint8_t *bytes, ZeroRun run)
{
    at = put_groups(at, bytes, run, ipv6_group_count - 1);
    if (run.end != ipv6_group_count) return put_last_hex_group(at, load_be16(bytes + 14));
    *at = '\0';
    return at;
}

char *put_ipv6_with_quad(char *at, const uint8_t *bytes, ZeroRun run)
{
    at = put_groups(at, bytes, run, groups_before_quad);
    return put_dotted_quad(at, bytes + ipv6_size - ipv4_size);
}

char *put_ipv6(char *at, const uint8_t *bytes)
{
    const ZeroRun run = longest_zero_run(bytes);
    return has_ipv4_part(bytes, run) ? put_ipv6_with_quad(at, bytes, run)
                                     : put_ipv6_groups(at, bytes, run);
}

char *put_canonical_ipv6(char *at, const uint8_t *bytes, bool dotted)
{
    const ZeroRun run = longest_zero_run(bytes);
    return dotted ? put_ipv6_with_quad(at, bytes, run) : put_ipv6_groups(at, bytes, run);
}

}  // namespace orvex
