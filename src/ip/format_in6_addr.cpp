#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "old/digits.h"

namespace orvex {
namespace {

constexpr int address_bits = 128;
constexpr int group_bits = 16;

// Room for every text: at most eight groups of four digits, their colons, "/" and three digits.
constexpr size_t longest = 43;

// What lies to the right of the group that is written next.
enum class State {
    normal,            // nothing pending, and no "::" written
    one_zero_pending,  // one zero group, not written yet
    in_run,            // two or more, for a "::"
    run_closed,        // the "::" is written
};

// Each writer is given the position behind its text and answers that of its first character.

// `bits` are those still to print, this group's included: above 16, a ":" stands in front.
char *in6_put_group(char *at, unsigned value, int bits)
{
    do {
        *--at = hex_byte_texts[value & 0xf][1];
        value >>= 4;
    } while (value != 0);
    if (bits > group_bits) *--at = ':';
    return at;
}

char *in6_put_decimal(char *at, uint8_t value)
{
    const size_t length = octet_texts.plain_length[value];
    at -= length;
    std::memcpy(at, octet_texts.plain[value].data(), length);
    return at;
}

// ":1.2.3.4"
char *in6_put_ipv4(char *at, uint32_t word)
{
    for (int octet = 0; octet < 4; ++octet) {
        at = in6_put_decimal(at, static_cast<uint8_t>(word >> 8 * octet));
        *--at = octet < 3 ? '.' : ':';
    }
    return at;
}

// An IPv4-compatible address, but for :: and ::1, or an IPv4-mapped one.
bool has_ipv4_tail(const uint8_t *address)
{
    if (!std::all_of(address, address + 10, [](uint8_t byte) { return byte == 0; })) return false;
    const unsigned group5 = unsigned{address[10]} << 8 | address[11];
    const bool above_one = (address[12] | address[13] | address[14]) != 0 || address[15] > 1;
    return group5 == 0xffff || (group5 == 0 && above_one);
}

// The leading bits of an address. Bytes that the prefix does not touch count as zero.
struct Prefix {
    const uint8_t *address;
    int length;

    [[nodiscard]] unsigned byte(int index) const
    {
        return index * 8 < length ? address[index] : 0U;
    }
    [[nodiscard]] unsigned group(int index) const
    {
        return byte(2 * index) << 8 | byte(2 * index + 1);
    }
    [[nodiscard]] uint32_t last_two_groups() const { return group(6) << 16 | group(7); }
};

State first_state(int pfxlen)
{
    if (pfxlen > address_bits - group_bits) return State::normal;
    return pfxlen > address_bits - 2 * group_bits ? State::one_zero_pending : State::in_run;
}

// The text of a prefix, from right to left.
class Writer {
   public:
    Writer(char *end, int pfxlen) : at_(end), end_(end), state_(first_state(pfxlen)) {}

    void put_group(unsigned value, int bits)
    {
        if (value == 0 && state_ != State::run_closed) {
            state_ = state_ == State::normal ? State::one_zero_pending : State::in_run;
            return;
        }
        put_pending();
        at_ = in6_put_group(at_, value, bits);
    }

    void put_ipv4(uint32_t word)
    {
        at_ = in6_put_ipv4(at_, word);
        state_ = State::normal;
    }

    // Writes what is pending at the left end; answers the text's first character.
    char *close()
    {
        if (state_ == State::in_run) close_run();
        if (state_ == State::one_zero_pending) *--at_ = '0';
        return at_;
    }

   private:
    // Writes what is pending in front of a group that is not zero.
    void put_pending()
    {
        if (state_ == State::in_run) {
            close_run();
        } else if (state_ == State::one_zero_pending) {
            *--at_ = '0';
            *--at_ = ':';
            state_ = State::normal;
        }
    }

    // The ":" that leads the text already makes a "::" of one more.
    void close_run()
    {
        if (at_ == end_) *--at_ = ':';
        *--at_ = ':';
        state_ = State::run_closed;
    }

    char *at_;
    char *end_;
    State state_;
};

// Writes the text in front of `end`; answers its first character.
char *write_prefix(char *end, const uint8_t *address, int pfxlen)
{
    const Prefix prefix{address, pfxlen};
    Writer writer(end, pfxlen);
    int bits = pfxlen;
    for (int group = (pfxlen - 1) / group_bits; bits > 0; --group) {
        if (group == 7 && has_ipv4_tail(address)) {
            writer.put_ipv4(prefix.last_two_groups());
            --group;
            bits -= group_bits;
        } else {
            writer.put_group(prefix.group(group), bits);
        }
        const int partial = bits % group_bits;
        bits -= partial != 0 ? partial : group_bits;
    }
    return writer.close();
}

char *write_length(char *end, int length)
{
    std::array<char, decimal_room> digits;
    const auto size = put_decimal(digits.data(), static_cast<uint32_t>(length)) - digits.data();
    std::memcpy(end - size, digits.data(), static_cast<size_t>(size));
    end -= size + 1;
    *end = '/';
    return end;
}

char *format(const void *address, int pfxlen, bool with_length, char *buf, size_t buflen,
             bool terminate)
{
    const int length = std::clamp(pfxlen, 0, address_bits);
    char *end = buf + buflen;
    if (terminate && buflen > 0) *--end = '\0';
    std::array<char, longest> spare;
    char *const spare_end = spare.data() + spare.size();
    char *const address_end = with_length ? write_length(spare_end, length) : spare_end;
    char *const text = write_prefix(address_end, static_cast<const uint8_t *>(address), length);
    const auto size =
        std::min(static_cast<size_t>(spare_end - text), static_cast<size_t>(end - buf));
    end -= size;
    std::memcpy(end, spare_end - size, size);
    return end;
}

}  // namespace
}  // namespace orvex

char *format_in6_addr(const void *address, int pfxlen, char *buf, size_t buflen, int terminate)
{
    return orvex::format(address, pfxlen, false, buf, buflen, terminate != 0);
}

char *format_in6_prefix(const void *address, int pfxlen, char *buf, size_t buflen, int terminate)
{
    return orvex::format(address, pfxlen, true, buf, buflen, terminate != 0);
}
