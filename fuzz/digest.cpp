// Calls every function with texts and values from a fixed seed, and compares a digest of each
// family's results, errno, outputs and messages with the accepted one. Every host, compiler and
// build must come to the same digests: after the first texts, which slow builds stop at, and after
// all. usage: digest FILE [--short | --accept]
#include <orvex/parse.h>
#include <orvex/platform.h>
#include <orvex/stand_in.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "interface/slots.h"

namespace {

constexpr int texts_per_family = 200000;
constexpr int first_texts = 10000;

// splitmix64
class Random {
   public:
    explicit Random(uint64_t seed) : state_(seed) {}

    uint64_t word()
    {
        uint64_t bits = state_ += 0x9e3779b97f4a7c15;
        bits = (bits ^ bits >> 30) * 0xbf58476d1ce4e5b9;
        bits = (bits ^ bits >> 27) * 0x94d049bb133111eb;
        return bits ^ bits >> 31;
    }
    uint32_t bits() { return static_cast<uint32_t>(word() >> 32); }
    uint32_t below(size_t bound) { return static_cast<uint32_t>(word() % bound); }

   private:
    uint64_t state_;
};

// FNV-1a over what the calls give. Numbers count by their value, on every host alike.
class Digest {
   public:
    void add_bytes(const void *bytes, size_t count)
    {
        for (size_t i = 0; i < count; ++i) add_byte(static_cast<const uint8_t *>(bytes)[i]);
    }
    void add(uint64_t number)
    {
        for (int byte = 0; byte < 8; ++byte) add_byte(static_cast<uint8_t>(number >> 8 * byte));
    }
    [[nodiscard]] uint64_t value() const { return value_; }

   private:
    void add_byte(uint8_t byte) { value_ = (value_ ^ byte) * 0x100000001b3; }

    uint64_t value_ = 0xcbf29ce484222325;
};

// A call: what it draws, and where its outputs go.
struct Call {
    Random &random;
    Digest &digest;
    const std::string &text;

    std::array<uint8_t, 64> bytes{};
    std::array<char, 400> message{};
    std::array<char, 120> buffer{};

    // Sizes of the message's and a formatter's buffer, now and then too small.
    size_t errlen = 0;
    size_t buflen = 0;

    void draw_sizes()
    {
        errlen = random.below(8) == 0 ? random.below(40) : message.size();
        buflen = random.below(3) == 0 ? random.below(60) : buffer.size();
    }

