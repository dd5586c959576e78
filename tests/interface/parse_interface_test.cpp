#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"
#include "support/profile.h"

namespace {

using orvex_test::Exact;
using orvex_test::Guarded;
using orvex_test::Profile;
using orvex_test::Row;

std::string field_text(int32_t value)
{
    if (value >= IF_FIELD_ABSENT) return value == IF_FIELD_ABSENT ? "" : std::to_string(value);
    const char *const words[] = {"?", "*", "range"};
    return value >= IF_FIELD_RANGE ? words[IF_FIELD_WILD_ONE - value] : std::to_string(value);
}

// "eth 1/2/0:3-rx.100"; what is absent is left out.
std::string record_text(const parsed_interface &record)
{
    std::string text = record.type_name;
    text += ' ' + field_text(record.fpc) + '/' + field_text(record.pic) + '/' + field_text(record.port);
    for (int32_t i = 0; i < record.channel_count; ++i) text += ':' + field_text(record.channels[i]);
    text += record.direction;
    return record.unit == IF_FIELD_ABSENT ? text : text + '.' + field_text(record.unit);
}

// The record of an accepted name, or the result of another; then the message, if there is one.
std::string outcome(const std::string &name, uint32_t flags = 0, uint32_t mask = 0)
{
    Guarded memory(sizeof(parsed_interface));
    Guarded error(4096);
    auto *const record = reinterpret_cast<parsed_interface *>(memory.data());
    errno = 77;
    const int result = parse_interface(Exact(name), flags, mask, record, error.data(), error.size());
    EXPECT_EQ(errno, 77);
    const std::string message = error.untouched() ? "" : error.text();
    if (result == 0) return record_text(*record) + (message.empty() ? "" : " | " + message);
    return std::to_string(result) + ' ' + message;
}

void check(uint32_t flags, const std::vector<Row> &rows, uint32_t mask = 0)
{
    for (const Row &row : rows) EXPECT_EQ(outcome(row.text, flags, mask), row.expected) << row.text << " " << flags;
}

// The products with an outcome of a name, as " 0-3 7".
std::string products_with(const std::string &name, const std::string &expected)
{
    std::string runs;
    Profile profile;
    int first = -1;
    for (uint16_t product = 0; product <= 400; ++product) {
        profile.product_id = product;
        profile.install();
        parse_pf_attrib = {1, 0, 0};
        const bool belongs = product < 400 && outcome(name) == expected;
        if (belongs && first < 0) first = product;
        if (belongs || first < 0) continue;
        runs += ' ' + std::to_string(first);
        if (product - first > 1) runs += '-' + std::to_string(product - 1);
        first = -1;
    }
    return runs;
}

}  // namespace

