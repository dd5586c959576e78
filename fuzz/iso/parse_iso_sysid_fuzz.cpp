// Any text with any size of the output, in a buffer of any size: what is read prints and reads back
// as the same value, and what has the shape of a system identifier is one.
#include <fuzzer/FuzzedDataProvider.h>
#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

using Sysid = std::array<uint8_t, 6>;

void check_format(const Sysid &sysid, size_t buflen)
{
    char whole[sizeof "xxxx.xxxx.xxxx"];
    require(format_iso_sysid(sysid.data(), whole, sizeof whole) == 2);
    std::vector<char> buf(buflen);
    const int room = std::clamp(static_cast<int>(buflen) - 12, 0, 2);
    require(format_iso_sysid(sysid.data(), buf.data(), buflen) == room);
    if (buflen > 0) require(std::string(whole).substr(0, buflen - 1) == buf.data());

    Sysid back{};
    const int expected = sysid == Sysid{} ? -2 : 0;
    require(parse_iso_sysid(whole, back.data(), sizeof back, nullptr, 0) == expected);
    require(back == sysid && parse_is_iso_sysid(whole) == 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto sysid_size = input.ConsumeIntegralInRange<int>(-2, 8);
    const auto buflen = input.ConsumeIntegralInRange<size_t>(0, 20);
    std::vector<char> error(input.ConsumeIntegralInRange<size_t>(0, 60), 'x');
    Sysid any;
    for (uint8_t &byte : any) byte = input.ConsumeIntegral<uint8_t>();
    check_format(any, buflen);

    std::vector<char> text = input.ConsumeRemainingBytes<char>();
    text.push_back('\0');
    Sysid sysid{};
    const int result =
        parse_iso_sysid(text.data(), sysid.data(), sysid_size, error.data(), error.size());
    require(parse_iso_sysid(text.data(), nullptr, sysid_size, nullptr, 0) == result);
    require(result == 0 || error.empty() || std::count(error.begin(), error.end(), '\0') != 0);
    const bool is_small = sysid_size > 0 && sysid_size < 6;
    if (parse_is_iso_sysid(text.data()) != 0) require(is_small ? result == -1 : result != -1);
    if (result == 0) check_format(sysid, buflen);
    return 0;
}
