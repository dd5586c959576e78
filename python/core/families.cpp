#include "families.h"

#include <orvex/platform.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <limits>
#include <map>
#include <stdexcept>

#include "../../tools/interface_flags.h"
#include "classes.h"

namespace {

// ---- Options ----

template <typename Integer>
Integer integer_from(const std::string &option, py::handle value, Integer min, Integer max)
{
    const auto refuse = [&] {
        throw py::value_error(option + " is an integer from " + std::to_string(min) + " to " +
                              std::to_string(max));
    };
    if (!PyLong_Check(value.ptr())) throw py::type_error(option + " is an integer");
    try {
        const auto number = value.cast<Integer>();
        if (number < min || number > max) refuse();
        return number;
    } catch (const py::cast_error &) {
        refuse();
    }
    return {};
}

std::string text_from(const std::string &option, py::handle value)
{
    if (!PyUnicode_Check(value.ptr())) throw py::type_error(option + " is a str");
    return value.cast<std::string>();
}

// ---- Values ----

template <size_t size>
py::bytes bytes_of(const std::array<uint8_t, size> &bytes, size_t count = size)
{
    return {reinterpret_cast<const char *>(bytes.data()), count};
}

template <size_t size>
void copy_row(uint8_t *column, size_t row, const std::array<uint8_t, size> &bytes)
{
    std::memcpy(column + row * size, bytes.data(), size);
}

template <size_t size>
void copy_text(char *column, size_t row, const std::array<char, size> &text)
{
    std::memcpy(column + row * (size - 1), text.data(), strnlen(text.data(), size - 1));
}

py::object length_or_none(bool given, uint32_t length)
{
    return given ? py::object(py::int_(length)) : py::none();
}

void store_big_endian(uint8_t *bytes, uint32_t number)
{
    for (size_t i = 0; i < 4; ++i) bytes[i] = static_cast<uint8_t>(number >> (24 - 8 * i));
}

std::array<uint8_t, 8> rd_bytes(uint32_t high, uint32_t low)
{
    std::array<uint8_t, 8> bytes;
    store_big_endian(bytes.data(), high);
    store_big_endian(bytes.data() + 4, low);
    return bytes;
}

}  // namespace

// ---- IP addresses ----

const std::array<Flag, 11> Ip::flags = {{
    {"prefix", PARSE_IPADDR_PREFIX_OK},
    {"prefix_required", PARSE_IPADDR_PREFIX_REQUIRED},
    {"all_bytes", PARSE_IPADDR_ALL_BYTES},
    {"mask", PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK},
    {"default", PARSE_IPADDR_DEFAULT_OK},
    {"integer", PARSE_IPADDR_INTEGER_OK},
    {"host_zero", PARSE_IPADDR_HOST_ZERO},
    {"multicast", PARSE_IPADDR_MULTICAST},
    {"any", PARSE_IPADDR_ANY_OK},
    {"no_martian", PARSE_IPADDR_NO_MARTIAN},
    {"unicast", PARSE_IPADDR_UNICAST},
}};

bool Ip::set(Options &options, const std::string &option, py::handle value)
{
    if (option != "family") return false;
    if (value.is_none()) {
        options.family = 0;
    } else if (PyLong_Check(value.ptr())) {
        options.family = integer_from<uint32_t>(option, value, 0, INT32_MAX);
    } else {
        const std::string family = text_from(option, value);
        if (family != "inet" && family != "inet6")
            throw py::value_error("family is \"inet\", \"inet6\", a family code or None");
        options.family = family == "inet" ? PARSE_AF_INET : PARSE_AF_INET6;
    }
    return true;
}

namespace {

// What follows an address: a keyword in place of it can have the bytes of a mask, but no "/".
enum MaskKind : uint8_t { no_mask, mask_after_slash, any_unicast, any_multicast };

MaskKind mask_kind(const Ip::Value &value, const Text &text)
{
    if (value.has_mask == 0) return no_mask;
    if (std::memchr(text.data, '/', text.size) != nullptr) return mask_after_slash;
    uint32_t word = 0;
    std::memcpy(&word, value.mask.data(), sizeof word);
    return word == IPADDR_ANY_UNICAST ? any_unicast : any_multicast;
}

}  // namespace

