#include "text/error_text.h"

#include <gtest/gtest.h>

#include "support/guarded.h"

namespace {

using orvex::ErrorText;

// `write(error)` writes `whole` into every size of buffer, and nothing into none.
template <typename Write>
void check_message(const std::string &whole, int error_number, const Write &write)
{
    orvex_test::check_cut_sizes(
        whole,
        [&](char *buf, size_t size) {
            return write(ErrorText{buf, size});
        },
        [](size_t) { return -2; }, error_number);
    EXPECT_EQ(write(ErrorText{nullptr, 8}), -2);
    char enough[128];
    EXPECT_EQ(write(ErrorText{enough, SIZE_MAX}), -2);
    EXPECT_EQ(enough, whole);
}

// Every conversion, as printf writes it.
TEST(ErrorText, WritesAsPrintf)
{
    check_message("text|c|-2147483648|0|7|4294967295|0|18446744073709551615|%|", 77, [](ErrorText error) {
        return orvex::refuse(error, -2, "%s|%c|%d|%d|%d|%u|%lu|%ju|%%|%s", "text", 'c', -2147483647 - 1, 0, 7,
                             4294967295U, 0UL, UINTMAX_MAX, "");
    });
    check_message("3 of 'abc'", EINVAL, [](ErrorText error) {
        return orvex::refuse_invalid(error, -2, "%zu of '%.*s'", size_t{3}, 3, "abcd");
    });
}

// Pieces are cut as one text, and no "%" in them converts anything.
TEST(ErrorText, WritesPieces)
{
    const std::string_view quoted = std::string_view("10.0.0.0/33 and more").substr(0, 11);
    check_message("100%s of '10.0.0.0/33'", EINVAL, [quoted](ErrorText error) {
        return orvex::refuse_invalid_pieces(error, -2, {"100%s", "", " of '", quoted, "'"});
    });
}

}  // namespace
