#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "support/guarded.h"

namespace {

using orvex_test::check_every_size;
using orvex_test::Guarded;

using Bytes = std::array<uint8_t, 4>;

constexpr uint32_t unicast_word = IPADDR_ANY_UNICAST, multicast_word = IPADDR_ANY_MULTICAST;

struct Row {
    Bytes address;
    uint8_t full_form = 0;
    int pfxseen = 0;
    uint32_t pfxlen = 0;
    int maskseen = 0;
    Bytes mask{};
    const char *expected;
};

TEST(FormatIpaddr, FormsInEverySize)
{
    Bytes any_unicast;
    Bytes any_multicast;
    std::memcpy(any_unicast.data(), &unicast_word, 4);
    std::memcpy(any_multicast.data(), &multicast_word, 4);
    const Row rows[] = {
        {.address = {10, 0, 0, 1}, .pfxlen = 24, .mask = {1, 0, 0, 0}, .expected = "10.0.0.1"},
        {.address = {10, 0, 0, 1}, .pfxseen = 1, .pfxlen = 300, .expected = "10.0.0.1/44"},
        {.address = {10, 0, 0, 1}, .pfxseen = 1, .maskseen = 1, .mask = {255, 0, 0, 0}, .expected = "10.0.0.1/0"},
        {.address = {255, 255, 255, 255},
         .maskseen = 1,
         .mask = {255, 255, 255, 255},
         .expected = "255.255.255.255/255.255.255.255"},
        {.address = {10, 0, 0, 1}, .full_form = 9, .pfxseen = 1, .pfxlen = 24, .expected = "010.000.000.001/024"},
        {.address = {9, 99, 100, 250},
         .full_form = 1,
         .maskseen = 1,
         .mask = {255, 19, 90, 0},
         .expected = "009.099.100.250/255.019.090.000"},
        {.address = {9, 99, 100, 250}, .maskseen = 1, .mask = {255, 19, 90, 0}, .expected = "9.99.100.250/255.19.90.0"},
        {.address = {10, 0, 0, 1}, .pfxseen = 1, .maskseen = 1, .mask = any_unicast, .expected = "any-unicast"},
        {.address = {10, 0, 0, 1}, .full_form = 1, .maskseen = 1, .mask = any_multicast, .expected = "any-multicast"},
    };
    for (const Row &row : rows) {
        const auto format = [&row](char *buf, size_t buflen) {
            return format_ipaddr(PARSE_AF_INET, row.address.data(), row.full_form, row.pfxseen, row.pfxlen,
                                 row.maskseen, row.mask.data(), buf, buflen);
        };
        const bool keyword = *row.expected == 'a';  // written whole or not at all
        check_every_size(row.expected, format,
                         {.nothing_up_to = keyword ? SIZE_MAX : 0, .zero_rest = row.full_form != 0});
    }
}

TEST(FormatIpaddr, RefusesOtherFamiliesAndMissingBuffers)
{
    const Bytes address{};
    for (const int family : {0, 1, 10, 73, -2}) {
        Guarded buffer(20);
        errno = 0;
        EXPECT_EQ(format_ipaddr(family, address.data(), 1, 0, 0, 0, nullptr, buffer.data(), 20), 0U);
        EXPECT_EQ(errno, EINVAL);
        EXPECT_TRUE(buffer.untouched(true));
    }
    errno = 0;
    EXPECT_EQ(format_ipaddr(PARSE_AF_INET, address.data(), 0, 0, 0, 0, nullptr, nullptr, 20), 0U);
    EXPECT_EQ(errno, ENOSPC);
}

}  // namespace
