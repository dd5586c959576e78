#include <gtest/gtest.h>

#include <thread>

#include "support/profile.h"

namespace {

using orvex_test::Profile;

std::string attributes()
{
    return std::to_string(parse_pf_attrib.loaded) + ' ' + std::to_string(parse_pf_attrib.is_l2ng_product) + ' ' +
           std::to_string(parse_pf_attrib.max_ifl_subunit);
}

const std::string attributes_of_new_program = attributes();

int parse(const char *name)
{
    parsed_interface record;
    return parse_interface(name, 0, 0, &record, nullptr, 0);
}

}  // namespace

TEST(PlatformAttributes, AreNotLoadedInANewProgram) { EXPECT_EQ(attributes_of_new_program, "0 1 0"); }

TEST(PlatformAttributes, AreLoadedOnceByTheFirstUnitOnProduct169)
{
    // {available, l2ng value and status, subunit value and status}: the record
    const struct {
        uint8_t available;
        orvex_attribute l2ng;
        orvex_attribute subunit;
        const char *expected;
    } rows[] = {
        {1, {0, 0}, {4095, 0}, "1 0 4095"}, {1, {0, 5}, {4095, 5}, "1 1 0"}, {1, {0, 5}, {-7, 0}, "1 1 -7"},
        {1, {0x102, 0}, {9, 5}, "1 2 0"},   {0, {0, 0}, {4095, 0}, "1 1 0"},
    };
    for (const auto &row : rows) {
        Profile profile;
        profile.product_id = 169;
        profile.has_attributes = row.available;
        profile.is_l2ng_product = row.l2ng;
        profile.max_ifl_subunit = row.subunit;
        profile.install();
        parse("at-0/0/0");
        parse("at-0/0/0.1074003968");
        EXPECT_EQ(attributes(), "0 1 0");
        parse("at-0/0/0.1");
        EXPECT_EQ(attributes(), row.expected);
        profile.is_l2ng_product.value = 9;
        orvex_platform_install(&profile);
        parse("at-0/0/0.1");
        EXPECT_EQ(attributes(), row.expected);
    }
}

TEST(PlatformAttributes, FirstCallsOfManyThreadsAgree)
{
    Profile profile;
    profile.product_id = 169;
    profile.is_l2ng_product.value = 0;
    profile.max_ifl_subunit.value = 4095;
    profile.chassis_kind = ORVEX_CHASSIS_LINE_CARD;
    profile.multi_chassis_size = 3;
    profile.install();
    std::atomic<int> waiting{8};
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            --waiting;
            while (waiting > 0) continue;
            for (int call = 0; call < 1000000; ++call)
                wrong += parse(call % 2 ? "at-1/0/0/0.4095" : "at-1/0/0/0.4096") != (call % 2 ? 0 : -2);
        });
    }
    for (std::thread &thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}
