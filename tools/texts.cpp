#include "texts.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "output.h"

namespace {

// A longer line is refused, so that memory stays bounded.
constexpr size_t longest_line = 65536;

// How much of it is kept.
constexpr size_t kept_of_long_line = 64;

constexpr size_t buffer_size = 4 * longest_line;

}  // namespace

Texts::Texts(std::vector<char *> arguments, char separator, Output &output)
    : arguments_(std::move(arguments)),
      from_input_(arguments_.empty() ||
                  (arguments_.size() == 1 && std::strcmp(arguments_.front(), "-") == 0)),
      separator_(separator),
      output_(output)
{
    if (from_input_) buffer_.resize(buffer_size + 1);  // and a terminator
}

bool Texts::next(Text &text)
{
    if (from_input_) return next_line(text);
    if (count_ == arguments_.size()) return false;
    char *const value = arguments_[count_++];
    text = {.value = value, .length = std::strlen(value), .number = count_};
    return true;
}

// Reads more input after what is there; false at its end.
bool Texts::fill()
{
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (is_at_end_) return false;
    output_.flush();
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer_.data() + end_, buffer_size - end_);
        if (count < 0 && errno == EINTR) continue;
        failed_ = count < 0;
        is_at_end_ = count <= 0;
        if (is_at_end_) return false;
        end_ += static_cast<size_t>(count);
        return true;
    }
}

bool Texts::next_line(Text &text)
{
    size_t searched = 0;  // of the line
    bool is_cut = false;
    char *stop = nullptr;
    while (stop == nullptr) {
        char *const start = buffer_.data() + begin_;
        const size_t available = end_ - begin_;
        stop = static_cast<char *>(std::memchr(start + searched, separator_, available - searched));
        if (stop != nullptr) break;
        if (available > longest_line + 1) {
            is_cut = true;
            end_ = begin_ + kept_of_long_line;
        }
        searched = end_ - begin_;
        if (fill()) continue;
        if (searched == 0) return false;
        stop = buffer_.data() + end_;
        ++end_;
    }
    char *const value = buffer_.data() + begin_;
    auto length = static_cast<size_t>(stop - value);
    begin_ += length + 1;
    const bool had_cr = separator_ == '\n' && length > 0 && value[length - 1] == '\r';
    if (had_cr) --length;
    const bool is_too_long = is_cut || length > longest_line;
    if (is_too_long) length = std::min(length, kept_of_long_line);
    value[length] = '\0';
    text = {.value = value,
            .length = length,
            .number = ++count_,
            .is_cut = is_too_long,
            .had_cr = had_cr};
    if (std::memchr(value, '\0', length) != nullptr) text.fault = "the line holds a NUL character";
    if (is_too_long) text.fault = "the line is too long";
    return true;
}
