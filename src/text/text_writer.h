// How formatters write into a caller's buffer, whatever size the caller states.
#ifndef ORVEX_TEXT_TEXT_WRITER_H
#define ORVEX_TEXT_TEXT_WRITER_H

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace orvex {

// Copies a text, or as much of it as fits with its terminator, into `buf`, and terminates it.
[[gnu::noinline]] inline void copy_cut(char *buf, size_t buflen, const char *text, size_t length)
{
    if (buflen == 0) return;
    const size_t taken = std::min(length, buflen - 1);
    std::memcpy(buf, text, taken);
    buf[taken] = '\0';
}

// As write_text, for a buffer that may be too small. Out of line, as it needs memory of its own.
template <size_t longest, typename Write>
[[gnu::noinline]] size_t write_cut_text(char *buf, size_t buflen, Write write)
{
    std::array<char, longest> whole;
    const auto length = static_cast<size_t>(write(whole.data()) - whole.data());
    copy_cut(buf, buflen, whole.data(), length);
    return length;
}

// Puts a whole text, or as much of it as fits with its terminator, into `buf`; one of size 0 is not
// written. `write` writes the text and its terminator, at most `longest` bytes, and returns the
// position of the terminator. Returns the whole text's length: it fits when that is below `buflen`.
// `enough` is a size that is known to hold this text, where that is less than `longest`.
template <size_t longest, typename Write>
size_t write_text(char *buf, size_t buflen, Write write, size_t enough = longest)
{
    if (buflen >= enough) [[likely]]
        return static_cast<size_t>(write(buf) - buf);
    return write_cut_text<longest>(buf, buflen, write);
}

// As write_text, for "/" and a text after the `length` bytes that `buf` holds already; `longest`
// counts the "/". Returns the length of all.
template <size_t longest, typename Write>
size_t append_after_slash(char *buf, size_t buflen, size_t length, Write write)
{
    const auto write_both = [write](char *at) {
        *at++ = '/';
        return write(at);
    };
    return length + write_text<longest>(buf + length, buflen - length, write_both);
}

// What formatters return for a text that does not fit.
inline size_t out_of_room()
{
    errno = ENOSPC;
    return 0;
}

// What a piece of a text that starts at `start` reports: its length when it fits with its
// terminator, else the room that was left for it.
constexpr size_t piece_result(size_t start, size_t length, size_t buflen)
{
    return buflen > start ? std::min(length, buflen - start) : 0;
}

}  // namespace orvex

#endif
