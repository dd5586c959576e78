#include "text/error_text.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <limits>

namespace orvex {
namespace {

// Where the message goes on, and the place that the terminator needs.
struct Cursor {
    char *at;
    char *last;
};

Cursor put_char(Cursor out, char character)
{
    if (out.at != out.last) *out.at++ = character;
    return out;
}

Cursor put_text(Cursor out, const char *text)
{
    while (*text != '\0' && out.at != out.last) *out.at++ = *text++;
    return out;
}

Cursor put_unsigned(Cursor out, uintmax_t value)
{
    std::array<char, std::numeric_limits<uintmax_t>::digits10 + 2> digits;
    char *first = digits.end() - 1;
    *first = '\0';
    do {
        *--first = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    return put_text(out, first);
}

Cursor put_signed(Cursor out, int value)
{
    if (value >= 0) return put_unsigned(out, static_cast<unsigned>(value));
    return put_unsigned(put_char(out, '-'), 0U - static_cast<unsigned>(value));
}

[[gnu::noinline]] void write_message(ErrorText error, const char *format, va_list args)
{
    Cursor out{error.buf, error.buf + error.len - 1};
    for (;;) {
        while (*format != '%' && *format != '\0' && out.at != out.last) *out.at++ = *format++;
        if (*format != '%') break;
        switch (*++format) {
            case 's': out = put_text(out, va_arg(args, const char *)); break;
            case 'c': out = put_char(out, static_cast<char>(va_arg(args, int))); break;
            case 'd': out = put_signed(out, va_arg(args, int)); break;
            // The widths below are one and the same on some hosts only.
            // NOLINTBEGIN(bugprone-branch-clone)
            case 'u': out = put_unsigned(out, va_arg(args, unsigned)); break;
            case 'l': out = put_unsigned(out, va_arg(args, unsigned long)), ++format; break;
            case 'z': out = put_unsigned(out, va_arg(args, size_t)), ++format; break;
            case 'j': out = put_unsigned(out, va_arg(args, uintmax_t)), ++format; break;
            // NOLINTEND(bugprone-branch-clone)
            default: out = put_char(out, *format); break;
        }
        ++format;
    }
    *out.at = '\0';
}

}  // namespace

int refuse(ErrorText error, int error_number, int result, const char *format, ...)
{
    if (error.buf != nullptr && error.len != 0) {
        va_list args;
        va_start(args, format);
        write_message(error, format, args);
        va_end(args);
    }
    if (error_number != keep_errno) errno = error_number;
    return result;
}

}  // namespace orvex
