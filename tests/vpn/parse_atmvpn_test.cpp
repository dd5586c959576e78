#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

using orvex_test::Exact;
using orvex_test::Guarded;
using orvex_test::outcome_of;

struct Row {
    std::string text;
    uint32_t rd_low = 1;
    uint8_t type = 5;
    std::string address = "";  // hexadecimal, without the zeros at its end
    uint32_t pfxlen = 0;       // 0: refused
    std::string message = "";
    bool stores = true;  // whether the record is written
};

void check(const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
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

}  // namespace

TEST(ParseAtmvpn, Reads)
{
    check({
        {.text = "65000:70000::255::2", .rd_low = 70000, .type = 255, .address = "02", .pfxlen = 255},
        {.text = "65000:1::010::1/010", .type = 8, .address = "01", .pfxlen = 82},
        {.text = "65000:1::5::010:0xff:1/24", .address = "08ff01", .pfxlen = 96},
        {.text = "65000:1::5::1.010.1/32", .address = "01080001", .pfxlen = 104},
        {.text = "65000:1::5::1:2::2", .address = "0102" + zeros(40) + "02", .pfxlen = 255},
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
    check({
        {.text = "", .message = "Invalid ATM VPN address ''", .stores = false},
        {.text = "x::5/184", .message = "Invalid ATM VPN address 'x::5/184'", .stores = false},
        {.text = "1::5::1::2::3", .message = "Invalid ATM VPN address '1::5::1::2::3'", .stores = false},
        {.text = "x::5x::1/184", .message = "Invalid prefix length", .stores = false},
        {.text = "65000:1::5::1/-1", .message = "Invalid prefix length", .stores = false},
        {.text = "65000:1::/5::1", .message = "Invalid prefix length", .stores = false},
        {.text = "100::5x::1", .message = "Invalid RD format: '100'", .stores = false},
        {.text = "::1::2::3", .message = "Invalid RD format: ''", .stores = false},
        {.text = "65000:1::5x::256", .message = "Invalid address type '5x'", .stores = false},
        {.text = "65000:1::::256", .message = range, .stores = false},
    });
}

TEST(ParseAtmvpn, StoresWhatComesBeforeAFault)
{
    check({
        {.text = "65000:1::5::7:256:1", .address = "07", .message = "Invalid address component '256'"},
        {.text = "65000:1::5::7::1.2.3.x:4", .address = "07", .message = "Invalid address component '1.2.3.x'"},
        {.text = "65000:1::5::1::2:", .address = "0102", .message = "Too many double colons in address"},
        {.text = "65000:1::5::1::", .address = "01", .message = "Too many double colons in address"},
        {.text = "65000:1::5::" + bytes_22 + ":1.2.3.4", .address = hexadecimal_22 + "01", .message = too_long},
        {.text = "65000:1::5:::" + bytes_22 + ":2:2", .address = hexadecimal_22 + "02", .message = too_long},
        {.text = "65000:1::5::1:2/14", .address = "0102", .message = no_match},
        {.text = "65000:1::5::1::1", .address = "01" + zeros(42) + "01", .message = no_match},
    });
}

TEST(ParseAtmvpn, JudgesTheFirst129Characters)
{
    const std::string spaces(116, ' ');
    // What follows the last "+" is cut off and would change the outcome.
    check({
        {.text = "65000:1::5::" + zeros(114) + ":12" + "3:1", .address = "000c", .pfxlen = 255},
        {.text = "65000:1::5::" + zeros(109) + ":1.2.3.4" + "5:1", .address = "0001020304", .pfxlen = 255},
        {.text = "65000:1::5::" + zeros(115) + "/1" + "83", .pfxlen = 73},
        {.text = "65000:1::5::1" + spaces + "x", .message = "Invalid address component '1" + spaces + "'"},
        {.text = "65000:1::5::" + zeros(115) + "::" + ":2", .message = "Too many double colons in address"},
        {.text = zeros(128) + ":" + ":5::1", .stores = false},
        {.text = zeros(127) + "::" + "5::1", .message = "Invalid RD format: '" + zeros(127) + "'", .stores = false},
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
