// What the program says about itself.
#ifndef ORVEX_TOOLS_HELP_H
#define ORVEX_TOOLS_HELP_H

#include <string>

#include "command.h"
#include "options.h"

// About the program, with the options that come before a subcommand.
std::string program_help(const Options &options);

// About the subcommands of two words that begin with `first`; nothing when there is none.
std::string group_help(const std::string &first);

// About one subcommand.
std::string command_help(const Command &command, const Options &options);

#endif
