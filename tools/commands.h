// Adds the subcommands of the families. The one that is chosen stores its work in `job`, which
// returns the exit status.
#ifndef ORVEX_TOOLS_COMMANDS_H
#define ORVEX_TOOLS_COMMANDS_H

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string>

#include "stream.h"

using Job = std::function<int()>;

void add_number_commands(CLI::App &app, Job &job);
void add_ip_command(CLI::App &app, Job &job);
void add_identifier_commands(CLI::App &app, Job &job);
void add_text_commands(CLI::App &app, Job &job);

// `profile` is the path of the platform profile, or empty.
void add_interface_command(CLI::App &app, const std::string &profile, Job &job);
void add_alias_command(CLI::App &app, const std::string &profile, Job &job);

// Adds a subcommand with the arguments that all of them have: texts and --json.
template <typename CommandOptions>
CLI::App *add_command(CLI::App &app, const char *name, const char *description,
                      CommandOptions &options)
{
    CLI::App *const command = app.add_subcommand(name, description);
    // Every argument left is a text, unchanged: CLI11 splits "[a,b]" where extra arguments are
    // allowed, and ends the subcommand at a "--" after the least number that it expects.
    constexpr int unlimited = CLI::detail::expected_max_vector_size;
    command
        ->add_option("TEXT", options.texts,
                     "The texts to read; without any, or with -, the lines of standard input")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->expected(unlimited / 2, unlimited)
        ->allow_extra_args(false);
    command->add_flag("--json", options.json, "Print one JSON object a line");
    return command;
}

#endif
