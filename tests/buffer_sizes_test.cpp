// The sizes that the header names hold the longest texts, and are no larger.
#include <gtest/gtest.h>
#include <orvex/parse.h>

#include <array>
#include <cstring>
#include <functional>
#include <string>

#include "support/profile.h"

TEST(BufferSizes, ALongestTextFillsItsBuffer)
{
    std::array<uint8_t, 20> ones;
    ones.fill(0xff);
    const uint8_t *const bytes = ones.data();
    struct Row {
        const char *name;
        size_t size;
        std::function<void(char *, size_t)> write;
    };
    const Row rows[] = {
        {"FORMAT_IPADDR_BUFSIZE", FORMAT_IPADDR_BUFSIZE,
         [bytes](char *buf, size_t size) { format_ipaddr(PARSE_AF_INET6, bytes, 1, 0, 0, 1, bytes, buf, size); }},
        {"FORMAT_IN6_BUFSIZE", FORMAT_IN6_BUFSIZE,
         [bytes](char *buf, size_t size) {
             std::string room(size, '\0');
             std::strcpy(buf, format_in6_prefix(bytes, 128, room.data(), size, 1));
         }},
        {"FORMAT_MAC_BUFSIZE", FORMAT_MAC_BUFSIZE,
         [bytes](char *buf, size_t size) { format_mac_addr(buf, size, bytes, 1, 255); }},
        {"FORMAT_DELIM_BUFSIZE", FORMAT_DELIM_BUFSIZE(7) - 1,  // without the NUL
         [bytes](char *buf, size_t size) { format_delim_addr(buf, size, bytes, '.', 7, 'd'); }},
        {"FORMAT_ISO_BUFSIZE", FORMAT_ISO_BUFSIZE,
         [bytes](char *buf, size_t size) { format_iso_addr(bytes, 20, 1, 65535, buf, size); }},
        {"FORMAT_ISO_SYSID_BUFSIZE", FORMAT_ISO_SYSID_BUFSIZE,
         [bytes](char *buf, size_t size) { format_iso_sysid(bytes, buf, size); }},
        {"FORMAT_ESI_BUFSIZE", FORMAT_ESI_BUFSIZE, [bytes](char *buf, size_t size) { format_esi(buf, size, bytes); }},
        {"PARSE_CHASSIS_BUFSIZE", PARSE_CHASSIS_BUFSIZE,
         [](char *buf, size_t size) {
             const std::string text = std::string(128, 'c') + ":mgmt-0";
             const char *name = text.c_str();
             EXPECT_EQ(parse_4_level_chassis(&name, buf, size, nullptr, 0, nullptr), 0);
         }},
        {"IFALIAS_NAME_BUFSIZE", IFALIAS_NAME_BUFSIZE,
         [](char *buf, size_t size) {
             std::string map = std::string(80, 'i') + " uplink third\n";
             FILE *const stream = fmemopen(map.data(), map.size(), "r");
             EXPECT_EQ(ifalias_to_ifl("uplink", buf, size, 0, stream), 1);
             fclose(stream);
         }},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        std::array<char, 256> buf{};
        row.write(buf.data(), buf.size());
        EXPECT_EQ(std::strlen(buf.data()) + 1, row.size);
    }
}

// Makes a text of 80 characters of one: repeats the character before its "~".
static std::string lengthened(std::string text)
{
    const size_t at = text.find('~');
    return text.replace(at, 1, std::string(81 - text.size(), text[at - 1]));
}

TEST(BufferSizes, MessagesAboutTextsOf80CharactersFit)
{
    orvex_test::Profile profile;
    profile.is_multi_chassis_root = 1;
    profile.install();
    std::array<char, 1024> error;
    const auto length_of = [&error](int result) {
        EXPECT_NE(result, 0);
        return std::strlen(error.data());
    };
    size_t longest = 0;
    for (const char *const text : {"::/x~", "::/9~:x", "x~.0", "10.0.0.0/x~", "4294967294~"}) {
        uint32_t af = 0;
        const int result = parse_ipaddr(&af, lengthened(text).c_str(), PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK,
                                        nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0, error.data(), error.size());
        longest = std::max(longest, length_of(result));
    }
    for (const char *const text : {"e~", "eth-x~", "eth-[99999 ~]", "eth-[0-2147483648 ~]", "c.~:eth-0/0/0"}) {
        parsed_interface name;
        for (const uint32_t flags : {0U, PARSE_IF_RANGES, PARSE_IF_RANGES | PARSE_IF_EXPANSION_SLOT}) {
            const int result = parse_interface(lengthened(text).c_str(), flags, 0, &name, error.data(), error.size());
            longest = std::max(longest, length_of(result));
        }
    }
    EXPECT_LT(longest, size_t{PARSE_ERROR_BUFSIZE});
    EXPECT_GT(longest, size_t{200});
}
