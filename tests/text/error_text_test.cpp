#include "text/error_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <string_view>

#include "support/guarded.h"

namespace {

using orvex::refuse;
using orvex::refuse_with_pieces;

// Every conversion, as printf writes it, in every size of buffer.
TEST(ErrorText, WritesAsPrintfInEverySize)
{
    const std::string whole = "text|c|-2147483648|7|4294967295|0|18446744073709551615|%|";
    for (size_t size = 0; size <= whole.size() + 2; ++size) {
        orvex_test::Guarded buffer(size);
        errno = 77;
        EXPECT_EQ(
            refuse({buffer.data(), size}, size % 2 == 0 ? EINVAL : orvex::keep_errno, -2,
                   "%s|%c|%d|%d|%u|%lu|%ju|%%|%s", "text", 'c', -2147483647 - 1, 7, 4294967295U, 0UL, UINTMAX_MAX, ""),
            -2);
        EXPECT_EQ(errno, size % 2 == 0 ? EINVAL : 77);
        EXPECT_TRUE(buffer.untouched() && (size == 0 || buffer.text() == whole.substr(0, size - 1))) << size;
    }
    refuse({nullptr, 8}, ERANGE, -1, "%s", "silent");
}

// Pieces are cut as one text, and no "%" in them converts anything.
TEST(ErrorText, WritesPiecesInEverySize)
{
    const std::string whole = "100%s of '10.0.0.0/33'";
    const std::string_view quoted = std::string_view("10.0.0.0/33 and more").substr(0, 11);
    for (size_t size = 0; size <= whole.size() + 2; ++size) {
        orvex_test::Guarded buffer(size);
        errno = 77;
        EXPECT_EQ(refuse_with_pieces({buffer.data(), size}, size % 2 == 0 ? EINVAL : orvex::keep_errno, -1,
                                     {"100%s", "", " of '", quoted, "'"}),
                  -1);
        EXPECT_EQ(errno, size % 2 == 0 ? EINVAL : 77);
        EXPECT_TRUE(buffer.untouched() && (size == 0 || buffer.text() == whole.substr(0, size - 1))) << size;
    }
    EXPECT_EQ(refuse_with_pieces({nullptr, 8}, ERANGE, -1, {"silent"}), -1);
    EXPECT_EQ(errno, ERANGE);
}

}  // namespace
