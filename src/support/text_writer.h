#ifndef ORVEX_SUPPORT_TEXT_WRITER_H
#define ORVEX_SUPPORT_TEXT_WRITER_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace orvex {

// Appends pieces of text to a caller's buffer and keeps it terminated. A piece that does not fit
// with its terminator is cut and uses up the whole room, so that nothing follows it. A buffer of
// size 0 is never written and counts as overflowed.
class TextWriter {
   public:
    TextWriter(char *buf, size_t buflen) : at_(buf), room_(buflen), size_(buflen)
    {
        if (room_ > 0) *at_ = '\0';
    }

    void put(const char *text, size_t length)
    {
        if (room_ == 0) return;
        const bool fits = length < room_;
        const size_t taken = fits ? length : room_ - 1;
        std::memcpy(at_, text, taken);
        at_[taken] = '\0';
        advance(fits ? length : room_);
    }

    void put(char character) { put(&character, 1); }

    // Takes over `length` characters, fewer than the room, that were written at position().
    void advance(size_t length)
    {
        at_ += length;
        room_ -= length;
    }

    [[nodiscard]] char *position() const { return at_; }
    [[nodiscard]] size_t room() const { return room_; }
    [[nodiscard]] bool overflowed() const { return room_ == 0; }
    [[nodiscard]] size_t length() const { return size_ - room_; }

   private:
    char *at_;
    size_t room_;
    size_t size_;
};

// Has `write` put a whole text, terminator included and at most `longest` bytes, into `buf`, or
// cuts it to a smaller buffer. Returns the whole text's length: it fits when that is below
// `buflen`.
template <size_t longest, typename Write>
size_t write_whole_text(char *buf, size_t buflen, const Write &write)
{
    if (buflen >= longest) return write(buf);
    std::array<char, longest> spare;
    const size_t length = write(spare.data());
    const size_t taken = std::min(length, buflen - 1);
    std::memcpy(buf, spare.data(), taken);
    buf[taken] = '\0';
    return length;
}

}  // namespace orvex

#endif
