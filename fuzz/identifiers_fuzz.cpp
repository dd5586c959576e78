// Reads any text as each identifier and as a duration; what is read and printed must read back to
// the same.
#include <orvex/parse.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

using Bytes = std::array<uint8_t, 32>;

void check_mac(const char *text)
{
    Bytes first{};
    Bytes second{};
    int seen = 0;
    uint8_t length = 0;
    char buf[FORMAT_MAC_BUFSIZE];
    const uint32_t flags = PARSE_MAC_PREFIX_OK;
    if (parse_mac_addr(text, flags, first.data(), &seen, &length, nullptr, 0) != 0) return;
    format_mac_addr(buf, sizeof buf, first.data(), seen, length);
    require(parse_mac_addr(buf, flags, second.data(), nullptr, nullptr, nullptr, 0) == 0);
    require(first == second);
}

void check_iso(const char *text, uint32_t flags)
{
    Bytes first{};
    Bytes second{};
    uint8_t count = 21;
    uint8_t second_count = 21;
    int seen = 0;
    uint16_t length = 0;
    char buf[128];
    if (parse_iso_addr(text, flags, first.data(), &count, &seen, &length, nullptr, 0) != 0) return;
    format_iso_addr(first.data(), count, seen, length, buf, sizeof buf);
    require(parse_iso_addr(buf, flags, second.data(), &second_count, nullptr, nullptr, nullptr,
                           0) == 0);
    require(length == 0 || first == second);
}

void check_sysid(const char *text)
{
    Bytes first{};
    Bytes second{};
    char buf[16];
    if (parse_iso_sysid(text, first.data(), 6, nullptr, 0) != 0) return;
    format_iso_sysid(first.data(), buf, sizeof buf);
    require(parse_iso_sysid(buf, second.data(), 6, nullptr, 0) == 0 && first == second);
    require(parse_is_iso_sysid(buf) == 1);
}

void check_delimited(const char *text)
{
    Bytes first{};
    Bytes second{};
    char buf[65];
    if (parse_delim_dec_addr(text, first.data(), nullptr, 0, 16) == 0) {
        format_delim_addr(buf, sizeof buf, first.data(), ':', 16, 'd');
        require(parse_delim_dec_addr(buf, second.data(), nullptr, 0, 16) == 0 && first == second);
    }
    if (parse_delim_hex_addr(text, first.data(), nullptr, 0, 4) == 0) {
        format_delim_addr(buf, sizeof buf, first.data(), '.', 4, 'x');
        require(parse_delim_hex_addr(buf, second.data(), nullptr, 0, 4) == 0);
        require(std::memcmp(first.data(), second.data(), 4) == 0);
    }
}

void check_canonical(const std::string &text)
{
    char buf[256] = {};
    if (text.size() >= sizeof buf) return;
    std::memcpy(buf, text.data(), text.size());
    if (format_rfc5952(buf) != 1) return;
    const std::string once = buf;
    require(format_rfc5952(buf) == 1 && once == buf);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    const std::string exact(text.c_str());
    check_mac(exact.c_str());
    check_iso(exact.c_str(), 0);
    check_iso(exact.c_str(), PARSE_ISO_NSAP);
    check_sysid(exact.c_str());
    check_delimited(exact.c_str());
    check_canonical(exact);
    char error[16];
    uint64_t seconds = 0;
    require(decode_dhms(exact.c_str(), 0, UINT64_MAX, &seconds, error, sizeof error) >= 0);
    require(parse_is_iso_addr(exact.c_str()) >= 0);
    return 0;
}
