#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <random>

#include "support/guarded.h"

namespace {

using orvex_test::Guarded;

constexpr uint32_t pfx = PARSE_IPADDR_PREFIX_OK, mask_ok = pfx | PARSE_IPADDR_MASK_OK;
constexpr uint32_t host_zero = pfx | PARSE_IPADDR_HOST_ZERO, host_zero_mask = mask_ok | host_zero;
constexpr uint32_t required = PARSE_IPADDR_PREFIX_REQUIRED, all_bytes = PARSE_IPADDR_ALL_BYTES;
constexpr uint32_t default_ok = PARSE_IPADDR_DEFAULT_OK, any_ok = PARSE_IPADDR_ANY_OK;
constexpr uint32_t integer = PARSE_IPADDR_INTEGER_OK, no_martian = PARSE_IPADDR_NO_MARTIAN;
constexpr uint32_t unicast = PARSE_IPADDR_UNICAST, multicast = PARSE_IPADDR_MULTICAST;

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
        result = parse_ipaddr(&af, text, flags, address.data(), address.size(), &pfxseen, &pfxlen, &maskseen,
                              mask.data(), mask.size(), message.data(), message.size());
        error = errno;
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
        if (result != 0) {
            const char *const name = error == errno_before ? "" : error == EINVAL ? "EINVAL " : "errno? ";
            return std::to_string(result) + " " + name + message.text();
        }
        EXPECT_TRUE(error == errno_before && message.untouched()) << "errno or message changed on success";
        EXPECT_TRUE(pfxseen == 1 || pfxlen == (is_ipv6() ? 128 : 32)) << pfxlen;
        return text_of(address) + (pfxseen == 1 ? "/" + std::to_string(pfxlen) : "") +
               (maskseen == 1 ? " mask " + text_of(mask) : "");
    }
};

struct Row {
    const char *text;
    uint32_t flags;
    const char *expected;
};

void check(uint32_t family, const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(std::string(row.text) + " flags " + std::to_string(row.flags));
        Call call(family, row.text, row.flags);
        EXPECT_EQ(call.outcome(), row.expected);
        EXPECT_TRUE(call.result != 0 || call.maskseen == 1 || call.mask.untouched());
        // Without any output the result is the same.
        uint32_t af = family;
        EXPECT_EQ(call.result, parse_ipaddr(&af, row.text, row.flags, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0,
                                            nullptr, 0));
    }
}

TEST(ParseIpaddr, Ipv4)
{
    const std::vector<Row> rows = {
        {"010.001.1.08", 0, "10.1.1.8"},
        {" 10. +1.\t2. 255", 0, "10.1.2.255"},
        {"", 0, "-1 EINVAL ip address is not specified"},
        {"-1.2.3.4", 0, "-1 EINVAL invalid input at '-1.2.3.4' in ip address: '-1.2.3.4'"},
        {" -5.1", 0, "-2 EINVAL invalid value '4294967291' in ip address: ' -5.1'"},
        {"1.2.3.99999999999", 0, "-1 EINVAL invalid input at '99999999999' in ip address: '1.2.3.99999999999'"},
        {"10.1", all_bytes, "-2 EINVAL missing information in ip address: '10.1'"},
        {"0x0ffffffff", 0, "-1 EINVAL invalid hexadecimal ip address: '0x0ffffffff'"},
        {"4294967295", integer, "255.255.255.255"},
        {"all", default_ok, "0.0.0.0/0"},
        {"Default", default_ok, "-1 EINVAL invalid input at 'Default' in ip address: 'Default'"},
        {"10.0.0.0/010", pfx, "10.0.0.0/8"},
        {"0000000000000000000000000001.2/8", pfx,  // 32 characters
         "-1 EINVAL too long to be a valid ip address: '0000000000000000000000000001.2/8'"},
        {"000000000000000000000000001.2/8", pfx, "1.2.0.0/8"},
        {"10.0.0.0/255.0.0.0", pfx, "-2 EINVAL invalid input at '/255.0.0.0' in address '10.0.0.0/255.0.0.0'"},
        {"10/255.", mask_ok, "10.0.0.0 mask 255.0.0.0"},
        {"10/255.0.0.0/8", mask_ok, "-2 EINVAL invalid input at '/8' in ip netmask '255.0.0.0/8'"},
        {"10.0.0.0", required | mask_ok, "-2 EINVAL missing required prefix length or mask in address '10.0.0.0'"},
        {"10.1.2.3/8", host_zero, "-2 EINVAL host portion is not zero (10.0.0.0/8)"},
        {"10.1.2.3/0", host_zero, "-2 EINVAL host portion is not zero (10.1.2.3/0)"},
        {"10.0.0.0/255.0.0.0", host_zero_mask, "10.0.0.0 mask 255.0.0.0"},
        {"10.1.2.3/255.0.0.0", host_zero_mask, "-2 EINVAL masked bits are not zero (10.0.0.0/255.0.0.0)"},
        // A number above 255 in digits and dots is a wrong address, in another text no address.
        {"1.256.3/8", pfx, "-2 EINVAL invalid value '256' in ip address: '1.256.3'"},
        {"1.256.3/8", 0, "-1 EINVAL invalid value '256' in ip address: '1.256.3/8'"},
        {"10.0.0.0/8", 0, "-2 EINVAL invalid input at '/8' in ip address '10.0.0.0/8'"},
        // An overflow saturates to all ones, which are a value in one spelling only.
        {"9999999999", integer, "-1 EINVAL invalid input at '9999999999' in ip address: '9999999999'"},
        {" -1", integer, "-1 EINVAL invalid input at ' -1' in ip address: ' -1'"},
        {"0xFFffFFff/8", pfx, "255.255.255.255/8"},
        {"0x1ffffffff/8", pfx, "-1 EINVAL invalid hexadecimal ip address: '0x1ffffffff'"},
        // The "." that makes a suffix a mask may come anywhere after its number.
        {"10/255 .0", mask_ok, "-1 EINVAL invalid input at ' .0' in ip netmask '255 .0'"},
        {"10/1.2/8", mask_ok, "-2 EINVAL invalid input at '/8' in ip netmask '1.2/8'"},
        {"10/0xff.", mask_ok, "-1 EINVAL invalid input at '.' in ip netmask '0xff.'"},
        {"10/1.256x", mask_ok, "-2 EINVAL invalid value '256' in ip netmask: '1.256x'"},
        {"10/8 ", mask_ok, "-2 EINVAL invalid input at ' ' in address '10/8 '"},
    };
    check(PARSE_AF_INET, rows);
}

