#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

// "001b2c3d4e5f 1/48", the address and the prefix; or the result and the message.
std::string outcome(const char *text, uint32_t flags)
{
    uint8_t address[6];
    int seen = 7;
    uint8_t length = 77;
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t size) {
            return parse_mac_addr(orvex_test::Exact(text), flags, address, &seen, &length, error, size);
        },
        result);
    EXPECT_EQ(parse_mac_addr(text, flags, address, nullptr, nullptr, nullptr, 0), result);
    if (result != 0) return std::to_string(result) + ' ' + message;
    return orvex_test::hexadecimal(address, 6) + ' ' + std::to_string(seen) + '/' + std::to_string(length);
}

void check(uint32_t flags, const std::vector<orvex_test::Group> &groups)
{
    orvex_test::check_groups(groups, [flags](const std::string &text) { return outcome(text.c_str(), flags); });
}

}  // namespace

TEST(ParseMacAddr, FormsAndRefusals)
{
    check(0, {{"0011223a4b55 0/77",
               {"00:11:22:3a:4B:55", "00.11.22.3a.4b.55", "0011.223a.4b55", "0011223A4b55", "0:11:22:3a:4b:55"}},
              {"120304050607 0/77", {"123:4:5:6:7"}},
              {"-1 Incomplete mac address", {"", "00:11:22:33:44", "00:11:22:33:44:", "00:11/40"}},
              {"-1 Invalid character '/'", {"/48", "00:11:22:33:44:/8"}},
              {"-1 Invalid character ':'", {"00::11:22:33:44:55"}},
              {"-1 Invalid character 'g'", {"0g:11:22:33:44:55"}},
              {"-1 Unexpected characters",
               {"00:11:22:33:44:55:", "00:11:22:33:44:5:", "00112233445566", "00:11:22:33:44:55 "}},
              {"-2 Address prefix not allowed", {"00:11:22:33:44:55/48"}}});
    check(PARSE_MAC_PREFIX_OK,
          {{"001122334455 1/48", {"00:11:22:33:44:55", "001122334455/48", "00:11:22:33:44:55/ +048"}},
           {"001122334405 1/0", {"00:11:22:33:44:5/0"}},
           {"001122334455 1/24", {"00:11:22:33:44:55/-4294967272"}},
           {"-2 Invalid mac prefix '49'", {"00:11:22:33:44:55/49"}},
           {"-1 Missing mac prefix", {"00:11:22:33:44:55/"}},
           {"-1 Unexpected trailing characters", {"00:11:22:33:44:55/4x"}},
           {"-1 Unexpected characters", {"00:11:22:33:44:55:/4"}}});
    check(PARSE_MAC_MULTICAST_ONLY,
          {{"01005e000001 0/77", {"01:00:5e:00:00:01"}}, {"-2 Invalid multicast mac address", {"2:0:0:0:0:1"}}});
    check(PARSE_MAC_UNICAST_ONLY,
          {{"02005e000001 0/77", {"02:00:5e:00:00:01"}}, {"-2 Invalid unicast mac address", {"1:0:0:0:0:1"}}});
    check(PARSE_MAC_MULTICAST_ONLY | PARSE_MAC_UNICAST_ONLY, {{"-2 Invalid multicast mac address", {"0:0:0:0:0:0"}}});

    uint8_t address[6];
    int seen = 7;
    uint8_t length = 77;
    EXPECT_EQ(parse_mac_addr("01:02:03:4x", 1, address, &seen, &length, nullptr, 0), -1);
    EXPECT_EQ(orvex_test::hexadecimal(address, 6) + std::to_string(seen * 100 + length), "01020300000077");
    EXPECT_EQ(parse_mac_addr("1:2:3:4:5:6:7", 1, address, &seen, &length, nullptr, 0), -1);
    EXPECT_EQ(seen * 100 + length, 148);
}

TEST(FormatMacAddr, RoundTripsAtEverySize)
{
    std::mt19937 random(1);
    for (int i = 0; i < 50; ++i) {
        uint8_t address[6];
        for (uint8_t &byte : address) byte = static_cast<uint8_t>(random());
        const int seen = i % 2;
        const auto length = static_cast<uint8_t>(random() % 49);
        char text[FORMAT_MAC_BUFSIZE];
        format_mac_addr(text, sizeof text, address, seen, length);
        EXPECT_EQ(outcome(text, seen ? 1 : 0),
                  orvex_test::hexadecimal(address, 6) + (seen ? " 1/" + std::to_string(length) : " 0/77"));
        orvex_test::check_cut_sizes(
            text, [&](char *buf, size_t size) { return format_mac_addr(buf, size, address, seen, length); },
            [&](size_t) { return strlen(text); });
    }
    const uint8_t address[6] = {0, 0x1b, 0x2c, 0x3d, 0x4e, 0x5f};
    char text[FORMAT_MAC_BUFSIZE];
    EXPECT_EQ(format_mac_addr(text, sizeof text, address, 1, 255), 21);
    EXPECT_STREQ(text, "00:1b:2c:3d:4e:5f/255");
}
