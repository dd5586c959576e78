#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cerrno>
#include <string>

namespace {

constexpr int before = 77;
constexpr int untouched = -99;

// "31", or "refused 0 ERANGE": what the output holds ("-" when untouched) and errno, unless it is `expected_errno`.
template <typename Value, typename Parse>
std::string outcome(int accepted, int expected_errno, const Parse &parse)
{
    Value value = untouched;
    errno = before;
    const bool refused = parse(&value) != accepted;
    std::string text = refused ? "refused " : "";
    text += refused && value == untouched ? "-" : std::to_string(value);
    return text + (errno == ERANGE           ? " ERANGE"
                   : errno == EINVAL         ? " EINVAL"
                   : errno == expected_errno ? ""
                                             : " errno?");
}

TEST(ParseInteger, ReadsWholeTexts)
{
    const struct {
        const char *text;
        const char *integer;
        const char *quad;  // null: as the integer
    } rows[] = {
        {"0x1f", "31", nullptr},
        {" \t\n\v\f\r+42", "42", nullptr},
        {"9999999999999999999999x", "refused 0 ERANGE", nullptr},  // both faults: the trailing text counts
        {nullptr, "refused - EINVAL", nullptr},
        {"2147483648", "refused - ERANGE", "2147483648"},
        {"0xffffffff", "refused - ERANGE", "4294967295"},
        {"9223372036854775807", "refused - ERANGE", "9223372036854775807"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text != nullptr ? row.text : "(null)");
        EXPECT_EQ(outcome<int32_t>(0, 0, [&](int32_t *value) { return parse_integer(row.text, value); }), row.integer);
        EXPECT_EQ(outcome<int64_t>(0, 0, [&](int64_t *value) { return parse_quad(row.text, value); }),
                  row.quad != nullptr ? row.quad : row.integer);
    }
    EXPECT_EQ(parse_integer("1", nullptr), -1);
    EXPECT_EQ(parse_quad("1", nullptr), -1);
}

TEST(ParseNumber, BoundsAndLeniency)
{
    constexpr int32_t most = 2147483647;
    const struct {
        const char *text;
        int32_t limit;
        const char *expected;
    } rows[] = {
        {"", 10, "0"},
        {"", 0, "refused 0"},
        {"-1", 10, "refused 0"},
        {"010", 11, "10"},
        {" +7", 10, "7"},
        {"2147483647", most, "refused 0"},
        {"-99999999999x", most, "refused 0 ERANGE"},
        {"99999999999", most, "refused 0 ERANGE"},
        {nullptr, 10, "refused 0"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text != nullptr ? row.text : "(null)");
        const auto parse = [&](int32_t *value) { return parse_number(row.text, value, row.limit); };
        EXPECT_EQ(outcome<int32_t>(1, before, parse), row.expected);
    }
}

}  // namespace