py::object Ip::object(const Value &value, const Text &text, const Options & /*options*/)
{
    const bool ipv6 = value.is_ipv6();
    if (value.has_mask == 0 && value.has_prefix == 0)
        return make_address(ipv6, value.address.data());
    if (value.has_mask == 0) return make_interface(ipv6, value.address.data(), value.prefix_length);
    switch (mask_kind(value, text)) {
        case any_unicast: return classes().any_unicast;
        case any_multicast: return classes().any_multicast;
        default:
            return classes().address_mask(make_address(ipv6, value.address.data()),
                                          make_address(ipv6, value.mask.data()));
    }
}

Ip::Columns::Columns(Arrays &arrays, const Options &options)
    : version_(arrays.add<uint8_t>("version")),
      address_(arrays.add<uint8_t>("address", 16)),
      prefix_length_(arrays.add<uint8_t>("prefix_length")),
      has_prefix_(arrays.add<bool>("has_prefix"))
{
    if ((options.flags & (PARSE_IPADDR_MASK_OK | PARSE_IPADDR_ANY_OK)) == 0) return;
    mask_ = arrays.add<uint8_t>("mask", 16);
    mask_kind_ = arrays.add<uint8_t>("mask_kind");
}

void Ip::Columns::store(size_t row, const Value &value, const Text &text, State & /*state*/) const
{
    const bool ipv6 = value.is_ipv6();
    version_[row] = ipv6 ? 6 : 4;
    if (ipv6)
        std::memcpy(address_ + row * 16, value.address.data(), 16);
    else
        std::memcpy(address_ + row * 16, value.address.data(), 4);
    prefix_length_[row] = static_cast<uint8_t>(value.prefix_length);
    has_prefix_[row] = value.has_prefix != 0;
    if (mask_ == nullptr || value.has_mask == 0) return;
    mask_kind_[row] = mask_kind(value, text);
    if (mask_kind_[row] == mask_after_slash)
        std::memcpy(mask_ + row * 16, value.mask.data(), ipv6 ? 16 : 4);
}

// ---- Interface names ----

namespace {

std::atomic<bool> router_known{false};

// The flags' names as Python writes them, "no_unit" for "no-unit".
constexpr auto option_names = [] {
    std::array<std::array<char, 24>, interface_flags.size()> names{};
    for (size_t i = 0; i < names.size(); ++i)
        for (size_t at = 0; interface_flags[i].name[at] != '\0'; ++at)
            names[i][at] = interface_flags[i].name[at] == '-' ? '_' : interface_flags[i].name[at];
    return names;
}();

constexpr auto interface_options = [] {
    std::array<Flag, interface_flags.size()> options{};
    for (size_t i = 0; i < options.size(); ++i)
        options[i] = {option_names[i].data(), interface_flags[i].bit};
    return options;
}();

const char *wildcard_of(int32_t value)
{
    if (value == IF_FIELD_WILD_ONE) return "?";
    return value == IF_FIELD_WILD_ANY ? "*" : nullptr;
}

// Writes the parts of a name as Python objects and as the canonical text.
class NameWriter {
   public:
    // `at` is the name without its chassis.
    explicit NameWriter(const char *at) : at_(at) {}

    // Adds a number of the name. A range is copied from the name, since its numbers are not kept.
    py::object add(const char *before, int32_t value)
    {
        if (value == IF_FIELD_ABSENT) return py::none();
        text_ += before;
        if (value == IF_FIELD_RANGE) return add_text(next_range());
        if (const char *const wildcard = wildcard_of(value)) return add_text(wildcard);
        text_ += std::to_string(value);
        return py::int_(value);
    }

