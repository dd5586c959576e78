#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cerrno>
#include <cstdint>
#include <limits>

namespace {

constexpr int before = 77;

struct Outcome {
    int result;
    int64_t value;
    int error;
    bool operator==(const Outcome &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Outcome &outcome)
{
    return out << outcome.result << ", value " << outcome.value << ", errno " << outcome.error;
}

constexpr int64_t untouched = -99;

template <typename Value, typename Parse>
Outcome outcome_of(const Parse &parse)
{
    Value value = untouched;
    errno = before;
    const int result = parse(&value);
    return {result, value, errno};
}

struct Row {
    const char *text;
    Outcome expected;
};

template <typename Value>
void check_common_rows(int (*parse)(const char *, Value *))
{
    const Row rows[] = {
        {"0", {0, 0, 0}},
        {"00", {0, 0, 0}},
        {"-0", {0, 0, 0}},
        {"0x1f", {0, 31, 0}},
        {"0X1F", {0, 31, 0}},
        {"-0x1f", {0, -31, 0}},
        {"+0x00000000000000000001f", {0, 31, 0}},
        {"017", {0, 15, 0}},
        {"-12", {0, -12, 0}},
        {" \t\n\v\f\r+42", {0, 42, 0}},
        {"42 ", {-1, 0, 0}},
        {"", {-1, 0, 0}},
        {" ", {-1, 0, 0}},
        {"-", {-1, 0, 0}},
        {"+-1", {-1, 0, 0}},
        {"- 1", {-1, 0, 0}},
        {"0x", {-1, 0, 0}},
        {"0xg", {-1, 0, 0}},
        {"08", {-1, 0, 0}},
        {"4x", {-1, 0, 0}},
        {"9999999999999999999999x", {-1, 0, ERANGE}},  // both faults: the trailing text counts
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(outcome_of<Value>([&](Value *value) { return parse(row.text, value); }),
                  row.expected);
    }
    EXPECT_EQ(outcome_of<Value>([&](Value *value) { return parse(nullptr, value); }),
              (Outcome{-1, untouched, EINVAL}));
    EXPECT_EQ(outcome_of<Value>([&](Value *) { return parse("1", nullptr); }),
              (Outcome{-1, untouched, EINVAL}));
}

TEST(ParseInteger, Grammar)
{
    check_common_rows<int32_t>(parse_integer);
    check_common_rows<int64_t>(parse_quad);
}

TEST(ParseInteger, Limits)
{
    const Row integers[] = {
        {"2147483647", {0, 2147483647, 0}},
        {"-2147483648", {0, -2147483648LL, 0}},
        {"0x7fffffff", {0, 2147483647, 0}},
        {"020000000000", {-1, untouched, ERANGE}},
        {"2147483648", {-1, untouched, ERANGE}},
        {"-2147483649", {-1, untouched, ERANGE}},
        {"0xffffffff", {-1, untouched, ERANGE}},
        {"4294967296", {-1, untouched, ERANGE}},
        {"18446744073709551617", {-1, untouched, ERANGE}},
    };
    for (const Row &row : integers) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(outcome_of<int32_t>([&](int32_t *v) { return parse_integer(row.text, v); }),
                  row.expected);
    }
    constexpr int64_t most = std::numeric_limits<int64_t>::max();
    const Row quads[] = {
        {"2147483648", {0, 2147483648LL, 0}},
        {"9223372036854775807", {0, most, 0}},
        {"-9223372036854775808", {0, -most - 1, 0}},
        {"0x7fffffffffffffff", {0, most, 0}},
        {"0777777777777777777777", {0, most, 0}},
        {"9223372036854775808", {-1, untouched, ERANGE}},
        {"-9223372036854775809", {-1, untouched, ERANGE}},
        {"18446744073709551616", {-1, untouched, ERANGE}},
    };
    for (const Row &row : quads) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(outcome_of<int64_t>([&](int64_t *v) { return parse_quad(row.text, v); }),
                  row.expected);
    }
}

TEST(ParseNumber, BoundsAndLeniency)
{
    constexpr int32_t most = std::numeric_limits<int32_t>::max();
    const struct {
        const char *text;
        int32_t limit;
        Outcome expected;
    } rows[] = {
        {"", 10, {1, 0, before}},
        {"", 0, {0, 0, before}},
        {"9", 10, {1, 9, before}},
        {"10", 10, {0, 0, before}},
        {"-1", 10, {0, 0, before}},
        {"-0", 10, {1, 0, before}},
        {"010", 11, {1, 10, before}},
        {" +7", 10, {1, 7, before}},
        {"7 ", 10, {0, 0, before}},
        {" ", 10, {0, 0, before}},
        {"0x1", 10, {0, 0, before}},
        {"2147483646", most, {1, 2147483646, before}},
        {"2147483647", most, {0, 0, before}},
        {"99999999999", most, {0, 0, ERANGE}},
        {"-99999999999", most, {0, 0, ERANGE}},
        {"99999999999x", most, {0, 0, ERANGE}},
        {nullptr, 10, {0, 0, before}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text != nullptr ? row.text : "(null)");
        EXPECT_EQ(outcome_of<int32_t>(
                      [&](int32_t *value) { return parse_number(row.text, value, row.limit); }),
                  row.expected);
    }
}

}  // namespace
