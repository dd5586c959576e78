#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <sys/mman.h>

#include <random>

#include "support/guarded.h"

namespace {

const char *const trailing = "Unexpected characters";

struct Row {
    std::vector<std::string> texts;
    int result = 0;
    const char *message = "";
    std::string bytes = "";  // without the zeros at their end
};

using Parser = int(const char *, uint8_t *, char *, size_t, uint32_t);

void check(Parser *parse, const Row &row, uint32_t count = 4)
{
    for (const std::string &text : row.texts) {
        SCOPED_TRACE(text);
        orvex_test::Guarded bytes(count);
        const auto [result, message] = orvex_test::outcome_of([&](char *error, size_t size) {
            return parse(orvex_test::Exact(text), bytes.bytes(), error, size, count);
        });
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(message, row.message);
        EXPECT_EQ(bytes.hexadecimal(), row.bytes + std::string(2 * count - row.bytes.size(), '0'));
    }
}

}  // namespace

TEST(ParseDelimAddr, Decimal)
{
    const auto check_row = [](const Row &row) { check(parse_delim_dec_addr, row); };
    const char *const range = "Address out-of-range";
    check_row({.texts = {""}});
    check_row({.texts = {"10:1.2", "010.1.2."}, .bytes = "0a010200"});
    check_row({.texts = {".1.."}, .bytes = "00010000"});
    check_row({.texts = {"001.002.003.255"}, .bytes = "010203ff"});
    check_row({.texts = {"0001.002.003.004"}, .result = -1, .message = trailing, .bytes = "01020300"});
    check_row({.texts = {"256.1.1.1", "0256", "4294967296", "257.-"}, .result = -1, .message = range});
    check_row({.texts = {"1.2.3.4."}, .result = -1, .message = "Unexpected character '.'", .bytes = "01020300"});
    check_row({.texts = {"1.999-", "1.-2"}, .result = -1, .message = "Invalid character '-'", .bytes = "01000000"});
    check(parse_delim_dec_addr, {.texts = {"1"}, .result = -2}, 0);
}

TEST(ParseDelimAddr, Hexadecimal)
{
    const auto check_row = [](const Row &row) { check(parse_delim_hex_addr, row); };
    const char *const incomplete = "Incomplete delimited address";
    check_row({.texts = {"0a:B.c:0D", "0a0b0c0d"}, .bytes = "0a0b0c0d"});
    check_row({.texts = {""}, .result = -1, .message = incomplete});
    check_row({.texts = {"0a:0b:c:", "a:b:c"}, .result = -1, .message = incomplete, .bytes = "0a0b0c00"});
    check_row({.texts = {"a:b:c:0d:", "0a0b0c0d0"}, .result = -1, .message = trailing, .bytes = "0a0b0c0d"});
    check_row({.texts = {"0a::0b:0c"}, .result = -1, .message = "Invalid character ':'", .bytes = "0a000000"});
    check_row({.texts = {"0a:0/"}, .result = -1, .message = "Invalid character '/'", .bytes = "0a000000"});
    check(parse_delim_hex_addr, {.texts = {"1"}, .result = -2}, 0);
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
            check(style == 'x' ? parse_delim_hex_addr : parse_delim_dec_addr,
                  {.texts = {text.data()}, .bytes = orvex_test::hexadecimal(bytes.data(), count)}, count);
            orvex_test::check_cut_sizes(
                text.data(),
                [&](char *buf, size_t size) { return format_delim_addr(buf, size, bytes.data(), ':', count, style); },
                [&](size_t) { return result; });
        }
    }
}

TEST(FormatDelimAddr, CountsANulAndTerminatesTheText)
{
    const uint8_t bytes[] = {10, 1, 2, 3};
    char text[17] = "................";
    EXPECT_EQ(format_delim_addr(text, sizeof text, nullptr, '.', 0, 'x'), 0);
    EXPECT_STREQ(text, "................");
    for (const size_t size : {size_t{17}, size_t{10}}) {
        memset(text, '.', sizeof text);
        EXPECT_EQ(format_delim_addr(text, size, bytes, ':', 4, 0), 9);
        EXPECT_EQ(std::string(text, 12), std::string("10:1:2:3\0\0..", 12)) << size;
    }
}

#ifdef __i386__  // The length of so many leaves size_t here. The emulated 32-bit machine would take minutes.
TEST(FormatDelimAddr, CutsATextLongerThanMemory)
{
    constexpr size_t count = size_t{1} << 30;
    void *const zeros = mmap(nullptr, count, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(zeros, MAP_FAILED);
    orvex_test::Guarded text(8);
    const auto *const bytes = static_cast<const uint8_t *>(zeros);
    EXPECT_EQ(format_delim_addr(text.data(), text.size(), bytes, ':', count, 0), INT32_MIN);
    EXPECT_EQ(text.text(), "0:0:0:0");
    munmap(zeros, count);
}
#endif