    py::object add_text(const std::string &text)
    {
        text_ += text;
        return py::str(text);
    }

    [[nodiscard]] const std::string &text() const { return text_; }

   private:
    std::string next_range()
    {
        const char *const open = std::strchr(at_, '[');
        const char *const close = open == nullptr ? nullptr : std::strchr(open, ']');
        if (close == nullptr) return "range";
        at_ = close + 1;
        return {open, at_};
    }

    const char *at_;
    std::string text_;
};

py::str as_typed(const char *text)
{
    return py::reinterpret_steal<py::str>(
        PyUnicode_DecodeUTF8(text, static_cast<Py_ssize_t>(std::strlen(text)), "backslashreplace"));
}

// The flags of a name: its type's, and those of the options.
uint32_t flags_of(const parsed_interface &record, const Interface::Options &options)
{
    const auto *const entry =
        interface_info_byname(record.type_name, std::strlen(record.type_name));
    return (options.flags | (entry == nullptr ? 0 : entry->flags)) & ~options.without;
}

// Whether a name is type-fpc/pic/port, or as much of it as it has numbers.
bool has_plain_form(const parsed_interface &record, uint32_t flags, const char *text)
{
    const size_t length = std::strlen(record.type_name);
    if (length == 0 || length == sizeof record.type_name - 1) return false;
    if ((flags & (PARSE_IF_EXPANSION_SLOT | PARSE_IF_PORT_FIRST)) != 0) return false;
    if (record.fpc == IF_FIELD_ABSENT && (flags & PARSE_IF_NO_SLOT) == 0) return false;
    return std::count(text, text + std::strlen(text), '/') < 3;
}

}  // namespace

bool router_is_known() { return router_known.load(); }

const std::array<Flag, 16> Interface::flags = interface_options;

bool Interface::set(Options &options, const std::string &option, py::handle value)
{
    if (option != "without") return false;
    if (PyUnicode_Check(value.ptr())) throw py::type_error("without is a list of flags");
    for (const py::handle member : value) {
        std::string flag = text_from(option, member);
        std::replace(flag.begin(), flag.end(), '_', '-');
        const auto bit = find_interface_flag(flag);
        if (!bit) throw py::value_error("without: '" + flag + "' is not a flag");
        options.without |= *bit;
    }
    return true;
}

Interface::State::State(const Options & /*options*/) { router_known.store(true); }

int16_t Interface::State::number_of(const char *type)
{
    // Most names have the type of the name before.
    if (std::strcmp(types[last_].c_str(), type) != 0) {
        last_ = static_cast<size_t>(std::find(types.begin(), types.end(), type) - types.begin());
        if (last_ == types.size()) types.emplace_back(type);
    }
    return static_cast<int16_t>(last_);
}

py::object Interface::object(const Value &value, const Text &text, const Options &options)
{
    std::array<char, 129> chassis{};
    const char *name = text.data;
    parse_4_level_chassis(&name, chassis.data(), chassis.size(), nullptr, 0, nullptr);
    const uint32_t flags = flags_of(value, options);
    const bool is_device = (flags & (PARSE_IF_MGMT | PARSE_IF_RLSQ)) != 0;
    const bool is_plain = has_plain_form(value, flags, name);

    NameWriter writer(name);
    if (chassis[0] != '\0') writer.add_text(std::string(chassis.data()) + ':');
    const py::object type = writer.add_text(value.type_name);
    const py::object fpc = writer.add(is_device ? "" : "-", value.fpc);
    const py::object pic = writer.add("/", value.pic);
    const py::object port = writer.add("/", value.port);
    py::list channels;
    for (int32_t level = 0; level < value.channel_count; ++level)
        channels.append(writer.add(":", value.channels[level]));
    writer.add_text(value.direction);
    const py::object unit = writer.add(".", value.unit);
    const auto or_none = [](const char *part) {
        return *part == '\0' ? py::object(py::none()) : py::object(py::str(part));
    };
    return classes().interface(type, fpc, pic, port, py::tuple(channels),
                               or_none(value.direction[0] == '\0' ? "" : value.direction + 1), unit,
                               or_none(chassis.data()),
                               is_plain ? py::str(writer.text()) : as_typed(text.data));
}