// The mask holds the keyword's word in the machine's own order.
TEST(ParseIpaddr, Ipv4AnyKeywords)
{
    for (const auto &[text, word] : {std::pair{"any-unicast", 1U}, std::pair{"any-multicast", 2U}}) {
        Call call(PARSE_AF_INET, text, any_ok | required);
        EXPECT_EQ(call.outcome().substr(0, 13), "0.0.0.0 mask ");
        EXPECT_EQ(std::memcmp(call.mask.data(), &word, sizeof word), 0);
        EXPECT_EQ(Call(PARSE_AF_INET, text, 0).result, -1);
    }
    // Both outputs are cleared whatever the text, also for one that is then too long.
    Call call(PARSE_AF_INET, "11111111111111111111111111111111/8", any_ok | pfx);
    EXPECT_EQ(call.text_of(call.address) + call.text_of(call.mask), "0.0.0.00.0.0.0");
}

TEST(ParseIpaddr, Ipv6)
{
    const std::string long_suffix = "2001:db8::/" + std::string(79, '0') + "1";  // 91 characters
    const std::string too_long = "2001:db8::/" + std::string(80, '0') + "1";
    const std::string too_long_message = "-1 EINVAL too long to be a valid ipv6 address: '" + too_long + "'";
    const std::vector<Row> rows = {
        {"", 0, "-1 EINVAL ip address is not specified"},
        {"2001:db8::/ +032", pfx, "2001:db8::/32"},
        {long_suffix.c_str(), pfx, "2001:db8::/1"},
        {too_long.c_str(), pfx, too_long_message.c_str()},
        {"2001:db8::/129", pfx, "-2 EINVAL prefix length '129' is larger than 128 in address '2001:db8::/129'"},
        {"2001:db8::/ffff:zz::", mask_ok, "-2 'ffff:zz::' is not a valid ipv6 mask"},
        {"2001:db8:8000::/33", host_zero, "2001:db8:8000::/33"},
        {"2001:db8:4000::/33", host_zero, "-2 EINVAL host portion of '2001:db8:4000::/33' must be zero"},
        {"2001:db8::/ffff:ffff::", host_zero_mask, "2001:db8:: mask ffff:ffff::"},
        {"8000::/7fff::", host_zero_mask, "-2 EINVAL masked bits of '8000::/7fff::' must be zero"},
        {"2001:db8::1/ffff:ffff::", host_zero_mask, "-2 EINVAL masked bits of '2001:db8::1/ffff:ffff::' must be zero"},
        {"default", default_ok, "::/0"},
        {"::1", required | pfx, "-2 EINVAL missing required prefix length in address '::1'"},
        {"1::2%em0/64", pfx, "-1 '1::2%em0' is not a valid ipv6 address"},
        {"::/0x20", pfx, "-2 EINVAL invalid input at 'x20' in address '::/0x20'"},
    };
    check(PARSE_AF_INET6, rows);
}

