#include <orvex/parse.h>

#include "commands.h"
#include "interface_flags.h"
#include "parse_text.h"
#include "profile.h"

namespace {

using Json = nlohmann::ordered_json;

struct InterfaceOptions : Options {
    uint32_t flags = 0;
    uint32_t mask = 0;
};

// A number, or a text for the wildcard or range in its place.
Json field_value(int32_t value)
{
    switch (value) {
        case IF_FIELD_WILD_ONE: return "?";
        case IF_FIELD_WILD_ANY: return "*";
        case IF_FIELD_RANGE: return "range";
        default: return value;
    }
}

std::string text_of(const Json &value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void add_number(std::vector<Field> &fields, const char *key, int32_t value)
{
    if (value == IF_FIELD_ABSENT) return;
    const Json json = field_value(value);
    fields.push_back({key, json, text_of(json)});
}

void add_channels(std::vector<Field> &fields, const parsed_interface &record)
{
    if (record.channel_count == IF_FIELD_ABSENT) return;
    Json channels = Json::array();
    std::string text;
    for (int32_t level = 0; level < record.channel_count; ++level) {
        channels.push_back(field_value(record.channels[level]));
        text += (level > 0 ? ":" : "") + text_of(channels.back());
    }
    fields.push_back({"channels", channels, text});
}

std::vector<Field> fields_of(const std::string &input, const parsed_interface &record)
{
    std::vector<Field> fields = {{"input", nullptr, input}};
    const std::string type = record.type_name;
    if (!type.empty()) fields.push_back({"type", type, type});
    add_number(fields, "fpc", record.fpc);
    add_number(fields, "pic", record.pic);
    add_number(fields, "port", record.port);
    add_channels(fields, record);
    if (record.direction[0] != '\0') {
        const std::string direction = record.direction + 1;
        fields.push_back({"direction", direction, direction});
    }
    add_number(fields, "unit", record.unit);
    return fields;
}

Outcome read_interface(const std::string &text, const InterfaceOptions &options)
{
    parsed_interface record;
    const auto parse = [&](char *error, size_t size) {
        return parse_interface(text.c_str(), options.flags, options.mask, &record, error, size);
    };
    return parse_text(text, 0, parse, [&] { return fields_of(text, record); });
}

void add_to_mask(const std::string &name, uint32_t &mask)
{
    const auto flag = find_interface_flag(name);
    if (!flag) throw CLI::ValidationError("--without", "'" + name + "' is not a flag");
    mask |= *flag;
}

}  // namespace

void add_interface_command(CLI::App &app, const std::string &profile, Job &job)
{
    static InterfaceOptions options;
    CLI::App *const command = add_command(
        app, "interface", "Interface names of the router that the profile describes", options);
    command->fallthrough();
    for (const InterfaceFlag &flag : interface_flags)
        command->add_flag_callback(
            std::string("--") + flag.name, [&flag] { options.flags |= flag.bit; }, flag.help);
    command
        ->add_option_function<std::vector<std::string>>(
            "--without",
            [](const std::vector<std::string> &names) {
                for (const std::string &name : names) add_to_mask(name, options.mask);
            },
            "Clear a flag, also one of the interface type; may be repeated")
        ->type_name("FLAG")
        ->allow_extra_args(false);
    command->callback([&job, &profile] {
        job = [&profile] {
            install_profile(profile);
            return run_texts(options, Style::record,
                             [](const std::string &text) { return read_interface(text, options); });
        };
    });
}
