// Any text as any number of bytes, and any bytes in a buffer of any size: what is printed reads
// back as the same bytes, and a small buffer holds the start of the text.
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
using Parser = int(const char *, uint8_t *, char *, size_t, uint32_t);

void check_format(const Bytes &bytes, char delimiter, char style, size_t buflen)
{
    const auto count = static_cast<uint32_t>(bytes.size());
    std::vector<char> whole(4 * bytes.size() + 1);
    const int length =
        format_delim_addr(whole.data(), whole.size(), bytes.data(), delimiter, count, style);
    const std::string text(whole.data(), static_cast<size_t>(length));
    require(text.back() == '\0' && whole[static_cast<size_t>(length)] == '\0');
    std::vector<char> buf(buflen, 'x');
    require(format_delim_addr(buf.data(), buflen, bytes.data(), delimiter, count, style) == length);
    if (buflen > 0) {
        const size_t taken = std::min(text.size(), buflen - 1);
        require(text.compare(0, taken, buf.data(), taken) == 0 && buf[taken] == '\0');
    }

    if (delimiter != '.' && delimiter != ':') return;
    Parser *const parse = style == 'x' ? parse_delim_hex_addr : parse_delim_dec_addr;
    Bytes back(bytes.size());
    require(parse(text.c_str(), back.data(), nullptr, 0, count) == 0 && back == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto count = input.ConsumeIntegralInRange<uint32_t>(0, 20);
    const auto buflen = input.ConsumeIntegralInRange<size_t>(0, 90);
    const auto delimiter = input.ConsumeBool() ? ':' : input.ConsumeIntegral<char>();
    const auto style = input.ConsumeBool() ? 'x' : input.ConsumeIntegral<char>();
    std::vector<char> error(input.ConsumeIntegralInRange<size_t>(0, 48), 'x');
    if (const auto any = input.ConsumeBytes<uint8_t>(count); !any.empty())
        check_format(any, delimiter, style, buflen);

    std::vector<char> text = input.ConsumeRemainingBytes<char>();
    text.push_back('\0');
    for (Parser *const parse : {parse_delim_dec_addr, parse_delim_hex_addr}) {
        Bytes bytes(count, 0x5a);
        const int result = parse(text.data(), bytes.data(), error.data(), error.size(), count);
        require(count == 0 ? result == -2 : result == 0 || result == -1);
        const bool has_end = error.empty() || std::count(error.begin(), error.end(), '\0') != 0;
        require(result != -1 || has_end);
        if (result == 0) check_format(bytes, delimiter, style, buflen);
    }
    return 0;
}
