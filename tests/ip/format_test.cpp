// The formatters of addresses, in buffers of every size.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

using orvex_test::Guarded;
using orvex_test::Leaves;
using Bytes = std::vector<uint8_t>;

Bytes bytes_of(const std::string &text)
{
    const bool ipv6 = text.find(':') != std::string::npos;
    Bytes bytes(ipv6 ? 16 : 4);
    EXPECT_EQ(inet_pton(ipv6 ? AF_INET6 : AF_INET, text.c_str(), bytes.data()), 1) << text;
    return bytes;
}

// The whole text that a formatter writes, after every smaller buffer held its right end.
std::string text_from_right(char *format(const void *, int, char *, size_t, int), const uint8_t *address, int length)
{
    char whole[FORMAT_IN6_BUFSIZE];
    const std::string expected = format(address, length, whole, sizeof whole, 1);
    for (size_t size = 0; size <= expected.size() + 2; ++size) {
        for (const int terminate : {0, 1}) {
            Guarded buffer(size);
            const size_t end = size - (terminate == 1 && size > 0 ? 1 : 0);
            const size_t shown = std::min(expected.size(), end);
            const char *const text = format(address, length, buffer.data(), size, terminate);
            EXPECT_EQ(text, buffer.data() + end - shown);
            EXPECT_EQ(std::string(text, shown), expected.substr(expected.size() - shown));
            EXPECT_TRUE(end == size || buffer.data()[end] == '\0');
        }
    }
    return expected;
}

std::string canonical(const std::string &text)
{
    Guarded buffer(std::max(size_t{47}, text.size() + 1));
    memcpy(buffer.data(), text.c_str(), text.size() + 1);
    const int result = format_rfc5952(buffer.data());
    const std::string after = buffer.text();
    if (result != 1) return after == text ? "0" : "changed";
    EXPECT_TRUE(buffer.rest_is(after.size(), '\0'));
    return after;
}

}  // namespace

