// Any text with any flags, and any address in a buffer of any size: what is read prints and reads
// back as the same value, and a small buffer holds the start of the text.
#include <fuzzer/FuzzedDataProvider.h>
#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

struct Value {
    std::array<uint8_t, 6> address{};
    int seen = 2;
    uint8_t length = 0;

    bool operator==(const Value &other) const = default;
};

void check_format(const Value &value, size_t buflen)
{
    char whole[FORMAT_MAC_BUFSIZE];
    const int length =
        format_mac_addr(whole, sizeof whole, value.address.data(), value.seen, value.length);
    require(static_cast<size_t>(length) == std::strlen(whole));
    std::vector<char> buf(buflen);
    require(format_mac_addr(buf.data(), buflen, value.address.data(), value.seen, value.length) ==
            length);
    if (buflen > 0) require(std::string(whole).substr(0, buflen - 1) == buf.data());

    if (value.seen != 0 && value.length > 48) return;
    Value back;
    const uint32_t flags = value.seen != 0 ? PARSE_MAC_PREFIX_OK : 0;
    require(parse_mac_addr(whole, flags, back.address.data(), &back.seen, &back.length, nullptr,
                           0) == 0);
    require(back.address == value.address && (value.seen == 0 || back == value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto flags = input.ConsumeIntegral<uint32_t>();
    const auto buflen = input.ConsumeIntegralInRange<size_t>(0, FORMAT_MAC_BUFSIZE + 4);
    std::vector<char> error(input.ConsumeIntegralInRange<size_t>(0, 64), 'x');
    Value any;
    for (uint8_t &byte : any.address) byte = input.ConsumeIntegral<uint8_t>();
    any.length = input.ConsumeIntegral<uint8_t>();
    any.seen = input.ConsumeBool() ? 1 : 0;
    check_format(any, buflen);

    std::vector<char> text = input.ConsumeRemainingBytes<char>();
    text.push_back('\0');
    Value value;
    const int result = parse_mac_addr(text.data(), flags, value.address.data(), &value.seen,
                                      &value.length, error.data(), error.size());
    Value other;
    require(parse_mac_addr(text.data(), flags, other.address.data(), nullptr, nullptr, nullptr,
                           0) == result);
    require(other.address == value.address && (value.seen == 0 || value.seen == 1));
    if (result != 0)
        require(result >= -2 && (error.empty() || std::count(error.begin(), error.end(), '\0')));
    else
        check_format(value, buflen);
    return 0;
}
