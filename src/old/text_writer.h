#ifndef ORVEX_OLD_TEXT_WRITER_H
#define ORVEX_OLD_TEXT_WRITER_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace orvex {
inline namespace old {

// Appends pieces of text to a caller's buffer and keeps it terminated. A piece that does not fit
// with its terminator is cut and uses up the whole room, so that nothing follows it. A buffer of
// size 0 is never written and counts as overflowed.
class TextWriter {
   public:
    TextWriter(char *buf, size_t buflen) : at_(buf), room_(buflen), size_(buflen)
    {
        if (room_ > 0) *at_ = '\0';
    }

    // Returns what the piece used up: its length, or the room when it was cut.
    size_t put(const char *text, size_t length)
    {
        if (length >= room_) [[unlikely]]
            return put_cut(text);
        std::memcpy(at_, text, length);
        at_[length] = '\0';
        advance(length);
        return length;
    }

    size_t put(char character) { return put(&character, 1); }

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
    size_t put_cut(const char *text)
    {
        const size_t room = room_;
        if (room == 0) return 0;
        std::memcpy(at_, text, room - 1);
        at_[room - 1] = '\0';
        advance(room);
        return room;
    }

    char *at_;
    size_t room_;
    size_t size_;
};

// Has `write` put a whole text, terminator included and at most `longest` bytes, into `buf`, or
// cuts it to a smaller buffer; one of size 0 is not written. Returns the whole text's length: it
// fits when that is below `buflen`.
template <size_t longest, typename Write>
size_t write_whole_text(char *buf, size_t buflen, const Write &write)
{
    if (buflen >= longest) return write(buf);
    std::array<char, longest> spare;
    const size_t length = write(spare.data());
    if (buflen == 0) return length;
    const size_t taken = std::min(length, buflen - 1);
    std::memcpy(buf, spare.data(), taken);
    buf[taken] = '\0';
    return length;
}

}  // namespace old
}  // namespace orvex

#endif
