#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

using Parser = int(const char *, uint8_t *, char *, size_t, uint32_t);

std::string outcome(Parser *parse, const char *text, uint32_t count)
{
    orvex_test::Guarded bytes(count);
    auto *const data = reinterpret_cast<uint8_t *>(bytes.data());
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t size) { return parse(orvex_test::Exact(text), data, error, size, count); }, result);
    EXPECT_TRUE(bytes.untouched());
    return result == 0 ? orvex_test::hexadecimal(data, count) : std::to_string(result) + ' ' + message;
}

}  // namespace

TEST(ParseDelimAddr, Decimal)
{
    orvex_test::check_groups({{"0a010203", {"10.1.2.3"}},
                              {"0a010200", {"10:1.2"}},
                              {"00000000", {""}},
                              {"00010000", {".1.."}},
                              {"01020304", {"001.002.003.004"}},
                              {"ff000000", {"000000000000255"}},
                              {"-1 Unexpected characters", {"0001.002.003.004"}},
                              {"-1 Address out-of-range", {"256.1.1.1", "0256", "4294967296", "1.2.3.256.", "999.-"}},
                              {"-1 Unexpected character '.'", {"1.2.3.4."}},
                              {"-1 Unexpected character ':'", {"1.2.3.4:5"}},
                              {"-1 Invalid character '-'", {"999-", "1.2.-.4"}}},
                             [](const std::string &text) { return outcome(parse_delim_dec_addr, text.c_str(), 4); });
    EXPECT_EQ(outcome(parse_delim_dec_addr, "255", 1), "ff");
    EXPECT_EQ(outcome(parse_delim_dec_addr, "1", 0), "-2 ");
}

TEST(ParseDelimAddr, Hexadecimal)
{
    orvex_test::check_groups({{"0a010203", {"0a:1.2:3"}},
                              {"0a0b0c0d", {"0a0B0c0D"}},
                              {"-1 Incomplete delimited address", {"0a:0b:0c", ""}},
                              {"-1 Unexpected characters", {"0a:0b:0c:0d:", "0a0b0c0d0", "0a:0b:0c:0d/8"}},
                              {"-1 Invalid character ':'", {"0a::0b:0c:0d"}},
                              {"-1 Invalid character '/'", {"0a:0b:0c:0/"}}},
                             [](const std::string &text) { return outcome(parse_delim_hex_addr, text.c_str(), 4); });
    EXPECT_EQ(outcome(parse_delim_hex_addr, "1", 0), "-2 ");
}

TEST(FormatDelimAddr, RoundTripsAtEverySize)
{
    std::mt19937 random(1);
    for (uint32_t count = 1; count < 40; ++count) {
        std::vector<uint8_t> bytes(count);
        for (uint8_t &byte : bytes) byte = static_cast<uint8_t>(random() >> random() % 8);
        for (const char style : {'x', 'd'}) {
            std::vector<char> text(4 * count + 1, '\x5a');
            const int result = format_delim_addr(text.data(), text.size(), bytes.data(), ':', count, style);
            EXPECT_EQ(static_cast<size_t>(result), strlen(text.data()) + 1);
            EXPECT_EQ(outcome(style == 'x' ? parse_delim_hex_addr : parse_delim_dec_addr, text.data(), count),
                      orvex_test::hexadecimal(bytes.data(), count));
            orvex_test::check_cut_sizes(
                text.data(),
                [&](char *buf, size_t size) { return format_delim_addr(buf, size, bytes.data(), ':', count, style); },
                [&](size_t) { return result; });
        }
    }
    char text[9] = "as it is";
    EXPECT_EQ(format_delim_addr(text, sizeof text, nullptr, '.', 0, 'x'), 0);
    EXPECT_STREQ(text, "as it is");
    const uint8_t bytes[] = {10, 1, 2, 255};
    EXPECT_EQ(format_delim_addr(text, 9, bytes, '.', 4, 0), 11);
    EXPECT_STREQ(text, "10.1.2.2");
}
