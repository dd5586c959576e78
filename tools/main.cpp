#include <orvex/parse.h>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <string>

#include "command.h"
#include "command_line.h"
#include "complete.h"
#include "help.h"
#include "options.h"
#include "output.h"
#include "profile.h"
#include "stream.h"
#include "terminal.h"

namespace {

constexpr int wrong_usage = 2;

int print(Output &output, const std::string &text)
{
    output.results() += text;
    return output.finish(0);
}

// orvex-parse help [SUBCOMMAND]
int print_help(const CommandLine &line, int argc, char **argv, Output &output)
{
    if (argc <= 1 || std::string(argv[1]) == "help")
        return print(output, program_help(line.program_options));
    const std::string group = argc == 2 ? group_help(argv[1]) : "";
    if (!group.empty()) return print(output, group);
    const FoundCommand found = find_command(argc - 1, argv + 1);
    CommandLine named;
    named.add_command_options(*found.command);
    return print(output, command_help(*found.command, named.command_options));
}

// What "alias --help" prints, which names no subcommand; nothing for other words.
std::string help_of_group(int argc, char **argv)
{
    const std::string option = argc == 2 ? argv[1] : "";
    return option == "--help" || option == "-h" ? group_help(argv[0]) : "";
}

int run_command(CommandLine &line, int argc, char **argv, Output &output)
{
    const FoundCommand found = find_command(argc, argv);
    const Command &command = *found.command;
    line.add_command_options(command);
    const int last_word = found.words - 1;
    std::vector<char *> texts = line.command_options.parse(argc - last_word, argv + last_word);
    if (line.wants_help) return print(output, command_help(command, line.command_options));
    const Command &prepared = command.prepare != nullptr ? command.prepare(command) : command;
    check_form(prepared, line.stream.form);
    if (prepared.read == nullptr && !texts.empty())
        throw UsageError(std::string("no text is read, found '") + texts.front() + "'");
    if (prepared.has_profile) install_profile(line.profile);
    return run_stream(prepared, line.stream, std::move(texts), output);
}

int run(int argc, char **argv)
{
    // Writing to a closed pipe then fails with EPIPE.
    std::signal(SIGPIPE, SIG_IGN);
    Output output;
    CommandLine line;
    const int first = line.program_options.parse_leading(argc, argv);
    if (line.wants_version)
        return print(output, std::string("orvex-parse ") + sw_version.release + " (" +
                                 sw_version.build + ")\n");
    if (line.wants_help) return print(output, program_help(line.program_options));
    argc -= first;
    argv += first;
    const std::string word = argc > 0 ? argv[0] : "";
    if (word == "help") return print_help(line, argc, argv, output);
    const std::string group = help_of_group(argc, argv);
    if (!group.empty()) return print(output, group);
    if (word == "complete") return print(output, complete({argv + 1, argv + argc}));
    return run_command(line, argc, argv, output);
}

}  // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const UsageError &error) {
        print_problem(std::string(error.what()) +
                      "\nRun orvex-parse --help to see how it is used.");
        return wrong_usage;
    } catch (const std::exception &error) {
        print_problem(error.what());
        return 1;
    }
}
