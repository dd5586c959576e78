// Memory that shows writes next to it, and checks of what parsers and formatters write.
#ifndef ORVEX_TESTS_GUARDED_H
#define ORVEX_TESTS_GUARDED_H

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvex_test {

inline std::string hexadecimal(const uint8_t *bytes, size_t count)
{
    std::string text;
    for (const uint8_t byte : std::span(bytes, count)) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

// `size` bytes that end at a page that cannot be touched. Another such page comes before them, after up to a page of
// bytes that may be.
class Pages {
   public:
    explicit Pages(size_t size)
        : size_(size), page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))), length_((size / page_ + 3) * page_)
    {
        std::vector<char *> &unused = unused_of(length_);
        if (!unused.empty()) {
            start_ = unused.back();
            unused.pop_back();
            return;
        }
        void *const memory = mmap(nullptr, length_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) std::abort();
        start_ = static_cast<char *>(memory) + page_;
        if (mprotect(start_, length_ - 2 * page_, PROT_READ | PROT_WRITE) != 0) std::abort();
    }
    Pages(const Pages &) = delete;
    ~Pages() { unused_of(length_).push_back(start_); }

    [[nodiscard]] std::span<char> before() const { return {start_, length_ - 2 * page_ - size_}; }
    [[nodiscard]] char *data() const { return start_ + before().size(); }
    [[nodiscard]] size_t size() const { return size_; }

   private:
    // Kept for the next text: mapping them is most of the time that a test takes.
    static std::vector<char *> &unused_of(size_t length)
    {
        static std::map<size_t, std::vector<char *>> unused;
        return unused[length];
    }

    size_t size_;
    size_t page_;
    size_t length_;
    char *start_ = nullptr;
};

// `size` bytes filled with a value that no test expects. A write after them ends the test; one before them fails it.
class Guarded {
   public:
    explicit Guarded(size_t size) : pages_(size) { std::memset(guard().data(), fill, guard().size() + size); }
    ~Guarded()
    {
        const std::string_view before(guard().data(), guard().size());
        EXPECT_EQ(before.find_first_not_of(fill), std::string_view::npos) << "before " << size() << " bytes";
    }

    char *data() { return pages_.data(); }
    uint8_t *bytes() { return reinterpret_cast<uint8_t *>(data()); }
    [[nodiscard]] size_t size() const { return pages_.size(); }

    [[nodiscard]] bool untouched() const { return rest_is(0, fill); }

    // Whether every byte from `start` on is `value`.
    [[nodiscard]] bool rest_is(size_t start, char value) const
    {
        const std::string_view inside(pages_.data(), size());
        return inside.find_first_not_of(value, start) == std::string_view::npos;
    }

    // The terminated text inside; fails the test when there is no terminator.
    std::string text()
    {
        const auto length = strnlen(data(), size());
        if (length == size()) ADD_FAILURE() << "no terminator in " << size() << " bytes";
        return {data(), length};
    }

    std::string hexadecimal() { return orvex_test::hexadecimal(bytes(), size()); }

    static constexpr char fill = '\x5a';

   private:
    // The bytes before that are watched.
    [[nodiscard]] std::span<char> guard() const
    {
        constexpr size_t most = 64;
        return pages_.before().last(std::min(most, pages_.before().size()));
    }

    Pages pages_;
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

// As above for writers that cut: every size holds the text cut short, `format` returns `result(size)`, and errno is
// `error_number` after it. One more byte may follow the terminator.
template <typename Format, typename Result>
void check_cut_sizes(const std::string &expected, const Format &format, const Result &result, int error_number = 77)
{
    for (size_t size = 0; size <= expected.size() + 2; ++size) {
        SCOPED_TRACE("\"" + expected + "\" in " + std::to_string(size) + " bytes");
        Guarded buffer(size);
        errno = 77;
        EXPECT_EQ(format(buffer.data(), size), static_cast<int>(result(size)));
        EXPECT_EQ(errno, error_number);
        if (size == 0) continue;
        const std::string text = buffer.text();
        EXPECT_EQ(text, expected.substr(0, size - 1));
        EXPECT_TRUE(buffer.rest_is(text.size() + 2, Guarded::fill));
    }
}

// What a parser returns, and the message that it writes, "" for none. No parser of these changes errno.
struct Outcome {
    int result;
    std::string message;
};

template <typename Parse>
Outcome outcome_of(const Parse &parse)
{
    Guarded error(512);
    errno = 77;
    const int result = parse(error.data(), error.size());
    EXPECT_EQ(errno, 77);
    return {result, error.untouched() ? "" : error.text()};
}

// A text whose terminator is the last byte that can be read.
class Exact {
   public:
    explicit Exact(const std::string &text) : pages_(text.size() + 1)
    {
        std::memcpy(pages_.data(), text.c_str(), text.size() + 1);
    }
    operator const char *() const { return pages_.data(); }

   private:
    Pages pages_;
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
