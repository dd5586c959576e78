#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

struct Row {
    const char *text;
    int result = 0;
    int64_t value = 0;
    int error = 0;
};

template <typename Value, typename Parse>
void check(const Parse &parse, const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        Value value = -99;
        errno = 77;
        EXPECT_EQ(parse(orvex_test::Exact(row.text), &value), row.result);
        EXPECT_EQ(errno, row.error);
        EXPECT_EQ(value, row.value);
    }
}

}  // namespace

TEST(ParseInteger, ReadsWholeTexts)
{
    check<int32_t>(parse_integer, {
                                      {.text = "0x1f", .value = 31},
                                      {.text = " \t\n\v\f\r+42", .value = 42},
                                      {.text = "-2147483648", .value = INT32_MIN},
                                      {.text = "2147483648", .result = -1, .value = -99, .error = ERANGE},
                                      {.text = "-2147483649", .result = -1, .value = -99, .error = ERANGE},
                                      {.text = "", .result = -1},
                                      {.text = "08", .result = -1},
                                      {.text = "42 ", .result = -1},
                                      {.text = "9999999999x", .result = -1, .error = ERANGE},
                                  });
    check<int64_t>(parse_quad, {
                                   {.text = "9223372036854775807", .value = INT64_MAX},
                                   {.text = "9223372036854775808", .result = -1, .value = -99, .error = ERANGE},
                                   {.text = "-0x", .result = -1},
                               });
    int32_t value = 5;
    errno = 0;
    EXPECT_TRUE(parse_integer(nullptr, &value) == -1 && errno == EINVAL && value == 5);
    EXPECT_TRUE(parse_integer("1", nullptr) == -1 && parse_quad("1", nullptr) == -1);
}

TEST(ParseNumber, BoundsAndLeniency)
{
    const auto up_to = [](int32_t limit) {
        return [limit](const char *text, int32_t *value) { return parse_number(text, value, limit); };
    };
    check<int32_t>(up_to(10), {
                                  {.text = "", .result = 1, .error = 77},
                                  {.text = "10", .error = 77},
                                  {.text = "-1", .error = 77},
                                  {.text = " +7", .result = 1, .value = 7, .error = 77},
                              });
    check<int32_t>(up_to(0), {{.text = "", .error = 77}});
    check<int32_t>(up_to(11), {{.text = "010", .result = 1, .value = 10, .error = 77}});
    check<int32_t>(up_to(INT32_MAX), {
                                         {.text = "2147483647", .error = 77},
                                         {.text = "99999999999", .error = ERANGE},
                                         {.text = "-99999999999x", .error = ERANGE},
                                     });
    int32_t value = 5;
    EXPECT_TRUE(parse_number(nullptr, &value, 10) == 0 && value == 0);
}
