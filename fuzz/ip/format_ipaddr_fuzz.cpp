// Formats any address in every form, into buffers on the heap of exactly the size that the input
// says: what fits is the whole text and reads back to the same value, and IPv6 text is libc's.
#include <arpa/inet.h>
#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

using Address = std::array<uint8_t, 16>;

struct Input {
    Address address;
    Address mask;
    uint32_t pfxlen;
    bool is_ipv4;
    uint8_t full_form;
    bool pfxseen;
    bool maskseen;
    bool terminate;
    size_t size;
};

constexpr size_t input_size = 16 + 16 + 4 + 3;
constexpr char untouched = '\x5a';

void require(bool holds)
{
    if (!holds) std::abort();
}

Input take_input(const uint8_t *data)
{
    Input input{};
    std::memcpy(input.address.data(), data, 16);
    std::memcpy(input.mask.data(), data + 16, 16);
    std::memcpy(&input.pfxlen, data + 32, 4);
    input.is_ipv4 = (data[36] & 1) != 0;
    input.pfxseen = (data[36] & 2) != 0;
    input.maskseen = (data[36] & 4) != 0;
    input.terminate = (data[36] & 8) != 0;
    input.full_form = data[37] % 3;
    input.size = data[38] % 100;
    return input;
}

Address parsed_by_libc(const char *text)
{
    Address address;
    require(inet_pton(AF_INET6, text, address.data()) == 1);
    return address;
}

std::string printed_by_libc(const Address &address)
{
    std::array<char, INET6_ADDRSTRLEN> text;
    require(inet_ntop(AF_INET6, address.data(), text.data(), text.size()) != nullptr);
    return text.data();
}

// Memory of exactly its size, never null.
class Exact {
   public:
    explicit Exact(size_t size) : bytes_(new char[size]), size_(size)
    {
        std::fill(begin(), end(), untouched);
    }
    [[nodiscard]] char *begin() const { return bytes_.get(); }
    [[nodiscard]] char *end() const { return begin() + size_; }

   private:
    std::unique_ptr<char[]> bytes_;
    size_t size_;
};

// The whole text of a formatter, after it was held against what a buffer of `size` bytes gets.
template <typename Format>
std::string formatted(size_t size, bool zero_rest, const Format &format)
{
    std::vector<char> large(200);
    const size_t length = format(large.data(), large.size());
    std::string whole = large.data();
    require(length == whole.size() && length > 0);

    const Exact exact(size);
    errno = 77;
    const size_t result = format(exact.begin(), size);
    const bool fits = size > length;
    require(result == (fits ? length : 0) && errno == (fits ? 77 : ENOSPC));
    if (size == 0) return whole;
    char *const end = std::find(exact.begin(), exact.end(), '\0');
    require(end != exact.end() && std::equal(exact.begin(), end, whole.begin()));
    require(!fits || end == exact.begin() + length);
    const char rest = zero_rest ? '\0' : untouched;
    require(std::count(end + 1, exact.end(), rest) == exact.end() - end - 1);
    return whole;
}

// Whether parse_ipaddr reads a text as this value.
bool reads_back(const Input &input, const std::string &text)
{
    const size_t count = input.is_ipv4 ? 4 : 16;
    const bool has_mask = input.maskseen && !input.pfxseen;
    uint32_t family = input.is_ipv4 ? PARSE_AF_INET : PARSE_AF_INET6;
    Address address{};
    Address mask{};
    int pfxseen = 0;
    int maskseen = 0;
    uint32_t pfxlen = 0;
    const uint32_t flags = PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK;
    return parse_ipaddr(&family, text.c_str(), flags, address.data(), 16, &pfxseen, &pfxlen,
                        &maskseen, mask.data(), 16, nullptr, 0) == 0 &&
           std::memcmp(address.data(), input.address.data(), count) == 0 &&
           pfxseen == int{input.pfxseen} && (!input.pfxseen || pfxlen == input.pfxlen) &&
           maskseen == int{has_mask} &&
           (!has_mask || std::memcmp(mask.data(), input.mask.data(), count) == 0);
}

