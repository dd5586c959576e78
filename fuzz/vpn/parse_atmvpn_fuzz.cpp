// Any text as a route distinguisher and as an ATM VPN address: what is read prints and reads back
// as the same value, and the characters after the first 129 change nothing.
#include <fuzzer/FuzzedDataProvider.h>
#include <orvex/parse.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

// A failure either leaves the buffer alone or terminates its message.
bool is_message(const std::vector<char> &error)
{
    return std::count(error.begin(), error.end(), '\0') == 1 ||
           std::count(error.begin(), error.end(), 'x') == static_cast<ptrdiff_t>(error.size());
}

struct Rd {
    int result = 0;
    uint32_t type = 77;
    uint32_t high = 77;
    uint32_t low = 77;

    explicit Rd(const std::vector<char> &text, size_t errlen = 0)
    {
        std::vector<char> error(errlen, 'x');
        result = parse_inetvpn_rd(text.data(), &type, &high, &low, error.data(), error.size());
        require(result == 0 || (result == 1 && high == 77 && low == 77 && is_message(error)));
    }

    bool operator==(const Rd &) const = default;
};

std::vector<char> terminated(const std::string &text)
{
    return {text.c_str(), text.c_str() + text.size() + 1};
}

std::string format_rd(uint32_t high, uint32_t low)
{
    const uint32_t administrator = high << 16 | low >> 16;
    const std::string number = ':' + std::to_string(low & 0xffff);
    switch (high >> 16) {
        case 0: return std::to_string(high) + ':' + std::to_string(low);
        case 1:
            return std::to_string(administrator >> 24) + '.' +
                   std::to_string(administrator >> 16 & 255) + '.' +
                   std::to_string(administrator >> 8 & 255) + '.' +
                   std::to_string(administrator & 255) + number;
        default: return std::to_string(administrator) + 'L' + number;
    }
}

struct Atmvpn {
    int result = 0;
    uint32_t pfxlen = 777;
    atmvpn_address record;

    explicit Atmvpn(const std::vector<char> &text, size_t errlen = 0)
    {
        std::memset(&record, 0x5a, sizeof record);
        std::vector<char> error(errlen, 'x');
        result = parse_atmvpn(text.data(), &record, &pfxlen, error.data(), error.size());
        require(record.reserved == 0x5a5a5a5a);
        require(result == 0 || (result == 1 && pfxlen == 777 && is_message(error)));
    }

    bool operator==(const Atmvpn &other) const
    {
        return result == other.result && pfxlen == other.pfxlen &&
               std::memcmp(&record, &other.record, sizeof record) == 0;
    }
};

std::string format_atmvpn(const Atmvpn &atmvpn)
{
    const atmvpn_address &record = atmvpn.record;
    std::string text = format_rd(record.rd_high, record.rd_low);
    text += "::" + std::to_string(record.type) + "::";
    for (const uint8_t byte : record.address) text += std::to_string(byte) + ':';
    return text + '/' + std::to_string(atmvpn.pfxlen - 72);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto errlen = input.ConsumeIntegralInRange<size_t>(0, 200);
    const std::string any = input.ConsumeRemainingBytesAsString();
    const std::string text = any.c_str();
    const std::string start = text.substr(0, 129);

    const Rd rd(terminated(text), errlen);
    require(Rd(terminated(start), errlen) == rd);
    if (rd.result == 0) require(Rd(terminated(format_rd(rd.high, rd.low))) == rd);

    const Atmvpn atmvpn(terminated(text), errlen);
    const bool has_shape = parse_is_atmvpn(text.c_str()) != 0;
    require(has_shape || atmvpn.result != 0);
    if (has_shape && parse_is_atmvpn(start.c_str()) != 0)
        require(Atmvpn(terminated(start), errlen) == atmvpn);
    if (atmvpn.result == 0) require(Atmvpn(terminated(format_atmvpn(atmvpn))) == atmvpn);
    return 0;
}
