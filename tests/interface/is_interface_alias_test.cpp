#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"
#include "support/profile.h"

namespace {

int is_alias(const std::string &text)
{
    errno = 77;
    const int result = is_interface_alias(orvex_test::Exact(text));
    EXPECT_EQ(errno, 77);
    return result;
}

}  // namespace

TEST(IsInterfaceAlias, TellsAliasesFromNamesAddressesAndWords)
{
    const std::string longest = "x" + std::string(127, '9');
    using Texts = std::vector<std::string>;
    for (const std::string &text : Texts{"uplink-to-core", "eth-uplink", "eth-10", "ether-", "z_.:/-Z", "fe80::g",
                                         "localhost1", "bigeth0", "aB012", longest})
        EXPECT_EQ(is_alias(text), 1) << text;
    for (const std::string &text :
         Texts{"", "abcd", longest + "9", "1abcde", "-abcde", "ab[1]c", "ab cde", "fe80::1", "abcd:ef01:1:2:3:4:5:6",
               "localhost", "access-ports", "xstp-disabled", "eth-0/0/0", "irb.10", "demux0", "ABCDE", "upl\xefnk"})
        EXPECT_EQ(is_alias(text), 0) << text;
    orvex_test::Profile profile;
    profile.catalogue.push_back({"xy-known", {}, 0});
    profile.catalogue.push_back({"zap99", {}, 0});
    profile.install();
    EXPECT_TRUE(is_alias("xy-known") == 0 && is_alias("zap99") == 0);
    EXPECT_EQ(is_alias("xy-unknown"), 1);
}
