#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

std::string outcome(const char *text, int size = 6)
{
    orvex_test::Guarded bytes(6);
    auto *const data = reinterpret_cast<uint8_t *>(bytes.data());
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t length) { return parse_iso_sysid(orvex_test::Exact(text), data, size, error, length); },
        result);
    EXPECT_TRUE(bytes.untouched());
    EXPECT_EQ(parse_iso_sysid(text, nullptr, size, nullptr, 0), result);
    return result == 0 ? orvex_test::hexadecimal(data, 6) : std::to_string(result) + ' ' + message;
}

}  // namespace

TEST(ParseIsoSysid, GroupsAndRefusals)
{
    orvex_test::check_groups(
        {{"192168001001", {"1921.6800.1001"}},
         {"000100020003", {"1.2.3"}},
         {"12340001ffff", {"01234.1.FfFf"}},
         {"001200030000", {"0x12. +3.0X0"}},
         {"000100010001", {"-ffffffff.1.1"}},
         {"-2 system-id cannot be all zeros", {"0000.0000.0000"}},
         {"-1 Invalid system-id string", {"", "1921.6800", "1..2.3", "1.2.3.", "1.2.3.4", "x.1.1"}},
         {"-1 Passed sysid string too large", {"1921.6800.1001."}},
         {"-1 Unexpected character in system-id '-'", {"1921-6800-1001"}},
         {"-1 Unexpected character in system-id 'x'", {"0xg.1.1"}},
         {"-1 Unexpected number of hex characters in system-id", {"12345.1.1", "123456789abc", "-1.1.1"}}},
        [](const std::string &text) { return outcome(text.c_str()); });
    for (const char *text : {"1.2.3", "0x1.2.3"})
        for (const int size : {1, 5}) EXPECT_EQ(outcome(text, size), "-1 Passed sysid size too small");
    for (const int size : {0, -1, 7}) EXPECT_EQ(outcome("1.2.3", size), "000100020003");
}

TEST(ParseIsIsoSysid, Shapes)
{
    for (const char *text : {"1.2.3", "1921.6800.100F"}) EXPECT_EQ(parse_is_iso_sysid(text), 1) << text;
    for (const char *text :
         {"", "12345.1.1", "1921.6800", "0x12.1.1", "1..1", ".1.1", "1.1.", "1.1.1.1", "1.1.1 ", "1.1.12345"})
        EXPECT_EQ(parse_is_iso_sysid(text), 0) << text;
}

TEST(FormatIsoSysid, RoundTripsAtEverySize)
{
    std::mt19937 random(1);
    for (int i = 0; i < 20; ++i) {
        uint8_t sysid[6];
        for (uint8_t &byte : sysid) byte = static_cast<uint8_t>(random());
        char text[15];
        EXPECT_EQ(format_iso_sysid(sysid, text, sizeof text), 2);
        EXPECT_EQ(outcome(text), orvex_test::hexadecimal(sysid, 6));
        orvex_test::check_cut_sizes(
            text, [&](char *buf, size_t size) { return format_iso_sysid(sysid, buf, size); },
            [](size_t size) { return size <= 12 ? 0 : std::min(size_t{2}, size - 12); });
    }
}
