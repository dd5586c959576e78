#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <random>
#include <string>

#include "support/guarded.h"

namespace {

using orvex_test::Guarded;

constexpr uint32_t pfx = PARSE_IPADDR_PREFIX_OK;
constexpr uint32_t mask_ok = PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK;
constexpr uint32_t required = PARSE_IPADDR_PREFIX_REQUIRED;
constexpr uint32_t all_bytes = PARSE_IPADDR_ALL_BYTES;
constexpr uint32_t default_ok = PARSE_IPADDR_DEFAULT_OK;
constexpr uint32_t integer = PARSE_IPADDR_INTEGER_OK;
constexpr uint32_t host_zero = PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_HOST_ZERO;
constexpr uint32_t host_zero_mask = host_zero | PARSE_IPADDR_MASK_OK;
constexpr uint32_t any_ok = PARSE_IPADDR_ANY_OK;
constexpr uint32_t multicast = PARSE_IPADDR_MULTICAST;
constexpr uint32_t no_martian = PARSE_IPADDR_NO_MARTIAN;
constexpr uint32_t unicast = PARSE_IPADDR_UNICAST;

constexpr int errno_before = 77;

// One call with every output between guards and preset to a wrong value.
struct Call {
    uint32_t af = 0;
    int result = 0;
    int error = 0;
    Guarded address{16};
    Guarded mask{16};
    Guarded message{256};
    int pfxseen = -9;
    uint32_t pfxlen = 999;
    int maskseen = -9;

    Call(uint32_t family, const char *text, uint32_t flags) : af(family)
    {
        errno = errno_before;
        result = parse_ipaddr(&af, text, flags, address.data(), address.size(), &pfxseen, &pfxlen,
                              &maskseen, mask.data(), mask.size(), message.data(), message.size());
        error = errno;
        EXPECT_TRUE(address.untouched() && mask.untouched() && message.untouched());
    }

    [[nodiscard]] bool is_ipv6() const { return af == 28 || af == 121 || af == 131 || af == 141; }

    std::string text_of(Guarded &bytes)
    {
        std::array<char, INET6_ADDRSTRLEN> text;
        return inet_ntop(is_ipv6() ? AF_INET6 : AF_INET, bytes.data(), text.data(), text.size());
    }

