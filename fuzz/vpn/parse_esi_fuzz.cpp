// Any text in any mode, and any ten bytes in a buffer of any size: what is read prints and reads
// back as the same value, each mode takes what a stricter one takes, and a small buffer holds the
// start of the text.
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

using Esi = std::array<uint8_t, 10>;

constexpr Esi untouched = {0x5a, 0x5a, 0x5a, 0x5a, 0x5a, 0x5a, 0x5a, 0x5a, 0x5a, 0x5a};

bool reads(const char *text, int mode, Esi &esi, std::vector<char> &error)
{
    esi = untouched;
    const int result = parse_esi(text, esi.data(), error.data(), error.size(), mode);
    require(result == 0 || (result == -1 && esi == untouched));
    require(result == 0 || error.empty() || std::count(error.begin(), error.end(), '\0') == 1);
    return result == 0;
}

void check_format(const Esi &esi, size_t buflen)
{
    char text[FORMAT_ESI_BUFSIZE];
    require(format_esi(text, sizeof text, esi.data()) == 29);
    std::vector<char> buf(buflen);
    require(format_esi(buf.data(), buflen, esi.data()) ==
            static_cast<int>(std::min<size_t>(29, buflen)));
    if (buflen > 0) require(std::string(text).substr(0, buflen - 1) == buf.data());
    Esi back;
    std::vector<char> none;
    require(reads(text, PARSE_ESI_RESERVED_OK, back, none) && back == esi);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto mode = input.ConsumeIntegral<int8_t>();
    const auto buflen = input.ConsumeIntegralInRange<size_t>(0, 32);
    std::vector<char> error(input.ConsumeIntegralInRange<size_t>(0, 100), 'x');
    Esi esi{};
    input.ConsumeData(esi.data(), esi.size());
    check_format(esi, buflen);

    std::vector<char> text = input.ConsumeRemainingBytes<char>();
    text.push_back('\0');
    if (!reads(text.data(), mode, esi, error)) return 0;
    check_format(esi, buflen);
    Esi again;
    if (mode == PARSE_ESI_USER_DEFINED)
        require(esi[0] == 0 && reads(text.data(), PARSE_ESI_ANY, again, error) && again == esi);
    require(reads(text.data(), PARSE_ESI_RESERVED_OK, again, error) && again == esi);
    return 0;
}
