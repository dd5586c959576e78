#include <arpa/inet.h>
#include <orvex/parse.h>

#include <array>
#include <cstring>

#include "old/digits.h"

namespace orvex {
namespace {

constexpr size_t address_size = 16;
constexpr size_t group_count = 8;
using Address = std::array<uint8_t, address_size>;

// What a caller's buffer holds at least.
constexpr size_t text_size = 47;

// A text stays valid until as many more were written on its thread.
struct Ring {
    static constexpr unsigned slots = 8;
    std::array<std::array<char, 48>, slots> texts;
    unsigned latest;
};
thread_local constinit Ring ring{};

unsigned group_of(const Address &address, size_t group)
{
    return unsigned{address[2 * group]} << 8 | address[2 * group + 1];
}

struct Run {
    size_t first;
    size_t count;
};

// The longest run of at least two zero groups, the first of equal ones.
Run find_zero_run(const Address &address)
{
    Run longest{group_count, 1};
    Run run{0, 0};
    for (size_t group = 0; group < group_count; ++group) {
        if (group_of(address, group) != 0) {
            run = {group + 1, 0};
            continue;
        }
        if (++run.count > longest.count) longest = run;
    }
    return longest;
}

// The text of RFC 5952 section 4.
char *in6_canonical_text(const Address &address)
{
    ring.latest = (ring.latest + 1) % Ring::slots;
    char *const text = ring.texts[ring.latest].data();
    char *at = text;
    const Run run = find_zero_run(address);
    for (size_t group = 0; group < group_count;) {
        if (group == run.first) {
            // The ":" behind the group in front of it is the first of the "::".
            if (group == 0) *at++ = ':';
            *at++ = ':';
            group += run.count;
            if (group == group_count) *at++ = ':';
            continue;
        }
        at = put_hex_group(at, group_of(address, group));
        *at++ = ':';
        ++group;
    }
    at[-1] = '\0';
    return text;
}

// Writes the dotted part that a valid text ends in, terminated; answers its size, or 0 when there
// is none.
size_t extract_dotted_quad(const char *text, const Address &address, char *quad)
{
    if (std::strchr(std::strrchr(text, ':'), '.') == nullptr) return 0;
    char *const end = put_dotted_quad<put_octet>(quad, address.data() + 12);
    *end = '\0';
    return static_cast<size_t>(end - quad) + 1;
}

// Where a dotted part takes the place of the last two groups.
char *find_last_two_groups(char *text, const Address &address)
{
    char *at = text + std::strlen(text);
    for (int colons = 0; colons < 2;)
        if (*--at == ':') ++colons;
    if (at[1] != ':') return at + 1;
    // A "::" for the last two groups alone becomes a ":".
    const bool is_last = at[2] == '\0' && group_of(address, 5) != 0;
    return is_last ? at + 1 : at + 2;
}

}  // namespace
}  // namespace orvex

int format_rfc5952(char *text)
{
    using namespace orvex;
    Address address;
    if (text == nullptr || inet_pton(AF_INET6, text, address.data()) != 1) return 0;
    std::array<char, 17> quad;
    char *const canonical = in6_canonical_text(address);
    const size_t size = extract_dotted_quad(text, address, quad.data());
    if (size > 0) std::memcpy(find_last_two_groups(canonical, address), quad.data(), size);
    std::memset(text, 0, text_size);
    std::memcpy(text, canonical, std::strlen(canonical) + 1);
    return 1;
}
