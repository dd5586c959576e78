// The parts of a command line: options of the program, a subcommand, its options and texts.
#ifndef ORVEX_TOOLS_COMMAND_LINE_H
#define ORVEX_TOOLS_COMMAND_LINE_H

#include <string>

#include "command.h"
#include "options.h"
#include "stream.h"

struct CommandLine {
    CommandLine();
    CommandLine(const CommandLine &) = delete;
    CommandLine &operator=(const CommandLine &) = delete;

    void add_command_options(const Command &command);

    Options program_options{3};
    Options command_options{20};
    StreamOptions stream;
    std::string profile;
    bool wants_help = false;
    bool wants_version = false;
};

struct FoundCommand {
    const Command *command;
    int words;  // how many words its name has
};

// Finds the command whose name is the first word or two. Throws UsageError when there is none.
FoundCommand find_command(int argc, char **argv);

#endif