Interface::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : type_(arrays.add<int16_t>("type")),
      fpc_(arrays.add<int32_t>("fpc")),
      pic_(arrays.add<int32_t>("pic")),
      port_(arrays.add<int32_t>("port")),
      channels_(arrays.add<int32_t>("channels", 6)),
      channel_count_(arrays.add<int8_t>("channel_count")),
      direction_(arrays.add<uint8_t>("direction")),
      unit_(arrays.add<int32_t>("unit"))
{
}

void Interface::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                               State &state) const
{
    type_[row] = state.number_of(value.type_name);
    fpc_[row] = value.fpc;
    pic_[row] = value.pic;
    port_[row] = value.port;
    unit_[row] = value.unit;
    if (value.channel_count > 0) {
        channel_count_[row] = static_cast<int8_t>(value.channel_count);
        std::copy_n(value.channels, std::min(value.channel_count, 6), channels_ + row * 6);
    }
    if (value.direction[0] != '\0') direction_[row] = value.direction[1] == 'r' ? 1 : 2;
}

void Interface::Columns::merge(Arrays &arrays, const std::vector<State> &states,
                               const std::vector<size_t> &first_row) const
{
    std::map<std::string, int16_t> numbers;
    for (const State &state : states)
        for (const std::string &type : state.types) numbers.emplace(type, 0);
    py::list types;
    for (auto &[type, number] : numbers) {
        number = static_cast<int16_t>(types.size());
        types.append(type);
    }
    arrays.add_object("types", py::tuple(types));
    for (size_t i = 0; i < states.size(); ++i) {
        std::vector<int16_t> new_number;
        for (const std::string &type : states[i].types) new_number.push_back(numbers.at(type));
        for (size_t row = first_row[i]; row < first_row[i + 1]; ++row)
            type_[row] = new_number[static_cast<size_t>(type_[row])];
    }
}

// ---- Interface aliases ----

IsAlias::State::State(const Options & /*options*/) { router_known.store(true); }

std::string Alias::Options::path() const
{
    if (!map.empty()) return map;
    return flags != 0 ? "/var/etc/if_alias_map+" : "/var/etc/if_alias_map";
}

bool Alias::set(Options &options, const std::string &option, py::handle value)
{
    if (option != "map") return false;
    if (value.is_none()) return true;
    options.map = py::str(py::module_::import("os").attr("fspath")(value));
    return true;
}

void Alias::check(const Options &options)
{
    if (!options.map.empty() && options.flags != 0)
        throw py::type_error("alias() takes map or alternate, not both");
}

Alias::State::State(const Options &options)
    : map(std::fopen(options.path().c_str(), "re"), std::fclose)
{
    // The library does not say why it cannot read a map.
    if (map == nullptr) throw FileError{errno, options.path()};
}

Alias::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : interface_(arrays.add_texts("interface", std::tuple_size_v<Value> - 1))
{
}

void Alias::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                           State & /*state*/) const
{
    copy_text(interface_, row, value);
}

// ---- Addresses that are bytes ----

py::object Mac::object(const Value &value, const Text & /*text*/, const Options & /*options*/)
{
    return classes().mac_address(bytes_of(value.address),
                                 length_or_none(value.has_prefix != 0, value.prefix_length));
}

Mac::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : address_(arrays.add<uint8_t>("address", 6)),
      prefix_length_(arrays.add<uint8_t>("prefix_length")),
      has_prefix_(arrays.add<bool>("has_prefix"))
{
}

void Mac::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                         State & /*state*/) const
{
    copy_row(address_, row, value.address);
    if (value.has_prefix == 0) return;
    prefix_length_[row] = value.prefix_length;
    has_prefix_[row] = true;
}

