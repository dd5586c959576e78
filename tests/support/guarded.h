// Memory that tells when somebody writes outside of it.
#ifndef ORVEX_TESTS_GUARDED_H
#define ORVEX_TESTS_GUARDED_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
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

    // Both guards hold, and with `whole` the bytes between them are as they were.
    [[nodiscard]] bool untouched(bool whole = false) const
    {
        const auto is_fill = [](char byte) { return byte == fill; };
        const auto inner = bytes_.begin() + guard;
        const auto behind = bytes_.end() - guard;
        return std::all_of(bytes_.begin(), inner, is_fill) && std::all_of(behind, bytes_.end(), is_fill) &&
               (!whole || std::all_of(inner, behind, is_fill));
    }

    // The terminated text inside; fails the test when there is no terminator.
    std::string text()
    {
        const auto length = strnlen(data(), size());
        if (length == size()) ADD_FAILURE() << "no terminator in " << size() << " bytes";
        return {data(), length};
    }

   private:
    static constexpr ptrdiff_t guard = 16;
    static constexpr char fill = '\x5a';
    std::vector<char> bytes_;
};

// What a formatter must leave for a text that does not fit.
enum class Overflow { cut, empty };

// What a formatter must leave behind a text that fits.
enum class Rest { any, zero };

// Calls `format(buf, buflen)` with every size from 0 to two more than `expected` needs and checks
// the result, errno, the text, its terminator and the guards.
template <typename Format>
void check_every_size(const std::string &expected, const Format &format, Overflow overflow = Overflow::cut,
                      Rest rest = Rest::any)
{
    for (size_t size = 0; size <= expected.size() + 3 || (rest == Rest::zero && size < 90); ++size) {
        SCOPED_TRACE("\"" + expected + "\" in " + std::to_string(size) + " bytes");
        Guarded buffer(size);
        errno = 77;
        const size_t result = format(buffer.data(), size);
        EXPECT_TRUE(buffer.untouched());
        const bool fits = size > expected.size();
        EXPECT_EQ(result, fits ? expected.size() : 0);
        EXPECT_EQ(errno, fits ? 77 : ENOSPC);
        if (size == 0) continue;
        const std::string cut = overflow == Overflow::cut ? expected.substr(0, size - 1) : "";
        EXPECT_EQ(buffer.text(), fits ? expected : cut);
        if (fits && rest == Rest::zero) {
            EXPECT_EQ(static_cast<size_t>(std::count(buffer.data() + result, buffer.data() + size, '\0')),
                      size - result);
        }
    }
}

}  // namespace orvex_test

#endif
