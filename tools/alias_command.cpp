#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "command.h"
#include "file.h"
#include "options.h"
#include "parse_text.h"

namespace {

constexpr Field is_fields[] = {{"alias"}};
constexpr Field find_fields[] = {{"interface"}};

std::string map_path;
bool is_alternate = false;
File map;

void check_alias(const Text &text, Receiver &receiver)
{
    const bool is_alias = is_interface_alias(text.value) == 1;
    Record &record = receiver.begin(text);
    if (!is_alias) receiver.say_no();
    record.truth(0, is_alias);
    receiver.end(text);
}

void find_alias(const Text &text, Receiver &receiver)
{
    std::array<char, IFALIAS_NAME_BUFSIZE> name;
    if (ifalias_to_ifl(text.value, name.data(), name.size(), 0, map.get()) == 1) {
        receiver.begin(text).text(0, name.data());
        return receiver.end(text);
    }
    const std::string message = quoted(text) + " is not in the alias map";
    receiver.refuse(text, {.message = message});
}

void add_find_options(Options &options)
{
    options.value("--map", "FILE", "Read this map instead of /var/etc/if_alias_map",
                  [](const std::string &path) { map_path = path; });
    options.flag("--alternate", "Read /var/etc/if_alias_map+", [] { is_alternate = true; });
}

// Opens the map here, since the library does not say why it cannot read one.
const Command &open_map(const Command &self)
{
    if (is_alternate && !map_path.empty())
        throw UsageError("there is one map to read: give --map or --alternate");
    if (map_path.empty()) map_path = "/var/etc/if_alias_map";
    if (is_alternate) map_path += '+';
    map.reset(std::fopen(map_path.c_str(), "re"));
    if (map == nullptr)
        throw std::runtime_error("cannot open " + map_path + ": " + std::strerror(errno));
    return self;
}

}  // namespace

const Command alias_is_command = {
    .name = "alias is",
    .summary = "Whether words mean interface aliases: yes or no",
    .examples = "orvex-parse alias is uplink-to-core\n",
    .layout = Layout::values,
    .fields = is_fields,
    .has_profile = true,
    .read = check_alias,
};

const Command alias_find_command = {
    .name = "alias find",
    .summary = "The interface names of aliases, from the alias map",
    .texts = "NAME",
    .examples = "orvex-parse alias find --map my-map uplink-to-core\n",
    .layout = Layout::values,
    .fields = find_fields,
    .add_options = add_find_options,
    .prepare = open_map,
    .read = find_alias,
};