bool Delimited::set(Options &options, const std::string &option, py::handle value)
{
    constexpr uint32_t most = 65536;
    if (option != "count") return false;
    options.count = integer_from<uint32_t>(option, value, 1, most);
    return true;
}

void Delimited::check(const Options &options)
{
    if (options.count == 0) throw py::type_error("delimited() requires count, the number of bytes");
}

py::object Delimited::object(const Value &value, const Text & /*text*/, const Options & /*options*/)
{
    return py::bytes(reinterpret_cast<const char *>(value.data()), value.size());
}

Delimited::Columns::Columns(Arrays &arrays, const Options &options)
    : address_(arrays.add<uint8_t>("address", options.count))
{
}

void Delimited::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                               State & /*state*/) const
{
    std::memcpy(address_ + row * value.size(), value.data(), value.size());
}

py::object Iso::object(const Value &value, const Text & /*text*/, const Options & /*options*/)
{
    return classes().iso_address(bytes_of(value.bytes, value.count),
                                 length_or_none(value.has_prefix != 0, value.prefix_length));
}

constexpr size_t iso_width = 20;

Iso::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : address_(arrays.add<uint8_t>("address", iso_width)),
      count_(arrays.add<uint8_t>("count")),
      prefix_length_(arrays.add<uint8_t>("prefix_length")),
      has_prefix_(arrays.add<bool>("has_prefix"))
{
}

void Iso::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                         State & /*state*/) const
{
    count_[row] = value.count;
    std::copy_n(value.bytes.data(), std::min<size_t>(value.count, iso_width),
                address_ + row * iso_width);
    if (value.has_prefix == 0) return;
    prefix_length_[row] = static_cast<uint8_t>(value.prefix_length);
    has_prefix_[row] = true;
}

py::object Sysid::object(const Value &value, const Text & /*text*/, const Options & /*options*/)
{
    return classes().system_id(bytes_of(value));
}

Sysid::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : sysid_(arrays.add<uint8_t>("sysid", 6))
{
}

void Sysid::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                           State & /*state*/) const
{
    copy_row(sysid_, row, value);
}

// ---- VPN identifiers ----

py::object Rd::object(const Value &value, const Text & /*text*/, const Options & /*options*/)
{
    return classes().route_distinguisher(bytes_of(rd_bytes(value.high, value.low)));
}

Rd::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : type_(arrays.add<uint8_t>("type")), rd_(arrays.add<uint8_t>("rd", 8))
{
}

void Rd::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                        State & /*state*/) const
{
    type_[row] = static_cast<uint8_t>(value.type);
    copy_row(rd_, row, rd_bytes(value.high, value.low));
}

bool Esi::set(Options &options, const std::string &option, py::handle value)
{
    if (option != "mode") return false;
    const std::string mode = text_from(option, value);
    if (mode == "any")
        options.mode = PARSE_ESI_ANY;
    else if (mode == "user-defined")
        options.mode = PARSE_ESI_USER_DEFINED;
    else if (mode == "reserved-ok")
        options.mode = PARSE_ESI_RESERVED_OK;
    else
        throw py::value_error("mode is \"any\", \"user-defined\" or \"reserved-ok\"");
    return true;
}

py::object Esi::object(const Value &value, const Text & /*text*/, const Options & /*options*/)
{
    return classes().esi(bytes_of(value));
}

Esi::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : esi_(arrays.add<uint8_t>("esi", 10))
{
}

void Esi::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                         State & /*state*/) const
{
    copy_row(esi_, row, value);
}

py::object Atmvpn::object(const Value &value, const Text & /*text*/, const Options & /*options*/)
{
    const atmvpn_address &record = value.record;
    const py::object rd =
        classes().route_distinguisher(bytes_of(rd_bytes(record.rd_high, record.rd_low)));
    const py::bytes address(reinterpret_cast<const char *>(record.address), sizeof record.address);
    return classes().atm_vpn_address(rd, record.type, address,
                                     length_or_none(value.has_prefix(), value.prefix_length()));
}