TEST(ParseInterface, Forms)
{
    Profile profile;
    profile.type("em").flags = PARSE_IF_EXPANSION_SLOT | PARSE_IF_NO_SLOT;
    profile.type("mt").flags = PARSE_IF_PORT_FIRST | PARSE_IF_NO_SLOT;
    profile.type("pe").flags = PARSE_IF_NO_UNIT | PARSE_IF_NEED_CHANNEL;
    profile.type("ser").channel_levels = 7;
    profile.type("ae").channel_levels = 1;
    profile.type("ae").channel_bounds[0] = 3;
    profile.type("vtnet") = profile.type("em");
    profile.type("vtnet").pic_slots = 0;
    profile.install();
    check(0, {
                 {"ser-1/2/0:3:1.100", "ser 1/2/0:3:1.100"},
                 {"eth-0/0/0-rx", "eth 0/0/0-rx"},
                 {"eth-0/0/10-tx.7", "eth 0/0/10-tx.7"},
                 {"ae4091.0", "ae 4091//.0"},
                 {"em-3-0", "em /3/0"},
                 {"vtnet-4294967295-0", "-2 missing or invalid pic in 'vtnet-4294967295-0'"},
                 {"em-4", "-2 expansion slot value outside range 0..3 for '4' in 'em-4'"},
                 {"mt-0.1", "mt //0.1"},
                 {"ae-4092", "-2 device value outside range 0..4091 for '4092' in 'ae-4092'"},
                 {"eth-0/0/10-ry", "-2 invalid input 'y' for 'eth-0/0/10-ry'"},
                 {"eth-0/0/0-ry", "-2 invalid input '0-ry' for 'eth-0/0/0-ry'"},
                 {"ser-0/0/0:0:0:0:0:0:0:0", "-2 level of channelization exceeded limit of 7"},
                 {"ser-0/0/0:27:24", "-2 channel value outside range 0..23 for '24' in 'ser-0/0/0:27:24'"},
                 {"pe-0/0/0", "-2 channel number missing: pe-0/0/0"},
                 {"pe-0/0/0-rx.1", "-2 unit number is not appropriate: pe-0/0/0-rx.1"},
                 {"ae1/0", "-2 pic, port, or channel are invalid for management interfaces: ae1/0"},
                 {"rlsq1/2", "-2 pic or port are invalid for rlsq interfaces: rlsq1/2"},
                 {"", "-1 invalid interface type: "},
                 {"-x", "-1 invalid interface type: -x"},
             });
    check(PARSE_IF_ALLOW_ALL, {{"all", "all //"}, {"all.0", "-1 invalid interface type in 'all.0'"}});
    check(PARSE_IF_DEFAULT_UNIT, {{"eth-0/0/0", "eth 0/0/0.0"}, {"irb", "irb //.0"}, {"ae3", "ae 3//.0"}});
    check(PARSE_IF_NEED_FPC_PIC_PORT, {{"eth-0/0/0", "eth 0/0/0"},
                                       {"eth-0/0", "-2 missing or invalid port in 'eth-0/0'"},
                                       {"eth-0", "-2 missing or invalid pic in 'eth-0'"},
                                       {"irb", "-2 missing or invalid fpc in 'irb'"}});
    check(PARSE_IF_NEED_CHANNEL, {{"ser-0/0/0:1", "ser 0/0/0:1"}});
    check(PARSE_IF_CHANNELS, {{"ae1:2", "ae 1//:2"}});
    // The mask wins over the caller and the entry.
    check(PARSE_IF_NEED_CHANNEL, {{"eth-0/0/0:1", "-2 interface does not support channels: eth-0/0/0:1"}},
          PARSE_IF_CHANNELS);
    // The separator flag at the end of a name reads nothing after it.
    check(PARSE_IF_AFTER_SEP, {{"eth-", "-2 missing or invalid fpc number in 'eth-'"}, {"eth-.1/2/3", "eth 1/2/3"}});
}

TEST(ParseInterface, NumbersConvertAsOnTheTarget)
{
    Profile profile;
    profile.type("vcp").ports_per_pic = 0;
    profile.install();
    check(0, {
                 {"eth--0", "-2 missing or invalid fpc number '-0' in 'eth--0'"},
                 {"eth-0/-1/0", "-2 pic value outside range 0..3 for '-1/0' in 'eth-0/-1/0'"},
                 {"eth-+1/ 2/03", "eth 1/2/3"},
                 {"eth-0/0/0.4294967295", "eth 0/0/0"},
                 {"eth-0/0/0.[1]", "-2 missing or invalid unit number '[1]' in 'eth-0/0/0.[1]'"},
                 {"vcp-256/0/0", "-2 fpc value outside range 0..255 for '256/0/0' in 'vcp-256/0/0'"},
             });
    check(PARSE_IF_WIDE_FPC,
          {{"eth-255", "eth 255//"},
           {"eth-4294967297", "-2 fpc value outside range 0..255 for '4294967297' in 'eth-4294967297'"}});
    check(PARSE_IF_WILDCARD, {{"eth-*/?/0", "eth */?/0"},
                              {"eth-", "eth // | missing or invalid fpc number in 'eth-'"},
                              {"eth-**", "-1 invalid trailing input '*' for 'eth-**'"}});
}

TEST(ParseInterface, OtherTypes)
{
    const std::string longest(59, 'z');
    const std::string cut = longest + 'z';
    Profile profile;
    profile.catalogue = {{"aex", profile.type("rlsq"), 0},
                         {"vcpx", profile.type("vcp"), 0},
                         {longest.c_str(), profile.type("irb"), 0},
                         {cut.c_str(), profile.type("irb"), 0}};
    profile.install();
    check(0, {{"aex4091", "aex 4091//"}, {"vcpx-255", "vcpx 255//"}});
    for (const std::string &name : {longest, cut}) EXPECT_EQ(outcome(name), longest + " //");
}

