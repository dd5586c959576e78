#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

std::string outcome(const std::string &text, int mode = PARSE_ESI_ANY)
{
    orvex_test::Guarded esi(10);
    auto *const data = reinterpret_cast<uint8_t *>(esi.data());
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t size) { return parse_esi(orvex_test::Exact(text), data, error, size, mode); }, result);
    EXPECT_TRUE(esi.untouched(result != 0));
    if (result == 0) return orvex_test::hexadecimal(data, 10);
    EXPECT_EQ(result, -1);
    return message;
}

}  // namespace

TEST(ParseEsi, FormsAndRefusals)
{
    const std::string range = "Values delimited by ':' characters must be in the range 0 to 0xff";
    const std::string colon = "Unexpected ':' character";
    const std::string gap = "Only one '::' sequence can appear in the ESI and it may not follow a ':' character";
    const std::string shorter = "ESI is too short; length must be exactly 10 octets";
    const std::string longer = "ESI is too long; length must be exactly 10 octets";
    const std::string character = "Invalid non-hexidecimal character found in ESI";
    for (const auto &[text, expected] :
         std::vector<std::pair<std::string, std::string>>{{"00:11:22:33:44:55:66:77:88:99", "00112233445566778899"},
                                                          {"000a:1:2:3:4:5:6:7:8:0009", "0a010203040506070809"},
                                                          {"AA:bB:cc:DD:EE:FF:00:11:22:33", "aabbccddeeff00112233"},
                                                          {"00:11::99", "00110000000000000099"},
                                                          {"::1", "00000000000000000001"},
                                                          {"01:11::", "01110000000000000000"},
                                                          {"::1:2:3:4:5:6:7:8:9", "00010203040506070809"},
                                                          {"1:2:3:4:5:6:7:8:9::", "01020304050607080900"},
                                                          {":", colon},
                                                          {":00:11", colon},
                                                          {"1:2:", colon},
                                                          {"1:2:3:4:5:6:7:8:9:a:", colon},
                                                          {"1:2:3:4:5:6:7:8:9:a:b:", longer},
                                                          {"1:2:3:4:5:6:7:8:9:a:b", longer},
                                                          {"1:2:3:4:5:6:7:8:9::a", "Unexpected '::' sequence"},
                                                          {"::1:2:3:4:5:6:7:8:9:a", "Unexpected '::' sequence"},
                                                          {"00:11:22", shorter},
                                                          {"", shorter},
                                                          {":::", gap},
                                                          {"00:11:::22", gap},
                                                          {"00::11::22", gap},
                                                          {"100:11", range},
                                                          {"1:0000100", range},
                                                          {"00-11", character},
                                                          {"1:2 ", character},
                                                          {"1:g", character}})
        EXPECT_EQ(outcome(text), expected) << text;
}

TEST(ParseEsi, Modes)
{
    for (const std::string text : {"::", "0:0:0:0:0:0:0:0:0:0", "ff:ff:ff:ff:ff:ff:ff:ff:ff:ff"}) {
        for (const int mode : {PARSE_ESI_ANY, PARSE_ESI_USER_DEFINED, 3, -1})
            EXPECT_EQ(outcome(text, mode), "ESI value is reserved");
        EXPECT_EQ(outcome(text, PARSE_ESI_RESERVED_OK), std::string(20, text[0] == 'f' ? 'f' : '0'));
    }
    EXPECT_EQ(outcome("01::", PARSE_ESI_USER_DEFINED), "The first octet of a user-defined ESI must be 0");
    EXPECT_EQ(outcome("01::", PARSE_ESI_RESERVED_OK), "01000000000000000000");
    EXPECT_EQ(outcome("0:1::", PARSE_ESI_USER_DEFINED), "00010000000000000000");
    EXPECT_EQ(outcome("1:1:1:1:1:1:1:1:1:1"), "01010101010101010101");
}

TEST(FormatEsi, RoundTripsAtEverySize)
{
    std::mt19937 random(1);
    for (int i = 0; i < 50; ++i) {
        uint8_t esi[10];
        for (uint8_t &byte : esi) byte = static_cast<uint8_t>(random());
        char text[30];
        EXPECT_EQ(format_esi(text, sizeof text, esi), 29);
        EXPECT_EQ(outcome(text), orvex_test::hexadecimal(esi, 10));
        orvex_test::check_cut_sizes(
            text, [&](char *buf, size_t size) { return format_esi(buf, size, esi); },
            [](size_t size) { return std::min(size_t{29}, size); });
    }
}
