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

void check_esi(const char *text)
{
    Bytes first{};
    Bytes second{};
    char buf[30];
    if (parse_esi(text, first.data(), nullptr, 0, PARSE_ESI_RESERVED_OK) != 0) return;
    format_esi(buf, sizeof buf, first.data());
    require(parse_esi(buf, second.data(), nullptr, 0, PARSE_ESI_RESERVED_OK) == 0);
    require(first == second);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    const std::string exact(text.c_str());
    check_esi(exact.c_str());
    char error[16];
    uint32_t words[3];
    uint64_t seconds = 0;
    atmvpn_address record;
    require(parse_inetvpn_rd(exact.c_str(), words, words + 1, words + 2, error,
                             size % sizeof error) >= 0);
    require(parse_atmvpn(exact.c_str(), &record, words, error, size % sizeof error) >= 0);
    require(decode_dhms(exact.c_str(), 0, UINT64_MAX, &seconds, error, sizeof error) >= 0);
    require(parse_is_atmvpn(exact.c_str()) >= 0);
    return 0;
}
