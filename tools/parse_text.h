// Calls the library's parsers with room for their longest message about a text.
#ifndef ORVEX_TOOLS_PARSE_TEXT_H
#define ORVEX_TOOLS_PARSE_TEXT_H

#include <algorithm>
#include <cerrno>
#include <string>

#include "stream.h"

// Calls `parse(errbuf, errlen)`. When it returns `accepted`, returns the fields that `fields()`
// makes; otherwise the refusal.
template <typename Parse, typename Fields>
Outcome parse_text(const std::string &text, int accepted, const Parse &parse, const Fields &fields)
{
    // No message quotes the text more than three times.
    static std::string message;
    message.resize(std::max(message.size(), 3 * text.size() + 2048));
    message.front() = '\0';
    errno = 0;
    const int result = parse(message.data(), message.size());
    if (result == accepted) return {fields(), {}, 0, 0, false};
    Outcome outcome{{}, message.substr(0, message.find('\0')), result, errno, false};
    if (outcome.message.empty()) outcome.message = "'" + text + "' is not valid";
    return outcome;
}

inline std::string hexadecimal(const uint8_t *bytes, size_t size)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (size_t i = 0; i < size; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 15];
    }
    return text;
}

// A field with the same text in JSON and for people.
inline Field text_field(const char *key, const std::string &text) { return {key, text, text}; }

template <typename Number>
Field number_field(const char *key, Number value)
{
    return {key, value, std::to_string(value)};
}

#endif