void check_value(Input input)
{
    const int family = input.is_ipv4 ? PARSE_AF_INET : PARSE_AF_INET6;
    const auto format = [&](char *buf, size_t buflen) {
        return format_ipaddr(family, input.address.data(), input.full_form, input.pfxseen,
                             input.pfxlen, input.maskseen, input.mask.data(), buf, buflen);
    };
    const std::string text = formatted(input.size, input.full_form != 0, format);
    if (text.rfind("any-", 0) == 0) return;
    if (input.is_ipv4) input.pfxlen &= 0xff;
    const bool has_suffix = input.pfxseen || input.maskseen;
    // What follows a padded IPv4 address would be read as octal.
    if (input.is_ipv4 && input.full_form != 0 && has_suffix) return;
    const uint32_t bits = input.is_ipv4 ? 32 : 128;
    if (!input.pfxseen || input.pfxlen <= bits) require(reads_back(input, text));
    if (input.is_ipv4) return;

    const std::string address = text.substr(0, text.find('/'));
    require(parsed_by_libc(address.c_str()) == input.address);
    require(input.full_form != 0 || address == printed_by_libc(input.address));
}

// The leading bits of an address in memory of its exact size.
void check_partial(const Input &input)
{
    const uint32_t length = input.pfxlen % 129;
    const std::vector<uint8_t> prefix(input.address.begin(),
                                      input.address.begin() + (length + 7) / 8);
    Address expected{};
    std::copy(prefix.begin(), prefix.end(), expected.begin());
    if (length % 8 != 0) expected[length / 8] &= static_cast<uint8_t>(0xff00U >> length % 8);
    const std::string text = formatted(input.size, false, [&](char *buf, size_t buflen) {
        return format_ipv6addr_partial(prefix.data(), length, input.pfxseen, buf, buflen);
    });
    require(text == printed_by_libc(expected) +
                        (input.pfxseen ? '/' + std::to_string(length) : std::string()));
}

// A text at the right end of its buffer.
void check_right_aligned(Input input)
{
    input.pfxlen %= 129;
    const int length = static_cast<int>(input.pfxlen);
    const auto format = input.pfxseen ? format_in6_prefix : format_in6_addr;
    std::array<char, FORMAT_IN6_BUFSIZE> large;
    const std::string whole = format(input.address.data(), length, large.data(), large.size(), 1);

    const Exact exact(input.size);
    char *const end = exact.end() - (input.terminate && input.size > 0 ? 1 : 0);
    char *const text =
        format(input.address.data(), length, exact.begin(), input.size, input.terminate);
    const auto shown = std::min<ptrdiff_t>(std::ssize(whole), end - exact.begin());
    require(text == end - shown && std::equal(text, end, whole.end() - shown));
    require(end == exact.end() || *end == '\0');
    require(std::count(exact.begin(), text, untouched) == text - exact.begin());

    std::fill(input.address.begin() + (length + 7) / 8, input.address.end(), uint8_t{0});
    input.is_ipv4 = false;
    input.maskseen = false;
    require(reads_back(input, whole));
}

// Any text as an IPv6 address.
void check_canonical(const std::string &text)
{
    constexpr size_t cleared = 47;
    std::vector<char> exact(std::max(cleared, text.size() + 1), untouched);
    std::copy(text.c_str(), text.c_str() + text.size() + 1, exact.begin());
    const std::vector<char> before = exact;
    Address address;
    const int accepted = inet_pton(AF_INET6, text.c_str(), address.data());
    require(format_rfc5952(exact.data()) == accepted);
    if (accepted == 0) {
        require(exact == before);
        return;
    }
    const std::string once = exact.data();
    require(parsed_by_libc(once.c_str()) == address);
    const bool dotted = text.find('.') != std::string::npos;
    const std::string expected = printed_by_libc(address);
    require((once.find('.') != std::string::npos) == dotted);
    require(dotted || expected.find('.') != std::string::npos || once == expected);
    require(std::count(exact.begin(), exact.begin() + cleared, '\0') ==
            static_cast<ptrdiff_t>(cleared - once.size()));
    require(format_rfc5952(exact.data()) == 1 && once == exact.data());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    check_canonical(std::string(data, data + size).c_str());
    if (size < input_size) return 0;
    const Input input = take_input(data);
    check_value(input);
    check_partial(input);
    check_right_aligned(input);
    check_canonical(printed_by_libc(input.address));
    return 0;
}
