#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

using orvex_test::check_cut_sizes;
using orvex_test::Exact;
using orvex_test::Guarded;
using orvex_test::outcome_of;

constexpr int untouched = 77;
const char *const trailing = "Unexpected characters";

struct Row {
    std::vector<std::string> texts;
    uint32_t flags = 0;
    int result = 0;
    const char *message = "";
    std::string bytes = "";
    int seen = 0;
    int length = untouched;
};

void check(const Row &row)
{
    for (const std::string &text : row.texts) {
        SCOPED_TRACE(text);
        Guarded address(6);
        int seen = untouched;
        uint8_t length = untouched;
        const auto [result, message] = outcome_of([&](char *error, size_t size) {
            return parse_mac_addr(Exact(text), row.flags, address.bytes(), &seen, &length, error, size);
        });
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(message, row.message);
        EXPECT_EQ(address.hexadecimal(), row.bytes.empty() ? "010203040506" : row.bytes);
        EXPECT_EQ(seen, row.seen);
        EXPECT_EQ(length, row.length);
        EXPECT_EQ(parse_mac_addr(text.c_str(), row.flags, address.bytes(), nullptr, nullptr, nullptr, 0), row.result);
    }
}

}  // namespace

TEST(ParseMacAddr, Groups)
{
    const char *const incomplete = "Incomplete mac address";
    check({.texts = {"01:02:03:04:05:06", "0102.0304:0506", "010203040506", "1:2:3:4:5:6"}});
    check({.texts = {"aBC:4:5:6:fD"}, .bytes = "ab0c040506fd"});
    check({.texts = {""}, .result = -1, .message = incomplete, .bytes = "000000000000"});
    check({.texts = {"11:22:3", "11:22:3:", "11223/8"}, .result = -1, .message = incomplete, .bytes = "112203000000"});
    check({.texts = {"11:/48"}, .result = -1, .message = "Invalid character '/'", .bytes = "110000000000"});
    check({.texts = {"11::22"}, .result = -1, .message = "Invalid character ':'", .bytes = "110000000000"});
    check({.texts = {"11-22", "11:2-"}, .result = -1, .message = "Invalid character '-'", .bytes = "110000000000"});
    check({.texts = {"010203040506:", "01020304050607", "1:2:3:4:5:06 "}, .result = -1, .message = trailing});
}

TEST(ParseMacAddr, PrefixLengths)
{
    constexpr uint32_t ok = PARSE_MAC_PREFIX_OK;
    check({.texts = {"1:2:3:4:5:6", "1:2:3:4:5:6/ +048"}, .flags = ok, .seen = 1, .length = 48});
    check({.texts = {"010203040506/0"}, .flags = ok, .seen = 1, .length = 0});
    check({.texts = {"1:2:3:4:5:6/-4294967272"}, .flags = ok, .seen = 1, .length = 24});
    check({.texts = {"1:2:3:4:5:6/48"}, .result = -2, .message = "Address prefix not allowed"});
    check({.texts = {"1:2:3:4:5:6/49"}, .flags = ok, .result = -2, .message = "Invalid mac prefix '49'"});
    check({.texts = {"1:2:3:4:5:6/", "1:2:3:4:5:6/x"}, .flags = ok, .result = -1, .message = "Missing mac prefix"});
    check({.texts = {"1:2:3:4:5:6/4x"}, .flags = ok, .result = -1, .message = "Unexpected trailing characters"});
    check({.texts = {"1:2:3:4:5:6:/4"}, .flags = ok, .result = -1, .message = trailing, .seen = 1, .length = 48});
}

TEST(ParseMacAddr, GroupBit)
{
    constexpr uint32_t unicast = PARSE_MAC_UNICAST_ONLY, multicast = PARSE_MAC_MULTICAST_ONLY;
    const char *const group = "010203040506";
    const char *const single = "fe0203040506";
    const char *const no_multicast = "Invalid multicast mac address";
    check({.texts = {group}, .flags = multicast});
    check({.texts = {single}, .flags = unicast, .bytes = single});
    check({.texts = {group}, .flags = unicast, .result = -2, .message = "Invalid unicast mac address"});
    for (const uint32_t flags : {multicast, multicast | unicast})
        check({.texts = {single}, .flags = flags, .result = -2, .message = no_multicast, .bytes = single});
}

TEST(FormatMacAddr, EverySize)
{
    const uint8_t address[] = {0, 0x1b, 0x2c, 0x3d, 0x4e, 0x5f};
    const auto check_length = [&](int seen, uint8_t length, const std::string &suffix) {
        const std::string text = "00:1b:2c:3d:4e:5f" + suffix;
        check_cut_sizes(
            text, [&](char *buf, size_t size) { return format_mac_addr(buf, size, address, seen, length); },
            [&](size_t) { return text.size(); });
    };
    check_length(0, 7, "");
    check_length(1, 7, "/7");
    check_length(1, 48, "/48");
    check_length(1, 255, "/255");
}