TEST(FormatIpaddr, FormsInEverySize)
{
    struct Value {
        std::string address;
        int pfxseen = 0;
        uint32_t pfxlen = 0;
        int maskseen = 0;
        Bytes mask = {};
        std::string expected;
    };
    const auto check = [](uint8_t full_form, Leaves leaves, const std::vector<Value> &values) {
        for (const Value &value : values) {
            const Bytes address = bytes_of(value.address);
            const int family = address.size() == 4 ? PARSE_AF_INET : PARSE_AF_INET6;
            const uint8_t *const mask = value.mask.empty() ? nullptr : value.mask.data();
            const auto format = [&](char *buf, size_t buflen) {
                return format_ipaddr(family, address.data(), full_form, value.pfxseen, value.pfxlen, value.maskseen,
                                     mask, buf, buflen);
            };
            check_every_size(value.expected, format, leaves);
        }
    };
    const std::string ipv6 = "2001:db8::1", wide_ipv6 = "2001:0db8:0000:0000:0000:0000:0000:0001";
    const std::string wide_mask = "ffff:ffff:ffff:ffff:0000:0000:0000:0000";
    const Bytes mask = bytes_of("255.19.90.0"), most = Bytes(4, 255), ipv6_mask = bytes_of("ffff:ffff:ffff:ffff::");
    const uint32_t words[] = {IPADDR_ANY_UNICAST, IPADDR_ANY_MULTICAST};
    const auto *const keywords = reinterpret_cast<const uint8_t *>(words);
    const Bytes unicast(keywords, keywords + 4), multicast(keywords + 4, keywords + 8);
    check(0, {},
          {
              {.address = "10.0.0.1", .pfxlen = 24, .mask = unicast, .expected = "10.0.0.1"},
              {.address = "10.0.0.1", .pfxseen = 1, .pfxlen = 300, .expected = "10.0.0.1/44"},
              {.address = "10.0.0.1", .pfxseen = 1, .maskseen = 1, .mask = mask, .expected = "10.0.0.1/0"},
              {.address = "9.99.100.250", .maskseen = 1, .mask = mask, .expected = "9.99.100.250/255.19.90.0"},
              {.address = "255.1.1.255", .maskseen = 1, .mask = most, .expected = "255.1.1.255/255.255.255.255"},
          });
    check(9, {.zero_rest = true},
          {
              {.address = "9.99.100.250", .pfxseen = 1, .pfxlen = 24, .expected = "009.099.100.250/024"},
              {.address = "9.99.100.250", .maskseen = 1, .mask = mask, .expected = "009.099.100.250/255.019.090.000"},
              {.address = ipv6, .expected = wide_ipv6},
              {.address = ipv6, .pfxseen = 1, .pfxlen = 128, .maskseen = 1, .expected = wide_ipv6 + "/0128"},
              {.address = ipv6, .maskseen = 5, .mask = ipv6_mask, .expected = wide_ipv6 + "/" + wide_mask},
          });
    // Keywords are written whole or not at all.
    const Value any_unicast = {.address = "1.1.1.1", .maskseen = 1, .mask = unicast, .expected = "any-unicast"};
    check(0, {.nothing_up_to = SIZE_MAX}, {any_unicast});
    check(1, {.nothing_up_to = SIZE_MAX, .zero_rest = true},
          {{.address = "10.0.0.1", .pfxseen = 1, .maskseen = 1, .mask = multicast, .expected = "any-multicast"}});
    // So are compressed addresses and masks. What else follows an address is cut.
    check(0, {.nothing_up_to = ipv6.size()},
          {
              {.address = ipv6, .maskseen = 1, .expected = ipv6},
              {.address = ipv6, .pfxseen = -1, .pfxlen = 64, .maskseen = 1, .mask = mask, .expected = ipv6 + "/64"},
              {.address = ipv6, .pfxseen = 1, .pfxlen = 4294967295U, .expected = ipv6 + "/4294967295"},
          });
    check(0, {.nothing_up_to = ipv6.size(), .at_most = ipv6.size() + 1},
          {{.address = ipv6, .maskseen = 1, .mask = ipv6_mask, .expected = ipv6 + "/ffff:ffff:ffff:ffff::"}});
    char text[64];
    for (const size_t absurd : {SIZE_MAX, SIZE_MAX / 2 + 1})
        EXPECT_EQ(_format_ipv6addr(bytes_of(ipv6).data(), 0, 0, 0, 0, nullptr, text, absurd), ipv6.size());
}

TEST(FormatIpaddr, RefusesOtherFamiliesAndMissingBuffers)
{
    const Bytes address(16);
    for (const int family : {0, 1, 10, 73, -2}) {
        Guarded buffer(20);
        errno = 0;
        EXPECT_EQ(format_ipaddr(family, address.data(), 1, 0, 0, 0, nullptr, buffer.data(), 20), 0U);
        EXPECT_EQ(errno, EINVAL);
        EXPECT_TRUE(buffer.untouched());
    }
    for (const int family : {PARSE_AF_INET, PARSE_AF_INET6}) {
        errno = 0;
        EXPECT_EQ(format_ipaddr(family, address.data(), 0, 0, 0, 0, nullptr, nullptr, 20), 0U);
        EXPECT_EQ(errno, ENOSPC);
    }
}

TEST(FormatIpv6addrPartial, ReadsNoByteAfterThePrefix)
{
    const std::string seven = "ffff:ffff:ffff:ffff:ffff:ffff:ffff";
    for (const auto &[pfxlen, expected] : std::vector<std::pair<uint32_t, std::string>>{
             {0, "::/0"}, {1, "8000::/1"}, {32, "ffff:ffff::/32"}, {127, seven + ":fffe/127"}}) {
        // Exactly as many bytes as the length covers, so that a sanitizer sees one read too many.
        const Bytes prefix((pfxlen + 7) / 8, 0xff);
        char text[64];
        format_ipv6addr_partial(prefix.data(), pfxlen, 1, text, sizeof text);
        EXPECT_EQ(text, expected);
    }
    for (const size_t size : {0U, 1U, 8U}) {
        Guarded buffer(size);
        errno = 0;
        EXPECT_EQ(format_ipv6addr_partial(nullptr, 129, 1, buffer.data(), size), 0U);
        EXPECT_EQ(errno, EINVAL);
        EXPECT_TRUE(size == 0 || buffer.text().empty());
    }
}

