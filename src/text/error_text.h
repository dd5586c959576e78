// Messages for the operator, and the results that go with them.
#ifndef ORVEX_TEXT_ERROR_TEXT_H
#define ORVEX_TEXT_ERROR_TEXT_H

#include <algorithm>
#include <climits>
#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace orvex {

// Results of the address parsers besides 0.
constexpr int not_this_form = -1;
constexpr int rule_broken = -2;

// The caller's error buffer; `buf` may be null.
struct ErrorText {
    char *buf;
    size_t len;
};

// Writes a message, and returns `result`. The message is cut to the buffer and terminated.
// Conversions: %s %.*s %c %d %u %lu %zu %ju %%. errno is left alone.
[[gnu::noinline, gnu::format(printf, 3, 4)]] int refuse(ErrorText error, int result,
                                                        const char *format, ...);

// As refuse, and sets errno to EINVAL.
[[gnu::noinline, gnu::format(printf, 3, 4)]] int refuse_invalid(ErrorText error, int result,
                                                                const char *format, ...);

// As refuse_invalid, with a message that is given in pieces: one that quotes parts of a text.
[[gnu::noinline]] int refuse_invalid_pieces(ErrorText error, int result,
                                            std::initializer_list<std::string_view> pieces);

// The precision of a "%.*s" that prints `text`.
constexpr int precision(std::string_view text)
{
    return static_cast<int>(std::min(text.size(), size_t{INT_MAX}));
}

}  // namespace orvex

#endif
