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

constexpr int keep_errno = 0;

// Writes a message, sets errno unless `error_number` is keep_errno, and returns `result`. The
// message is cut to the buffer and terminated. Conversions: %s %.*s %c %d %u %lu %zu %ju %%.
[[gnu::noinline, gnu::format(printf, 4, 5)]] int refuse(ErrorText error, int error_number,
                                                        int result, const char *format, ...);

// As refuse, with a message that is given in pieces: one that quotes parts of a text.
[[gnu::noinline]] int refuse_with_pieces(ErrorText error, int error_number, int result,
                                         std::initializer_list<std::string_view> pieces);

// The precision of a "%.*s" that prints `text`.
constexpr int precision(std::string_view text)
{
    return static_cast<int>(std::min(text.size(), size_t{INT_MAX}));
}

}  // namespace orvex

#endif
