#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <bit>
#include <clocale>

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
    for (const std::string &text : Texts{"uplink-to-core", "eth-uplink", "eth-u/x", "eth-10", "ether-", "z_.:/-Z",
                                         "fe80::g", "fe80::1/64", "localhost1", "bigeth0", "aB012", longest})
        EXPECT_EQ(is_alias(text), 1) << text;
    for (const std::string &text : Texts{"", "abcd", longest + "9", "1abcde", "-abcde", "a[1]bc", "ab cde", "fe80::1",
                                         "abcd:ef01:1:2:3:4:5:6", "localhost", "access-ports", "xstp-disabled",
                                         "eth-0/0/0", "irb.10", "demux0", "ABCDE", "AB:CD", "upl\xefnk"})
        EXPECT_EQ(is_alias(text), 0) << text;
    EXPECT_EQ(is_interface_alias(&"a9ABCDE"[2]), 0) << "what comes before the text counts";
    orvex_test::Profile profile;
    profile.catalogue.push_back({"xy-known", {}, 0});
    profile.catalogue.push_back({"zap99", {}, 0});
    profile.install();
    EXPECT_TRUE(is_alias("xy-known") == 0 && is_alias("zap99") == 0);
    EXPECT_EQ(is_alias("xy-unknown"), 1);
}

// In a Latin-1 locale, byte 0xef is a letter of names, but no ASCII letter changes.
TEST(IsInterfaceAlias, TakesTheLettersOfTheLocale)
{
    if (std::endian::native == std::endian::big) GTEST_SKIP() << "the locale was made on another machine";
    ASSERT_NE(std::setlocale(LC_CTYPE, "latin1"), nullptr);
    EXPECT_TRUE(is_alias("upl\xefnk") == 1 && is_alias("\xefplink") == 1 && is_alias("ABCD\xef") == 1 &&
                is_alias("upl\xa1nk") == 0);
    for (const char *const text : {"na\xefve:mgmt-0", "na\xa1ve:mgmt-0"}) {
        const char *name = text;
        EXPECT_EQ(parse_4_level_chassis(&name, nullptr, 0, nullptr, 0, nullptr), text[2] == '\xef' ? 0 : -1);
    }
    std::setlocale(LC_CTYPE, "C");
}
