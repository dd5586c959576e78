#include "profile.h"

#include <orvex/stand_in.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "file.h"
#include "interface_flags.h"
#include "profile_node.h"

namespace {

using Profile = orvex_platform_profile;
using Type = orvex_interface_type;

void read_product(Profile &profile, const Node &table)
{
    static constexpr Choice<orvex_product_record> records[] = {
        {"pointer", ORVEX_PRODUCT_BY_POINTER},
        {"call", ORVEX_PRODUCT_BY_CALL},
        {"none", ORVEX_PRODUCT_NONE}};
    static constexpr Key<Profile> keys[] = {
        {"id", [](Profile &target, const Node &node) { node.read(target.product_id); }},
        {"record", [](Profile &target,
                      const Node &node) { node.read_choice(target.product_record, records); }},
        {"multi-chassis-size",
         [](Profile &target, const Node &node) { node.read(target.multi_chassis_size); }},
        {"container",
         [](Profile &target, const Node &node) { node.read_truth(target.running_in_container); }},
    };
    read_table(profile, table, keys);
}

// 4095, or { value = 4095, status = 5 }
void read_attribute(orvex_attribute &attribute, const Node &node)
{
    static constexpr Key<orvex_attribute> keys[] = {
        {"value", [](orvex_attribute &target, const Node &value) { value.read(target.value); }},
        {"status", [](orvex_attribute &target, const Node &value) { value.read(target.status); }},
    };
    if (node.is_table())
        read_table(attribute, node, keys);
    else
        node.read(attribute.value);
}

void read_attributes(Profile &profile, const Node &table)
{
    static constexpr Key<Profile> keys[] = {
        {"available",
         [](Profile &target, const Node &node) { node.read_truth(target.has_attributes); }},
        {"is-l2ng-product",
         [](Profile &target, const Node &node) { read_attribute(target.is_l2ng_product, node); }},
        {"max-ifl-subunit",
         [](Profile &target, const Node &node) { read_attribute(target.max_ifl_subunit, node); }},
    };
    read_table(profile, table, keys);
}

void read_mapping(orvex_slot_mapping &mapping, const Node &table)
{
    using Mapping = orvex_slot_mapping;
    static constexpr Key<Mapping> keys[] = {
        {"first", [](Mapping &target, const Node &node) { node.read(target.first); }},
        {"slots-per-lcc",
         [](Mapping &target, const Node &node) { node.read(target.slots_per_lcc); }},
    };
    read_table(mapping, table, keys);
}

void read_global_slots(Profile &profile, const Node &node)
{
    static constexpr Choice<char> kinds[] = {{"a", 'a'}, {"b", 'b'}, {"none", '-'}};
    char kind = '-';
    node.read_choice(kind, kinds);
    profile.uses_global_slots_a = kind == 'a' ? 1 : 0;
    profile.uses_global_slots_b = kind == 'b' ? 1 : 0;
}

void read_chassis(Profile &profile, const Node &table)
{
    static constexpr Choice<orvex_chassis_kind> kinds[] = {{"single", ORVEX_CHASSIS_SINGLE},
                                                           {"switch", ORVEX_CHASSIS_SWITCH},
                                                           {"line-card", ORVEX_CHASSIS_LINE_CARD}};
    static constexpr Key<Profile> keys[] = {
        {"kind",
         [](Profile &target, const Node &node) { node.read_choice(target.chassis_kind, kinds); }},
        {"root",
         [](Profile &target, const Node &node) { node.read_truth(target.is_multi_chassis_root); }},
        {"wide-vtnet-units",
         [](Profile &target, const Node &node) { node.read_truth(target.has_wide_vtnet_units); }},
        {"fpc-slots", [](Profile &target, const Node &node) { node.read(target.max_fpc_slots); }},
        {"global-slots", read_global_slots},
        {"local-to-global",
         [](Profile &target, const Node &node) { read_mapping(target.local_to_global, node); }},
        {"lcc-to-scc",
         [](Profile &target, const Node &node) { read_mapping(target.lcc_to_scc, node); }},
    };
    read_table(profile, table, keys);
}

void read_virtual_fpcs(Profile &profile, const Node &table)
{
    static constexpr Key<Profile> keys[] = {
        {"first",
         [](Profile &target, const Node &node) { node.read(target.min_virtual_fpc_slot); }},
        {"last", [](Profile &target, const Node &node) { node.read(target.max_virtual_fpc_slot); }},
    };
    profile.has_virtual_fpcs = 1;
    read_table(profile, table, keys);
    if (table.is_table() && profile.min_virtual_fpc_slot > profile.max_virtual_fpc_slot)
        table.wrong("first is above last");
}

void read_flags(Type &type, const Node &node)
{
    type.info.flags = 0;
    for (const Node &member : node.members(interface_flags.size(), "a list of flags")) {
        const auto flag = find_interface_flag(member.text());
        if (flag)
            type.info.flags |= *flag;
        else
            member.expected("a flag, such as \"channels\"",
                            did_you_mean(member.text(), interface_flag_names()));
    }
}

void read_channels(Type &type, const Node &node)
{
    constexpr size_t most = std::size(interface_info{}.channel_bounds);
    const auto members = node.members(most, "a list of at most 6 bounds");
    type.info.channel_levels = static_cast<uint16_t>(members.size());
    for (size_t level = 0; level < members.size(); ++level)
        members[level].read(type.info.channel_bounds[level]);
}

void read_products(Type &type, const Node &node)
{
    type.info.product_mask = 0;
    for (const Node &member : node.members(65536, "a list of product identifiers")) {
        uint16_t product = 0;
        member.read(product);
        type.info.product_mask |= uint64_t{1} << product % 64;
    }
}

void read_type(Type &type, const Node &table)
{
    static constexpr Key<Type> keys[] = {
        {"flags", read_flags},
        {"pic-slots", [](Type &target, const Node &node) { node.read(target.info.pic_slots); }},
        {"ports", [](Type &target, const Node &node) { node.read(target.info.ports_per_pic); }},
        {"channels", read_channels},
        {"products", read_products},
        {"virtual-pic-slots",
         [](Type &target, const Node &node) { node.read(target.virtual_pic_slots); }},
    };
    read_table(type, table, keys);
}

// A profile, and the interface types that it points to.
struct Router {
    Profile profile = *orvex_platform_default_profile();
    std::map<std::string, Type> types;
    std::vector<Type> catalogue;
    uint8_t builtin_types = 1;

