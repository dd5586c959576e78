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
