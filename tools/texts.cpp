#include "texts.h"

#include <cstdio>

namespace {

// A longer line is refused, so that memory stays bounded.
constexpr size_t longest_line = 65536;

// How much of it the JSON object of the refusal shows.
constexpr size_t shown_of_long_line = 64;

}  // namespace

Texts::Texts(const std::vector<std::string> &arguments)
    : arguments_(arguments),
      from_input_(arguments.empty() || (arguments.size() == 1 && arguments.front() == "-"))
{
}

bool Texts::next(Text &text)
{
    if (from_input_) return next_line(text);
    if (next_ == arguments_.size()) return false;
    text.value = arguments_[next_++];
    return true;
}

bool Texts::next_line(Text &text)
{
    text.value.clear();
    text.fault = nullptr;
    text.line = ++next_;
    int character = getc_unlocked(stdin);
    if (character == EOF) return false;
    size_t length = 0;
    for (; character != EOF && character != '\n'; character = getc_unlocked(stdin)) {
        // One more, for the CR of the line end.
        if (++length <= longest_line + 1) text.value += static_cast<char>(character);
    }
    const bool whole = text.value.size() == length;
    if (whole && text.value.ends_with('\r')) text.value.pop_back();
    if (text.value.find('\0') != std::string::npos) text.fault = "the line holds a NUL character";
    if (!whole || text.value.size() > longest_line) {
        text.fault = "the line is too long";
        text.value.resize(shown_of_long_line);
    }
    return true;
}
