// Memory that shows writes outside of it.
#ifndef ORVEX_TESTS_GUARDED_H
#define ORVEX_TESTS_GUARDED_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace orvex_test {

// `size` bytes between guard bytes, filled with a value that no test expects.
class Guarded {
   public:
    explicit Guarded(size_t size) : bytes_(size + 2 * guard, fill) {}

    char *data() { return bytes_.data() + guard; }
    [[nodiscard]] size_t size() const { return bytes_.size() - 2 * guard; }

    // Whether both guards are unchanged, and with `whole` the bytes between them too.
    [[nodiscard]] bool untouched(bool whole = false) const
    {
        const auto is_fill = [](char byte) { return byte == fill; };
        const auto inner = bytes_.begin() + guard;
        const auto behind = bytes_.end() - guard;
        return std::all_of(bytes_.begin(), inner, is_fill) && std::all_of(behind, bytes_.end(), is_fill) &&
               (!whole || std::all_of(inner, behind, is_fill));
    }

    // Whether every byte from `start` on is `value`.
    [[nodiscard]] bool rest_is(size_t start, char value) const
    {
        const auto inner = bytes_.begin() + guard;
        return std::all_of(inner + static_cast<ptrdiff_t>(std::min(start, size())), bytes_.end() - guard,
                           [value](char byte) { return byte == value; });
    }

    // The terminated text inside; fails the test when there is no terminator.
    std::string text()
    {
        const auto length = strnlen(data(), size());
        if (length == size()) ADD_FAILURE() << "no terminator in " << size() << " bytes";
        return {data(), length};
    }

    static constexpr char fill = '\x5a';

   private:
    static constexpr ptrdiff_t guard = 16;
    std::vector<char> bytes_;
};

// What a formatter leaves in a buffer that is smaller or larger than its text.
struct Leaves {
    size_t nothing_up_to = 0;   // a buffer up to this size holds an empty text, a larger one the text cut short,
    size_t at_most = SIZE_MAX;  // to this length
    bool zero_rest = false;     // every byte after the terminator is zero, not untouched
};

// Calls `format(buf, buflen)` with every size from 0 to far more than `expected` needs and checks the result, errno,
// the text, its terminator, what comes after it and the guards.
template <typename Format>
void check_every_size(const std::string &expected, const Format &format, Leaves leaves = {})
{
    for (size_t size = 0; size <= expected.size() + 60; ++size) {
        SCOPED_TRACE("\"" + expected + "\" in " + std::to_string(size) + " bytes");
        Guarded buffer(size);
        errno = 77;
        const size_t result = format(buffer.data(), size);
        const bool fits = size > expected.size();
        EXPECT_TRUE(buffer.untouched());
        EXPECT_EQ(result, fits ? expected.size() : 0);
        EXPECT_EQ(errno, fits ? 77 : ENOSPC);
        if (size == 0) continue;
        const std::string cut =
            size > leaves.nothing_up_to ? expected.substr(0, std::min(size - 1, leaves.at_most)) : "";
        const std::string text = buffer.text();
        EXPECT_EQ(text, fits ? expected : cut);
        EXPECT_TRUE(buffer.rest_is(text.size() + 1, leaves.zero_rest ? '\0' : Guarded::fill));
    }
}

// As above for formatters that report no failure: every size holds the text cut short, `format` returns `result(size)`,
// and errno is unchanged.
template <typename Format, typename Result>
void check_cut_sizes(const std::string &expected, const Format &format, const Result &result)
{
    for (size_t size = 0; size <= expected.size() + 2; ++size) {
        SCOPED_TRACE("\"" + expected + "\" in " + std::to_string(size) + " bytes");
        Guarded buffer(size);
        errno = 77;
        EXPECT_EQ(format(buffer.data(), size), static_cast<int>(result(size)));
        EXPECT_EQ(errno, 77);
        EXPECT_TRUE(buffer.untouched());
        EXPECT_EQ(size > 0 ? buffer.text() : "", size > 0 ? expected.substr(0, size - 1) : "");
    }
}

// Calls a parser with a guarded error buffer; returns the message, "" when none was written.
template <typename Parse>
std::string message_of(const Parse &parse, int &result)
{
    Guarded error(512);
    errno = 77;
    result = parse(error.data(), error.size());
    EXPECT_EQ(errno, 77);
    EXPECT_TRUE(error.untouched());
    return error.untouched(true) ? "" : error.text();
}

inline std::string hexadecimal(const uint8_t *bytes, size_t count)
{
    const char *const digits = "0123456789abcdef";
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 15];
    }
    return text;
}

// A text in memory of its exact size, so that reads after its end are found.
class Exact {
   public:
    explicit Exact(const std::string &text) : bytes_(text.c_str(), text.c_str() + text.size() + 1) {}
    operator const char *() const { return bytes_.data(); }

   private:
    std::vector<char> bytes_;
};

struct Row {
    const char *text;
    const char *expected;
};

// Texts that all have one outcome.
struct Group {
    const char *expected;
    std::vector<std::string> texts;
};

template <typename Outcome>
void check_groups(const std::vector<Group> &groups, const Outcome &outcome)
{
    for (const Group &group : groups)
        for (const std::string &text : group.texts) EXPECT_EQ(outcome(text), group.expected) << text;
}

}  // namespace orvex_test

#endif
