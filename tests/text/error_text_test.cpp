#include "text/error_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <string>
#include <string_view>

#include "support/guarded.h"

namespace {

using orvex::refuse;
using orvex::refuse_invalid;
using orvex::refuse_invalid_pieces;

// Calls `write(error)` with every size of buffer; it must set errno to `error_number`.
template <typename Write>
void check_message(const std::string &whole, int error_number, const Write &write)
{
    for (size_t size = 0; size <= whole.size() + 2; ++size) {
        orvex_test::Guarded buffer(size);
        errno = 77;
        EXPECT_EQ(write(orvex::ErrorText{buffer.data(), size}), -2);
        EXPECT_EQ(errno, error_number);
        EXPECT_TRUE(buffer.untouched() && (size == 0 || buffer.text() == whole.substr(0, size - 1))) << size;
    }
    EXPECT_EQ(write(orvex::ErrorText{nullptr, 8}), -2);
}

// Every conversion, as printf writes it.
TEST(ErrorText, WritesAsPrintf)
{
    check_message("text|c|-2147483648|7|4294967295|0|18446744073709551615|%|", 77, [](orvex::ErrorText error) {
        return refuse(error, -2, "%s|%c|%d|%d|%u|%lu|%ju|%%|%s", "text", 'c', -2147483647 - 1, 7, 4294967295U, 0UL,
                      UINTMAX_MAX, "");
    });
    check_message("3 of 'abc'", EINVAL, [](orvex::ErrorText error) {
        return refuse_invalid(error, -2, "%zu of '%.*s'", size_t{3}, 3, "abcd");
    });
}

// Pieces are cut as one text, and no "%" in them converts anything.
TEST(ErrorText, WritesPieces)
{
    const std::string_view quoted = std::string_view("10.0.0.0/33 and more").substr(0, 11);
    check_message("100%s of '10.0.0.0/33'", EINVAL, [quoted](orvex::ErrorText error) {
        return refuse_invalid_pieces(error, -2, {"100%s", "", " of '", quoted, "'"});
    });
}

}  // namespace
