#include <orvex/parse.h>

#include <cctype>
#include <cstring>

#include "command.h"
#include "expand.h"
#include "interface_flags.h"
#include "options.h"
#include "parse_text.h"
#include "profile_command.h"

namespace {

uint32_t flags = 0;
uint32_t mask = 0;
bool is_expanding = false;
bool is_listing_types = false;

enum InterfaceField : size_t {
    field_input,
    field_type,
    field_fpc,
    field_pic,
    field_port,
    field_channels,
    field_direction,
    field_unit,
};

constexpr Field fields[] = {
    {"input", Audience::people},
    {"type"},
    {"fpc"},
    {"pic"},
    {"port"},
    {"channels"},
    {"direction"},
    {"unit"},
};
static_assert(std::size(fields) == field_unit + 1);

// Of --expand: people see the names alone.
constexpr Field expanded_fields[] = {
    {"input", Audience::people},       {"type", Audience::programs},
    {"fpc", Audience::programs},       {"pic", Audience::programs},
    {"port", Audience::programs},      {"channels", Audience::programs},
    {"direction", Audience::programs}, {"unit", Audience::programs},
};
static_assert(std::size(expanded_fields) == std::size(fields));

// The text for a wildcard or a range, or null for a number.
const char *wildcard_text(int32_t value)
{
    switch (value) {
        case IF_FIELD_WILD_ONE: return "?";
        case IF_FIELD_WILD_ANY: return "*";
        case IF_FIELD_RANGE: return "range";
        default: return nullptr;
    }
}

void write_number(Record &record, size_t field, int32_t value)
{
    if (value == IF_FIELD_ABSENT) return;
    if (const char *const text = wildcard_text(value))
        record.text(field, text);
    else
        record.number(field, value);
}

// The text where the FPC number of a name can begin: after its chassis name and the first "-".
const char *fpc_text(const char *name)
{
    parse_4_level_chassis(&name, nullptr, 0, nullptr, 0, nullptr);
    const char *const dash = std::strchr(name, '-');
    return dash != nullptr ? dash + 1 : "";
}

// A platform can number FPCs from below 0 on. Only the text tells such a number from a wildcard or
// from none.
void write_fpc(Record &record, const char *name, int32_t fpc)
{
    if (fpc >= 0) return record.number(field_fpc, fpc);
    const bool has_other_form = (flags & (PARSE_IF_EXPANSION_SLOT | PARSE_IF_PORT_FIRST)) != 0;
    const char *const text = fpc_text(name);
    const bool is_number = std::isdigit(static_cast<unsigned char>(*text)) != 0 ||
                           std::strchr("+- \t\n\v\f\r", *text) != nullptr;
    if (*text != '\0' && is_number && !has_other_form) return record.number(field_fpc, fpc);
    write_number(record, field_fpc, fpc);
}

void write_record(Record &record, const Text &name, const parsed_interface &parsed)
{
    record.text(field_input, name.view());
    if (parsed.type_name[0] == '\0') return;  // in a container, no part is read
    record.text(field_type, parsed.type_name);
    write_fpc(record, name.value, parsed.fpc);
    write_number(record, field_pic, parsed.pic);
    write_number(record, field_port, parsed.port);
    if (parsed.channel_count != IF_FIELD_ABSENT) {
        record.open_list(field_channels);
        for (int32_t level = 0; level < parsed.channel_count; ++level) {
            const int32_t channel = parsed.channels[level];
            if (const char *const wildcard = wildcard_text(channel))
                record.item(wildcard);
            else
                record.item(channel);
        }
        record.close_list();
    }
    if (parsed.direction[0] != '\0') record.text(field_direction, parsed.direction + 1);
    write_number(record, field_unit, parsed.unit);
}

void read_interface(const Text &name, Receiver &receiver)
{
    parsed_interface parsed;
    const auto parse = [&](char *error, size_t size) {
        return parse_interface(name.value, flags, mask, &parsed, error, size);
    };
    parse_text(name, receiver, 0, parse,
               [&](Record &record) { write_record(record, name, parsed); });
}

// Reads every name that a text means, each as a text of the same line or argument.
void read_expanded(const Text &text, Receiver &receiver)
{
    ExpandedName names;
    const std::string fault = names.read(text.view());
    if (!fault.empty()) return receiver.refuse(text, {.message = fault});
    for (uint64_t i = 0; i < names.count(); ++i) {
        const std::string name = names.name(i);
        const Text one = {.value = name.c_str(), .length = name.size(), .number = text.number};
        read_interface(one, receiver);
    }
}

const Command expand_command = {
    .name = "interface",
    .summary = "",
    .layout = Layout::values,
    .fields = expanded_fields,
    .has_profile = true,
    .read = read_expanded,
};

void add_options(Options &options)
{
    for (const InterfaceFlag &flag : interface_flags)
        options.flag(std::string("--") + flag.name, flag.help, [&flag] { flags |= flag.bit; });
    options.choice("--without", "FLAG",
                   "Clear a flag, also one of the interface type; may be repeated",
                   interface_flag_names(),
                   [](const std::string &name) { mask |= *find_interface_flag(name); });
    options.flag("--expand", "Print every name of ranges such as eth-0/0/[0-3,7]",
                 [] { is_expanding = true; });
    options.flag("--list-types", "Print the interface types of the router",
                 [] { is_listing_types = true; });
}

const Command &prepare(const Command &self)
{
    if (is_listing_types) return list_types_command;
    return is_expanding ? expand_command : self;
}

}  // namespace

const Command interface_command = {
    .name = "interface",
    .summary = "Interface names of the router that the profile describes",
    .texts = "NAME",
    .examples =
        "orvex-parse interface eth-1/2/0:3.100\n"
        "orvex-parse interface --wildcard 'eth-1/*/0.100'\n"
        "orvex-parse interface --expand 'eth-0/0/[0-3,7]'\n"
        "orvex-parse --profile switch-chassis.toml interface lcc1:eth-1/2/0/3\n"
        "orvex-parse interface --list-types\n",
    .fields = fields,
    .has_profile = true,
    .add_options = add_options,
    .prepare = prepare,
    .read = read_interface,
};
