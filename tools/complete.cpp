#include "complete.h"

#include <algorithm>

#include "command_line.h"

namespace {

constexpr const char *files = ":files\n";

const Option *find_option(const Options &options, const std::string &name)
{
    const auto &all = options.all();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&name](const Option &option) { return option.name == name; });
    return found != all.end() ? &*found : nullptr;
}

std::string line_of(const std::string &word, std::string_view help)
{
    return (word + '\t').append(help) + '\n';
}

std::string option_lines(const Options &options)
{
    std::string lines;
    for (const Option &option : options.all()) lines += line_of(option.name, option.help);
    return lines;
}

std::string value_lines(const Option &option)
{
    if (option.value == "FILE") return files;
    std::string lines;
    for (const std::string &word : option.choices) lines += line_of(word, "");
    return lines;
}

// The words that a name can go on with after the words `before`.
std::string command_lines(const std::string &before)
{
    std::string lines;
    std::string last;
    for (const Command *command : all_commands()) {
        const std::string name = command->name;
        if (!name.starts_with(before)) continue;
        const std::string rest = name.substr(before.size());
        const std::string word = rest.substr(0, rest.find(' '));
        if (word != last) lines += line_of(word, command->summary);
        last = word;
    }
    return before.empty() ? lines + line_of("help", "What a subcommand does") : lines;
}

// Lines that begin with the word that is completed.
std::string matching(const std::string &lines, const std::string &word)
{
    std::string matches;
    for (size_t at = 0; at < lines.size();) {
        const size_t end = lines.find('\n', at) + 1;
        if (lines.compare(at, word.size(), word) == 0 || lines[at] == ':')
            matches.append(lines, at, end - at);
        at = end;
    }
    return matches;
}

const Command *named(const std::string &name)
{
    for (const Command *command : all_commands())
        if (command->name == name) return command;
    return nullptr;
}

}  // namespace

std::string complete(const std::vector<std::string> &words)
{
    if (words.empty()) return {};
    const std::string &current = words.back();
    CommandLine line;
    const Options *options = &line.program_options;
    std::string name;  // of the command, so far
    const Command *command = nullptr;
    const Option *waiting = nullptr;  // for its value
    for (size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string &word = words[i];
        if (waiting != nullptr) {
            waiting = nullptr;
        } else if (word.starts_with('-')) {
            const Option *const option = find_option(*options, word);
            if (option != nullptr && !option->value.empty()) waiting = option;
        } else if (command == nullptr && word != "help") {
            name += word;
            command = named(name);
            name += ' ';
            if (command == nullptr) continue;
            line.add_command_options(*command);
            options = &line.command_options;
        }
    }
    if (waiting != nullptr) return matching(value_lines(*waiting), current);
    if (current.starts_with('-')) return matching(option_lines(*options), current);
    return command == nullptr ? matching(command_lines(name), current) : "";
}
