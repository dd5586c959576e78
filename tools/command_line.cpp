#include "command_line.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr const Command *commands[] = {
    &integer_command,   &quad_command,      &number_command,       &ip_command,
    &interface_command, &alias_is_command,  &alias_find_command,   &mac_command,
    &rd_command,        &esi_command,       &iso_command,          &sysid_command,
    &atmvpn_command,    &delimited_command, &duration_command,     &canonical_command,
    &prefix6_command,   &identify_command,  &profile_show_command,
};

void add_profile_option(Options &options, std::string &profile)
{
    options.value("--profile", "FILE",
                  "The router whose interface names are read; by default the file in ORVEX_PROFILE",
                  [&profile](const std::string &path) { profile = path; });
}

// The words that can follow `first`, or the first words of all names.
std::vector<std::string> words_after(const std::string &first)
{
    std::vector<std::string> words;
    for (const Command *command : commands) {
        const std::string name = command->name;
        const size_t space = name.find(' ');
        if (first.empty())
            words.push_back(name.substr(0, space));
        else if (space != std::string::npos && name.substr(0, space) == first)
            words.push_back(name.substr(space + 1));
    }
    if (first.empty()) words.emplace_back("help");
    return words;
}

}  // namespace

std::span<const Command *const> all_commands() { return commands; }

CommandLine::CommandLine()
{
    if (const char *const path = std::getenv("ORVEX_PROFILE")) profile = path;
    add_profile_option(program_options, profile);
    program_options.flag(
        "--version", "Print the release and the source revision", [this] { wants_version = true; },
        'V');
    program_options.flag(
        "--help", "Print this text", [this] { wants_help = true; }, 'h');
}

void CommandLine::add_command_options(const Command &command)
{
    if (command.add_options != nullptr) command.add_options(command_options);
    if (command.has_profile) add_profile_option(command_options, profile);
    add_stream_options(command_options, stream, command);
    command_options.flag(
        "--help", "Print this text", [this] { wants_help = true; }, 'h');
}

FoundCommand find_command(int argc, char **argv)
{
    if (argc == 0) throw UsageError("a subcommand is missing");
    const std::string first = argv[0];
    const std::string both = argc > 1 ? first + ' ' + argv[1] : first;
    for (const Command *command : commands) {
        if (first == command->name) return {command, 1};
        if (both == command->name) return {command, 2};
    }
    const std::vector<std::string> second = words_after(first);
    if (second.empty())
        throw UsageError("unknown subcommand '" + first + "'" +
                         did_you_mean(first, words_after("")));
    std::string known;
    for (const std::string &word : second) known += (known.empty() ? "" : " or ") + word;
    if (argc == 1) throw UsageError("after " + first + " comes " + known);
    throw UsageError("after " + first + " comes " + known + ", found '" + argv[1] + "'" +
                     did_you_mean(argv[1], second));
}