TEST(FormatIn6Addr, WritesTheGroupsOfThePrefix)
{
    const char *const longest = "fedc:ba98:7654:3210:fedc:ba98:7654:3210";
    const struct {
        const char *address;
        int length;
        const char *expected;
    } rows[] = {
        {.address = "2001:db8::", .length = 32, .expected = "2001:db8::"},
        {.address = "ffff::1", .length = 0, .expected = "::"},
        {.address = "2001:db8:1:2:3:4:5:0", .length = 112, .expected = "2001:db8:1:2:3:4:5:0"},
        {.address = "2001:db8:1:2:3:4:5:6", .length = 97, .expected = "2001:db8:1:2:3:4::"},
        {.address = "2001:db8:1:2:3:4:5:6", .length = 105, .expected = "2001:db8:1:2:3:4:5:0"},
        {.address = "2001:db8:ffff::", .length = 20, .expected = "2001:d00::"},
        {.address = "::2", .length = 128, .expected = "::0.0.0.2"},
        {.address = "::ffff:1.2.3.4", .length = 128, .expected = "::ffff:1.2.3.4"},
        {.address = "::ffff:0.0.0.0", .length = 128, .expected = "::ffff:0.0.0.0"},
        {.address = "::2", .length = 120, .expected = "::0.0.0.0"},
        {.address = "::ffff:1.2.3.4", .length = 120, .expected = "::ffff:1.2.3.0"},
        {.address = "::ffff:1.2.3.4", .length = 112, .expected = "::ffff:102:0"},
        {.address = "0:1:2:3:4:5:6:7", .length = 128, .expected = "0:1:2:3:4:5:6:7"},
        {.address = "1:0:2:0:3:0:4:0", .length = 128, .expected = "1:0:2:0:3:0:4:0"},
        {.address = "1:0:0:0:2:0:0:3", .length = 128, .expected = "1:0:0:0:2::3"},
        {.address = longest, .length = 128, .expected = longest},
    };
    for (const auto &row : rows) {
        const Bytes address = bytes_of(row.address);
        EXPECT_EQ(text_from_right(format_in6_addr, address.data(), row.length), row.expected);
        EXPECT_EQ(text_from_right(format_in6_prefix, address.data(), row.length),
                  row.expected + ('/' + std::to_string(row.length)));
    }
}

TEST(FormatRfc5952, WritesTheCanonicalText)
{
    for (const auto &[text, expected] : std::vector<orvex_test::Row>{
             {"2001:DB8:0:0:0:0:0:1", "2001:db8::1"},
             {"1:0:0:2:0:0:0:3", "1:0:0:2::3"},
             {"1:0:2:0:0:3:0:0", "1:0:2::3:0:0"},
             {"::FFFF:1.2.3.4", "::ffff:1.2.3.4"},
             {"::ffff:102:304", "::ffff:102:304"},
             {"1:2:3:4:5:6:0.0.0.0", "1:2:3:4:5:6:0.0.0.0"},
             {"1::0.0.0.0", "1::0.0.0.0"},
             {"::0.0.0.1", "::0.0.0.1"},
             {"1:2:3:4:5:0:0.0.0.1", "1:2:3:4:5::0.0.0.1"},
             {"1:2:3:4:5:0:0.0.0.0", "1:2:3:4:5::0.0.0.0"},
             {"0:0:0:0:0:6:0.0.0.0", "::6:0.0.0.0"},
             {"1111:2222:3333:4444:5555:6666:255.255.255.255", "1111:2222:3333:4444:5555:6666:255.255.255.255"},
         })
        EXPECT_EQ(canonical(text), expected) << text;
    for (const char *text : {"2001:db8::1/64", " ::1", "1.2.3.4", ""}) EXPECT_EQ(canonical(text), "0") << text;
    EXPECT_EQ(format_rfc5952(nullptr), 0);
}