// The last bit of a prefix may be set, the one after it may not.
TEST(ParseIpaddr, Ipv6HostBits)
{
    for (int length = 1; length < 128; ++length) {
        for (const int bit : {length - 1, length}) {
            Guarded address(16);
            std::memset(address.data(), 0, 16);
            address.bytes()[bit / 8] = static_cast<uint8_t>(0x80 >> bit % 8);
            std::array<char, INET6_ADDRSTRLEN> text;
            const std::string prefix = std::string(inet_ntop(AF_INET6, address.data(), text.data(), text.size())) +
                                       "/" + std::to_string(length);
            EXPECT_EQ(Call(PARSE_AF_INET6, prefix.c_str(), host_zero).result, bit < length ? 0 : -2) << prefix;
        }
    }
}

TEST(ParseIpaddr, ClassRules)
{
    const std::vector<Row> ipv4 = {
        {"224.0.0.1", multicast, "224.0.0.1"},
        {"10.0.0.1", multicast, "-2 invalid multicast address - '10.0.0.1'"},
        {"0.0.0.0", no_martian, "-2 martian address not allowed - '0.0.0.0'"},
        {"127.0.0.1", no_martian, "-2 martian address not allowed - '127.0.0.1'"},
        {"240.0.0.1", no_martian, "-2 martian address not allowed - '240.0.0.1'"},
        {"192.0.0.255", no_martian, "-2 martian address not allowed - '192.0.0.255'"},
        {"192.0.1.1", no_martian, "192.0.1.1"},
        {"223.255.255.255", no_martian | unicast, "223.255.255.255"},
        {"default", unicast | default_ok, "-2 invalid unicast address - 'default'"},
    };
    for (const uint32_t family : {2U, 73U, 119U, 129U, 139U}) check(family, ipv4);
    for (const uint32_t family : {28U, 121U, 131U, 141U})
        check(family, {{"ff02::1", unicast, "-2 invalid unicast address - 'ff02::1'"},
                       {"ff02::1", multicast, "ff02::1"},
                       {"fe80::1", multicast, "-2 invalid multicast address - 'fe80::1'"}});

    // The outputs of a refused class hold the address.
    Call call(PARSE_AF_INET, "10.0.0.1/8", multicast | pfx);
    EXPECT_EQ(call.text_of(call.address) + "/" + std::to_string(call.pfxlen), "10.0.0.1/8");
}

TEST(ParseIpaddr, FamilyAndStorage)
{
    for (const auto &[text, family] : {std::pair{"10.0.0.1", 2U}, {"::1", 28U}, {"1.2:", 28U}, {"", 2U}})
        EXPECT_EQ(Call(0, text, 0).af, family) << text;
    for (const uint32_t family : {1U, 7U, 10U, 30U, 120U, 142U}) {
        Call call(family, "::1", 0);
        EXPECT_TRUE(call.outcome() == "-1 errno? unsupported address family" && call.error == 47) << family;
    }
    for (const uint32_t family : {2U, 73U, 28U, 141U}) {
        const bool is_ipv4 = family == 2 || family == 73;
        Guarded bytes(is_ipv4 ? 3 : 15);
        // Whether the text is valid does not matter.
        const auto refused = [&](void *address, void *mask, const char *text, uint32_t flags) {
            uint32_t af = family;
            Guarded message(64);
            errno = 0;
            EXPECT_EQ(parse_ipaddr(&af, text, flags, address, bytes.size(), nullptr, nullptr, nullptr, mask,
                                   bytes.size(), message.data(), message.size()),
                      -2);
            EXPECT_TRUE(errno == ENOSPC && bytes.untouched());
            return message.text();
        };
        for (const Row &row : std::vector<Row>{{"bad", 0, ""},
                                               {is_ipv4 ? "10.1.2.3" : "::1", 0, ""},
                                               {is_ipv4 ? "10.0.0.0/255.0.0.0" : "::/ffff::", mask_ok, ""},
                                               {"default", default_ok, ""},
                                               {"any-unicast", any_ok, ""}}) {
            EXPECT_EQ(refused(bytes.data(), bytes.data(), row.text, row.flags),
                      "'address' not large enough to hold result");
            EXPECT_EQ(refused(nullptr, bytes.data(), row.text, row.flags), "'mask' not large enough to hold result");
        }
    }
}

