#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

using orvex_test::Exact;
using orvex_test::Guarded;
using orvex_test::outcome_of;

struct RdRow {
    std::string text;
    uint32_t type = 0;
    uint32_t high = 77;  // the values before the call, which a failure keeps
    uint32_t low = 77;
    std::string message = "";
};

void check_rd(const std::vector<RdRow> &rows)
{
    for (const RdRow &row : rows) {
        SCOPED_TRACE(row.text);
        uint32_t type = 77, high = 77, low = 77;
        const auto [result, message] = outcome_of([&](char *error, size_t size) {
            return parse_inetvpn_rd(Exact(row.text), &type, &high, &low, error, size);
        });
        EXPECT_EQ(message, row.message);
        EXPECT_EQ(result, row.message.empty() ? 0 : 1);
        EXPECT_TRUE(result != 0 || type == row.type) << type;
        EXPECT_EQ(high, row.high);
        EXPECT_EQ(low, row.low);
    }
}

struct AtmRow {
    std::string text;
    uint32_t rd_low = 1;
    uint8_t type = 5;
    std::string address = "";  // hexadecimal, without the zeros at its end
    uint32_t pfxlen = 0;       // 0: refused
    std::string message = "";
    bool stores = true;  // whether the record is written
};

void check_atm(const std::vector<AtmRow> &rows)
{
    for (const AtmRow &row : rows) {
        SCOPED_TRACE(row.text);
        Guarded memory(sizeof(atmvpn_address));
        auto *const record = reinterpret_cast<atmvpn_address *>(memory.data());
        uint32_t pfxlen = 777;
        const auto [result, message] = outcome_of(
            [&](char *error, size_t size) { return parse_atmvpn(Exact(row.text), record, &pfxlen, error, size); });
        EXPECT_EQ(message, row.message);
        EXPECT_EQ(result, row.pfxlen == 0 ? 1 : 0);
        EXPECT_EQ(pfxlen, row.pfxlen == 0 ? 777 : row.pfxlen);
        EXPECT_EQ(parse_atmvpn(row.text.c_str(), nullptr, nullptr, nullptr, 0), result);
        EXPECT_NE(memory.untouched(), row.stores);
        if (!row.stores) continue;
        EXPECT_EQ(record->reserved, 0x5a5a5a5a);
        EXPECT_EQ(record->rd_high, 65000U);
        EXPECT_EQ(record->rd_low, row.rd_low);
        EXPECT_EQ(record->type, row.type);
        std::string address = row.address;
        address.resize(2 * sizeof record->address, '0');
        EXPECT_EQ(orvex_test::hexadecimal(record->address, sizeof record->address), address);
    }
}

std::string zeros(size_t count) { return std::string(count, '0'); }

const char *const too_long = "Invalid address length";
const char *const no_match = "Address does not match prefix";
const std::string bytes_22 = "1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1:1";
const std::string hexadecimal_22 = "01010101010101010101010101010101010101010101";

std::string esi_outcome(const std::string &text, int mode = PARSE_ESI_ANY)
{
    Guarded esi(10);
    const auto [result, message] =
        outcome_of([&](char *error, size_t size) { return parse_esi(Exact(text), esi.bytes(), error, size, mode); });
    if (result == 0) return esi.hexadecimal();
    EXPECT_TRUE(result == -1 && esi.untouched());
    return message;
}

}  // namespace