    void add_result(int64_t result)
    {
        digest.add(static_cast<uint64_t>(result));
        digest.add(static_cast<uint64_t>(errno));
        digest.add_bytes(message.data(), message.size());
        digest.add_bytes(bytes.data(), bytes.size());
        errno = 0;
    }
    void add_text(int64_t result)
    {
        add_result(result);
        digest.add_bytes(buffer.data(), buffer.size());
    }
    void add_right_end(const char *start)
    {
        digest.add(static_cast<uint64_t>(start - buffer.data()));
        add_text(0);
    }
    void draw_bytes()
    {
        for (uint8_t &byte : bytes)
            byte = random.below(3) == 0 ? uint8_t{0} : static_cast<uint8_t>(random.bits());
    }
};

void call_numbers(Call &call)
{
    constexpr std::array<int32_t, 6> limits = {0, 1, 10, 4096, INT32_MAX, -1};
    const char *const text = call.text.c_str();
    int32_t value = 7;
    int64_t quad = 7;
    call.add_result(parse_integer(text, &value));
    call.digest.add(static_cast<uint32_t>(value));
    call.add_result(parse_quad(text, &quad));
    call.digest.add(static_cast<uint64_t>(quad));
    call.add_result(parse_number(text, &value, limits[call.random.below(limits.size())]));
    call.digest.add(static_cast<uint32_t>(value));
}

void call_ip_parser(Call &call)
{
    constexpr std::array<uint32_t, 7> families = {0, 0, 2, 28, 119, 141, 5};
    uint32_t af = families[call.random.below(families.size())];
    // Each flag in a quarter of the calls; the words of ANY_OK have the host's byte order.
    const uint32_t flags = call.random.bits() & (call.random.bits() | 1) & ~PARSE_IPADDR_ANY_OK;
    const size_t size = call.random.below(16) == 0 ? call.random.below(17) : 16;
    int pfxseen = 7;
    int maskseen = 7;
    uint32_t pfxlen = 7;
    call.add_result(parse_ipaddr(&af, call.text.c_str(), flags, call.bytes.data(), size, &pfxseen,
                                 &pfxlen, &maskseen, call.bytes.data() + 16, size,
                                 call.message.data(), call.errlen));
    for (const uint32_t number :
         {af, pfxlen, static_cast<uint32_t>(pfxseen), static_cast<uint32_t>(maskseen)})
        call.digest.add(number);
    call.digest.add(static_cast<uint64_t>(parse_ipaddr_is_unicast(28, call.bytes.data())));
    call.digest.add(static_cast<uint64_t>(ipv6_address_type(call.bytes.data())));
    call.text.copy(call.buffer.data(), 46);
    call.add_text(format_rfc5952(call.buffer.data()));
}

void call_ip_formatters(Call &call)
{
    call.draw_bytes();
    const uint8_t *const address = call.bytes.data();
    // The byte order of the host decides which masks are keywords.
    const uint8_t *const mask = address + 17;
    call.bytes[17] = call.bytes[18] = 0xff;
    const uint32_t draw = call.random.bits();
    const auto full = static_cast<uint8_t>(draw >> 30 & 1);
    const int pfxseen = draw >> 31 & 1;
    const uint32_t pfxlen = draw % 140;
    char *const buf = call.buffer.data();
    call.add_text(static_cast<int64_t>(format_ipaddr(draw & 2 ? 2 : 28, address, full, pfxseen,
                                                     pfxlen, 1, mask, buf, call.buflen)));
    call.add_text(static_cast<int64_t>(
        format_ipv6addr_partial(address, pfxlen, static_cast<uint8_t>(pfxseen), buf, call.buflen)));
    const int length = static_cast<int>(pfxlen) - 4;
    call.add_right_end(format_in6_addr(address, length, buf, call.buflen, pfxseen));
    call.add_right_end(format_in6_prefix(address, length, buf, call.buflen, pfxseen));
}

void install_platform(Random &random)
{
    constexpr std::array<uint16_t, 6> products = {0, 52, 84, 88, 169, 300};
    orvex_platform_profile profile = *orvex_platform_default_profile();
    profile.product_id = products[random.below(products.size())];
    profile.running_in_container = random.below(20) == 0;
    profile.is_l2ng_product.value = random.below(2) != 0;
    profile.chassis_kind = static_cast<orvex_chassis_kind>(random.below(3));
    profile.multi_chassis_size = random.below(5);
    profile.is_multi_chassis_root = random.below(2) != 0;
    profile.has_wide_vtnet_units = random.below(2) != 0;
    profile.uses_global_slots_a = random.below(2) != 0;
    profile.has_virtual_fpcs = random.below(3) == 0;
    profile.min_virtual_fpc_slot = 1000;
    profile.max_virtual_fpc_slot = 1099;
    orvex_platform_install(&profile);
    parse_pf_attrib = {0, 1, 0};
    orvex::multichassis_naming = -1;
}

void call_names(Call &call)
{
    install_platform(call.random);
    const char *text = call.text.c_str();
    parsed_interface record{};
    const uint32_t flags = call.random.bits() & call.random.bits() & ~PARSE_IF_AFTER_SEP;
    const uint32_t mask = call.random.below(4) == 0 ? call.random.bits() : 0;
    call.add_result(parse_interface(text, flags, mask, &record, call.message.data(), call.errlen));
    call.digest.add_bytes(record.type_name, sizeof record.type_name);
    call.digest.add_bytes(record.direction, sizeof record.direction);
    for (const int32_t number : {record.fpc, record.pic, record.port, record.channels[0],
                                 record.channels[1], record.channel_count, record.unit})
        call.digest.add(static_cast<uint32_t>(number));
    size_t length = 7;
    call.add_text(parse_4_level_chassis(&text, call.buffer.data(), call.buflen, call.message.data(),
                                        call.errlen, &length));
    call.digest.add(length);
    call.digest.add(static_cast<uint64_t>(text - call.text.c_str()));
    call.add_result(is_interface_alias(text));
    call.add_result(
        get_fpc_picslots_byname(call.text.c_str(), interface_info_byname("eth", strlen("eth"))));
}

void call_link(Call &call)
{
    const char *const text = call.text.c_str();
    const uint32_t draw = call.random.bits();
    int pfxseen = 7;
    uint8_t pfxlen = 7;
    call.add_result(parse_mac_addr(text, draw & 7, call.bytes.data(), &pfxseen, &pfxlen,
                                   call.message.data(), call.errlen));
    call.digest.add(static_cast<uint64_t>(pfxseen) << 8 | pfxlen);
    char *const buf = call.buffer.data();
    call.add_text(format_mac_addr(buf, call.buflen, call.bytes.data(), draw >> 30 & 1, pfxlen));
    const uint32_t count = draw >> 3 & 15;
    const auto parse = draw & 1 ? parse_delim_dec_addr : parse_delim_hex_addr;
    call.add_result(parse(text, call.bytes.data(), call.message.data(), call.errlen, count));
    call.draw_bytes();
    call.add_text(
        format_delim_addr(buf, call.buflen, call.bytes.data(), '-', count, draw & 256 ? 'x' : 'd'));
}

void call_iso(Call &call)
{
    const char *const text = call.text.c_str();
    const uint32_t draw = call.random.bits();
    auto count = static_cast<uint8_t>(draw % 24);
    int pfxseen = 7;
    uint16_t pfxlen = 7;
    call.add_result(parse_is_iso_addr(text) << 1 | parse_is_iso_sysid(text));
    call.add_result(parse_iso_addr(text, draw >> 31, call.bytes.data(), &count, &pfxseen, &pfxlen,
                                   call.message.data(), call.errlen));
    call.digest.add(static_cast<uint64_t>(pfxseen) << 32 | uint64_t{pfxlen} << 8 | count);
    call.add_result(parse_iso_sysid(text, call.bytes.data(), static_cast<int>(draw >> 8 & 7),
                                    call.message.data(), call.errlen));
    call.draw_bytes();
    char *const buf = call.buffer.data();
    call.add_text(
        format_iso_addr(call.bytes.data(), count, draw >> 30 & 1, pfxlen & 0xff, buf, call.buflen));
    call.add_text(format_iso_sysid(call.bytes.data(), buf, call.buflen));
}

void call_vpn(Call &call)
{
    const char *const text = call.text.c_str();
    uint32_t type = 7;
    uint32_t high = 7;
    uint32_t low = 7;
    call.add_result(parse_inetvpn_rd(text, &type, &high, &low, call.message.data(), call.errlen));
    for (const uint32_t number : {type, high, low}) call.digest.add(number);
    atmvpn_address record{};
    uint32_t pfxlen = 7;
    call.add_result(parse_is_atmvpn(text));
    call.add_result(parse_atmvpn(text, &record, &pfxlen, call.message.data(), call.errlen));
    for (const uint32_t number : {record.rd_high, record.rd_low, uint32_t{record.type}, pfxlen})
        call.digest.add(number);
    call.digest.add_bytes(record.address, sizeof record.address);
    call.add_result(parse_esi(text, call.bytes.data(), call.message.data(), call.errlen,
                              static_cast<int>(call.random.below(4))));
    call.add_text(format_esi(call.buffer.data(), call.buflen, call.bytes.data()));
}

void call_durations(Call &call)
{
    uint64_t seconds = 7;
    const uint64_t max = call.random.below(2) == 0 ? UINT64_MAX : 86400;
    call.add_result(decode_dhms(call.text.c_str(), call.random.below(60), max, &seconds,
                                call.message.data(), call.errlen));
    call.digest.add(seconds);
}

struct Family {
    const char *name;
    void (*call)(Call &call);
    const char *alphabet;
    std::vector<std::string> examples;
};

const std::vector<Family> families = {
    {"numbers",
     call_numbers,
     "0179-+xXa ",
     {"0", "2147483648", "-9223372036854775808", "0x7fffffff", "017", "+5 "}},
    {"ip_parser",
     call_ip_parser,
     "0129.:/xf-",
     {"10.0.0.1", "192.168.1.0/24", "255.255.255.255/255.0.0.0", "0xffffffff", "167772161", "10.1",
      "default", "all", "2001:db8::1/64", "::ffff:1.2.3.4", "fe80::1/ffff::", "1:2:3:4:5:6:7:8/128",
      "::"}},
    {"ip_formatters", call_ip_formatters, "0", {"0"}},
    {"names",
     call_names,
     "0129-/:.,[]*?etxl",
     {"eth-1/2/0:3.100", "ser-0/0/1:2", "ae12.4095", "irb.10", "lo0.0", "eth-1/2/3/4",
      "lcc0:eth-0/0/0", "node0:mgmt-0", "eth-[0-3]/0/[1,2]", "at-0/0/0.32767", "vlan", "eth-*/?/0",
      "eth-0/0/0-rx", "uplink-core", "all", "eth-1050/1/0"}},
    {"link",
     call_link,
     "019afg:./-",
     {"00:1b:2c:3d:4e:5f", "0:1:2:3:4:5/48", "001b.2c3d.4e5f", "10.1.2.3", "1..300", "ff:0a:1"}},
    {"iso",
     call_iso,
     "049af./x ",
     {"49.0001.1921.6800.1001.00", "47.0005.80ff.f800.0000/88", "1921.6800.1001", "0x1.2.3",
      "49.0001/24"}},
    {"vpn",
     call_vpn,
     "019:.L/af",
     {"65000:100", "10.1.1.1:7", "1.10:1", "4200000000L:1", "00:11:22:33:44:55:66:77:88:99",
      "00:11::99", "65000:1::5::10.1.2.3/32", "1:1::255::47:0x5:010::"}},
    {"durations",
     call_durations,
     "0159dhmsw: ftn",
     {"90", "1d2h30m", "1:30", "23:59:59", "2ftn 3cftn", "1mftn", "10000uftn",
      "18446744073709551615s"}},
};

// An example with up to four changes.
std::string draw_text(Random &random, const Family &family)
{
    const auto example = [&] { return family.examples[random.below(family.examples.size())]; };
    std::string text = example();
    for (uint32_t changes = random.below(5); changes > 0; --changes) {
        const size_t at = random.below(text.size() + 1);
        const char character = family.alphabet[random.below(std::strlen(family.alphabet))];
        switch (random.below(5)) {
            case 0: text.insert(at, 1, character); break;
            case 1: text.erase(at, 1 + random.below(3)); break;
            case 2: text = text.substr(0, at) + example(); break;
            case 3: text.insert(at, text.substr(at / 2, 1 + random.below(6))); break;
            default:
                if (at < text.size()) text[at] = character;
        }
    }
    return text;
}

using Digests = std::array<std::string, 2>;  // of the first texts, and of all

std::string hexadecimal(uint64_t number)
{
    std::array<char, 17> text;
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(number));
    return text.data();
}

