#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

using orvex_test::check_cut_sizes;
using orvex_test::Exact;
using orvex_test::Guarded;
using orvex_test::outcome_of;

constexpr int untouched = 77;

struct Row {
    std::vector<std::string> texts;
    int result = 0;
    const char *message = "";
    std::string bytes = "";  // of a text that is read
    int seen = 0;
    int length = untouched;
    uint8_t capacity = 20;
};

void check(uint32_t flags, const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        for (const std::string &text : row.texts) {
            SCOPED_TRACE(text);
            Guarded bytes(row.capacity);
            uint8_t count = row.capacity;
            int seen = untouched;
            uint16_t length = untouched;
            const auto [result, message] = outcome_of([&](char *error, size_t size) {
                return parse_iso_addr(Exact(text), flags, bytes.bytes(), &count, &seen, &length, error, size);
            });
            EXPECT_EQ(result, row.result);
            EXPECT_EQ(message, row.message);
            EXPECT_EQ(seen, row.seen);
            EXPECT_EQ(length, row.length);
            if (result != 0) continue;
            EXPECT_EQ(bytes.hexadecimal(), row.bytes + std::string(2 * row.capacity - row.bytes.size(), '0'));
            EXPECT_EQ(count, row.bytes.size() / 2);
            EXPECT_EQ(parse_iso_addr(text.c_str(), flags, nullptr, nullptr, nullptr, nullptr, nullptr, 0), 0);
        }
    }
}

}  // namespace

TEST(ParseIsoAddr, Addresses)
{
    const std::string longest(40, '1');
    const char *const character = "Unexpected character in ISO NSAP";
    const char *const too_short = "ISO NSAP should be at least 8 bytes with even number of nibbles\n";
    check(PARSE_ISO_NSAP,
          {
              {.texts = {"49.0001.1921.6800.1001.00", "4900.0119.2168.0010.0100."}, .bytes = "49000119216800100100"},
              {.texts = {"0100000000000100"}, .bytes = "0100000000000100"},
              {.texts = {longest}, .bytes = longest},
              {.texts = {""}, .result = -1, .message = "Invalid ISO NSAP"},
              {.texts = {"4" + std::string(60, 'z')}, .result = -1, .message = "Invalid ISO NSAP --- too long"},
              {.texts = {".49", "4" + std::string(59, 'z'), longest + "."}, .result = -1, .message = character},
              {.texts = {longest + "11"}, .result = -1, .message = character},
              {.texts = {"49"}, .result = -1, .message = character, .capacity = 0},
              {.texts = {"49.."}, .result = -1, .message = "consecutive '.' not allowed"},
              {.texts = {"490.001"}, .result = -1, .message = "'.' character not on byte boundary"},
              {.texts = {"49.0001/8"}, .result = -1, .message = "ISO address should not have prefix length"},
              {.texts = {"49.0001.1921.68", "49.0001.1921.6800.1001.0"}, .result = -1, .message = too_short},
              {.texts = {longest + "11"}, .result = -1, .message = "ISO NSAP too long", .capacity = 21},
              {.texts = {"00.0000.1921.6800.1001.00"}, .result = -2, .message = "Invalid area address in ISO NSAP"},
              {.texts = {"49.0001.0000.0000.0000.01"}, .result = -2, .message = "Invalid system-id in ISO NSAP"},
          });
    uint8_t bytes[20];
    char error[8] = "as is";
    EXPECT_EQ(parse_iso_addr("49", 0, bytes, nullptr, nullptr, nullptr, error, sizeof error), -1);
    EXPECT_STREQ(error, "as is");
    // Without room for the bytes a text has 21 of them at most.
    const std::string too_many = std::string(44, '1') + "/176";
    EXPECT_EQ(parse_iso_addr(too_many.c_str(), 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0), -1);
}

TEST(ParseIsoAddr, Prefixes)
{
    const std::string longest(38, '1');
    const char *const host = "host portion is not all zeroes";
    const char *const not_number = "Invalid prefix length";
    const char *const too_long = "Prefix length too long";
    check(0, {
                 {.texts = {"49.0001/24"}, .bytes = "490001", .seen = 1, .length = 24},
                 {.texts = {"49.0001.2/28"}, .bytes = "49000120", .seen = 1, .length = 28},
                 {.texts = {"00/"}, .bytes = "00", .seen = 1, .length = 0},
                 {.texts = {"49.8/-4294967287"}, .bytes = "4980", .seen = 1, .length = 9},
                 {.texts = {longest + "/152"}, .bytes = longest, .seen = 1, .length = 152},
                 {.texts = {"49.0001"}, .result = -1, .message = "Missing prefix length"},
                 {.texts = {longest + "1/152"}, .result = -2, .message = "ISO prefix too long"},
                 {.texts = {"49.0001/24x", "49.0001/ "}, .result = -1, .message = not_number, .length = 24},
                 {.texts = {"49.0001/153", "49.0001/4294967312"}, .result = -2, .message = too_long, .length = 24},
                 {.texts = {"49.0001/8", "49.0100/15", "49.0001/23"}, .result = -1, .message = host, .length = 24},
             });
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
    for (uint8_t count = 1; count <= 20; ++count) {
        std::vector<uint8_t> bytes(count);
        for (uint8_t &byte : bytes) byte = static_cast<uint8_t>(random() | 1);
        const std::string digits = orvex_test::hexadecimal(bytes.data(), count);
        const auto length = static_cast<uint16_t>(8 * count);
        char text[FORMAT_ISO_BUFSIZE];
        format_iso_addr(bytes.data(), count, 0, 0, text, sizeof text);
        const std::string address = text;
        if (count >= 8) check(PARSE_ISO_NSAP, {{.texts = {address}, .bytes = digits}});
        const std::string prefix = address + '/' + std::to_string(length);
        if (count < 20) check(0, {{.texts = {prefix}, .bytes = digits, .seen = 1, .length = length}});
        // What is left for the last piece, a byte or the prefix length, as far as it needs it.
        const auto last_piece = [](size_t before, size_t needed) {
            return [=](size_t size) { return size <= before ? 0 : std::min(needed, size - before); };
        };
        check_cut_sizes(
            address, [&](char *buf, size_t size) { return format_iso_addr(bytes.data(), count, 0, 5, buf, size); },
            last_piece(address.size() - 2, 2));
        check_cut_sizes(
            prefix, [&](char *buf, size_t size) { return format_iso_addr(bytes.data(), count, 1, length, buf, size); },
            last_piece(address.size(), prefix.size() - address.size()));
    }
}

TEST(FormatIsoAddr, NoBytesDefaultPrefixAndMost)
{
    const std::vector<uint8_t> most(255, 0x49);
    char text[700];
    EXPECT_EQ(format_iso_addr(nullptr, 0, 1, 24, text, sizeof text), 3);
    EXPECT_STREQ(text, "0/24");
    EXPECT_EQ(format_iso_addr(most.data(), 255, 1, 65535, text, sizeof text), 6);
    EXPECT_STREQ(text + 630, "49.4949/65535");
    EXPECT_EQ(format_iso_addr(most.data(), 255, 1, 65535, text, 8), 0);
    check_cut_sizes(
        "0/0", [&](char *buf, size_t size) { return format_iso_addr(most.data(), 255, 1, 0, buf, size); },
        [](size_t size) { return std::min(size, size_t{3}); });
}
