#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cerrno>

#include "support/guarded.h"

namespace {

constexpr int kept = 77;
constexpr int untouched = -99;

template <typename Value>
struct Row {
    const char *text;
    int result = 0;
    Value value = untouched;
    int error = 0;
};

template <typename Value>
void check(const Row<Value> &row, int (*parse)(const char *, Value *))
{
    SCOPED_TRACE(row.text);
    Value value = untouched;
    errno = kept;
    EXPECT_EQ(parse(orvex_test::Exact(row.text), &value), row.result);
    EXPECT_EQ(errno, row.error);
    EXPECT_EQ(value, row.value);
}

TEST(ParseInteger, ReadsWholeTexts)
{
    const Row<int32_t> integers[] = {
        {.text = "0x1f", .value = 31},
        {.text = " \t\n\v\f\r+42", .value = 42},
        {.text = "-2147483648", .value = -2147483647 - 1},
        {.text = "2147483648", .result = -1, .error = ERANGE},
        {.text = "-2147483649", .result = -1, .error = ERANGE},
        {.text = "", .result = -1, .value = 0},
        {.text = "08", .result = -1, .value = 0},
        {.text = "42 ", .result = -1, .value = 0},
        {.text = "9999999999x", .result = -1, .value = 0, .error = ERANGE},
    };
    for (const auto &row : integers) check(row, parse_integer);
    const Row<int64_t> quads[] = {
        {.text = "9223372036854775807", .value = INT64_MAX},
        {.text = "9223372036854775808", .result = -1, .error = ERANGE},
        {.text = "-0x", .result = -1, .value = 0},
    };
    for (const auto &row : quads) check(row, parse_quad);

    int32_t value = untouched;
    errno = kept;
    EXPECT_EQ(parse_integer(nullptr, &value), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(value, untouched);
    EXPECT_EQ(parse_integer("1", nullptr), -1);
    EXPECT_EQ(parse_quad("1", nullptr), -1);
}

TEST(ParseNumber, BoundsAndLeniency)
{
    constexpr int32_t most = 2147483647;
    const struct {
        const char *text;
        int32_t limit = 10;
        int result = 0;
        int32_t value = 0;
        int error = kept;
    } rows[] = {
        {.text = "", .result = 1},
        {.text = "", .limit = 0},
        {.text = "10"},
        {.text = "-1"},
        {.text = "010", .limit = 11, .result = 1, .value = 10},
        {.text = " +7", .result = 1, .value = 7},
        {.text = "2147483647", .limit = most},
        {.text = "99999999999", .limit = most, .error = ERANGE},
        {.text = "-99999999999x", .limit = most, .error = ERANGE},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        int32_t value = untouched;
        errno = kept;
        EXPECT_EQ(parse_number(orvex_test::Exact(row.text), &value, row.limit), row.result);
        EXPECT_EQ(value, row.value);
        EXPECT_EQ(errno, row.error);
    }
    int32_t value = untouched;
    EXPECT_EQ(parse_number(nullptr, &value, 10), 0);
    EXPECT_EQ(value, 0);
}

}  // namespace