TEST(ParseInterface, Ranges)
{
    Profile profile;
    profile.type("vcp").ports_per_pic = 0;
    profile.install();
    const std::string longest = "eth-[" + std::string(1100, ' ') + "1]/0/0";
    check(PARSE_IF_RANGES,
          {
              {"eth-[0-3]/0/1", "eth range/0/1"},
              {"eth-0/[2-2]/[0,5,47]", "eth 0/range/range"},
              {"eth-[1, 2 3]/0/0", "eth range/0/0"},
              {"eth-[1,,2]/0/0", "-2 fpc range [1,,2 is invalid in eth-[1,,2]/0/0"},
              {"eth-[3-1]/0/0", "-2 fpc value 1 is outside range 3..11 for '[3-1' in 'eth-[3-1]/0/0"},
              {"eth-[1-12]/0/0", "-2 fpc value 12 is outside range 1..11 for '[1-12' in 'eth-[1-12]/0/0"},
              {"eth-[0--0]/0/0", "-2 missing or invalid fpc number [0--0 in eth-[0--0]/0/0"},
              {"eth-[1-3,5]/0/0", "-2 fpc range [1-3,5 has invalid extra trailer in eth-[1-3,5]/0/0"},
              {"eth-[12-13]/0/0", "-2 fpc value 12 is outside range 0..11 for '[12-13' in 'eth-[12-13]/0/0'"},
              {"eth-[5]/0/0", "-2 fpc has invalid range format [5 in eth-[5]/0/0 , use [n-m] or [n,m] format"},
              {"eth-[1/0/0", "-2 missing ending brace ] for fpc in eth-[1/0/0"},
              {"vcp-0/0/[0-1]", "-2 port value 0 is outside range 0..-1 for '[0-1' in 'vcp-0/0/[0-1]'"},
              {"eth-0/0", "-1 missing or invalid port in 'eth-0/0'"},
              {"eth-0/0/0.1", "-1 invalid trailing input '.1' for 'eth-0/0/0.1'"},
              {"lo0", "-1 invalid interface name in lo0"},
              {"atm-0/0/0", "-1 invalid interface-type for ranges in atm-0/0/0"},
          });
    EXPECT_EQ(outcome(longest, PARSE_IF_RANGES), "-2 fpc has invalid range format " + longest.substr(4, 1023) + " in " +
                                                     longest + " , use [n-m] or [n,m] format");
    check(PARSE_IF_RANGES | PARSE_IF_NEED_CHANNEL, {{"eth-0/0/0", "-2 channel number missing: eth-0/0/0"}});
}

TEST(ParseInterface, UnitsDependOnTypeProductAndAttributes)
{
    constexpr int32_t large = 1073741823;
    const auto expect = [](int32_t max, const std::string &name, uint16_t product) {
        SCOPED_TRACE(name + " on " + std::to_string(product));
        Profile profile;
        profile.product_id = product;
        profile.has_wide_vtnet_units = product == 3 ? 1 : 0;
        for (const char *const type : {"pe", "pd", "mt", "at"}) profile.type(type).flags = PARSE_IF_NO_SLOT;
        profile.install();
        parse_pf_attrib = {1, 0, product == 4 ? 4095 : 0};
        for (const int32_t unit : {max, 1073741824, 1074003967})
            EXPECT_NE(outcome(name + '.' + std::to_string(unit))[0], '-') << unit;
        const std::string above = name + '.' + std::to_string(max + 1), last = name + ".1074003968";
        const std::string too_large = "-2 unit number is larger than " + std::to_string(max) + " in '" + above + "'";
        EXPECT_TRUE(max == large || outcome(above) == too_large) << outcome(above);
        EXPECT_EQ(outcome(last),
                  "-2 unit number is not within the range 0-262143, 1073741824-1074003967 in '" + last + "'");
    };
    for (const char *name : {"demux0", "pe", "pd", "mt", "pp0"}) expect(large, name, 1);
    for (const char *name : {"ae0", "at", "irb", "vtnet0"}) {
        expect(16385, name, 1);
        expect(large, name, 268);
    }
    expect(262143, "vtnet0", 3);
    expect(4095, "at", 4);
    expect(large, "at", 170);
    expect(65535, "irb", 21);
    EXPECT_EQ(products_with("ae0.16386", "ae 0//.16386"),
              " 84 96 136 142-148 157-160 165-166 168 172-175 177-178 202-204 242-243 253 260 268");
    EXPECT_EQ(products_with("irb.65536", "-2 unit number is larger than 65535 in 'irb.65536'"),
              " 21 33 48 88-89 120-123 128 137-138 149-152 161 170 215-218 229-230");

    Profile profile;
    profile.install();
    parse_pf_attrib = {1, 0, 0};
    check(PARSE_IF_NO_UNIT_MAX, {{"irb.1073741823", "irb //.1073741823"}});
    check(PARSE_IF_AT_UNIT_32767, {{"at-0/0/0.32767", "at 0/0/0.32767"},
                                   {"at-0/0/0.32766", "-2 unit number is larger than 16385 in 'at-0/0/0.32766'"},
                                   {"irb.32767", "-2 unit number is larger than 16385 in 'irb.32767'"}});
    parse_pf_attrib = {0, 1, 0};
    check(0, {{"irb.1073741823", "irb //.1073741823"}});
    EXPECT_EQ(parse_pf_attrib.loaded, 0);
}

