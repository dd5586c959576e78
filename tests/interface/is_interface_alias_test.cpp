#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cerrno>

#include "support/guarded.h"
#include "support/profile.h"

namespace {

int ask(const std::string &text)
{
    errno = 77;
    const int answer = is_interface_alias(orvex_test::Exact(text));
    EXPECT_EQ(errno, 77);
    return answer;
}

}  // namespace

TEST(IsInterfaceAlias, TellsAliasesFromNamesAddressesAndWords)
{
    const std::string longest = "x" + std::string(127, '9');
    for (const std::string &text : {std::string("uplink-to-core"), std::string("eth-uplink"), std::string("eth-10"),
                                    std::string("ether-"), std::string("a_.:/-b"), std::string("fe80::g"),
                                    std::string("localhost1"), std::string("bigeth0"), std::string("aB012"), longest})
        EXPECT_EQ(ask(text), 1) << text;
    for (const std::string &text :
         {std::string(), std::string("abcd"), longest + "9", std::string("1abcde"), std::string("-abcde"),
          std::string("ab[1]c"), std::string("ab cde"), std::string("fe80::1"), std::string("abcd:ef01:1:2:3:4:5:6"),
          std::string("localhost"), std::string("access-ports"), std::string("xstp-disabled"), std::string("eth-0/0/0"),
          std::string("irb.10"), std::string("demux0"), std::string("ABCDE"), std::string("upl\xefnk")})
        EXPECT_EQ(ask(text), 0) << text;
    orvex_test::Profile profile;
    profile.catalogue.push_back({"xy-known", {}, 0});
    profile.catalogue.push_back({"zap99", {}, 0});
    profile.install();
    for (const char *text : {"xy-known", "zap99"}) EXPECT_EQ(ask(text), 0) << text;
    EXPECT_EQ(ask("xy-unknown"), 1);
}
