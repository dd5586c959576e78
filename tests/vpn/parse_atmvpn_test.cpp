#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

// "0000fde8 00000001 5 0a010203/104", zeros at the end left out; or the message.
std::string outcome(const std::string &text)
{
    orvex_test::Guarded memory(sizeof(atmvpn_address));
    auto *const record = reinterpret_cast<atmvpn_address *>(memory.data());
    uint32_t length = 777;
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t size) { return parse_atmvpn(orvex_test::Exact(text), record, &length, error, size); },
        result);
    EXPECT_TRUE(memory.untouched());
    EXPECT_EQ(record->reserved, 0x5a5a5a5a);
    EXPECT_EQ(parse_atmvpn(text.c_str(), nullptr, nullptr, nullptr, 0), result);
    if (result != 0) {
        EXPECT_TRUE(result == 1 && length == 777);
        return message;
    }
    char words[32];
    snprintf(words, sizeof words, "%08x %08x %u ", record->rd_high, record->rd_low, record->type);
    std::string address = orvex_test::hexadecimal(record->address, sizeof record->address);
    address.resize(address.find_last_not_of('0') + 1);
    return words + address + '/' + std::to_string(length);
}

}  // namespace

TEST(ParseAtmvpn, FormsAndRefusals)
{
    const std::string many = "1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:";
    const std::string zeros(40, '0');
    for (const auto &[text, expected] : std::vector<std::pair<std::string, std::string>>{
             {"5::10.1.2.3/32", "5 0a010203/104"},
             {"5::1:2::2", "5 0102" + zeros + "02/255"},
             {"5::1:::2", "5 01" + zeros + "0002/255"},
             {"5::::1:0x12/183", "5 " + zeros + "000112/255"},
             {"5:::10.1.2.4", "5 " + zeros.substr(2) + "0a010204/255"},
             {"5::", "5 /255"},
             {"5::1:", "5 01/255"},
             {"0x10::1/8", "16 01/80"},
             {"010::1/010", "8 01/82"},
             {"8::010:1/16", "8 0801/88"},
             {"8::1.010.1.1/32", "8 01080101/104"},
             {"5::/-4294967113", "5 /255"},
             {"5::" + many + "2", "5 " + std::string("01010101010101010101010101010101010101010101") + "02/255"},
             {"5::" + many + "2:2", "Invalid address length"},
             {"5::" + many + "2.2.3.4", "Invalid address length"},
             {"5::1:2/14", "Address does not match prefix"},
             {"5::1:2::2/181", "Address does not match prefix"},
             {"5::1:2/-1", "Invalid prefix length"},
             {"5::1:2/184", "Invalid prefix length"},
             {"5::1:2/1/2", "Invalid prefix length"},
             {"0::1", "Invalid Address type value at '0' not in range 1 to 255"},
             {"5x::1", "Invalid address type '5x'"},
             {"5::1::2:", "Too many double colons in address"},
             {"5::1::", "Too many double colons in address"},
             {"5::256", "Invalid address component '256'"},
             {"5::1: :2", "Invalid address component ' '"},
             {"5::1.2.3.x:4", "Invalid address component '1.2.3.x'"},
             {"/5::1", "Invalid prefix length"}})
        EXPECT_EQ(outcome("65000:1::" + text),
                  (expected.find('/') == std::string::npos ? "" : "0000fde8 00000001 ") + expected)
            << text;
    EXPECT_EQ(outcome("1:" + std::string(126, '0') + "/::5::1"), "");
    EXPECT_EQ(outcome("100::5::1"), "Invalid RD format: '100'");
    EXPECT_EQ(outcome("65000:1::5::1::2::3"), "Invalid ATM VPN address '65000:1::5::1::2::3'");
    EXPECT_EQ(outcome(""), "Invalid ATM VPN address ''");
    // The text behind its 129th character is not looked at.
    EXPECT_EQ(outcome("65000:1::5::1" + std::string(116, ' ') + "x"),
              "Invalid address component '1" + std::string(116, ' ') + "'");
    EXPECT_EQ(outcome("65000:1::5::" + std::string(117, '0') + "xyz"), "0000fde8 00000001 5 /255");
}

TEST(ParseIsAtmvpn, CountsDoubleColons)
{
    for (const char *text : {"1::2::3", "1::2::3::", "1:::2::", "::1::2::", "1::::"})
        EXPECT_EQ(parse_is_atmvpn(orvex_test::Exact(text)), 1) << text;
    for (const char *text : {"", ":", "::", "1::2", "::1::2", "1::2::3::4::", "1:::"})
        EXPECT_EQ(parse_is_atmvpn(orvex_test::Exact(text)), 0) << text;
}