    void add_builtin_types()
    {
        for (size_t i = 0; i < profile.type_count; ++i)
            types.emplace(profile.types[i].name, profile.types[i]);
    }

    void install()
    {
        for (auto &[name, type] : types) {
            type.name = name.c_str();
            catalogue.push_back(type);
        }
        profile.types = catalogue.data();
        profile.type_count = catalogue.size();
        if (orvex_platform_install(&profile) != 0)
            throw std::runtime_error("the interface types cannot be installed");
    }
};

// Whether a text can have a type of this name: the part before a "-" is looked up first.
bool can_match(const std::string &name, const std::map<std::string, Type> &types)
{
    if (name.empty() || name.find('\0') != std::string::npos) return false;
    const size_t dash = name.find('-');
    return dash == std::string::npos || (dash != 0 && types.count(name.substr(0, dash)) == 0);
}

// Changes the built-in type of a name, or adds a type.
void read_types(Router &router, const Node &table)
{
    if (!table.is_table()) return table.expected("a table");
    for (const Node &entry : table.entries()) read_type(router.types[entry.key()], entry);
    for (const Node &entry : table.entries())
        if (!can_match(entry.key(), router.types))
            entry.expected_key("names that an interface name can begin with");
}

void read_router(Router &router, const Node &file)
{
    static constexpr Key<Router> keys[] = {
        {"builtin-types", [](Router & /*target*/, const Node & /*node*/) {}},  // read first
        {"product", [](Router &target, const Node &node) { read_product(target.profile, node); }},
        {"attributes",
         [](Router &target, const Node &node) { read_attributes(target.profile, node); }},
        {"chassis", [](Router &target, const Node &node) { read_chassis(target.profile, node); }},
        {"virtual-fpcs",
         [](Router &target, const Node &node) { read_virtual_fpcs(target.profile, node); }},
        {"types", read_types},
    };
    // The file's types change the built-in ones, if those are used.
    for (const Node &entry : file.entries())
        if (entry.key() == "builtin-types") entry.read_truth(router.builtin_types);
    if (router.builtin_types != 0) router.add_builtin_types();
    read_table(router, file, keys);
}

// The router of this process.
Router &router()
{
    static Router the_router;
    return the_router;
}

constexpr size_t largest_profile = size_t{1024} * 1024;

// Reads a file or a pipe. toml++ is not left to do it: it takes what cannot be read for an empty
// file, and any size.
std::string read_profile(const std::string &path)
{
    const auto refuse_file = [&path](const std::string &problem) {
        throw std::runtime_error(path + ": " + problem);
    };
    const File file(std::fopen(path.c_str(), "re"));
    if (file == nullptr) refuse_file(std::strerror(errno));
    std::string text(largest_profile + 1, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) != 0) refuse_file(std::strerror(errno));
    if (text.size() > largest_profile) refuse_file("a profile has at most 1 MiB");
    if (text.find('\0') != std::string::npos) refuse_file("a profile holds no NUL characters");
    return text;
}

// toml++ calls itself for each part of a dotted key, and no key of a profile has more than three.
void check_dots(Faults &faults, std::string_view text)
{
    constexpr ptrdiff_t most_dots = 32;
    toml::source_position at{.line = 0, .column = 1};
    while (!text.empty()) {
        ++at.line;
        const size_t end = std::min(text.find('\n'), text.size() - 1);
        const std::string_view line = text.substr(0, end);
        if (std::count(line.begin(), line.end(), '.') > most_dots)
            faults.add(at, "a line has at most 32 dots");
        text.remove_prefix(end + 1);
    }
}

}  // namespace

const orvex_platform_profile &current_profile() { return router().profile; }

void install_profile(const std::string &path)
{
    if (path.empty()) return;
    Router described;
    const std::string text = read_profile(path);
    Faults faults(path);
    check_dots(faults, text);
    faults.throw_if_any();
    try {
        const toml::table file = toml::parse(text, path);
        read_router(described, Node(faults, "", file));
    } catch (const toml::parse_error &error) {
        faults.add(error.source().begin, std::string(error.description()));
    }
    faults.throw_if_any();
    router() = std::move(described);
    router().install();
}
