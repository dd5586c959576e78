#include <orvex/parse.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "commands.h"
#include "profile.h"

namespace {

struct AliasOptions : Options {
    std::string map;
    bool alternate = false;
};

struct CloseFile {
    void operator()(FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, CloseFile>;

Outcome check_alias(const std::string &text)
{
    const bool alias = is_interface_alias(text.c_str()) == 1;
    Outcome outcome{{{"alias", alias, alias ? "yes" : "no"}}, {}, 0, 0};
    outcome.is_no = !alias;
    return outcome;
}

Outcome find_alias(const std::string &alias, bool alternate, FILE *map)
{
    std::array<char, 61> name;
    errno = 0;
    if (ifalias_to_ifl(alias.c_str(), name.data(), name.size(), alternate ? 1 : 0, map) == 1)
        return {{{"interface", name.data(), name.data()}}, {}, 0, 0};
    if (errno != 0)
        return {{}, std::string("cannot open the alias map: ") + std::strerror(errno), 0, errno};
    return {{}, "'" + alias + "' is not in the alias map", 0, 0};
}

File open_map(const std::string &path)
{
    if (path.empty()) return nullptr;
    File map(std::fopen(path.c_str(), "re"));
    if (map == nullptr)
        throw std::runtime_error("cannot open " + path + ": " + std::strerror(errno));
    return map;
}

int run_find(const AliasOptions &options)
{
    const File map = open_map(options.map);
    return run_texts(options, Style::value, [&options, &map](const std::string &alias) {
        return find_alias(alias, options.alternate, map.get());
    });
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
