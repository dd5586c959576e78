#include "options.h"

#include <getopt.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <numeric>
#include <utility>

namespace {

// How many letters must be put in, taken out, replaced or swapped with the next to make one word of
// the other.
size_t distance(const std::string &from, const std::string &to)
{
    std::vector<size_t> before;
    std::vector<size_t> last;
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        before = std::exchange(last, row);
        row[0] = i + 1;
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t replaced = last[j] + (from[i] == to[j] ? 0 : 1);
            row[j + 1] = std::min({row[j] + 1, last[j + 1] + 1, replaced});
            const bool is_swap = i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j];
            if (is_swap) row[j + 1] = std::min(row[j + 1], before[j - 1] + 1);
        }
    }
    return row.back();
}

// "-5" is a text, and so is "-" alone; "-0" is an option.
bool is_text(const char *argument)
{
    if (argument[0] != '-' || argument[1] == '\0') return true;
    const bool is_digit = argument[1] >= '0' && argument[1] <= '9';
    return is_digit && std::strcmp(argument, "-0") != 0;
}

std::string list_of(const std::vector<std::string> &words)
{
    std::string list;
    for (size_t i = 0; i < words.size(); ++i) {
        if (i > 0) list += i + 1 == words.size() ? " or " : ", ";
        list += words[i];
    }
    return list;
}

std::string without_value(const std::string &argument)
{
    return argument.substr(0, argument.find('='));
}

}  // namespace

std::string did_you_mean(const std::string &text, const std::vector<std::string> &words)
{
    constexpr size_t longest = 64;
    if (words.empty() || text.empty() || text.size() > longest) return {};
    const auto cost = [&text](const std::string &word) {
        return word.starts_with(text) ? 0 : distance(text, word);
    };
    const auto nearest = std::min_element(
        words.begin(), words.end(), [&cost](const std::string &one, const std::string &other) {
            return cost(one) < cost(other);
        });
    const bool is_near = cost(*nearest) <= std::max<size_t>(1, nearest->size() / 3);
    return is_near ? ", did you mean '" + *nearest + "'?" : "";
}

void Options::flag(std::string name, std::string_view help, std::function<void()> set, char letter)
{
    options_.push_back({.name = std::move(name),
                        .value = {},
                        .help = help,
                        .set = [set = std::move(set)](const std::string &) { set(); },
                        .letter = letter});
}

void check_choice(const std::string &option, const std::vector<std::string> &choices,
                  const std::string &value)
{
    if (std::find(choices.begin(), choices.end(), value) != choices.end()) return;
    throw UsageError(option + ": expected " + list_of(choices) + ", found '" + value + "'" +
                     did_you_mean(value, choices));
}

void Options::value(std::string name, std::string_view value, std::string_view help,
                    std::function<void(const std::string &)> set, std::vector<std::string> choices)
{
    options_.push_back({.name = std::move(name),
                        .value = value,
                        .help = help,
                        .set = std::move(set),
                        .choices = std::move(choices)});
}

void Options::choice(std::string name, std::string_view value, std::string_view help,
                     std::vector<std::string> choices, std::function<void(const std::string &)> set)
{
    const auto check = [name, choices, set = std::move(set)](const std::string &word) {
        check_choice(name, choices, word);
        set(word);
    };
    this->value(std::move(name), value, help, check, std::move(choices));
}

void Options::number(std::string name, std::string_view value, std::string_view help, uint64_t min,
                     uint64_t max, std::function<void(uint64_t)> set)
{
    const auto check = [name, min, max, set = std::move(set)](const std::string &digits) {
        uint64_t number = 0;
        const char *const end = digits.data() + digits.size();
        const auto read = std::from_chars(digits.data(), end, number);
        if (read.ec != std::errc() || read.ptr != end || number < min || number > max)
            throw UsageError(name + ": expected a number from " + std::to_string(min) + " to " +
                             std::to_string(max) + ", found '" + digits + "'");
        set(number);
    };
    this->value(std::move(name), value, help, check);
}

// Throws UsageError for the option `argument`, which getopt_long did not read.
void Options::refuse(const std::string &argument) const
{
    const std::string name = without_value(argument);
    std::vector<std::string> names;
    for (const Option &known : options_) names.push_back(known.name);
    if (std::find(names.begin(), names.end(), name) != names.end())
        throw UsageError(name + " takes no value");
    throw UsageError("unknown option " + name + did_you_mean(name, names));
}

// Reads the option at argv[optind]; false when it is "--".
bool Options::parse_next(int argc, char **argv) const
{
    std::vector<option> forms;
    forms.reserve(options_.size() + 1);
    std::string letters = "+:";  // stop at texts, report errors here
    constexpr int first_long = 256;
    for (const Option &known : options_) {
        const int has_value = known.value.empty() ? no_argument : required_argument;
        const auto code = first_long + static_cast<int>(forms.size());
        forms.push_back({known.name.c_str() + 2, has_value, nullptr, code});
        if (known.letter != '\0') letters += known.letter;
    }
    forms.push_back({nullptr, 0, nullptr, 0});
    opterr = 0;
    const std::string argument = argv[optind];
    const int code = getopt_long(argc, argv, letters.c_str(), forms.data(), nullptr);
    if (code == -1) return false;
    if (code == ':') throw UsageError(without_value(argument) + " needs a value");
    for (size_t i = 0; i < options_.size(); ++i) {
        const bool is_long = code == first_long + static_cast<int>(i);
        if (!is_long && (code == '?' || code != options_[i].letter)) continue;
        options_[i].set(is_long && optarg != nullptr ? optarg : "");
        return true;
    }
    refuse(argument);
}

int Options::parse_leading(int argc, char **argv) const
{
    optind = 1;
    while (optind < argc && !is_text(argv[optind]))
        if (!parse_next(argc, argv)) break;
    return optind;
}

std::vector<char *> Options::parse(int argc, char **argv) const
{
    std::vector<char *> texts;
    optind = 1;
    while (optind < argc) {
        if (is_text(argv[optind]))
            texts.push_back(argv[optind++]);
        else if (!parse_next(argc, argv))
            break;
    }
    texts.insert(texts.end(), argv + optind, argv + argc);
    return texts;
}
