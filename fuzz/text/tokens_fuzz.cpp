// The tokens that grammars are made of: numbers and addresses read and print as by libc, messages
// are those of snprintf, and nothing outside a buffer of any size is written.
#include <arpa/inet.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "support/host_numbers.h"
#include "text/digits.h"
#include "text/dotted_quad.h"
#include "text/error_text.h"
#include "text/hex_digits.h"
#include "text/ipv6_text.h"
#include "text/text_writer.h"

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

// What is read from a text's start is an address of libc's, and no address of libc's is missed.
void check_quad(const char *text)
{
    const char *at = text;
    uint32_t quad = 0;
    in_addr host{};
    if (!orvex::read_dotted_quad(at, quad)) {
        require(at == text && inet_pton(AF_INET, text, &host) == 0);
        return;
    }
    require(inet_pton(AF_INET, std::string(text, at).c_str(), &host) == 1);
    require(quad == ntohl(host.s_addr));
}

void check_ipv6(const char *text)
{
    const char *at = text;
    uint8_t bytes[orvex::ipv6_size];
    uint8_t host[orvex::ipv6_size];
    const bool is_whole = orvex::read_ipv6(at, bytes) && *at == '\0';
    require(is_whole == (inet_pton(AF_INET6, text, host) == 1));
    require(!is_whole || std::memcmp(bytes, host, sizeof bytes) == 0);
}

void check_ipv6_print(const uint8_t *bytes)
{
    char own[orvex::longest_ipv6_text + 1];
    char host[INET6_ADDRSTRLEN];
    require(*orvex::put_ipv6(own, bytes) == '\0');
    require(std::strcmp(own, inet_ntop(AF_INET6, bytes, host, sizeof host)) == 0);
    for (const bool dotted : {false, true}) {
        uint8_t back[orvex::ipv6_size];
        require(*orvex::put_canonical_ipv6(own, bytes, dotted) == '\0');
        require(inet_pton(AF_INET6, own, back) == 1 && std::memcmp(bytes, back, sizeof back) == 0);
    }
}

// Bytes print as two digits each, and read back with and without separators.
void check_hex_bytes(const uint8_t *bytes, char separator)
{
    constexpr uint32_t count = 6;
    char text[3 * count + 1] = {};
    char *end = text;
    for (uint32_t i = 0; i < count; ++i) {
        if (i > 0 && separator != '\0') *end++ = separator;
        end = orvex::put_hex_byte(end, bytes[i]);
    }
    uint8_t back[count];
    const char *at = text;
    require(orvex::read_hex_bytes(at, back, count) == count && at == end);
    require(std::memcmp(bytes, back, count) == 0);
}

// A heap buffer of just `size` bytes, so that the sanitizer sees each byte outside it.
void check_message(const char *text, int part, uint64_t number, size_t size)
{
    std::vector<char> own(size);
    std::vector<char> host(size);
    const auto half = static_cast<unsigned>(number);
    const int result =
        orvex::refuse({own.data(), size}, 3, "'%s' %.*s%c%d %u %lu %zu %ju%%", text, part, text,
                      '/', static_cast<int>(half), half, static_cast<unsigned long>(half),
                      static_cast<size_t>(half), static_cast<uintmax_t>(number));
    std::snprintf(host.data(), size, "'%s' %.*s%c%d %u %lu %zu %ju%%", text, part, text, '/',
                  static_cast<int>(half), half, static_cast<unsigned long>(half),
                  static_cast<size_t>(half), static_cast<uintmax_t>(number));
    require(result == 3 && (size == 0 || std::strcmp(own.data(), host.data()) == 0));
}

void check_quad_print(const uint8_t *bytes, size_t size)
{
    constexpr size_t longest = sizeof "255.255.255.255";
    const auto put = [bytes](char *at) { return orvex::put_dotted_quad(at, bytes); };
    std::vector<char> own(size, '~');
    char host[INET_ADDRSTRLEN];
    const size_t length = orvex::write_text<longest>(own.data(), size, put);
    require(length == std::strlen(inet_ntop(AF_INET, bytes, host, sizeof host)));
    const size_t written = std::min(length, size - std::min<size_t>(size, 1));
    require(std::equal(host, host + written, own.begin()));
    require(size == 0 || own[written] == '\0');
    for (size_t i = written + 1; i < size; ++i) require(own[i] == '~');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t drawn = orvex::ipv6_size + 2;
    const std::string text(reinterpret_cast<const char *>(data), size);
    require(orvex_test::all_convert_as_host(text.c_str()));
    check_quad(text.c_str());
    check_ipv6(text.c_str());
    if (size < drawn) return 0;
    const uint8_t *const bytes = data + size - drawn;
    check_ipv6_print(bytes);
    check_hex_bytes(bytes, bytes[6] % 3 == 0 ? '\0' : bytes[6] % 3 == 1 ? '.' : ':');
    uint64_t number = 0;
    std::memcpy(&number, bytes, bytes[7] % 9);
    const size_t length = std::strlen(text.c_str());
    check_message(text.c_str(), static_cast<int>(bytes[16] % (length + 1)), number, bytes[17]);
    check_quad_print(bytes, bytes[17] % 20);
    return 0;
}
