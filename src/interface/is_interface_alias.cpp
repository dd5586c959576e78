#include <orvex/parse.h>
#include <orvex/platform.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "text/bytes.h"
#include "text/characters.h"

namespace orvex {
namespace {

constexpr size_t shortest_alias = 5;
constexpr size_t longest_alias = 128;

constexpr bool is_alias_punctuation(char character)
{
    return character == '_' || (character >= '-' && character <= '/') || character == ':';
}
static_assert(is_alias_punctuation('-') && is_alias_punctuation('.') && is_alias_punctuation('/'));

// What a character is to an alias, after its first letter.
constexpr uint8_t dash = 1;
constexpr uint8_t colon = 2;
constexpr uint8_t no_place = 4;  // but the locale may have a letter or digit that is not ASCII

constexpr std::array<uint8_t, 256> character_kinds = [] {
    std::array<uint8_t, 256> kinds{};
    for (size_t i = 0; i < kinds.size(); ++i) {
        const char character = static_cast<char>(i);
        if (!is_ascii_letter(character) && !is_digit(character) && !is_alias_punctuation(character))
            kinds[i] = no_place;
    }
    kinds[':'] = colon;
    kinds['-'] = dash;
    return kinds;
}();

// The text of an alias, as far as its length and its characters say.
struct AliasText {
    size_t length;  // 0 when it is none
    uint8_t kinds;  // of all characters after the first
};

AliasText read_alias(const char *text)
{
    if (!is_letter(*text)) return {};
    const char *at = text + 1;
    uint8_t kinds = 0;
    for (;; ++at) {
        const uint8_t kind = character_kinds[static_cast<unsigned char>(*at)];
        if (kind == no_place && !is_letter_or_digit(*at)) break;
        kinds |= kind;
    }
    const auto length = static_cast<size_t>(at - text);
    if (*at != '\0' || length < shortest_alias || length > longest_alias) return {};
    return {length, kinds};
}

bool is_ipv6_address(const char *text)
{
    const int saved = errno;
    uint32_t af = PARSE_AF_INET6;
    std::array<uint8_t, ipv6_size> address;
    const int result = parse_ipaddr(&af, text, 0, address.data(), address.size(), nullptr, nullptr,
                                    nullptr, nullptr, 0, nullptr, 0);
    errno = saved;
    return result == 0;
}

bool is_reserved_word(const char *text)
{
    constexpr const char *words[] = {"localhost", "access-ports", "xstp-disabled"};
    return std::any_of(std::begin(words), std::end(words), [text](const char *word) {
        return *text == *word && std::strcmp(text, word) == 0;
    });
}

// Whether the platform knows the interface type that is the first `length` characters.
bool is_type(const char *text, size_t length)
{
    return interface_info_byname(text, length) != nullptr;
}

// "uplink-to-core": no alias when a port follows a known type.
bool is_dashed_alias(const char *text, size_t length)
{
    const char *const type_end = std::strchr(text, '-');
    if (!is_type(text, static_cast<size_t>(type_end - text))) return !is_type(text, length);
    return is_letter(type_end[1]) || std::strchr(type_end, '/') == nullptr;
}

// "uplink7": no alias when it is a device of a known type.
bool is_plain_alias(const char *text, size_t length)
{
    size_t type_length = length;
    while (type_length > 0 && !is_lower_letter(text[type_length - 1])) --type_length;
    if (type_length == 0) return false;
    return !is_type(text, type_length) && !is_type(text, length);
}

bool is_alias(const char *text)
{
    const auto [length, kinds] = read_alias(text);
    if (length == 0) return false;
    if ((kinds & colon) != 0 && is_ipv6_address(text)) return false;
    if (is_reserved_word(text)) return false;
    return (kinds & dash) != 0 ? is_dashed_alias(text, length) : is_plain_alias(text, length);
}

}  // namespace
}  // namespace orvex

int is_interface_alias(const char *text) { return orvex::is_alias(text) ? 1 : 0; }