// What the outputs hold when a later part of the text is refused.
TEST(ParseIpaddr, OutputsAfterFailure)
{
    Call group(PARSE_AF_INET, "1.2.256.4", 0);
    EXPECT_EQ(group.text_of(group.address), "1.2.0.0");
    for (const auto &[suffix, pfxlen] : {std::pair{"129", 129U}, {"x", 0U}, {"8x", 8U}, {"9999999999", UINT32_MAX}}) {
        for (const std::string start : {"10.1.2.3/", "::1/"}) {
            Call call(0, (start + suffix).c_str(), pfx);
            EXPECT_EQ(call.text_of(call.address) + "/", start);
            EXPECT_TRUE(call.result == -2 && call.pfxlen == pfxlen && call.pfxseen == 0) << suffix;
        }
    }
    EXPECT_TRUE(Call(PARSE_AF_INET, "1.2.3.4/00000000000000000000000000000", pfx).address.untouched());
    Call mask(PARSE_AF_INET, "10/255.0.x", mask_ok);
    EXPECT_TRUE(mask.text_of(mask.mask) == "255.0.0.0" && mask.maskseen == 0);
    // An IPv6 address or mask is stored whole or not at all, also one that more text follows.
    EXPECT_TRUE(Call(PARSE_AF_INET6, "1::2%em0", 0).address.untouched());
    EXPECT_TRUE(Call(PARSE_AF_INET6, "::/ff::%em0", mask_ok).mask.untouched());
}

// Whatever an address is, it reads the same before a suffix as alone, and the messages that quote it leave the suffix
// out. What libc accepts is accepted with the same value.
TEST(ParseIpaddr, AddressesReadTheSameBeforeASuffix)
{
    std::mt19937 random(7);
    static constexpr char noise[] = "0123456789.:xaF+- ";
    int accepted = 0;
    for (int i = 0; i < 100000 && !HasFailure(); ++i) {
        const bool ipv6 = random() % 2 == 0;
        std::string text;
        for (int group = ipv6 ? 6 : 4; group > 0; --group) {
            text += std::to_string(random() % 260);
            if (group > 1) text += ipv6 ? ":" : ".";
        }
        if (ipv6) text.insert(random() % text.size(), "::");
        if (random() % 2 == 0) text[random() % text.size()] = noise[random() % (sizeof noise - 1)];
        if (random() % 8 == 0) text.resize(1 + random() % text.size());
        const uint32_t family = ipv6 ? PARSE_AF_INET6 : PARSE_AF_INET;
        const uint32_t flags = random() & (all_bytes | integer | PARSE_IPADDR_MASK_OK);
        SCOPED_TRACE(text + " flags " + std::to_string(flags));
        Call alone(family, text.c_str(), flags);
        Call prefix(family, (text + "/8").c_str(), flags | pfx);
        EXPECT_EQ(prefix.outcome(), alone.outcome() + (alone.result == 0 ? "/8" : ""));
        EXPECT_EQ(std::memcmp(prefix.address.data(), alone.address.data(), 16), 0);

        std::array<uint8_t, 16> libc{};
        if (inet_pton(ipv6 ? AF_INET6 : AF_INET, text.c_str(), libc.data()) != 1) continue;
        EXPECT_EQ(alone.result, 0);
        EXPECT_EQ(std::memcmp(alone.address.data(), libc.data(), ipv6 ? 16 : 4), 0);
        ++accepted;
    }
    EXPECT_GT(accepted, 10000);
}

TEST(AddressClasses, UnicastAndType)
{
    const struct {
        const char *text;
        int type;
        int unicast;
    } rows[] = {{"::", 0, 0},      {"fe80::1", 1, 1}, {"febf::1", 1, 1}, {"fec0::1", 2, 1},    {"feff::1", 2, 1},
                {"ff02::1", 3, 0}, {"fe00::1", 4, 1}, {"::1", 4, 1},     {"2001:db8::1", 4, 1}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        std::array<uint8_t, 16> bytes;
        ASSERT_EQ(inet_pton(AF_INET6, row.text, bytes.data()), 1);
        EXPECT_EQ(ipv6_address_type(bytes.data()), row.type);
        EXPECT_EQ(parse_ipaddr_is_unicast(PARSE_AF_INET6, bytes.data()), row.unicast);
    }
    EXPECT_EQ(ipv6_address_type(nullptr), IPV6_ADDRESS_TYPE_NONE);
    EXPECT_EQ(parse_ipaddr_is_unicast(PARSE_AF_INET, "\360\0\0"), 1);
    EXPECT_EQ(parse_ipaddr_is_unicast(73, "\360\0\0"), 0);
}

}  // namespace
