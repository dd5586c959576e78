#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

using orvex_test::Exact;
using orvex_test::Guarded;

std::string outcome(const std::string &text, int mode = PARSE_ESI_ANY)
{
    Guarded esi(10);
    const auto [result, message] = orvex_test::outcome_of(
        [&](char *error, size_t size) { return parse_esi(Exact(text), esi.bytes(), error, size, mode); });
    if (result == 0) return esi.hexadecimal();
    EXPECT_TRUE(result == -1 && esi.untouched());
    return message;
}

}  // namespace

TEST(ParseEsi, FormsAndRefusals)
{
    orvex_test::check_groups(
        {{"00112233445566778899", {"00:11:22:33:44:55:66:77:88:99"}},
         {"0a010203040506070809", {"000a:1:2:3:4:5:6:7:8:0009"}},
         {"aabbccddeeff00112233", {"AA:bB:cc:DD:EE:0ff:00:0011:22:33"}},
         {"00110000000000000099", {"00:11::99"}},
         {"00000000000000000001", {"::1"}},
         {"01110000000000000000", {"01:11::"}},
         {"00010203040506070809", {"::1:2:3:4:5:6:7:8:9"}},
         {"Unexpected ':' character", {":", ":00:11", "1:2:", "01:02:", "1:2:3:4:5:6:7:8:9:a:"}},
         {"ESI is too long; length must be exactly 10 octets",
          {"1:2:3:4:5:6:7:8:9:a:b", "1:2:3:4:5:6:7:8:9:a:b:", "00:11:22:33:44:55:66:77:88:99:aa:bb"}},
         {"Unexpected '::' sequence", {"1:2:3:4:5:6:7:8:9::a", "::1:2:3:4:5:6:7:8:9:a", "1:2:3:4:5:6:7:8:9:a::"}},
         {"ESI is too short; length must be exactly 10 octets", {"ff:ff:ff:ff:ff:ff:ff:ff", "00:11:22", ""}},
         {"Only one '::' sequence can appear in the ESI and it may not follow a ':' character",
          {":::", "00:11:::22", "00::11::22"}},
         {"Values delimited by ':' characters must be in the range 0 to 0xff",
          {"100:11", "1:0000100", "1:2:3:4:5:6:7:8:9:a:100"}},
         {"Invalid non-hexidecimal character found in ESI",
          {"00-11", "1:2 ", "1:g", "0011-", "1:2:3:4:5:6:7:8:9:a:b-"}}},
        [](const std::string &text) { return outcome(text); });
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
    EXPECT_EQ(outcome("ff:ff:ff:ff:ff:ff:ff:ff:ff:fe"), "fffffffffffffffffffe");
}

TEST(FormatEsi, EverySize)
{
    const uint8_t esi[] = {0, 0x1b, 0x2c, 0x3d, 0x4e, 0x5f, 0x60, 0x71, 0x89, 0xfa};
    orvex_test::check_cut_sizes(
        "00:1b:2c:3d:4e:5f:60:71:89:fa", [&](char *buf, size_t size) { return format_esi(buf, size, esi); },
        [](size_t size) { return std::min(size_t{29}, size); });
}
