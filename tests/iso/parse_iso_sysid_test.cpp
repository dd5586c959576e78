#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

struct Row {
    std::vector<std::string> texts;
    int size = 6;
    int result = 0;
    const char *message = "";
    std::string sysid = "5a5a5a5a5a5a";  // untouched
};

void check(const Row &row)
{
    for (const std::string &text : row.texts) {
        SCOPED_TRACE(text);
        orvex_test::Guarded sysid(6);
        const auto [result, message] = orvex_test::outcome_of([&](char *error, size_t size) {
            return parse_iso_sysid(orvex_test::Exact(text), sysid.bytes(), row.size, error, size);
        });
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(message, row.message);
        EXPECT_EQ(sysid.hexadecimal(), row.sysid);
        EXPECT_EQ(parse_iso_sysid(text.c_str(), nullptr, row.size, nullptr, 0), row.result);
    }
}

}  // namespace

TEST(ParseIsoSysid, GroupsAndRefusals)
{
    const char *const invalid = "Invalid system-id string";
    const char *const too_small = "Passed sysid size too small";
    const char *const too_many = "Unexpected number of hex characters in system-id";
    for (const int size : {6, 7, 0, -1})
        check({.texts = {"1.2.f", "0x1. +2.0XF", "-ffffffff.2.f", "00001.02.00f"},
               .size = size,
               .sysid = "00010002000f"});
    check({.texts = {"ffff.0.0", "0ffff.0.0"}, .sysid = "ffff00000000"});
    check({.texts = {"1921.6800.1001."}, .size = 5, .result = -1, .message = "Passed sysid string too large"});
    for (const int size : {1, 5}) check({.texts = {"1.2.3", "x"}, .size = size, .result = -1, .message = too_small});
    check({.texts = {"", ".1.1", "x.1.1"}, .result = -1, .message = invalid});
    check({.texts = {"1.2", "1.2."}, .result = -1, .message = invalid, .sysid = "000100025a5a"});
    check({.texts = {"1.2.3.", "1.2.3.4"}, .result = -1, .message = invalid, .sysid = "000100020003"});
    check({.texts = {"1-2-3", "99999-"}, .result = -1, .message = "Unexpected character in system-id '-'"});
    check({.texts = {"0xg.1.1"}, .result = -1, .message = "Unexpected character in system-id 'x'"});
    check({.texts = {"12345.1.1", "123456789abcde", "-1.1.1"}, .result = -1, .message = too_many});
    check({.texts = {"0.0.0"}, .result = -2, .message = "system-id cannot be all zeros", .sysid = "000000000000"});
}

TEST(ParseIsIsoSysid, Shapes)
{
    for (const char *text : {"1.2.3", "1921.6800.100F"}) EXPECT_EQ(parse_is_iso_sysid(text), 1) << text;
    for (const char *text :
         {"", "12345.1.1", "1921.6800", "0x12.1.1", "1..1", ".1.1", "1.1.", "1.12345.1", "1.1.1 ", "1.1.12345"})
        EXPECT_EQ(parse_is_iso_sysid(text), 0) << text;
}

TEST(FormatIsoSysid, EverySize)
{
    const uint8_t sysid[] = {0, 0x1b, 0x2c, 0x3d, 0xe4, 0xf5};
    // What is left for the last byte, as far as it needs it.
    orvex_test::check_cut_sizes(
        "001b.2c3d.e4f5", [&](char *buf, size_t size) { return format_iso_sysid(sysid, buf, size); },
        [](size_t size) { return size <= 12 ? 0 : std::min(size_t{2}, size - 12); });
}