TEST(ParseInterface, AsksThePlatformWhatItIs)
{
    Profile profile;
    profile.running_in_container = 1;
    profile.install();
    check(0, {{"em0", " //"}, {"no name", " //"}, {"lo0", "lo 0//"}, {"lo0.1", " //"}});

    profile.running_in_container = 0;
    EXPECT_EQ(products_with("vlan", "-1 interface type vlan is not supported in this plateform"),
              " 52-62 64-70 72-74 79 92 102-106 110 118 127 139 180-191 198 200-201 205-214 221-226 248");
    EXPECT_EQ(products_with("vlan.5", "vlan //.5"), " 0-399");

    profile.type("eth").product_mask = 1 << 5;
    profile.type("vcp").product_mask = 1 << 0;  // a product without a record counts as 0
    profile.product_id = 64 + 5;
    for (const auto &[record, name, expected] :
         {std::tuple{ORVEX_PRODUCT_BY_POINTER, "eth-0", "eth 0//"},
          {ORVEX_PRODUCT_BY_CALL, "eth-0", "eth 0//"},
          {ORVEX_PRODUCT_NONE, "eth-0", "-2 product does not support interface type in 'eth-0'"},
          {ORVEX_PRODUCT_NONE, "vcp-0", "vcp 0//"}}) {
        profile.product_record = record;
        profile.install();
        check(0, {{name, expected}});
    }
}

TEST(ParseInterface, SlotsOfAMultiChassisSystem)
{
    Profile profile;
    profile.chassis_kind = ORVEX_CHASSIS_SWITCH;
    profile.multi_chassis_size = 4;
    profile.max_fpc_slots = 8;
    profile.local_to_global = {100, 10};
    profile.lcc_to_scc = {200, 16};
    profile.install();
    check(0, {
                 {"eth-1/2/0/3.0", "eth 218/0/3.0"},
                 {"eth-3/0/0/0", "-2 lcc value outside range 0..2 for '3/0/0/0' in 'eth-3/0/0/0'"},
                 {"eth-2/8/0/0", "-2 fpc value outside range 0..7 for '8/0/0' in 'eth-2/8/0/0'"},
                 {"vcp-255/1/0/0", "vcp 4281/0/0"},
             });
    check(PARSE_IF_WILDCARD, {{"eth-*/2/0/0", "-2 wildcarding not allowed for lcc"},
                              {"eth-1/?/0/0", "-2 wildcarding not allowed for fpc when lcc is specified"}});
    profile.chassis_kind = ORVEX_CHASSIS_LINE_CARD;
    profile.uses_global_slots_b = 1;
    profile.install();
    check(0, {{"eth-1/2/0/3", "eth 112/0/3"}});
    profile.product_record = ORVEX_PRODUCT_NONE;
    profile.install();
    check(0, {{"eth-0/0/0/0", "-2 lcc value outside range 0..-2 for '0/0/0/0' in 'eth-0/0/0/0'"}});
    profile.chassis_kind = ORVEX_CHASSIS_SINGLE;
    orvex_platform_install(&profile);  // The form of names is kept.
    EXPECT_EQ(outcome("eth-0/0/0/0").substr(0, 6), "-2 lcc");
    profile.install();
    check(0, {{"eth-0/0/0/0", "-1 invalid trailing input '/0' for 'eth-0/0/0/0'"}});
}

