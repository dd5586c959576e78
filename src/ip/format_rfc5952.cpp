#include <orvex/parse.h>

#include <array>
#include <cstring>

#include "text/bytes.h"
#include "text/ipv6_text.h"

namespace orvex {
namespace {

// What a caller's buffer holds at least.
constexpr size_t text_size = 47;
static_assert(text_size > longest_ipv6_text);

}  // namespace
}  // namespace orvex

int format_rfc5952(char *text)
{
    using namespace orvex;

    if (text == nullptr) return 0;
    std::array<uint8_t, ipv6_size> address;
    const char *end = text;
    if (!read_ipv6(end, address.data()) || *end != '\0') return 0;
    const bool dotted = std::memchr(text, '.', static_cast<size_t>(end - text)) != nullptr;
    std::memset(text, 0, text_size);
    put_canonical_ipv6(text, address.data(), dotted);
    return 1;
}
