#include <gtest/gtest.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace {

struct Row {
    std::string text;
    uint32_t type = 0;
    uint32_t high = 77;  // the values before the call, which a failure keeps
    uint32_t low = 77;
    std::string message = "";
};

void check(const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        uint32_t type = 77, high = 77, low = 77;
        const auto [result, message] = orvex_test::outcome_of([&](char *error, size_t size) {
            return parse_inetvpn_rd(orvex_test::Exact(row.text), &type, &high, &low, error, size);
        });
        EXPECT_EQ(message, row.message);
        EXPECT_EQ(result, row.message.empty() ? 0 : 1);
        EXPECT_TRUE(result != 0 || type == row.type) << type;
        EXPECT_EQ(high, row.high);
        EXPECT_EQ(low, row.low);
    }
}

std::string zeros(size_t count) { return std::string(count, '0'); }

}  // namespace

TEST(ParseInetvpnRd, Reads)
{
    check({
        {.text = "65000:100", .type = 0, .high = 0x0000fde8, .low = 100},
        {.text = "1:99999999999999999999999", .type = 0, .high = 0x00000001, .low = 0xffffffff},
        {.text = "1:", .type = 0, .high = 0x00000001, .low = 0},
        {.text = "10.1.1:65535", .type = 1, .high = 0x00010a01, .low = 0x0001ffff},
        {.text = "010.1.1.1:7", .type = 1, .high = 0x00010801, .low = 0x01010007},
        {.text = "1.10:3", .type = 2, .high = 0x00020001, .low = 0x000a0003},
        {.text = "1.10L:3", .type = 2, .high = 0x00020001, .low = 0x000a0003},
        {.text = "4200000000L:65535", .type = 2, .high = 0x0002fa56, .low = 0xea00ffff},
        {.text = "18446744073709551617L:0", .type = 2, .high = 0x0002ffff, .low = 0xffff0000},
        {.text = std::string(127, '0') + "1:7", .type = 0, .high = 0x00000001, .low = 0},
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
    check({
        {.text = "100", .message = "Invalid RD format: '100'"},
        {.text = zeros(129) + ".5:1", .message = "Invalid RD format: '" + zeros(129) + ".5:1'"},
        {.text = zeros(128) + ".5:1", .message = "Invalid RD format: '" + zeros(128) + ".5:1'"},
        {.text = "65536:1", .message = as + "'65536' not in range 1 to 65535"},
        {.text = "0:x", .message = as + "'0' not in range 1 to 65535"},
        {.text = ":1", .message = as + "'0' not in range 1 to 65535"},
        {.text = "0.0:65536", .message = as + "'0' not in range 1 to 4294967295"},
        {.text = "100:5:6", .message = "Invalid route-distinguisher: 100:5:6"},
        {.text = "4200000000L:65536", .message = number + "'65536' not in range 0 to 65535"},
        {.text = "x:65536", .message = number + "'65536' not in range 0 to 65535"},
        {.text = "010.1.08.1:7", .message = address + "010.1.08.1:7"},
        {.text = "L:1", .message = address + "L:1"},
        {.text = "5.L:1", .message = address + "5.L:1"},
        {.text = " 5:1", .message = address + " 5:1"},
    });
}