    // "10.0.0.0/8", "10.0.0.0 mask 255.0.0.0", "-2 EINVAL message"
    std::string outcome()
    {
        if (result == 0) {
            EXPECT_EQ(error, errno_before);
            EXPECT_TRUE(message.untouched(true)) << "message on success";
            if (pfxseen == 0) {
                EXPECT_EQ(pfxlen, is_ipv6() ? 128U : 32U);
            }
            std::string text = text_of(address);
            if (pfxseen == 1) text += "/" + std::to_string(pfxlen);
            if (maskseen == 1) text += " mask " + text_of(mask);
            return text;
        }
        const std::string name = error == errno_before ? ""
                                 : error == EINVAL     ? "EINVAL "
                                 : error == ENOSPC     ? "ENOSPC "
                                                       : std::to_string(error) + " ";
        return std::to_string(result) + " " + name + message.text();
    }
};

// The same call without any output answers the same.
void expect_same_without_outputs(uint32_t family, const char *text, uint32_t flags,
                                 const Call &call)
{
    errno = errno_before;
    uint32_t af = family;
    EXPECT_EQ(parse_ipaddr(&af, text, flags, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0,
                           nullptr, 0),
              call.result);
    EXPECT_EQ(errno, call.error);
    EXPECT_EQ(af, call.af);
}

struct Row {
    const char *text;
    uint32_t flags;
    const char *expected;
};

template <size_t count>
void check(uint32_t family, const Row (&rows)[count])
{
    for (const Row &row : rows) {
        SCOPED_TRACE(std::string(row.text) + " flags " + std::to_string(row.flags));
        Call call(family, row.text, row.flags);
        EXPECT_EQ(call.outcome(), row.expected);
        expect_same_without_outputs(family, row.text, row.flags, call);
        const bool mask_written = call.maskseen == 1 || (row.flags & any_ok) != 0;
        if (call.result == 0) {
            EXPECT_EQ(call.mask.untouched(true), !mask_written);
        }
    }
}

TEST(ParseIpaddr, Ipv4Grammar)
{
    const Row rows[] = {
        {"1.2.3.4", 0, "1.2.3.4"},
        {"10", 0, "10.0.0.0"},
        {"10.", 0, "10.0.0.0"},
        {"10.1.2", 0, "10.1.2.0"},
        {"010.001.1.08", 0, "10.1.1.8"},
        {" 10. +1.\t2.3", 0, "10.1.2.3"},
        {"0000000000000000000000000000000000001.2.3.4", 0, "1.2.3.4"},
        {" -4294967295.2", 0, "1.2.0.0"},  // wraps in 32 bits
        {"", 0, "-1 EINVAL ip address is not specified"},
        {"1.2.3.4.", 0, "-1 EINVAL invalid input at '.' in ip address '1.2.3.4.'"},
        {"1.2.3.4.5", 0, "-1 EINVAL invalid input at '.5' in ip address '1.2.3.4.5'"},
        {"1.2.3.4 ", 0, "-1 EINVAL invalid input at ' ' in ip address '1.2.3.4 '"},
        {"1..2", 0, "-1 EINVAL invalid input at '.2' in ip address: '1..2'"},
        {"-1.2.3.4", 0, "-1 EINVAL invalid input at '-1.2.3.4' in ip address: '-1.2.3.4'"},
        {"1.-2", 0, "-1 EINVAL invalid input at '-2' in ip address: '1.-2'"},
        {" -5.1", 0, "-2 EINVAL invalid value '4294967291' in ip address: ' -5.1'"},
        {" -1", 0, "-1 EINVAL invalid input at ' -1' in ip address: ' -1'"},
        {"256.1.1.1", 0, "-2 EINVAL invalid value '256' in ip address: '256.1.1.1'"},
        {"1.2.3.256", 0, "-2 EINVAL invalid value '256' in ip address: '1.2.3.256'"},
        {"256.1.1.x", 0, "-1 EINVAL invalid value '256' in ip address: '256.1.1.x'"},
        {"4294967295", 0, "-2 EINVAL invalid value '4294967295' in ip address: '4294967295'"},
        {"4294967296", 0, "-1 EINVAL invalid input at '4294967296' in ip address: '4294967296'"},
        {"1.2.3.99999999999", 0,
         "-1 EINVAL invalid input at '99999999999' in ip address: '1.2.3.99999999999'"},
        {"10.0.0.0/8", 0, "-2 EINVAL invalid input at '/8' in ip address '10.0.0.0/8'"},
        {"10.1", all_bytes, "-2 EINVAL missing information in ip address: '10.1'"},
        {"1.2.3.", all_bytes, "-2 EINVAL missing information in ip address: '1.2.3.'"},
        {"0xffffff00", 0, "255.255.255.0"},
        {"0x10", all_bytes, "0.0.0.16"},
        {"0xFFFFFFFF", 0, "255.255.255.255"},
        {"0xffffffff", 0, "255.255.255.255"},
        {"0x", 0, "-1 EINVAL invalid hexadecimal ip address: '0x'"},
        {"0x0ffffffff", 0, "-1 EINVAL invalid hexadecimal ip address: '0x0ffffffff'"},
        {"0x100000000", 0, "-1 EINVAL invalid hexadecimal ip address: '0x100000000'"},
        {"0x1.2", 0, "-1 EINVAL invalid input at '.2' in ip address '0x1.2'"},
        {"0X10", 0, "-1 EINVAL invalid input at 'X10' in ip address '0X10'"},
        {"167772161", integer, "10.0.0.1"},
        {" +10", integer | all_bytes, "0.0.0.10"},
        {"0", integer | all_bytes, "0.0.0.0"},
        {"4294967295", integer, "255.255.255.255"},
        {"10.1", integer, "10.1.0.0"},
        {"default", default_ok, "0.0.0.0/0"},
        {"all", default_ok, "0.0.0.0/0"},
        {"Default", default_ok, "-1 EINVAL invalid input at 'Default' in ip address: 'Default'"},
        {"default/0", default_ok | pfx,
         "-1 EINVAL invalid input at 'default' in ip address: 'default'"},
    };
    check(PARSE_AF_INET, rows);
}

TEST(ParseIpaddr, Ipv4Suffixes)
{
    const Row rows[] = {
        {"10.0.0.0/8", pfx, "10.0.0.0/8"},
        {"10/0", pfx, "10.0.0.0/0"},
        {"10.0.0.0/32", pfx, "10.0.0.0/32"},
        {"10.0.0.0/010", pfx, "10.0.0.0/8"},
        {"10.0.0.0/0x18", pfx, "10.0.0.0/24"},
        {"10.0.0.0/ +8", pfx, "10.0.0.0/8"},
        {"10.0.0.0/08", pfx, "-2 EINVAL invalid input at '8' in address '10.0.0.0/08'"},
        {"10.0.0.0/8/8", pfx, "-2 EINVAL invalid input at '/8' in address '10.0.0.0/8/8'"},
        {"10.0.0.0/33", pfx,
         "-2 EINVAL prefix length '33' is larger than 32 in address '10.0.0.0/33'"},
        {"10.0.0.0/99999999999", pfx,
         "-2 EINVAL prefix length '4294967295' is larger than 32 in address "
         "'10.0.0.0/99999999999'"},
        {"10.0.0.0/", pfx, "-2 EINVAL missing or invalid prefix length in address '10.0.0.0/'"},
        {"10.0.0.0/abc", pfx,
         "-2 EINVAL missing or invalid prefix length 'abc' in address '10.0.0.0/abc'"},
        {"10.0.0.0/-1", pfx,
         "-2 EINVAL missing or invalid prefix length '-1' in address '10.0.0.0/-1'"},
        {"/8", pfx, "-1 EINVAL ip address is not specified"},
        {"10.0.0.x/8", pfx, "-1 EINVAL invalid input at 'x' in ip address: '10.0.0.x'"},
        {"0000000000000000000000000001.2/8", pfx,  // 32 characters
         "-1 EINVAL too long to be a valid ip address: '0000000000000000000000000001.2/8'"},
        {"000000000000000000000000001.2/8", pfx, "1.2.0.0/8"},
        {"10.0.0.0/255.0.0.0", pfx,
         "-2 EINVAL invalid input at '/255.0.0.0' in address '10.0.0.0/255.0.0.0'"},
        {"10.0.0.0/255.0.0.0", PARSE_IPADDR_MASK_OK,
         "-2 EINVAL invalid input at '/255.0.0.0' in ip address '10.0.0.0/255.0.0.0'"},
        {"255.255.255.255/255.255.255.255", mask_ok, "255.255.255.255 mask 255.255.255.255"},
        {"10.0.0.0/255.0.255.0", mask_ok, "10.0.0.0 mask 255.0.255.0"},
        {"10/255.", mask_ok, "10.0.0.0 mask 255.0.0.0"},
        {"10/8", mask_ok, "10.0.0.0/8"},
        {"10.0.0.0/255.0", mask_ok | all_bytes,
         "-2 EINVAL missing information in ip netmask: '255.0'"},
        {"10.0.0.0/255.256.0.0", mask_ok,
         "-2 EINVAL invalid value '256' in ip netmask: '255.256.0.0'"},
        {"10.0.0.0/255.256.x", mask_ok, "-2 EINVAL invalid value '256' in ip netmask: '255.256.x'"},
        {"10.0.0.0/.", mask_ok, "-1 EINVAL invalid input at '.' in ip netmask: '.'"},
        {"10.0.0.0/1.2.3.4/", mask_ok, "-2 EINVAL invalid input at '/' in ip netmask '1.2.3.4/'"},
        {"10.0.0.0", required, "-2 EINVAL missing required prefix length in address '10.0.0.0'"},
        {"10.0.0.0", required | mask_ok,
         "-2 EINVAL missing required prefix length or mask in address '10.0.0.0'"},
        {"10.0.0.0/8", required | pfx, "10.0.0.0/8"},
        {"10.0.0.0/255.0.0.0", required | mask_ok, "10.0.0.0 mask 255.0.0.0"},
        {"10.1.0.0/16", host_zero, "10.1.0.0/16"},
        {"10.1.2.3/32", host_zero, "10.1.2.3/32"},
        {"10.1.2.3", host_zero, "10.1.2.3"},
        {"0.0.0.0/0", host_zero, "0.0.0.0/0"},
        {"10.1.2.3/8", host_zero, "-2 EINVAL host portion is not zero (10.0.0.0/8)"},
        {"255.255.255.255/31", host_zero,
         "-2 EINVAL host portion is not zero (255.255.255.254/31)"},
        {"10.1.2.3/0", host_zero, "-2 EINVAL host portion is not zero (10.1.2.3/0)"},
        {"10.1/8", host_zero, "-2 EINVAL host portion is not zero (10.0.0.0/8)"},
        {"10.1.2.3/255.0.0.0", host_zero_mask,
         "-2 EINVAL masked bits are not zero (10.0.0.0/255.0.0.0)"},
        {"10.1.2/0.1.2.0", host_zero_mask, "-2 EINVAL masked bits are not zero (0.1.2.0/0.1.2.0)"},
        {"10.0.1.0/255.0.255.0", host_zero_mask, "10.0.1.0 mask 255.0.255.0"},
    };
    check(PARSE_AF_INET, rows);
}

// The keyword's word stands in the mask in the machine's own order.
TEST(ParseIpaddr, Ipv4AnyKeywords)
{
    for (const auto &[text, word] : {std::pair{"any-unicast", IPADDR_ANY_UNICAST},
                                     std::pair{"any-multicast", IPADDR_ANY_MULTICAST}}) {
        Call call(PARSE_AF_INET, text, any_ok | required);
        EXPECT_EQ(call.result, 0);
        EXPECT_EQ(call.text_of(call.address), "0.0.0.0");
        EXPECT_EQ(std::memcmp(call.mask.data(), &word, sizeof word), 0);
        EXPECT_EQ(call.maskseen, 1);
        EXPECT_EQ(call.pfxseen, 0);
        EXPECT_EQ(call.pfxlen, 32U);
        EXPECT_EQ(Call(PARSE_AF_INET, text, 0).result, -1);
    }
    // Both outputs are cleared whatever the text, also for one that is then too long.
    Call call(PARSE_AF_INET, "11111111111111111111111111111111/8", any_ok | pfx);
    EXPECT_EQ(call.result, -1);
    EXPECT_EQ(call.text_of(call.address) + call.text_of(call.mask), "0.0.0.00.0.0.0");
}

TEST(ParseIpaddr, Ipv6)
{
    const std::string long_suffix = "2001:db8::/" + std::string(79, '0') + "1";  // 91 characters
    const std::string too_long = "2001:db8::/" + std::string(80, '0') + "1";
    const std::string too_long_message =
        "-1 EINVAL too long to be a valid ipv6 address: '" + too_long + "'";
    const Row rows[] = {
        {"2001:db8::1", 0, "2001:db8::1"},
        {"::ffff:10.1.2.3", 0, "::ffff:10.1.2.3"},
        {"", 0, "-1 EINVAL ip address is not specified"},
        {"xyz", 0, "-1 'xyz' is not a valid ipv6 address"},
        {"fe80::1%em0", 0, "-1 'fe80::1%em0' is not a valid ipv6 address"},
        {"10.0.0.1", 0, "-1 '10.0.0.1' is not a valid ipv6 address"},
        {"any-unicast", any_ok, "-1 'any-unicast' is not a valid ipv6 address"},
        {"2001:db8::/32", 0, "-1 '2001:db8::/32' is not a valid ipv6 address"},
        {"2001:db8::/32", pfx, "2001:db8::/32"},
        {"2001:db8::/128", pfx, "2001:db8::/128"},
        {"2001:db8::/ +032", pfx, "2001:db8::/32"},
        {long_suffix.c_str(), pfx, "2001:db8::/1"},
        {too_long.c_str(), pfx, too_long_message.c_str()},
        {"/64", pfx, "-1 '' is not a valid ipv6 address"},
        {"x/64", pfx, "-1 'x' is not a valid ipv6 address"},
        {"2001:db8::/129", pfx,
         "-2 EINVAL prefix length '129' is larger than 128 in address '2001:db8::/129'"},
        {"2001:db8::/0x20", pfx, "-2 EINVAL invalid input at 'x20' in address '2001:db8::/0x20'"},
        {"2001:db8::/", pfx, "-2 EINVAL missing or invalid prefix length in address '2001:db8::/'"},
        {"2001:db8::/-1", pfx,
         "-2 EINVAL missing or invalid prefix length '-1' in address '2001:db8::/-1'"},
        {"::/255.0.0.0", pfx, "-2 EINVAL invalid input at '.0.0.0' in address '::/255.0.0.0'"},
        {"2001:db8::/ffff:ffff::", pfx,
         "-2 EINVAL invalid input at '/ffff:ffff::' in address '2001:db8::/ffff:ffff::'"},
        {"2001:db8::/ffff:ffff::", mask_ok, "2001:db8:: mask ffff:ffff::"},
        {"2001:db8::/ffff:zz::", mask_ok, "-2 'ffff:zz::' is not a valid ipv6 mask"},
        {"2001:db8::", required,
         "-2 EINVAL missing required prefix length in address '2001:db8::'"},
        {"2001:db8::", required | mask_ok,
         "-2 EINVAL missing required prefix length or mask in address '2001:db8::'"},
        {"2001:db8::1/64", host_zero, "-2 EINVAL host portion of '2001:db8::1/64' must be zero"},
        {"2001:db8:8000::/33", host_zero, "2001:db8:8000::/33"},
        {"2001:db8:4000::/33", host_zero,
         "-2 EINVAL host portion of '2001:db8:4000::/33' must be zero"},
        {"::1/127", host_zero, "-2 EINVAL host portion of '::1/127' must be zero"},
        {"::1/0", host_zero, "-2 EINVAL host portion of '::1/0' must be zero"},
        {"::/0", host_zero, "::/0"},
        {"2001:db8::1/128", host_zero, "2001:db8::1/128"},
        {"2001:db8::1", host_zero, "2001:db8::1"},
        {"2001:db8::/ffff:ffff::", host_zero_mask, "2001:db8:: mask ffff:ffff::"},
        {"2001:db8::1/ffff:ffff::", host_zero_mask,
         "-2 EINVAL masked bits of '2001:db8::1/ffff:ffff::' must be zero"},
        {"default", default_ok, "::/0"},
        {"all", default_ok | pfx, "::/0"},
    };
    check(PARSE_AF_INET6, rows);
}

TEST(ParseIpaddr, ClassRules)
{
    const Row ipv4[] = {
        {"224.0.0.1", multicast, "224.0.0.1"},
        {"239.0.0.0/8", multicast | pfx, "239.0.0.0/8"},
        {"10.0.0.1", multicast, "-2 invalid multicast address - '10.0.0.1'"},
        {"240.0.0.1", multicast, "-2 invalid multicast address - '240.0.0.1'"},
        {"0.0.0.0", no_martian, "-2 martian address not allowed - '0.0.0.0'"},
        {"0.0.0.1", no_martian, "0.0.0.1"},
        {"126.255.255.255", no_martian, "126.255.255.255"},
        {"127.0.0.1", no_martian, "-2 martian address not allowed - '127.0.0.1'"},
        {"192.0.0.8", no_martian, "-2 martian address not allowed - '192.0.0.8'"},
        {"192.0.1.1", no_martian, "192.0.1.1"},
        {"223.255.255.255", no_martian, "223.255.255.255"},
        {"224.0.0.0", multicast | no_martian, "-2 martian address not allowed - '224.0.0.0'"},
        {"255.255.255.255", no_martian, "-2 martian address not allowed - '255.255.255.255'"},
        {"255.255.255.255", unicast, "-2 invalid unicast address - '255.255.255.255'"},
        {"230.1.1.1", unicast, "-2 invalid unicast address - '230.1.1.1'"},
        {"240.0.0.1", unicast, "240.0.0.1"},
        {"default", unicast | default_ok, "-2 invalid unicast address - 'default'"},
    };
    const Row ipv6[] = {
        {"ff02::1", multicast, "ff02::1"},
        {"fe80::1", multicast, "-2 invalid multicast address - 'fe80::1'"},
        {"::1", no_martian | unicast, "::1"},
        {"::", unicast, "-2 invalid unicast address - '::'"},
        {"ff02::1", unicast, "-2 invalid unicast address - 'ff02::1'"},
    };
    for (const uint32_t family : {2U, 73U, 119U, 129U, 139U}) check(family, ipv4);
    for (const uint32_t family : {28U, 121U, 131U, 141U}) check(family, ipv6);

    // The outputs of a refused class hold the address.
    Call call(PARSE_AF_INET, "10.0.0.1/8", multicast | pfx);
    EXPECT_EQ(call.text_of(call.address) + "/" + std::to_string(call.pfxlen), "10.0.0.1/8");
}

TEST(ParseIpaddr, FamilyAndStorage)
{
    for (const auto &[text, family, outcome] :
         {std::tuple{"10.0.0.1", 2U, "10.0.0.1"}, std::tuple{"::1", 28U, "::1"},
          std::tuple{"1.2.3.4:80", 28U, "-1 '1.2.3.4:80' is not a valid ipv6 address"},
          std::tuple{"", 2U, "-1 EINVAL ip address is not specified"}}) {
        Call call(0, text, 0);
        EXPECT_EQ(call.af, family);
        EXPECT_EQ(call.outcome(), outcome);
    }
    for (const uint32_t family : {1U, 7U, 10U, 30U, 120U, 142U})
        EXPECT_EQ(Call(family, "::1", 0).outcome(), "-1 47 unsupported address family");

    for (const uint32_t family : {2U, 73U, 28U, 141U}) {
        const size_t size = family == 2 || family == 73 ? 4 : 16;
        for (const bool small_address : {true, false}) {
            uint32_t af = family;
            Guarded bytes(size - 1);
            Guarded message(64);
            int seen = -9;
            errno = errno_before;
            void *const data = bytes.data();
            EXPECT_EQ(parse_ipaddr(&af, "bad", 0, small_address ? data : nullptr, size - 1, &seen,
                                   nullptr, nullptr, small_address ? nullptr : data, size - 1,
                                   message.data(), message.size()),
                      -2);
            EXPECT_EQ(message.text(), std::string(small_address ? "'address'" : "'mask'") +
                                          " not large enough to hold result");
            EXPECT_EQ(errno, ENOSPC);
            EXPECT_TRUE(bytes.untouched(true));
            EXPECT_EQ(seen, -9);
        }
    }
}

// What the outputs hold when the text fails behind them.
TEST(ParseIpaddr, OutputsAfterFailure)
{
    Call group(PARSE_AF_INET, "1.2.256.4", 0);
    EXPECT_EQ(group.text_of(group.address), "1.2.0.0");
    EXPECT_EQ(group.pfxlen, 32U);
    for (const auto &[suffix, pfxlen] :
         {std::pair{"129", 129U}, std::pair{"x", 0U}, std::pair{"8x", 8U},
          std::pair{"99999999999", 4294967295U}}) {
        for (const std::string start : {"10.1.2.3/", "::1/"}) {
            Call call(0, (start + suffix).c_str(), pfx);
            EXPECT_EQ(call.result, -2);
            EXPECT_EQ(call.pfxlen, pfxlen) << start << suffix;
            EXPECT_EQ(call.pfxseen, 0);
            EXPECT_EQ(call.text_of(call.address) + "/", start);
        }
    }
    Call too_long(PARSE_AF_INET, "1.2.3.4/00000000000000000000000000000", pfx);
    EXPECT_TRUE(too_long.address.untouched(true));
}

// With ANY_OK the text takes the general way; without it, plain texts take the short one.
TEST(ParseIpaddr, PlainTextsReadAsTheGeneralReaderReadsThem)
{
    std::mt19937 random(7);
    static constexpr char noise[] = "0123456789./ x+-";
    for (int i = 0; i < 200000; ++i) {
        std::string text;
        for (int octet = 0; octet < 4; ++octet)
            text += std::to_string(random() % 260) + (octet < 3 ? "." : "");
        const auto form = random() % 3;
        if (form == 1) text += "/" + std::to_string(random() % 36);
        if (form == 2) text += "/255." + std::to_string(random() % 260) + ".0.0";
        if (random() % 2 == 0) text[random() % text.size()] = noise[random() % (sizeof noise - 1)];
        if (random() % 8 == 0) text.resize(random() % text.size());
        const uint32_t flags = random() & (host_zero_mask | required | all_bytes | integer);
        SCOPED_TRACE(text + " flags " + std::to_string(flags));
        Call plain(PARSE_AF_INET, text.c_str(), flags);
        Call general(PARSE_AF_INET, text.c_str(), flags | any_ok);
        EXPECT_EQ(plain.outcome(), general.outcome());
        EXPECT_EQ(plain.pfxlen, general.pfxlen);
        if (testing::Test::HasFailure()) break;
    }
}

TEST(AddressClasses, UnicastAndType)
{
    const auto ipv6 = [](const char *text) {
        std::array<uint8_t, 16> bytes;
        EXPECT_EQ(inet_pton(AF_INET6, text, bytes.data()), 1);
        return bytes;
    };
    for (const auto &[text, type] :
         {std::pair{"::", 0}, std::pair{"fe80::1", 1}, std::pair{"febf::1", 1},
          std::pair{"fec0::1", 2}, std::pair{"feff::1", 2}, std::pair{"ff02::1", 3},
          std::pair{"fe00::1", 4}, std::pair{"::1", 4}, std::pair{"2001:db8::1", 4}})
        EXPECT_EQ(ipv6_address_type(ipv6(text).data()), type) << text;
    EXPECT_EQ(ipv6_address_type(nullptr), IPV6_ADDRESS_TYPE_NONE);

    const std::array<uint8_t, 4> reserved = {240, 0, 0, 0};
    const std::array<uint8_t, 4> group = {239, 255, 255, 255};
    EXPECT_EQ(parse_ipaddr_is_unicast(PARSE_AF_INET, reserved.data()), 1);
    EXPECT_EQ(parse_ipaddr_is_unicast(PARSE_AF_INET, group.data()), 0);
    EXPECT_EQ(parse_ipaddr_is_unicast(73, reserved.data()), 0);
    EXPECT_EQ(parse_ipaddr_is_unicast(PARSE_AF_INET6, ipv6("fe80::1").data()), 1);
    EXPECT_EQ(parse_ipaddr_is_unicast(PARSE_AF_INET6, ipv6("ff00::").data()), 0);
    EXPECT_EQ(parse_ipaddr_is_unicast(PARSE_AF_INET6, ipv6("::").data()), 0);
}

}  // namespace