TEST(ParseInetvpnRd, Reads)
{
    check_rd({
        {.text = "65000:100", .type = 0, .high = 0x0000fde8, .low = 100},
        {.text = "1:99999999999999999999999", .type = 0, .high = 0x00000001, .low = 0xffffffff},
        {.text = "1:", .type = 0, .high = 0x00000001, .low = 0},
        {.text = "10.1.1:65535", .type = 1, .high = 0x00010a01, .low = 0x0001ffff},
        {.text = "010.1.1.1:7", .type = 1, .high = 0x00010801, .low = 0x01010007},
        {.text = "0x0a010101:7", .type = 1, .high = 0x00010a01, .low = 0x01010007},
        {.text = "1.10:3", .type = 2, .high = 0x00020001, .low = 0x000a0003},
        {.text = "1.10L:3", .type = 2, .high = 0x00020001, .low = 0x000a0003},
        {.text = ".10:3", .type = 2, .high = 0x00020000, .low = 0x000a0003},
        {.text = "70000.1:3", .type = 2, .high = 0x00021170, .low = 0x00010003},
        {.text = "4200000000L:65535", .type = 2, .high = 0x0002fa56, .low = 0xea00ffff},
        {.text = "18446744073709551617L:0", .type = 2, .high = 0x0002ffff, .low = 0xffff0000},
        {.text = zeros(127) + "1:7", .type = 0, .high = 0x00000001, .low = 0},
        // What follows the last "+" is cut off and would change the outcome.
        {.text = "1:" + zeros(125) + "12" + "3", .type = 0, .high = 0x00000001, .low = 12},
        {.text = "1:" + zeros(126) + "5" + "x", .type = 0, .high = 0x00000001, .low = 5},
    });
}

TEST(ParseInetvpnRd, Refuses)
{
    const std::string as = "Invalid autonomous system value at ";
    const std::string number = "Invalid RD number value at ";
    const std::string address = "Invalid IP address in route-distingusher: ";
    check_rd({
        {.text = "100", .message = "Invalid RD format: '100'"},
        {.text = zeros(129) + ".5:1", .message = "Invalid RD format: '" + zeros(129) + ".5:1'"},
        {.text = zeros(128) + ".5:1", .message = "Invalid RD format: '" + zeros(128) + ".5:1'"},
        {.text = "65536:1", .message = as + "'65536' not in range 1 to 65535"},
        {.text = "0:x", .message = as + "'0' not in range 1 to 65535"},
        {.text = ":1", .message = as + "'0' not in range 1 to 65535"},
        {.text = "0.0:65536", .message = as + "'0' not in range 1 to 4294967295"},
        {.text = "100:5:6", .message = "Invalid route-distinguisher: 100:5:6"},
        {.text = "x:-1", .message = "Invalid route-distinguisher: x:-1"},
        {.text = "4200000000L:65536", .message = number + "'65536' not in range 0 to 65535"},
        {.text = "10.1.1.1:65536", .message = number + "'65536' not in range 0 to 65535"},
        {.text = "x:65536", .message = number + "'65536' not in range 0 to 65535"},
        {.text = "10.1.1.1.1:7", .message = address + "10.1.1.1.1:7"},
        {.text = "010.1.08.1:7", .message = address + "010.1.08.1:7"},
        {.text = "L:1", .message = address + "L:1"},
        {.text = "5.L:1", .message = address + "5.L:1"},
        {.text = "5LL:1", .message = address + "5LL:1"},
        {.text = " 5:1", .message = address + " 5:1"},
    });
}

TEST(ParseAtmvpn, Reads)
{
    check_atm({
        {.text = "65000:70000::255::2", .rd_low = 70000, .type = 255, .address = "02", .pfxlen = 255},
        {.text = "65000:1::0x10::1/8", .type = 16, .address = "01", .pfxlen = 80},
        {.text = "65000:1::010::1/010", .type = 8, .address = "01", .pfxlen = 82},
        {.text = "65000:1::5::010:0x12:1/24", .address = "081201", .pfxlen = 96},
        {.text = "65000:1::5::1.010.1/32", .address = "01080001", .pfxlen = 104},
        {.text = "65000:1::5::1:2::2", .address = "0102" + zeros(40) + "02", .pfxlen = 255},
        {.text = "65000:1::5::1:::2", .address = "01" + zeros(42) + "02", .pfxlen = 255},
        {.text = "65000:1::5::::1:2/183", .address = zeros(42) + "0102", .pfxlen = 255},
        {.text = "65000:1::5:::10.1.2.4", .address = zeros(38) + "0a010204", .pfxlen = 255},
        {.text = "65000:1::5::" + bytes_22 + ":2", .address = hexadecimal_22 + "02", .pfxlen = 255},
        {.text = "65000:1::5:::" + bytes_22 + ":2", .address = hexadecimal_22 + "02", .pfxlen = 255},
        {.text = "65000:1::5::", .pfxlen = 255},
        {.text = "65000:1::5::/", .pfxlen = 72},
        {.text = "65000:1::5::1:", .address = "01", .pfxlen = 255},
        {.text = "65000:1::5::/-4294967113", .pfxlen = 255},
    });
}

