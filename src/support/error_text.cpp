#include "support/error_text.h"

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <limits>

namespace orvex
{
namespace
{

// Where the message goes: `room` counts the terminator.
struct Cursor {
    char *at;
    size_t room;
};

void put_char(Cursor &out, char character)
{
    if (out.room <= 1) return;
    *out.at++ = character;
    --out.room;
}

void put_text(Cursor &out, const char *text)
{
    while (*text != '\0' && out.room > 1) put_char(out, *text++);
}

void put_unsigned(Cursor &out, uintmax_t value)
{
    char digits[std::numeric_limits<uintmax_t>::digits10 + 2];
    char *first = digits + sizeof digits - 1;
    *first = '\0';
    do {
        *--first = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    put_text(out, first);
}

void put_signed(Cursor &out, int value)
{
    if (value < 0) put_char(out, '-');
    const auto magnitude = static_cast<unsigned>(value);
    put_unsigned(out, value < 0 ? 0U - magnitude : magnitude);
}

void write_message(ErrorText error, const char *format, va_list args)
{
    Cursor out{error.buf, error.len};
    for (const char *at = format; *at != '\0' && out.room > 1; ++at) {
        if (*at != '%') {
            put_char(out, *at);
            continue;
        }
        switch (*++at) {
            case 's': put_text(out, va_arg(args, const char *)); break;
            case 'c': put_char(out, static_cast<char>(va_arg(args, int))); break;
            case 'd': put_signed(out, va_arg(args, int)); break;
            case 'u': put_unsigned(out, va_arg(args, unsigned)); break;
            case 'l': put_unsigned(out, va_arg(args, unsigned long)), ++at; break;
            case 'z': put_unsigned(out, va_arg(args, size_t)), ++at; break;
            case 'j': put_unsigned(out, va_arg(args, uintmax_t)), ++at; break;
            default: put_char(out, *at); break;
        }
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
