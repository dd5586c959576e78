#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "commands.h"
#include "file.h"
#include "profile.h"

namespace {

struct AliasOptions : Options {
    std::string map;
    bool alternate = false;
};

Outcome check_alias(const std::string &text)
{
    const bool alias = is_interface_alias(text.c_str()) == 1;
    Outcome outcome{{{"alias", alias, alias ? "yes" : "no"}}, {}, 0, 0};
    outcome.is_no = !alias;
    return outcome;
}

Outcome find_alias(const std::string &alias, FILE *map)
{
    std::array<char, 61> name;
    if (ifalias_to_ifl(alias.c_str(), name.data(), name.size(), 0, map) == 1)
        return {{{"interface", name.data(), name.data()}}, {}, 0, 0};
    return {{}, "'" + alias + "' is not in the alias map", 0, 0};
}

// Opens the map here, since the library does not say why it cannot read one.
File open_map(const AliasOptions &options)
{
    std::string path = options.map;
    if (path.empty()) path = options.alternate ? "/var/etc/if_alias_map+" : "/var/etc/if_alias_map";
    File map(std::fopen(path.c_str(), "re"));
    if (map == nullptr)
        throw std::runtime_error("cannot open " + path + ": " + std::strerror(errno));
    return map;
}

int run_find(const AliasOptions &options)
{
    const File map = open_map(options);
    return run_texts(options, Style::value,
                     [&map](const std::string &alias) { return find_alias(alias, map.get()); });
}

}  // namespace

void add_alias_command(CLI::App &app, const std::string &profile, Job &job)
{
    static AliasOptions options;
    CLI::App *const alias = app.add_subcommand("alias", "Interface aliases and their map");
    alias->require_subcommand(1);
    alias->fallthrough();
    CLI::App *const is =
        add_command(*alias, "is", "Check whether words mean aliases: yes or no", options);
    is->fallthrough();
    is->callback([&job, &profile] {
        job = [&profile] {
            install_profile(profile);
            return run_texts(options, Style::value, check_alias);
        };
    });
    CLI::App *const find =
        add_command(*alias, "find", "Print the interface names of aliases", options);
    CLI::Option *const map =
        find->add_option("--map", options.map, "Read this map")->type_name("FILE");
    find->add_flag("--alternate", options.alternate, "Read the alternate map")->excludes(map);
    find->callback([&job] { job = [] { return run_find(options); }; });
}