Digests digests_of(const Family &family, int texts)
{
    Random random(20);
    Digest digest;
    Digests digests;
    errno = 0;
    for (int i = 0; i < texts; ++i) {
        if (i == first_texts) digests[0] = hexadecimal(digest.value());
        const std::string text = draw_text(random, family);
        Call call{.random = random, .digest = digest, .text = text};
        call.draw_sizes();
        family.call(call);
    }
    digests[texts == first_texts ? 0 : 1] = hexadecimal(digest.value());
    return digests;
}

}  // namespace

int main(int argc, char **argv)
{
    if (argc < 2) return 2;
    const std::string option = argc > 2 ? argv[2] : "";
    const bool is_short = option == "--short";
    orvex_platform_set_log_sink([](int, const char *, void *) {}, nullptr);
    std::map<std::string, Digests> accepted;
    std::ifstream file(argv[1]);
    std::string name;
    for (Digests digests; file >> name >> digests[0] >> digests[1];) accepted[name] = digests;
    std::string lines;
    int status = 0;
    for (const Family &family : families) {
        Digests digests = digests_of(family, is_short ? first_texts : texts_per_family);
        if (is_short) digests[1] = accepted[family.name][1];
        const bool same = accepted[family.name] == digests;
        const std::string line = std::string(family.name) + '\t' + digests[0] + '\t' + digests[1];
        std::cout << line << (same ? "" : " is not accepted") << '\n';
        lines += line + '\n';
        if (!same) status = 1;
    }
    if (option != "--accept") return status;
    std::ofstream(argv[1]) << lines;
    return 0;
}
