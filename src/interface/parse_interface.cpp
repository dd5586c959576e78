#include <orvex/parse.h>
#include <orvex/platform.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "interface/name_parse.h"
#include "interface/parse_field_number.h"
#include "interface/product.h"
#include "interface/slots.h"
#include "text/characters.h"
#include "text/insist.h"

static_assert(sizeof(parsed_interface) == 120);
static_assert(offsetof(parsed_interface, fpc) == 60);
static_assert(offsetof(parsed_interface, channels) == 72);
static_assert(offsetof(parsed_interface, direction) == 108);
static_assert(offsetof(parsed_interface, unit) == 116);

namespace orvex {
namespace {

bool runs_in_container()
{
    platform_hook_arg no_args{};
    int32_t answer = 0;
    platform_hook_call("running_in_container", &no_args, &answer);
    return answer != 0;
}

// ---- The type ----

// The length of the type: the text before the first "-"; without one, up to the last lower-case
// letter. 0 when there is none.
size_t type_length(const char *name, bool &has_dash)
{
    size_t length = 0;
    size_t end = 0;
    for (; name[end] != '-' && name[end] != '\0'; ++end)
        if (is_ascii_lower(name[end])) length = end + 1;
    has_dash = name[end] == '-';
    return has_dash ? end : length;
}

struct Type {
    const interface_info *entry = nullptr;  // stays null for the name "all"
    size_t length{};
};

int find_type(const NameParse &parse, Type &type)
{
    bool has_dash{};
    type.length = type_length(parse.name, has_dash);
    if (!has_dash && parse.has(PARSE_IF_RANGES))
        return refuse(parse.error, not_this_form, "invalid interface name in %s", parse.name);
    if (type.length == 0)
        return refuse(parse.error, not_this_form, "invalid interface type: %s", parse.name);
    type.entry = interface_info_byname(parse.name, type.length);
    if (type.entry != nullptr) return ok;
    if (parse.has(PARSE_IF_RANGES))
        return refuse(parse.error, not_this_form, "invalid interface-type for ranges in %s",
                      parse.name);
    if (parse.has(PARSE_IF_ALLOW_ALL) && std::strcmp(parse.name, "all") == 0) return ok;
    type.length = std::strlen(parse.name);
    type.entry = interface_info_byname(parse.name, type.length);
    if (type.entry != nullptr) return ok;
    return refuse(parse.error, not_this_form, "invalid interface type in '%s'", parse.name);
}

bool supports_product(const interface_info &entry, uint16_t product_id)
{
    return entry.product_mask == 0 || (entry.product_mask >> product_id % 64 & 1) != 0;
}

// ---- What follows the type ----

const char *read_device(const NameParse &parse, const interface_info &entry, const char *at)
{
    constexpr int32_t aggregate_devices = 4092;
    const bool is_aggregate = std::strncmp(parse.record.type_name, "ae", 2) == 0;
    const int32_t bound = is_aggregate ? aggregate_devices : pic_bound(parse, entry);
    return parse_field_number(parse.record.fpc, parse, first_number(parse, at),
                              {"device", 0, bound});
}

const char *read_port(const NameParse &parse, const interface_info &entry, const char *at)
{
    return parse_field_number(parse.record.port, parse, at, {"port", 0, entry.ports_per_pic});
}

// What comes before the first "/".
const char *read_slot(const NameParse &parse, const interface_info &entry, const char *at)
{
    if (parse.has(PARSE_IF_EXPANSION_SLOT))
        at = read_expansion_slot(parse, entry, at);
    else if (parse.has(PARSE_IF_PORT_FIRST))
        at = read_port(parse, entry, first_number(parse, at));
    if (at == nullptr || parse.has(PARSE_IF_NO_SLOT)) return at;
    return parse.has(PARSE_IF_MGMT | PARSE_IF_RLSQ) ? read_device(parse, entry, at)
                                                    : read_fpc(parse, at);
}

// "/pic/port", both optional
const char *read_pic_and_port(const NameParse &parse, const interface_info &entry, const char *at)
{
    if (*at != '/') return at;
    const Field pic{"pic", 0, pic_bound(parse, entry)};
    at = parse_field_number(parse.record.pic, parse, at + 1, pic);
    if (at == nullptr || *at != '/') return at;
    return read_port(parse, entry, at + 1);
}

// ":1:2:3"
const char *read_channels(const NameParse &parse, const interface_info &entry, const char *at)
{
    if (!parse.has(PARSE_IF_CHANNELS))
        return no_part(refuse(parse.error, rule_broken, "interface does not support channels: %s",
                              parse.name));
    const size_t levels = std::min(size_t{entry.channel_levels}, std::size(entry.channel_bounds));
    size_t level = 0;
    for (; *at == ':'; ++level) {
        if (level >= levels) {
            return no_part(refuse(parse.error, rule_broken,
                                  "level of channelization exceeded limit of %d",
                                  entry.channel_levels));
        }
        const Field channel{"channel", 0, entry.channel_bounds[level]};
        at = parse_field_number(parse.record.channels[level], parse, at + 1, channel);
        if (at == nullptr) return nullptr;
    }
    parse.record.channel_count = static_cast<int32_t>(level);
    return at;
}

// "-rx" or "-tx"
const char *read_direction(const NameParse &parse, const char *at)
{
    const bool is_known = at[1] == 'r' || at[1] == 't';
    if (!is_known || at[2] != 'x')
        return no_part(refuse(parse.error, rule_broken, "invalid input '%s' for '%s'",
                              is_known ? at + 2 : at, parse.name));
    std::memcpy(parse.record.direction, at, 3);
    return at + 3;
}

// Channels or a direction; one of them can be required.
const char *read_suffix(const NameParse &parse, const interface_info &entry, const char *at)
{
    if (*at == ':') return read_channels(parse, entry, at);
    if (*at == '-') return read_direction(parse, at);
    if (!parse.has(PARSE_IF_NEED_CHANNEL)) return at;
    return no_part(refuse(parse.error, rule_broken, "channel number missing: %s", parse.name));
}

// ---- The name as a whole ----

int refuse_rest(const NameParse &parse, const char *at)
{
    return refuse(parse.error, not_this_form, "invalid trailing input '%s' for '%s'", at,
                  parse.name);
}

int refuse_missing(const NameParse &parse, int result, const char *what)
{
    return refuse(parse.error, result, "missing or invalid %s in '%s'", what, parse.name);
}

int check_pic_port(const NameParse &parse, int result)
{
    if (parse.record.pic == IF_FIELD_ABSENT) return refuse_missing(parse, result, "pic");
    if (parse.record.port == IF_FIELD_ABSENT) return refuse_missing(parse, result, "port");
    return ok;
}

// Returns `ok`, or `result` with a message that calls the first missing number by its name.
int check_fpc_pic_port(const NameParse &parse, int result)
{
    if (parse.record.fpc == IF_FIELD_ABSENT) return refuse_missing(parse, result, "fpc");
    return check_pic_port(parse, result);
}

// A name with ranges ends after its port.
int check_range_form(const NameParse &parse, const char *at)
{
    if (*at != '\0') return refuse_rest(parse, at);
    return check_fpc_pic_port(parse, not_this_form);
}

int read_parts(const NameParse &parse, const interface_info &entry, const char *at)
{
    if (*at == '-') ++at;
    at = read_slot(parse, entry, at);
    if (at != nullptr) at = read_pic_and_port(parse, entry, at);
    if (at == nullptr) return rule_broken;
    if (parse.has(PARSE_IF_RANGES)) {
        const int result = check_range_form(parse, at);
        if (result != ok) return result;
    }
    at = read_suffix(parse, entry, at);
    if (at != nullptr && *at == '.') at = read_unit(parse, at);
    if (at == nullptr) return rule_broken;
    return *at == '\0' ? ok : refuse_rest(parse, at);
}

bool has_pic_or_port(const parsed_interface &record)
{
    return record.pic != IF_FIELD_ABSENT || record.port != IF_FIELD_ABSENT;
}

// Whether the name has the numbers that its type needs, and none that its type must not have.
int check_numbers(const NameParse &parse)
{
    const parsed_interface &record = parse.record;
    if (parse.has(PARSE_IF_MGMT)) {
        // A channel was refused where it was read.
        if (!has_pic_or_port(record)) return ok;
        return refuse(parse.error, rule_broken,
                      "pic, port, or channel are invalid for management interfaces: %s",
                      parse.name);
    }
    if (parse.has(PARSE_IF_RLSQ)) {
        if (!has_pic_or_port(record)) return ok;
        return refuse(parse.error, rule_broken, "pic or port are invalid for rlsq interfaces: %s",
                      parse.name);
    }
    if (parse.has(PARSE_IF_NEED_FPC_PIC_PORT)) return check_fpc_pic_port(parse, rule_broken);
    return parse.has(PARSE_IF_EXPANSION_SLOT) ? check_pic_port(parse, rule_broken) : ok;
}

int parse_name(NameParse &parse, uint32_t mask, bool in_container)
{
    if (in_container && std::strcmp(parse.name, "lo0") != 0) return ok;
    if (no_vlan_products.contains(parse.product_id) && std::strcmp(parse.name, "vlan") == 0)
        return refuse(parse.error, not_this_form,
                      "interface type %s is not supported in this plateform", parse.name);

    Type type;
    int result = find_type(parse, type);
    if (result != ok) return result;
    parsed_interface &record = parse.record;
    if (type.entry == nullptr) {
        std::memcpy(record.type_name, "all", sizeof "all");
        return ok;
    }
    if (!supports_product(*type.entry, parse.product_id))
        return refuse(parse.error, rule_broken, "product does not support interface type in '%s'",
                      parse.name);
    std::memcpy(record.type_name, parse.name, std::min(type.length, sizeof record.type_name - 1));
    parse.flags = (parse.flags | type.entry->flags) & ~mask;

    result = read_parts(parse, *type.entry, parse.name + type.length);
    if (result != ok) return result;
    if (parse.has(PARSE_IF_DEFAULT_UNIT)) set_default_unit(parse);
    return check_numbers(parse);
}

void reset(parsed_interface &record)
{
    std::memset(record.type_name, 0, sizeof record.type_name);
    record.fpc = record.pic = record.port = IF_FIELD_ABSENT;
    for (int32_t &channel : record.channels) channel = IF_FIELD_ABSENT;
    record.channel_count = IF_FIELD_ABSENT;
    std::memset(record.direction, 0, sizeof record.direction);
    record.unit = IF_FIELD_ABSENT;
}

}  // namespace
}  // namespace orvex

int parse_interface(const char *name, uint32_t flags, uint32_t mask, parsed_interface *result,
                    char *errbuf, size_t errlen)
{
    const orvex::ErrorText error{errbuf, errlen};
    const uint16_t product_id = orvex::read_product_id();
    const bool in_container = orvex::runs_in_container();
    // Operators' tools know the log message of an empty name, and the line number in it.
    constexpr int known_line = 711;
    orvex::insist(name != nullptr && *name != '\0', "parse_interface", "str && *str", known_line);
    if (parse_4_level_chassis(&name, nullptr, 0, errbuf, errlen, nullptr) != 0) return -1;
    const bool has_lcc_names = orvex::has_multichassis_naming();
    orvex::reset(*result);
    orvex::NameParse parse{name, flags, error, *result, product_id, has_lcc_names};
    return orvex::parse_name(parse, mask, in_container);
}
