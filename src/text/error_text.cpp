#include "text/error_text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <string_view>

namespace orvex {
namespace {

// What is left of the buffer, without the place of the terminator.
struct Room {
    char *at;
    size_t size;

    void put(const char *text, size_t length)
    {
        length = std::min(length, size);
        std::memcpy(at, text, length);
        at += length;
        size -= length;
    }

    void put_unsigned(uintmax_t value, bool negative = false)
    {
        std::array<char, std::numeric_limits<uintmax_t>::digits> digits;  // one a bit are enough
        char *const end = digits.data() + digits.size();
        char *first = end;
        do {
            *--first = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value != 0);
        if (negative) *--first = '-';
        put(first, static_cast<size_t>(end - first));
    }

    void put_signed(int value)
    {
        put_unsigned(static_cast<uintmax_t>(std::abs(intmax_t{value})), value < 0);
    }
};

// Not vsnprintf: it costs several times as much, and reads all of an argument that is cut.
void write_message(ErrorText error, const char *format, va_list args)
{
    if (error.buf == nullptr || error.len == 0) return;
    Room room{error.buf, error.len - 1};
    while (const char *const percent = std::strchr(format, '%')) {
        room.put(format, static_cast<size_t>(percent - format));
        format = percent + 1;
        switch (*format) {
            case 's': {
                const char *const text = va_arg(args, const char *);
                room.put(text, strnlen(text, room.size));
                break;
            }
            case '.': {  // %.*s
                const auto length = static_cast<size_t>(va_arg(args, int));
                room.put(va_arg(args, const char *), length);
                format += 2;
                break;
            }
            case 'c': {
                const auto character = static_cast<char>(va_arg(args, int));
                room.put(&character, 1);
                break;
            }
            case 'd': room.put_signed(va_arg(args, int)); break;
            // The widths below are one and the same on some hosts only.
            // NOLINTBEGIN(bugprone-branch-clone)
            case 'u': room.put_unsigned(va_arg(args, unsigned)); break;
            case 'l': room.put_unsigned(va_arg(args, unsigned long)), ++format; break;
            case 'z': room.put_unsigned(va_arg(args, size_t)), ++format; break;
            case 'j': room.put_unsigned(va_arg(args, uintmax_t)), ++format; break;
            // NOLINTEND(bugprone-branch-clone)
            default: room.put(format, 1); break;
        }
        ++format;
    }
    room.put(format, std::strlen(format));
    *room.at = '\0';
}

}  // namespace

int refuse(ErrorText error, int result, const char *format, ...)
{
    va_list args;
    va_start(args, format);
    write_message(error, format, args);
    va_end(args);
    return result;
}

int refuse_invalid(ErrorText error, int result, const char *format, ...)
{
    va_list args;
    va_start(args, format);
    write_message(error, format, args);
    va_end(args);
    errno = EINVAL;
    return result;
}

int refuse_invalid_pieces(ErrorText error, int result,
                          std::initializer_list<std::string_view> pieces)
{
    errno = EINVAL;
    if (error.buf == nullptr || error.len == 0) return result;
    Room room{error.buf, error.len - 1};
    for (const std::string_view piece : pieces) room.put(piece.data(), piece.size());
    *room.at = '\0';
    return result;
}

}  // namespace orvex
