#include <gtest/gtest.h>

#include <cstring>

#include "support/profile.h"

namespace {

// The type found under a name, or "".
std::string found(const char *text, size_t length)
{
    const interface_info *const entry = interface_info_byname(text, length);
    if (entry == nullptr) return "";
    return orvex_platform_default_profile()->types[interface_info_index(entry)].name;
}

}  // namespace

TEST(StandIn, FindsTypesByTheirWholeName)
{
    for (size_t i = 0; i < orvex_platform_default_profile()->type_count; ++i) {
        const std::string name = orvex_platform_default_profile()->types[i].name;
        EXPECT_EQ(found((name + "-0").c_str(), name.size()), name);
        EXPECT_EQ(found((name + 'x').c_str(), name.size() + 1), "");
    }
    for (const char *text : {"et", "ethe", "e", "z", "a", "\xff"}) EXPECT_EQ(found(text, strlen(text)), "") << text;
    EXPECT_EQ(found("eth", 0), "");
    EXPECT_EQ(found("a\0e", 3), "");
}

// More types than the look-up has places: some share one.
TEST(StandIn, FindsEachTypeOfALargeCatalogue)
{
    orvex_test::Profile profile;
    std::vector<std::string> names;
    for (char first = 'a'; first <= 'z'; ++first)
        for (char last = 'a'; last <= 'z'; ++last) names.push_back({first, last});
    profile.catalogue.clear();
    for (const std::string &name : names) profile.catalogue.push_back({name.c_str(), {}, 0});
    profile.install();
    for (size_t i = 0; i < names.size(); ++i) {
        const interface_info *const entry = interface_info_byname(names[i].c_str(), 2);
        ASSERT_NE(entry, nullptr) << names[i];
        EXPECT_EQ(interface_info_index(entry), i);
        EXPECT_EQ(interface_info_byname((names[i] + 'x').c_str(), 3), nullptr);
    }
    for (const char *text : {"AA", "{a", "a{", "a-"}) EXPECT_EQ(interface_info_byname(text, 2), nullptr) << text;
}

TEST(StandIn, RefusesACatalogueOutOfOrder)
{
    orvex_platform_profile profile = *orvex_platform_default_profile();
    for (const std::vector<const char *> &names :
         {std::vector<const char *>{"b", "a"}, {"a", "a"}, {"a", nullptr}, {""}, {"ab", "a"}}) {
        std::vector<orvex_interface_type> types;
        for (const char *name : names) types.push_back({name, {}, 0});
        profile.types = types.data();
        profile.type_count = types.size();
        EXPECT_EQ(orvex_platform_install(&profile), -1);
        EXPECT_EQ(found("eth", 3), "eth");
    }
}
