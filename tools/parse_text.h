// Calls the library's parsers with room for their longest message about a text.
#ifndef ORVEX_TOOLS_PARSE_TEXT_H
#define ORVEX_TOOLS_PARSE_TEXT_H

#include <algorithm>
#include <cerrno>
#include <span>
#include <string>

#include "command.h"

// Room for a message about a text of `length` bytes, empty at first.
inline std::span<char> message_room(size_t length)
{
    // No message quotes the text more than three times.
    static std::string room;
    room.resize(std::max(room.size(), 3 * length + 2048));
    room.front() = '\0';
    return room;
}

inline std::string quoted(const Text &text) { return "'" + std::string(text.view()) + "'"; }

// Calls `parse(errbuf, errlen)`. When it returns `accepted`, calls `write(record)`; otherwise
// refuses the text, with the hint of `hint()` where hints are shown.
template <typename Parse, typename Write, typename Hint>
void parse_text(const Text &text, Receiver &receiver, int accepted, const Parse &parse,
                const Write &write, const Hint &hint)
{
    const std::span<char> room = message_room(text.length);
    errno = 0;
    const int result = parse(room.data(), room.size());
    if (result == accepted) {
        write(receiver.begin(text));
        receiver.end(text);
        return;
    }
    Refusal refusal{.message = room.data(), .code = result, .error = errno, .hint = {}};
    const std::string own = refusal.message.empty() ? quoted(text) + " is not valid" : "";
    if (refusal.message.empty()) refusal.message = own;
    if (receiver.shows_hints()) refusal.hint = hint();
    receiver.refuse(text, refusal);
}

template <typename Parse, typename Write>
void parse_text(const Text &text, Receiver &receiver, int accepted, const Parse &parse,
                const Write &write)
{
    parse_text(text, receiver, accepted, parse, write, [] { return std::string_view(); });
}

#endif
