#include "text/ipv6_text.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "support/guarded.h"

namespace {

using Address = std::array<uint8_t, 16>;

// Groups that are zero, short or long, and now and then the beginning of an IPv4-mapped address.
Address random_address(std::mt19937 &random)
{
    Address address{};
    const unsigned zeros = static_cast<unsigned>(random() & random());
    for (unsigned group = 0; group < 8; ++group) {
        if ((zeros >> group & 1) != 0 || random() % 3 == 0) continue;
        const auto value = static_cast<unsigned>(random()) >> (16 + 4 * (random() % 4));
        address[2 * group] = static_cast<uint8_t>(value >> 8);
        address[2 * group + 1] = static_cast<uint8_t>(value);
    }
    if (random() % 4 == 0) std::fill(address.begin(), address.begin() + 10, uint8_t{0});
    if (random() % 8 == 0) address[10] = address[11] = 0xff;
    return address;
}

std::string printed_by_libc(const Address &address)
{
    std::array<char, INET6_ADDRSTRLEN> text;
    return inet_ntop(AF_INET6, address.data(), text.data(), text.size());
}

// A text in any of the forms that an address can have, changed at some places.
std::string random_text(std::mt19937 &random)
{
    static constexpr const char *pieces[] = {":",   "::",  "0",  "00", "1", "f", "A",    "g",     ".",  "1.2.3.4",
                                             "255", "256", "01", "%",  "/", " ", "abcd", "12345", ":1", "\x80"};
    std::string text;
    if (random() % 2 == 0) {
        text = printed_by_libc(random_address(random));
    } else {
        for (auto groups = random() % 9; groups > 0; --groups)
            text += std::string(pieces[random() % 6]) + (random() % 6 == 0 ? "::" : ":");
        text += pieces[random() % std::size(pieces)];
    }
    for (auto changes = random() % 3; changes > 0; --changes) {
        const auto at = random() % (text.size() + 1);
        text.replace(at, random() % 3, random() % 3 == 0 ? "" : pieces[random() % std::size(pieces)]);
    }
    return text;
}

TEST(Ipv6Text, ReadsWhatLibcReads)
{
    std::mt19937 random(20261123);
    int accepted = 0;
    for (int i = 0; i < 300000 && !HasFailure(); ++i) {
        const std::string text = random_text(random);
        SCOPED_TRACE(text);
        Address ours{0x5a}, libc = ours;
        const orvex_test::Exact exact(text);
        const char *at = exact;
        const bool begins = orvex::read_ipv6(at, ours.data());
        const bool whole = begins && *at == '\0';
        EXPECT_EQ(whole, inet_pton(AF_INET6, text.c_str(), libc.data()) == 1);
        EXPECT_TRUE(begins ? !whole || ours == libc : at == exact && ours == libc);
        accepted += whole;
    }
    EXPECT_GT(accepted, 50000);
}

TEST(Ipv6Text, StopsAfterTheEighthGroup)
{
    const char *at = "1:2:3:4:5:6:7:8:9";
    Address address;
    EXPECT_TRUE(orvex::read_ipv6(at, address.data()));
    EXPECT_STREQ(at, "9");
}

TEST(Ipv6Text, NamesTheLongestText)
{
    Address ones;
    ones.fill(0xff);
    std::array<char, INET6_ADDRSTRLEN> text;
    EXPECT_EQ(orvex::put_canonical_ipv6(text.data(), ones.data(), true), text.data() + orvex::longest_ipv6_text);
}

TEST(Ipv6Text, PrintsWhatLibcPrints)
{
    std::mt19937 random(20261124);
    for (int i = 0; i < 300000 && !HasFailure(); ++i) {
        const Address address = random_address(random);
        const std::string expected = printed_by_libc(address);
        SCOPED_TRACE(expected);
        orvex_test::Guarded buffer(orvex::longest_ipv6_text + 1);
        const auto length = static_cast<size_t>(orvex::put_ipv6(buffer.data(), address.data()) - buffer.data());
        EXPECT_EQ(length, expected.size());
        EXPECT_EQ(buffer.text(), expected);
        EXPECT_TRUE(buffer.rest_is(length + 1, orvex_test::Guarded::fill));
    }
}

}  // namespace
