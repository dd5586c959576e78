#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

// "0 0000fde8 00000064", type and words; or the message.
std::string outcome(const std::string &text)
{
    uint32_t type = 77;
    uint32_t high = 77;
    uint32_t low = 77;
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t size) {
            return parse_inetvpn_rd(orvex_test::Exact(text), &type, &high, &low, error, size);
        },
        result);
    if (result != 0) {
        EXPECT_TRUE(result == 1 && high == 77 && low == 77);
        return message;
    }
    char words[32];
    snprintf(words, sizeof words, "%u %08x %08x", type, high, low);
    return words;
}

std::string out_of_range(const char *what, const char *range)
{
    return std::string("Invalid ") + what + " value at " + range;
}

}  // namespace

TEST(ParseInetvpnRd, FormsAndRefusals)
{
    const char *const as = "autonomous system";
    const char *const number = "RD number";
    const std::string cut = "1:" + std::string(127, '0') + "x";
    for (const auto &[text, expected] : std::vector<std::pair<std::string, std::string>>{
             {"65000:100", "0 0000fde8 00000064"},
             {"65000:4294967295", "0 0000fde8 ffffffff"},
             {"10.1.1.1:7", "1 00010a01 01010007"},
             {"10.1.1:65535", "1 00010a01 0001ffff"},
             {"010.1.08.1:7", "Invalid IP address in route-distingusher: 010.1.08.1:7"},
             {"010.1.1.1:7", "1 00010801 01010007"},
             {"1.10:3", "2 00020001 000a0003"},
             {".10:3", "2 00020000 000a0003"},
             {"70000.1:3", "2 00021170 00010003"},
             {"4200000000L:3", "2 0002fa56 ea000003"},
             {"99999999999L:0", "2 0002ffff ffff0000"},
             {cut, "0 00000001 00000000"},
             {std::string(127, '0') + "1:7", "0 00000001 00000000"},
             {"65536:1", out_of_range(as, "'65536' not in range 1 to 65535")},
             {"0:1", out_of_range(as, "'0' not in range 1 to 65535")},
             {"0:x", out_of_range(as, "'0' not in range 1 to 65535")},
             {":1", out_of_range(as, "'0' not in range 1 to 65535")},
             {"4200000000L:65536", out_of_range(number, "'65536' not in range 0 to 65535")},
             {"10.1.1.1:65536", out_of_range(number, "'65536' not in range 0 to 65535")},
             {"x:65536", out_of_range(number, "'65536' not in range 0 to 65535")},
             {"100", "Invalid RD format: '100'"},
             {std::string(129, '1') + ":1", "Invalid RD format: '" + std::string(129, '1') + ":1'"},
             {"100:5:6", "Invalid route-distinguisher: 100:5:6"},
             {"10.1.1.1.1:7", "Invalid IP address in route-distingusher: 10.1.1.1.1:7"}})
        EXPECT_EQ(outcome(text), expected) << text;
    for (const std::string text : {"L:1", "5.L:1", "5.:1", "1.2.:1", "1L2:1", "5LL:1", " 5:1 "})
        EXPECT_NE(outcome(text).substr(0, 2), "2 ") << text;
    EXPECT_EQ(outcome("L:1"), "Invalid IP address in route-distingusher: L:1");
}
