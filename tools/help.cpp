#include "help.h"

#include <algorithm>

namespace {

struct Row {
    std::string name;
    std::string_view help;
};

// Two columns, the second of whole words up to the width of a terminal.
std::string table(const std::vector<Row> &rows)
{
    constexpr size_t line_width = 80;
    size_t width = 0;
    for (const Row &row : rows) width = std::max(width, row.name.size());
    const size_t indent = width + 4;
    std::string text;
    for (const Row &row : rows) {
        std::string line = "  " + row.name;
        line.resize(indent, ' ');
        std::string_view rest = row.help;
        while (indent + rest.size() > line_width) {
            const size_t space = rest.rfind(' ', line_width - indent);
            if (space == std::string_view::npos) break;
            text += line.append(rest.substr(0, space)) + '\n';
            rest.remove_prefix(space + 1);
            line.assign(indent, ' ');
        }
        text += line.append(rest) + '\n';
    }
    return text;
}

std::string option_table(const Options &options)
{
    std::vector<Row> rows;
    for (const Option &option : options.all()) {
        std::string name = option.letter != '\0' ? std::string{'-', option.letter} + ", " : "";
        name += option.name;
        if (!option.value.empty()) name.append(1, ' ').append(option.value);
        rows.push_back({name, option.help});
    }
    return table(rows);
}

std::string indented(std::string_view lines)
{
    std::string text;
    while (!lines.empty()) {
        const size_t end = lines.find('\n');
        text.append("  ").append(lines.substr(0, end + 1));
        lines.remove_prefix(end + 1);
    }
    return text;
}

constexpr const char *exit_status =
    "\nThe exit status is 0 when every text was accepted, 1 when one was refused, 2 for\n"
    "wrong usage.\n";

}  // namespace

std::string program_help(const Options &options)
{
    std::vector<Row> rows;
    for (const Command *command : all_commands()) rows.push_back({command->name, command->summary});
    rows.push_back({"help", "What a subcommand does: orvex-parse help ip"});
    return "Reads what operators of routers type, and prints the values.\n\n"
           "Usage: orvex-parse [OPTION...] SUBCOMMAND [OPTION...] [TEXT...]\n\nSubcommands:\n" +
           table(rows) + "\nOptions:\n" + option_table(options) + exit_status;
}

std::string group_help(const std::string &first)
{
    std::vector<Row> rows;
    for (const Command *command : all_commands())
        if (std::string_view(command->name).starts_with(first + ' '))
            rows.push_back({command->name, command->summary});
    if (rows.empty()) return "";
    return "Subcommands:\n" + table(rows) + "\nRun orvex-parse help " + rows.front().name +
           " to see how one is used.\n";
}

std::string command_help(const Command &command, const Options &options)
{
    std::string text =
        std::string(command.summary) + ".\n\nUsage: orvex-parse " + command.name + " [OPTION...]";
    if (command.texts != nullptr) {
        const std::string texts = command.texts;
        text += " [" + texts + "...]\n\nWithout a " + texts +
                ", or with - alone, the lines of standard input are read.";
    }
    return text + "\n\nOptions:\n" + option_table(options) + "\nExamples:\n" +
           indented(command.examples) + exit_status;
}
