#include "text/ipv6_text.h"

#include <array>
#include <bit>

#include "text/bytes.h"
#include "text/digits.h"
#include "text/dotted_quad.h"
#include "text/hex_digits.h"

namespace orvex {
namespace {

constexpr unsigned group_count = 8;
constexpr unsigned groups_before_quad = 6;

// What is read of an address so far.
struct Groups {
    GapBytes<ipv6_size> bytes{};
    size_t count = 0;  // bytes
    size_t gap = no_gap;

    static constexpr size_t no_gap = ipv6_size + 1;
};

// Whether the groups and the "::" make a whole address.
bool is_complete(const Groups &groups)
{
    return (groups.gap == Groups::no_gap) == (groups.count == ipv6_size);
}

// "1.2.3.4"
bool read_quad(const char *&at, Groups &groups)
{
    uint32_t quad = 0;
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
        uint32_t value = 0;
        if (!read_hex_digits<4>(at, value)) return true;
        if (*at == '.') [[unlikely]] {
            at = start;
            return read_quad(at, groups);
        }
        store_be16(&groups.bytes[groups.count], value);
        groups.count += 2;
        if (*at != ':') return true;
        if (at[1] == ':') {
            if (groups.gap != Groups::no_gap) return true;
            groups.gap = groups.count;
            at += 2;
        } else if (!is_hex_digit(*++at)) {
            return false;
        }
    }
    return true;
}

// The longest run of two or more zero groups, the first of equal ones.
struct ZeroRun {
    unsigned first = group_count;  // no run
    unsigned count = 1;
};

ZeroRun find_zero_run(const uint8_t *bytes)
{
    unsigned zeros = 0;  // a bit for each group
    for (unsigned group = 0; group < group_count; ++group)
        zeros |= static_cast<unsigned>(load_native<uint16_t>(bytes + 2 * group) == 0) << group;
    ZeroRun longest;
    for (unsigned group = 0; zeros != 0;) {
        const auto skipped = static_cast<unsigned>(std::countr_zero(zeros));
        zeros >>= skipped;
        group += skipped;
        const auto count = static_cast<unsigned>(std::countr_one(zeros));
        if (count > longest.count) longest = {group, count};
        zeros >>= count;
        group += count;
    }
    return longest;
}

// Writes the first `count` groups and a ":" after each.
char *put_groups(char *at, const uint8_t *bytes, ZeroRun run, unsigned count)
{
    for (unsigned group = 0; group < count;) {
        if (group == run.first) {
            // The ":" after the group before it is the first of the "::".
            if (group == 0) *at++ = ':';
            *at++ = ':';
            group += run.count;
            continue;
        }
        const uint32_t value = load_be16(bytes + 2 * group);
        ++group;
        at = group == group_count ? put_last_hex_group(at, value) : put_hex_group(at, value);
        *at++ = ':';
    }
    return at;
}

char *put_all_groups(char *at, const uint8_t *bytes, ZeroRun run)
{
    at = put_groups(at, bytes, run, group_count);
    return run.first + run.count == group_count ? at : at - 1;
}

char *put_with_quad(char *at, const uint8_t *bytes, ZeroRun run)
{
    at = put_groups(at, bytes, run, groups_before_quad);
    return put_dotted_quad(at, bytes + ipv6_size - ipv4_size);
}

// Whether an address is IPv4-compatible, but for "::" and "::x", or IPv4-mapped.
bool has_ipv4_part(const uint8_t *bytes, ZeroRun run)
{
    if (run.first != 0) return false;
    return run.count == groups_before_quad ||
           (run.count == groups_before_quad - 1 && load_be16(bytes + 10) == 0xffff);
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
    if (groups.gap != Groups::no_gap) fill_gap<ipv6_size>(groups.bytes, groups.gap, groups.count);
    std::memcpy(bytes, groups.bytes.data(), ipv6_size);
    at = cursor;
    return true;
}

char *put_ipv6(char *at, const uint8_t *bytes)
{
    const ZeroRun run = find_zero_run(bytes);
    return has_ipv4_part(bytes, run) ? put_with_quad(at, bytes, run)
                                     : put_all_groups(at, bytes, run);
}

char *put_canonical_ipv6(char *at, const uint8_t *bytes, bool dotted)
{
    const ZeroRun run = find_zero_run(bytes);
    return dotted ? put_with_quad(at, bytes, run) : put_all_groups(at, bytes, run);
}

}  // namespace orvex
