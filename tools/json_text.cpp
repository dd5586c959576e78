#include "json_text.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

struct Character {
    uint32_t code;
    size_t length;  // 0: not UTF-8
};

bool is_plain(char character)
{
    const auto byte = static_cast<uint8_t>(character);
    return byte >= 0x20 && byte < 0x7f && byte != '"' && byte != '\\';
}

// Reads the first character of a text that is not empty. Longer forms than needed, surrogates and
// what is beyond U+10FFFF are not UTF-8 (RFC 3629).
Character first_character(std::string_view text)
{
    const auto byte = [text](size_t i) { return static_cast<uint8_t>(text[i]); };
    const uint32_t first = byte(0);
    if (first < 0x80) return {first, 1};
    if (first < 0xc2 || first > 0xf4) return {0, 0};
    size_t length = 2;
    if (first >= 0xe0) length = first >= 0xf0 ? 4 : 3;
    if (text.size() < length) return {0, 0};
    uint32_t code = first & (0x7fU >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0) != 0x80) return {0, 0};
        code = code << 6 | (byte(i) & 0x3fU);
    }
    const bool too_long = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xd800 && code <= 0xdfff;
    if (too_long || surrogate || code > 0x10ffff) return {0, 0};
    return {code, length};
}

void append_unit(std::string &out, uint32_t unit)
{
    char escape[7];
    std::snprintf(escape, sizeof escape, "\\u%04x", unit & 0xffffU);
    out += escape;
}

void append_escape(std::string &out, uint32_t code)
{
    switch (code) {
        case '"': out += "\\\""; return;
        case '\\': out += "\\\\"; return;
        case '\b': out += "\\b"; return;
        case '\f': out += "\\f"; return;
        case '\n': out += "\\n"; return;
        case '\r': out += "\\r"; return;
        case '\t': out += "\\t"; return;
        default: break;
    }
    if (code > 0xffff) {
        append_unit(out, 0xd7c0 + (code >> 10));
        code = 0xdc00 + (code & 0x3ff);
    }
    append_unit(out, code);
}

}  // namespace

bool is_utf8(std::string_view text)
{
    while (!text.empty()) {
        const Character character = first_character(text);
        if (character.length == 0) return false;
        text.remove_prefix(character.length);
    }
    return true;
}

void append_json_text(std::string &out, std::string_view text, bool ascii_only)
{
    out += '"';
    while (!text.empty()) {
        const auto end = std::find_if_not(text.begin(), text.end(), is_plain);
        const auto plain = static_cast<size_t>(end - text.begin());
        out.append(text.data(), plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        constexpr uint32_t replacement = 0xfffd;
        const Character read = first_character(text);
        const uint32_t code = read.length == 0 ? replacement : read.code;
        const size_t length = read.length == 0 ? 1 : read.length;
        const bool escaped = code < 0x80 ? code != 0x7f || ascii_only : ascii_only;
        if (escaped)
            append_escape(out, code);
        else if (read.length == 0)
            out += "\xef\xbf\xbd";
        else
            out.append(text.data(), length);
        text.remove_prefix(length);
    }
    out += '"';
}