Atmvpn::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : rd_(arrays.add<uint8_t>("rd", 8)),
      type_(arrays.add<uint8_t>("type")),
      address_(arrays.add<uint8_t>("address", sizeof atmvpn_address::address)),
      prefix_length_(arrays.add<uint8_t>("prefix_length")),
      has_prefix_(arrays.add<bool>("has_prefix"))
{
}

void Atmvpn::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                            State & /*state*/) const
{
    const atmvpn_address &record = value.record;
    copy_row(rd_, row, rd_bytes(record.rd_high, record.rd_low));
    type_[row] = record.type;
    std::memcpy(address_ + row * sizeof record.address, record.address, sizeof record.address);
    if (!value.has_prefix()) return;
    prefix_length_[row] = static_cast<uint8_t>(value.prefix_length());
    has_prefix_[row] = true;
}

// ---- Numbers and durations ----

std::string number_message(const std::string &text, const std::string &what, int error)
{
    return "'" + text + "' " + (error == ERANGE ? "is out of range" : "is not " + what);
}

bool Number::set(Options &options, const std::string &option, py::handle value)
{
    if (option != "limit") return false;
    options.limit = integer_from(option, value, INT32_MIN, INT32_MAX);
    options.has_limit = true;
    return true;
}

void Number::check(const Options &options)
{
    if (!options.has_limit)
        throw py::type_error("number() requires limit, which the number must be below");
}

std::string Number::message(const std::string &text, const Options &options, int error)
{
    return number_message(text, "a number from 0 to " + std::to_string(int64_t{options.limit} - 1),
                          error);
}

bool Duration::set(Options &options, const std::string &option, py::handle value)
{
    if (option != "min" && option != "max") return false;
    (option == "min" ? options.min : options.max) =
        integer_from<uint64_t>(option, value, 0, UINT64_MAX);
    return true;
}

py::object Duration::object(uint64_t seconds, const Text & /*text*/, const Options & /*options*/)
{
    return classes().timedelta(0, seconds);
}

Duration::Columns::Columns(Arrays &arrays, const Options &options)
    : NumberFamily::Columns(arrays, options)
{
}

// ---- Forms of IPv6 text ----

int Canonical::parse(const Text &text, const Options & /*options*/, State & /*state*/, Value &value,
                     ErrorBuffer /*error*/)
{
    // A longer text is no address, and is not to be cut into one.
    if (text.size >= value.size()) return 0;
    std::memcpy(value.data(), text.data, text.size + 1);
    return format_rfc5952(value.data());
}

Canonical::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : text_(arrays.add_texts("text", std::tuple_size_v<Value> - 1))
{
}

void Canonical::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                               State & /*state*/) const
{
    copy_text(text_, row, value);
}

int Prefix6::parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                   ErrorBuffer error)
{
    uint32_t af = PARSE_AF_INET6;
    std::array<uint8_t, 16> address;
    uint32_t length = 0;
    const int result =
        parse_ipaddr(&af, text.data, PARSE_IPADDR_PREFIX_OK, address.data(), address.size(),
                     nullptr, &length, nullptr, nullptr, 0, error.data, error.size);
    if (result != 0) return result;
    std::array<char, FORMAT_IN6_BUFSIZE> buffer;
    const auto format = options.flags != 0 ? format_in6_addr : format_in6_prefix;
    const char *const start =
        format(address.data(), static_cast<int>(length), buffer.data(), buffer.size(), 1);
    std::strcpy(value.data(), start);
    return 0;
}

Prefix6::Columns::Columns(Arrays &arrays, const Options & /*options*/)
    : text_(arrays.add_texts("text", std::tuple_size_v<Value> - 1))
{
}

void Prefix6::Columns::store(size_t row, const Value &value, const Text & /*text*/,
                             State & /*state*/) const
{
    copy_text(text_, row, value);
}