TEST(ParseAtmvpn, RefusesBeforeItStores)
{
    const std::string range = "Invalid Address type value at '0' not in range 1 to 255";
    check_atm({
        {.text = "", .message = "Invalid ATM VPN address ''", .stores = false},
        {.text = "x::5/184", .message = "Invalid ATM VPN address 'x::5/184'", .stores = false},
        {.text = "1::5::1::2::3", .message = "Invalid ATM VPN address '1::5::1::2::3'", .stores = false},
        {.text = "x::5x::1/184", .message = "Invalid prefix length", .stores = false},
        {.text = "65000:1::5::1/-1", .message = "Invalid prefix length", .stores = false},
        {.text = "65000:1::5::1/1/2", .message = "Invalid prefix length", .stores = false},
        {.text = "65000:1::/5::1", .message = "Invalid prefix length", .stores = false},
        {.text = "100::5x::1", .message = "Invalid RD format: '100'", .stores = false},
        {.text = "::1::2::3", .message = "Invalid RD format: ''", .stores = false},
        {.text = "1:x::5::1", .message = "Invalid route-distinguisher: 1:x", .stores = false},
        {.text = "65000:1::5x::256", .message = "Invalid address type '5x'", .stores = false},
        {.text = "65000:1::::256", .message = range, .stores = false},
    });
}

TEST(ParseAtmvpn, StoresWhatComesBeforeAFault)
{
    check_atm({
        {.text = "65000:1::5::7:256:1", .address = "07", .message = "Invalid address component '256'"},
        {.text = "65000:1::5::7: :2", .address = "07", .message = "Invalid address component ' '"},
        {.text = "65000:1::5::7::1.2.3.x:4", .address = "07", .message = "Invalid address component '1.2.3.x'"},
        {.text = "65000:1::5::1::2:", .address = "0102", .message = "Too many double colons in address"},
        {.text = "65000:1::5::1::", .address = "01", .message = "Too many double colons in address"},
        {.text = "65000:1::5::" + bytes_22 + ":1.2.3.4", .address = hexadecimal_22 + "01", .message = too_long},
        {.text = "65000:1::5:::" + bytes_22 + ":2:2", .address = hexadecimal_22 + "02", .message = too_long},
        {.text = "65000:1::5::1:2/14", .address = "0102", .message = no_match},
        {.text = "65000:1::5::1::2/181", .address = "01" + zeros(42) + "02", .message = no_match},
        {.text = "65000:1::5::1::1", .address = "01" + zeros(42) + "01", .message = no_match},
    });
}

TEST(ParseAtmvpn, JudgesTheFirst129Characters)
{
    const std::string spaces(116, ' ');
    // What follows the last "+" is cut off and would change the outcome.
    check_atm({
        {.text = "65000:1::5::" + zeros(114) + ":12" + "3:1", .address = "000c", .pfxlen = 255},
        {.text = "65000:1::5::" + zeros(109) + ":1.2.3.4" + "5:1", .address = "0001020304", .pfxlen = 255},
        {.text = "65000:1::5::" + zeros(115) + "/1" + "83", .pfxlen = 73},
        {.text = "65000:1::5::1" + spaces + "x", .message = "Invalid address component '1" + spaces + "'"},
        {.text = "65000:1::5::" + zeros(115) + "::" + ":2", .message = "Too many double colons in address"},
        {.text = zeros(128) + ":" + ":5::1", .stores = false},
        {.text = "1:1::" + zeros(123) + ":" + ":1", .stores = false},
    });
}

