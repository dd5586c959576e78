#include "support/error_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

#include "support/guarded.h"

namespace {

using orvex::ErrorText;
using orvex::refuse;

// Every conversion, beside what printf makes of it, in every size of buffer.
TEST(ErrorText, WritesAsPrintfInEverySize)
{
    const auto write = [](ErrorText error) {
        return refuse(error, EINVAL, -2, "%s|%c|%d|%d|%u|%lu|%zu|%ju|%%|%s", "text", 'c',
                      -2147483647 - 1, 7, 4294967295U, 0UL, SIZE_MAX, UINTMAX_MAX, "");
    };
    char expected[128];
    std::snprintf(expected, sizeof expected, "%s|%c|%d|%d|%u|%lu|%zu|%ju|%%|%s", "text", 'c',
                  -2147483647 - 1, 7, 4294967295U, 0UL, SIZE_MAX, UINTMAX_MAX, "");
    const std::string whole = expected;
    for (size_t size = 0; size <= whole.size() + 2; ++size) {
        SCOPED_TRACE(size);
        orvex_test::Guarded buffer(size);
        EXPECT_EQ(write({buffer.data(), size}), -2);
        EXPECT_TRUE(buffer.untouched());
        if (size > 0) {
            EXPECT_EQ(buffer.text(), whole.substr(0, size - 1));
        }
    }
}

TEST(ErrorText, SetsErrnoOnlyWhenAsked)
{
    errno = 77;
    EXPECT_EQ(refuse({nullptr, 8}, orvex::keep_errno, -1, "%s", "silent"), -1);
    EXPECT_EQ(errno, 77);
    refuse({nullptr, 0}, ERANGE, -1, "silent");
    EXPECT_EQ(errno, ERANGE);
}

}  // namespace