TEST(ParseInterface, VirtualSlots)
{
    Profile profile;
    profile.has_virtual_fpcs = 1;
    profile.min_virtual_fpc_slot = 1000;
    profile.max_virtual_fpc_slot = 1099;
    for (orvex_interface_type &type : profile.catalogue) type.virtual_pic_slots = 2;
    profile.install();
    check(0, {
                 {"eth-1099/1/0", "eth 1099/1/0"},
                 {"eth-1050/2/0", "-2 pic value outside range 0..1 for '2/0' in 'eth-1050/2/0'"},
                 {"eth-11/3/0", "eth 11/3/0 | fpc value outside range 1000..1099 for '11/3/0' in 'eth-11/3/0'"},
                 {"eth-1100/0/0", "-2 fpc value outside range 0..11 for '1100/0/0' in 'eth-1100/0/0'"},
             });
    const interface_info &eth = profile.type("eth");
    for (const auto &[name, slots] : std::vector<std::pair<const char *, uint32_t>>{
             {"eth-1000/0", 2}, {"eth-1099", 2}, {"eth-999", 4}, {"eth-1100", 4}, {"eth1000", 4}, {"x- 01000", 2}})
        EXPECT_EQ(get_fpc_picslots_byname(name, &eth), slots) << name;
    profile.chassis_kind = ORVEX_CHASSIS_SWITCH;
    profile.multi_chassis_size = 4;
    profile.lcc_to_scc = {0, 10000};
    profile.install();
    check(0, {{"eth-2/1007/0/0",
               "eth 21007/0/0 | lcc value outside range 1000..1099 for '2/1007/0/0' in 'eth-2/1007/0/0'"}});
}

TEST(ParseInterface, ChassisPrefix)
{
    Profile profile;
    profile.install();
    // What is left, the name and its length, or the message
    const auto strip = [](const std::string &text, size_t size) {
        const Exact exact(text);
        const char *at = exact;
        Guarded buffer(size);
        Guarded error(1024);
        size_t length = 77;
        errno = 77;
        const int result = parse_4_level_chassis(&at, buffer.data(), size, error.data(), error.size(), &length);
        EXPECT_EQ(errno, 77);
        const std::string name = size == 0 ? "" : buffer.text();
        if (result == 0) return std::string(at) + '|' + name + '|' + std::to_string(length);
        EXPECT_EQ(result, -1);
        EXPECT_TRUE(at == exact && length == 0);
        return error.text() + '|' + name;
    };
    EXPECT_EQ(strip("lcc0:eth-0/0/0", 200), "lcc0:eth-0/0/0||0");
    EXPECT_EQ(strip("node1:mgmt-0", 200), "mgmt-0|node1|5");
    EXPECT_EQ(strip("a::mgmt-0", 200), ":mgmt-0|a|1");
    check(0, {{"node1:mgmt-0", "mgmt 0//"}, {"lcc0:eth-0/0/0", "-1 invalid interface type in 'lcc0:eth-0/0/0'"}});
    profile.is_multi_chassis_root = 1;
    profile.install();
    EXPECT_EQ(strip("lcc0:eth-0/0/0", 5), "eth-0/0/0|lcc0|4");
    EXPECT_EQ(strip("lcc0:eth-0/0/0", 4), "buf_size '4' is not enough for '4' long chassis name|");
    EXPECT_EQ(strip("lcc0:lo0", 1), "lcc0:lo0||0");
    EXPECT_EQ(strip(":eth-0/0/0", 1), ":eth-0/0/0||0");
    EXPECT_EQ(strip(":eth-0/0/0", 0), "buf_size '0' is not enough for '0' long chassis name|");
    EXPECT_EQ(strip("a_9-B:x:-", 200), "x:-|a_9-B|5");
    EXPECT_EQ(strip("bad.name:eth-0/0/0", 200),
              "chassis name 'bad.name' is not valid in 'bad.name:eth-0/0/0'|bad.name");
    const std::string longest(128, 'c');
    EXPECT_EQ(strip(longest + ":x-", 200), "x-|" + longest + "|128");
    EXPECT_EQ(strip(longest + "c:x-", 9), "chassis name length is greater than 128 in '" + longest + "c:x-'|");

    Guarded record(sizeof(parsed_interface));
    parse_interface("a.b:eth-0", 0, 0, reinterpret_cast<parsed_interface *>(record.data()), nullptr, 0);
    EXPECT_TRUE(record.untouched());
}