TEST(ParseIsAtmvpn, CountsDoubleColons)
{
    for (const char *text : {"1::2::3", "1::2::3::", "1:::2::", "::1::2::", "1::::", "12:3::4::5"})
        EXPECT_EQ(parse_is_atmvpn(Exact(text)), 1) << text;
    for (const char *text : {"", ":", "::", "1::2", "::1::2", "1::2::3::4::", "1:::", "1:2:3:4:5::6"})
        EXPECT_EQ(parse_is_atmvpn(Exact(text)), 0) << text;
}

TEST(ParseEsi, FormsAndRefusals)
{
    orvex_test::check_groups(
        {{"00112233445566778899", {"00:11:22:33:44:55:66:77:88:99"}},
         {"0a010203040506070809", {"000a:1:2:3:4:5:6:7:8:0009"}},
         {"aabbccddeeff00112233", {"AA:bB:cc:DD:EE:FF:00:11:22:33"}},
         {"00110000000000000099", {"00:11::99"}},
         {"00000000000000000001", {"::1"}},
         {"01110000000000000000", {"01:11::"}},
         {"00010203040506070809", {"::1:2:3:4:5:6:7:8:9"}},
         {"Unexpected ':' character", {":", ":00:11", "1:2:", "01:02:", "1:2:3:4:5:6:7:8:9:a:"}},
         {"ESI is too long; length must be exactly 10 octets",
          {"1:2:3:4:5:6:7:8:9:a:b", "1:2:3:4:5:6:7:8:9:a:b:", "00:11:22:33:44:55:66:77:88:99:aa:bb"}},
         {"Unexpected '::' sequence", {"1:2:3:4:5:6:7:8:9::a", "::1:2:3:4:5:6:7:8:9:a", "1:2:3:4:5:6:7:8:9:a::"}},
         {"ESI is too short; length must be exactly 10 octets", {"00:11:22", ""}},
         {"Only one '::' sequence can appear in the ESI and it may not follow a ':' character",
          {":::", "00:11:::22", "00::11::22"}},
         {"Values delimited by ':' characters must be in the range 0 to 0xff",
          {"100:11", "1:0000100", "1:2:3:4:5:6:7:8:9:a:100"}},
         {"Invalid non-hexidecimal character found in ESI",
          {"00-11", "1:2 ", "1:g", "0011-", "1:2:3:4:5:6:7:8:9:a:b-"}}},
        [](const std::string &text) { return esi_outcome(text); });
}

TEST(ParseEsi, Modes)
{
    for (const std::string text : {"::", "0:0:0:0:0:0:0:0:0:0", "ff:ff:ff:ff:ff:ff:ff:ff:ff:ff"}) {
        for (const int mode : {PARSE_ESI_ANY, PARSE_ESI_USER_DEFINED, 3, -1})
            EXPECT_EQ(esi_outcome(text, mode), "ESI value is reserved");
        EXPECT_EQ(esi_outcome(text, PARSE_ESI_RESERVED_OK), std::string(20, text[0] == 'f' ? 'f' : '0'));
    }
    EXPECT_EQ(esi_outcome("01::", PARSE_ESI_USER_DEFINED), "The first octet of a user-defined ESI must be 0");
    EXPECT_EQ(esi_outcome("01::", PARSE_ESI_RESERVED_OK), "01000000000000000000");
    EXPECT_EQ(esi_outcome("0:1::", PARSE_ESI_USER_DEFINED), "00010000000000000000");
    EXPECT_EQ(esi_outcome("ff:ff:ff:ff:ff:ff:ff:ff:ff:fe"), "fffffffffffffffffffe");
}

TEST(FormatEsi, EverySize)
{
    const uint8_t esi[] = {0, 0x1b, 0x2c, 0x3d, 0x4e, 0x5f, 0x60, 0x71, 0x89, 0xfa};
    orvex_test::check_cut_sizes(
        "00:1b:2c:3d:4e:5f:60:71:89:fa", [&](char *buf, size_t size) { return format_esi(buf, size, esi); },
        [](size_t size) { return std::min(size_t{29}, size); });
}
