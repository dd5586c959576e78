// Prints the router that the profile describes.
#include "profile_command.h"

#include <orvex/stand_in.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "hexadecimal.h"
#include "interface_flags.h"
#include "profile.h"

namespace {

std::vector<uint16_t> channels_of(const interface_info &info)
{
    const size_t levels = std::min<size_t>(info.channel_levels, std::size(info.channel_bounds));
    return {info.channel_bounds, info.channel_bounds + levels};
}

std::vector<std::string> flags_of(const interface_info &info)
{
    std::vector<std::string> names;
    for (const InterfaceFlag &flag : interface_flags)
        if ((info.flags & flag.bit) != 0) names.emplace_back(flag.name);
    return names;
}

// The products of a type are kept modulo 64.
std::vector<int32_t> products_of(const interface_info &info)
{
    std::vector<int32_t> products;
    for (int32_t product = 0; product < 64; ++product)
        if ((info.product_mask >> product & 1) != 0) products.push_back(product);
    return products;
}

// ---- interface --list-types ----

enum TypeField : size_t {
    type_line,
    type_name,
    type_flags,
    type_pic_slots,
    type_virtual_pic_slots,
    type_ports,
    type_channels,
    type_products,
};

constexpr Field type_fields[] = {
    {"line", Audience::people},
    {"type", Audience::programs},
    {"flags", Audience::programs},
    {"pic_slots", Audience::programs},
    {"virtual_pic_slots", Audience::programs},
    {"ports", Audience::programs},
    {"channels", Audience::programs},
    {"products", Audience::programs},
};

// "eth      PIC slots 4, ports 48, channels 4 (channels)"
std::string line_of(const orvex_interface_type &type)
{
    constexpr size_t width = 8;
    std::string line = type.name;
    line.resize(std::max(line.size(), width), ' ');
    line += " PIC slots " + std::to_string(type.info.pic_slots);
    line += ", ports " + std::to_string(type.info.ports_per_pic);
    std::string separator = ", channels ";
    for (const uint16_t bound : channels_of(type.info)) {
        line += separator + std::to_string(bound);
        separator = ":";
    }
    separator = ", products ";
    for (const int32_t product : products_of(type.info)) {
        line += separator + std::to_string(product);
        separator = " ";
    }
    separator = ", flags ";
    for (const std::string &flag : flags_of(type.info)) {
        line += separator + flag;
        separator = " ";
    }
    return line;
}

template <typename Values>
void write_list(Record &record, size_t field, const Values &values)
{
    record.open_list(field);
    for (const auto &value : values) record.item(value);
    record.close_list();
}

void write_types(Receiver &receiver)
{
    const orvex_platform_profile &profile = current_profile();
    const Text none;
    for (size_t i = 0; i < profile.type_count; ++i) {
        const orvex_interface_type &type = profile.types[i];
        Record &record = receiver.begin(none);
        record.text(type_line, line_of(type));
        record.text(type_name, type.name);
        write_list(record, type_flags, flags_of(type.info));
        record.number(type_pic_slots, type.info.pic_slots);
        record.number(type_virtual_pic_slots, type.virtual_pic_slots);
        record.number(type_ports, type.info.ports_per_pic);
        write_list(record, type_channels, channels_of(type.info));
        write_list(record, type_products, products_of(type.info));
        receiver.end(none);
    }
}

// ---- profile show ----

enum ShowField : size_t { show_line, show_key, show_value };
constexpr Field show_fields[] = {
    {"line", Audience::people},
    {"key", Audience::programs},
    {"value", Audience::programs},
};

// A text of TOML in quotes. Type names may have any character but NUL.
std::string toml_text(const std::string &text)
{
    std::string quoted = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7f) {
            quoted += "\\u00";
            append_hex_byte(quoted, byte);
            continue;
        }
        if (character == '"' || character == '\\') quoted += '\\';
        quoted += character;
    }
    return quoted + '"';
}

std::string toml_key(const std::string &text)
{
    const auto is_bare = [](unsigned char character) {
        return character < 0x80 &&
               (std::isalnum(character) != 0 || character == '_' || character == '-');
    };
    return std::all_of(text.begin(), text.end(), is_bare) ? text : toml_text(text);
}

template <typename Values>
std::string toml_list(const Values &values)
{
    std::string list;
    for (const auto value : values) list += (list.empty() ? "" : ", ") + std::to_string(value);
    return '[' + list + ']';
}

