#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <cerrno>
#include <clocale>
#include <cstdio>

#include "support/guarded.h"
#include "support/profile.h"

namespace {

using orvex_test::Guarded;

int ask(const std::string &text)
{
    errno = 77;
    const int answer = is_interface_alias(orvex_test::Exact(text));
    EXPECT_EQ(errno, 77);
    return answer;
}

// "1 NAME", or "0" with the destination untouched.
std::string look_up(const std::string &map, const std::string &alias, size_t size = 61)
{
    FILE *const stream = fmemopen(const_cast<char *>(map.data()), map.size(), "r");
    std::fgetc(stream);
    Guarded dest(size);
    errno = 77;
    const int found = ifalias_to_ifl(alias.c_str(), dest.data(), size, 0, stream);
    EXPECT_EQ(errno, 77);
    EXPECT_TRUE(dest.untouched(found == 0 || size == 0));
    std::fclose(stream);
    return found == 0 || size == 0 ? std::to_string(found) : "1 " + dest.text();
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

TEST(IfaliasToIfl, ReadsLinesOfThreeWords)
{
    const std::string map =
        "eth-0/0/0.0 uplink x\n"
        "short line\n"
        "\n"
        " \teth-0/0/1\v\fuplink-2\r x more words\r\n"
        "first twice x\n"
        "second twice x\n"
        "no-third-word lost\nx\n" +
        std::string(70, 'n') + ' ' + std::string(140, 'a') + " x\n" +  //
        "last end x";
    for (const auto &[alias, expected] : std::vector<std::pair<std::string, std::string>>{
             {"uplink", "1 eth-0/0/0.0"},
             {"uplink-", "0"},
             {"line", "0"},
             {"uplink-2", "1 eth-0/0/1"},
             {"twice", "1 first"},
             {std::string(127, 'a'), "0"},
             {std::string(128, 'a'), "1 " + std::string(60, 'n')},
             {std::string(128, 'a') + "other", "1 " + std::string(60, 'n')},
             {"end", "1 last"},
             {"", "0"}})
        EXPECT_EQ(look_up(map, alias), expected) << alias;
    EXPECT_EQ(look_up(map, "uplink", 5), "1 eth-");
    EXPECT_EQ(look_up(map, "uplink", 1), "1 ");
    EXPECT_EQ(look_up(map, "uplink", 0), "1");
    char dest[8];
    EXPECT_EQ(ifalias_to_ifl("uplink", dest, sizeof dest, 1, nullptr), 0);
}

// Lines and words that lie across the ends of what is read at a time.
TEST(IfaliasToIfl, FindsEveryAliasOfALongMap)
{
    std::string map;
    std::vector<std::string> aliases;
    while (map.size() < 70000) {
        const std::string number = std::to_string(aliases.size());
        aliases.push_back("alias-" + number);
        map += "eth-" + number + std::string(1 + aliases.size() % 50, ' ') + aliases.back() + " " +
               std::string(aliases.size() % 7 * 3, 'x') + "\n";
        if (aliases.size() % 200 == 0) map += std::string(20000, aliases.size() % 400 == 0 ? 'w' : ' ') + "\n";
    }
    for (size_t i = 0; i < aliases.size(); ++i)
        EXPECT_EQ(look_up(map, aliases[i]), (i + 1) % 7 == 0 ? "0" : "1 eth-" + std::to_string(i)) << aliases[i];
}
