#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

using orvex_test::Row;

// The bytes, and the prefix as seen/length; or the result and the message.
std::string outcome(const std::string &text, uint32_t flags, size_t capacity = 20)
{
    orvex_test::Guarded bytes(capacity);
    auto *const data = reinterpret_cast<uint8_t *>(bytes.data());
    auto count = static_cast<uint8_t>(capacity);
    int seen = 7;
    uint16_t length = 777;
    int result = 0;
    const std::string message = orvex_test::message_of(
        [&](char *error, size_t size) {
            return parse_iso_addr(orvex_test::Exact(text), flags, data, &count, &seen, &length, error, size);
        },
        result);
    EXPECT_TRUE(bytes.untouched());
    if (result != 0) return std::to_string(result) + ' ' + message;
    EXPECT_TRUE(std::all_of(data + count, data + capacity, [](uint8_t byte) { return byte == 0; }));
    EXPECT_EQ(parse_iso_addr(text.c_str(), flags, nullptr, nullptr, nullptr, nullptr, nullptr, 0), 0);
    return orvex_test::hexadecimal(data, count) + ' ' + std::to_string(seen) + '/' + std::to_string(length);
}

}  // namespace

TEST(ParseIsoAddr, Addresses)
{
    const std::string longest(40, '1');
    const std::string short_message = "-1 ISO NSAP should be at least 8 bytes with even number of nibbles\n";
    for (const auto &[text, expected] : std::vector<std::pair<std::string, std::string>>{
             {"49.0001.1921.6800.1001.00", "49000119216800100100 0/777"},
             {"0100000000000100", "0100000000000100 0/777"},
             {longest, longest + " 0/777"},
             {longest + ".", "-1 Unexpected character in ISO NSAP"},
             {longest + "11", "-1 Unexpected character in ISO NSAP"},
             {"49.0001.1921.6800.1001.00/8", "-1 ISO address should not have prefix length"},
             {"49.0001.1921.6800.1001.0", short_message},
             {"00.0000.1921.6800.1001.00", "-2 Invalid area address in ISO NSAP"},
             {"49.0001.0000.0000.0000.01", "-2 Invalid system-id in ISO NSAP"},
             {"", "-1 Invalid ISO NSAP"},
             {".49", "-1 Unexpected character in ISO NSAP"},
             {"49..", "-1 consecutive '.' not allowed"},
             {"4" + std::string(60, 'z'), "-1 Invalid ISO NSAP --- too long"},
             {"4" + std::string(59, 'z'), "-1 Unexpected character in ISO NSAP"}})
        EXPECT_EQ(outcome(text, PARSE_ISO_NSAP), expected) << text;
    EXPECT_EQ(outcome(longest + "11", PARSE_ISO_NSAP, 21), "-1 ISO NSAP too long");
    EXPECT_EQ(outcome("49", PARSE_ISO_NSAP, 0), "-1 Unexpected character in ISO NSAP");
    uint8_t bytes[20];
    char error[8] = "as is";
    EXPECT_EQ(parse_iso_addr("49", 0, bytes, nullptr, nullptr, nullptr, error, sizeof error), -1);
    EXPECT_STREQ(error, "as is");
}

TEST(ParseIsoAddr, Prefixes)
{
    for (const auto &[text, expected] : std::vector<std::pair<std::string, std::string>>{
             {"49.0001/24", "490001 1/24"},
             {"49.0001.2/28", "49000120 1/28"},
             {"49./8", "49 1/8"},
             {"00/", "00 1/0"},
             {"49.8/-4294967287", "4980 1/9"},
             {std::string(38, '1') + "/152", std::string(38, '1') + " 1/152"},
             {std::string(40, '1') + "/152", "-2 ISO prefix too long"},
             {"49.0001", "-1 Missing prefix length"},
             {"49.0001/24x", "-1 Invalid prefix length"},
             {"49.0001/153", "-2 Prefix length too long"},
             {"49.0001/8", "-1 host portion is not all zeroes"},
             {"49.0100/15", "-1 host portion is not all zeroes"},
         })
        EXPECT_EQ(outcome(text, 0), expected) << text;
    uint16_t length = 0;
    EXPECT_EQ(parse_iso_addr("49.0001/x", 0, nullptr, nullptr, nullptr, &length, nullptr, 0), -1);
    EXPECT_EQ(length, 24);
}

TEST(ParseIsIsoAddr, Shapes)
{
    for (const char *text : {"49.0001.1921.6800.1001.00", "....0123456789abcdefABCDEF", "/....1234567890123456"})
        EXPECT_EQ(parse_is_iso_addr(text), 1) << text;
    for (const char *text : {"", "49.0001/24", "....123456789012345", "/....123456789012345", "...1234567890123456",
                             "//....1234567890123456", "....1234567890123456 ", "....1234567890123456\xc1"})
        EXPECT_EQ(parse_is_iso_addr(text), 0) << text;
}

TEST(FormatIsoAddr, RoundTripsAtEverySize)
{
    std::mt19937 random(1);
    for (uint8_t count = 0; count <= 20; ++count) {
        std::vector<uint8_t> bytes(count);
        for (uint8_t &byte : bytes) byte = static_cast<uint8_t>(random() | 1);
        const auto length = static_cast<uint16_t>(8 * count);
        char text[80];
        EXPECT_EQ(format_iso_addr(bytes.data(), count, 0, 0, text, sizeof text), count == 0 ? 1 : 2);
        EXPECT_TRUE(count < 8 ||
                    outcome(text, PARSE_ISO_NSAP) == orvex_test::hexadecimal(bytes.data(), count) + " 0/777")
            << text;
        const std::string address = text;
        format_iso_addr(bytes.data(), count, 1, length, text, sizeof text);
        EXPECT_TRUE(count == 0 || count == 20 ||
                    outcome(text, 0) == orvex_test::hexadecimal(bytes.data(), count) + " 1/" + std::to_string(length))
            << text;
        const std::string prefix = count == 0 ? "0/0" : address + '/' + std::to_string(length);
        // What is left for the last piece, as far as it needs it.
        const size_t before = count == 0 ? 0 : address.size();
        orvex_test::check_cut_sizes(
            prefix, [&](char *buf, size_t size) { return format_iso_addr(bytes.data(), count, 1, length, buf, size); },
            [&](size_t size) { return size <= before ? 0 : std::min(prefix.size() - before, size - before); });
    }
    const uint8_t bytes[] = {0x49, 0, 1};
    orvex_test::check_cut_sizes(
        "49.0001", [&](char *buf, size_t size) { return format_iso_addr(bytes, 3, 0, 5, buf, size); },
        [](size_t size) { return size <= 5 ? 0 : std::min(size_t{2}, size - 5); });
}
