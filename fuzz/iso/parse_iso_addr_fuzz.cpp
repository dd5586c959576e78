// Any text with any flags and capacity, and any bytes in a buffer of any size: what is read prints
// and reads back as the same value, and a small buffer holds the start of the text.
#include <fuzzer/FuzzedDataProvider.h>
#include <orvex/parse.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

using Bytes = std::vector<uint8_t>;

// Returns the whole text.
std::string check_format(const Bytes &bytes, int pfxseen, uint16_t pfxlen, size_t buflen)
{
    const auto count = static_cast<uint8_t>(bytes.size());
    std::vector<char> whole(700);
    const int last =
        format_iso_addr(bytes.data(), count, pfxseen, pfxlen, whole.data(), whole.size());
    const std::string text = whole.data();
    const size_t before = text.size() - static_cast<size_t>(last);
    std::vector<char> buf(buflen);
    const size_t room = buflen > before ? std::min(text.size(), buflen) - before : 0;
    require(format_iso_addr(bytes.data(), count, pfxseen, pfxlen, buf.data(), buflen) ==
            static_cast<int>(room));
    if (buflen > 0) require(text.substr(0, buflen - 1) == buf.data());
    return text;
}

bool has_shape(const std::string &text)
{
    const auto dots = std::count(text.begin(), text.end(), '.');
    const auto slashes = std::count(text.begin(), text.end(), '/');
    const auto digits = static_cast<ptrdiff_t>(text.size()) - dots - slashes;
    return text.find_first_not_of("0123456789abcdefABCDEF./") == std::string::npos && dots >= 4 &&
           slashes <= 1 && digits >= 16;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto flags = input.ConsumeIntegral<uint32_t>();
    const auto capacity = input.ConsumeIntegral<uint8_t>();
    const auto buflen = input.ConsumeIntegralInRange<size_t>(0, 660);
    const auto any_length = input.ConsumeIntegral<uint16_t>();
    const int any_seen = input.ConsumeBool() ? 1 : 0;
    std::vector<char> error(input.ConsumeIntegralInRange<size_t>(0, 80), 'x');
    const auto any_count = input.ConsumeIntegral<uint8_t>();
    check_format(input.ConsumeBytes<uint8_t>(any_count), any_seen, any_length, buflen);

    std::vector<char> text = input.ConsumeRemainingBytes<char>();
    text.push_back('\0');
    require((parse_is_iso_addr(text.data()) != 0) == has_shape(text.data()));
    Bytes bytes(capacity, 0x5a);
    uint8_t count = capacity;
    int seen = 0;
    uint16_t length = 0;
    // Without capacity there is no buffer.
    const int result = parse_iso_addr(text.data(), flags, bytes.data(), &count, &seen, &length,
                                      error.data(), error.size());
    require(result <= 0 && result >= -2);
    require(result == 0 || error.empty() || std::count(error.begin(), error.end(), '\0') != 0);
    if (result != 0 || capacity == 0) return 0;
    require(std::all_of(bytes.begin() + count, bytes.end(), [](uint8_t byte) { return !byte; }));

    bytes.resize(count);
    const std::string printed = check_format(bytes, seen, length, buflen);
    if (seen != 0 && length == 0) return 0;
    Bytes back(20);
    uint8_t back_count = 20;
    uint16_t back_length = 0;
    require(parse_iso_addr(printed.c_str(), flags, back.data(), &back_count, nullptr, &back_length,
                           nullptr, 0) == 0);
    back.resize(back_count);
    require(back == bytes && back_length == length);
    return 0;
}