std::string toml_list(const std::vector<std::string> &words)
{
    std::string list;
    for (const std::string &word : words) list += (list.empty() ? "" : ", ") + toml_text(word);
    return '[' + list + ']';
}

// Writes the keys of a profile, which is a profile again.
class Keys {
   public:
    explicit Keys(Receiver &receiver) : receiver_(receiver) {}

    void text(const std::string &key, const std::string &toml)
    {
        const Text none;
        Record &record = receiver_.begin(none);
        record.text(show_line, key + " = " + toml);
        record.text(show_key, key);
        record.text(show_value, toml);
        receiver_.end(none);
    }
    void truth(const std::string &key, uint8_t value) { text(key, value != 0 ? "true" : "false"); }
    template <std::integral Number>
    void number(const std::string &key, Number value)
    {
        text(key, std::to_string(value));
    }
    void word(const std::string &key, const char *word) { text(key, toml_text(word)); }

    void attribute(const std::string &key, const orvex_attribute &attribute)
    {
        number(key + ".value", attribute.value);
        number(key + ".status", attribute.status);
    }
    void mapping(const std::string &key, const orvex_slot_mapping &mapping)
    {
        number(key + ".first", mapping.first);
        number(key + ".slots-per-lcc", mapping.slots_per_lcc);
    }

   private:
    Receiver &receiver_;
};

const char *global_slots(const orvex_platform_profile &profile)
{
    if (profile.uses_global_slots_a != 0) return "a";
    return profile.uses_global_slots_b != 0 ? "b" : "none";
}

void show_chassis(Keys &keys, const orvex_platform_profile &profile)
{
    static constexpr const char *kinds[] = {"single", "switch", "line-card"};
    keys.word("chassis.kind", kinds[profile.chassis_kind]);
    keys.truth("chassis.root", profile.is_multi_chassis_root);
    keys.number("chassis.fpc-slots", profile.max_fpc_slots);
    keys.truth("chassis.wide-vtnet-units", profile.has_wide_vtnet_units);
    keys.word("chassis.global-slots", global_slots(profile));
    keys.mapping("chassis.local-to-global", profile.local_to_global);
    keys.mapping("chassis.lcc-to-scc", profile.lcc_to_scc);
    if (profile.has_virtual_fpcs == 0) return;
    keys.number("virtual-fpcs.first", profile.min_virtual_fpc_slot);
    keys.number("virtual-fpcs.last", profile.max_virtual_fpc_slot);
}

void show_type(Keys &keys, const orvex_interface_type &type)
{
    const std::string key = "types." + toml_key(type.name) + '.';
    keys.text(key + "flags", toml_list(flags_of(type.info)));
    keys.number(key + "pic-slots", type.info.pic_slots);
    keys.number(key + "virtual-pic-slots", type.virtual_pic_slots);
    keys.number(key + "ports", type.info.ports_per_pic);
    keys.text(key + "channels", toml_list(channels_of(type.info)));
    if (type.info.product_mask != 0) keys.text(key + "products", toml_list(products_of(type.info)));
}

void show_profile(Receiver &receiver)
{
    static constexpr const char *records[] = {"pointer", "call", "none"};
    const orvex_platform_profile &profile = current_profile();
    Keys keys(receiver);
    keys.truth("builtin-types", 0);
    keys.number("product.id", profile.product_id);
    keys.word("product.record", records[profile.product_record]);
    keys.number("product.multi-chassis-size", profile.multi_chassis_size);
    keys.truth("product.container", profile.running_in_container);
    keys.truth("attributes.available", profile.has_attributes);
    keys.attribute("attributes.is-l2ng-product", profile.is_l2ng_product);
    keys.attribute("attributes.max-ifl-subunit", profile.max_ifl_subunit);
    show_chassis(keys, profile);
    for (size_t i = 0; i < profile.type_count; ++i) show_type(keys, profile.types[i]);
}

}  // namespace

const Command list_types_command = {
    .name = "interface",
    .summary = "",
    .layout = Layout::values,
    .fields = type_fields,
    .has_profile = true,
    .write = write_types,
};

const Command profile_show_command = {
    .name = "profile show",
    .summary = "The whole router that the profile describes, as a profile",
    .texts = nullptr,
    .examples = "orvex-parse --profile switch-chassis.toml profile show\n",
    .layout = Layout::values,
    .fields = show_fields,
    .has_profile = true,
    .write = show_profile,
};
