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
    uint8_t full_form;
    int pfxseen;
    uint32_t pfxlen;
    int maskseen;
    Bytes mask;
    const char *expected;
};

TEST(FormatIpaddr, FormsInEverySize)
{
    const Bytes none{};
    Bytes any_unicast;
    Bytes any_multicast;
    std::memcpy(any_unicast.data(), &unicast_word, 4);
    std::memcpy(any_multicast.data(), &multicast_word, 4);
    const Row rows[] = {
        {{10, 0, 0, 1}, 0, 0, 24, 0, {1, 0, 0, 0}, "10.0.0.1"},  // a mask that was not seen
        {{10, 0, 0, 1}, 0, 1, 300, 0, none, "10.0.0.1/44"},
        {{10, 0, 0, 1}, 0, 1, 0, 1, {255, 0, 0, 0}, "10.0.0.1/0"},
        {{255, 255, 255, 255}, 0, 0, 0, 1, {255, 255, 255, 255}, "255.255.255.255/255.255.255.255"},
        {{10, 0, 0, 1}, 9, 1, 24, 0, none, "010.000.000.001/024"},
        {{9, 99, 100, 250}, 1, 0, 0, 1, {255, 19, 90, 0}, "009.099.100.250/255.019.090.000"},
        {{9, 99, 100, 250}, 0, 0, 0, 1, {255, 19, 90, 0}, "9.99.100.250/255.19.90.0"},
        {{10, 0, 0, 1}, 0, 1, 8, 1, any_unicast, "any-unicast"},
        {{10, 0, 0, 1}, 1, 1, 8, 1, any_multicast, "any-multicast"},
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
